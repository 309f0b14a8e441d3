// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTracker.h"

#include <algorithm>

KyTracker::KyTracker()
    : mLevels{{0, 1, 1, 0}} {}

void KyTracker::beginSubTask() {
    const Level& outer = mLevels.back();
    const double share = outer.size / outer.nbSteps;
    mLevels.push_back({outer.begin + share * outer.nbDone, share, 1, 0});
}

void KyTracker::endSubTask() {
    if (mLevels.size() == 1)
        return;
    mLevels.pop_back();
    step();
}

void KyTracker::setNbSteps(unsigned count) {
    mLevels.back().nbSteps = std::max(count, 1u);
    mLevels.back().nbDone = 0;
}

void KyTracker::step() {
    Level& level = mLevels.back();
    level.nbDone = std::min(level.nbDone + 1, level.nbSteps);
    publish();
}

void KyTracker::publish() {
    if (isCanceled())
        return;
    const Level& level = mLevels.back();
    mProgress = std::max(mProgress, level.begin + level.size * level.nbDone / level.nbSteps);
    if (mListener)
        mListener(mProgress);
}
