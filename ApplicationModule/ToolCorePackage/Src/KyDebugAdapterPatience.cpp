// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapterPatience_p.h"

#include <algorithm>

void KyDebugAdapterPatience::note(Urgency urgency, Clock::time_point now) {
    const std::scoped_lock lock(mMutex);
    if (urgency != eNbUrgencies && mQueues[urgency].count++ == 0)
        mQueues[urgency].since = now;
}

void KyDebugAdapterPatience::noteTaken(Urgency urgency, Clock::time_point now) {
    const std::scoped_lock lock(mMutex);
    if (urgency == eGlance)
        mDeadline = now + cGlancePatience;
    else if (urgency != eNbUrgencies)
        mQueues[urgency] = {mQueues[urgency].count - 1, now};
}

void KyDebugAdapterPatience::noteHandled(Urgency urgency) {
    const std::scoped_lock lock(mMutex);
    if (urgency != eGlance)
        return;
    mDeadline = Clock::time_point::max();
    --mQueues[eGlance].count;
}

void KyDebugAdapterPatience::setStopping(bool isStopping) {
    const std::scoped_lock lock(mMutex);
    mIsStopping = isStopping;
}

bool KyDebugAdapterPatience::isWaiting(Urgency urgency) const {
    const std::scoped_lock lock(mMutex);
    return mQueues[urgency].count > 0;
}

bool KyDebugAdapterPatience::isWaiting() const {
    const std::scoped_lock lock(mMutex);
    return std::ranges::any_of(mQueues, [](const Queue& queue) { return queue.count > 0; });
}

KyDebugAdapterPatience::Lateness KyDebugAdapterPatience::getLateness(Clock::time_point now) const {
    const bool isLateNow = isLate(ePause, now, cPatience) || isLate(eFarewell, now, cPatience);
    return {isLateNow && mIsStopping, isLateNow || now > mDeadline, isLate(eFarewell, now, cLongPatience)};
}

bool KyDebugAdapterPatience::isLate(Urgency urgency, Clock::time_point now, std::chrono::milliseconds patience) const {
    const Queue& queue = mQueues[urgency];
    return queue.count > 0 && now - queue.since >= patience;
}
