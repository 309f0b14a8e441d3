// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLongWork.h"

#include "KyProgress.h"

#include "KyTimer.h"

#include <algorithm>
#include <utility>

namespace {

constexpr long long cMicrosecondsPerMillisecond = 1000;
constexpr double cSecondsPerMicrosecond = 1e-6;

} // namespace

KyLongWork::KyLongWork(std::string title, KyTracker* tracker)
    : mTitle(std::move(title))
    , mIsTold(!tracker && KyProgress::get().isOpenHere())
    , mTracker(tracker ? *tracker : mOwnTracker)
    , mBegin(KyTimer::getCurrentUS())
    , mNext(mBegin + KyProgress::get().getQuietTime() * cMicrosecondsPerMillisecond) {
    if (!mIsTold)
        return;
    KyProgress::get().mWorks.push_back(this);
    mTracker.setListener([this](double) { onReport(); });
}

/// Pieces of work may end in another order than they began.
KyLongWork::~KyLongWork() {
    if (!mIsTold)
        return;
    std::vector<KyLongWork*>& works = KyProgress::get().mWorks;
    const bool isCanceled = mTracker.isCanceled();
    // Such a share does not tell the end; that nothing is under way does. Other work is not to be cancelled instead.
    if (isCanceled && works.size() == 1)
        works.clear();
    if (mHasSent)
        send(isCanceled ? mTracker.getProgress() : 1.0);
    std::erase(works, this);
}

double KyLongWork::getSeconds() const {
    return static_cast<double>(KyTimer::getCurrentUS() - mBegin) * cSecondsPerMicrosecond;
}

void KyLongWork::onReport() {
    const long long now = KyTimer::getCurrentUS();
    if (now < mNext)
        return;
    mHasSent = true;
    send(mTracker.getProgress());
    // What the slots took is not time that the work has had.
    mNext = KyTimer::getCurrentUS() + KyProgress::cInterval * cMicrosecondsPerMillisecond;
}

void KyLongWork::send(double share) {
    KyProgress::get().mChangedSignal.send(mTitle, share);
}
