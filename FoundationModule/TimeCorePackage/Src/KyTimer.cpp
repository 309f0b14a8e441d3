// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyTimer.h"

#include <algorithm>
#include <chrono>
#include <limits>

namespace {

constexpr std::int64_t cMicrosecondsPerMillisecond = 1000;

int limitToInt(std::int64_t value) {
    return static_cast<int>(std::min<std::int64_t>(value, std::numeric_limits<int>::max()));
}

} // namespace

std::int64_t KyTimer::getCurrentUS() {
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

std::int64_t KyTimer::getCurrentMS() {
    return getCurrentUS() / cMicrosecondsPerMillisecond;
}

void KyTimer::start() {
    mOrigin = getCurrentUS();
    mPausedElapsed = 0;
    mReference = cNoReference;
    mState = eRunning;
}

void KyTimer::pause() {
    if (mState != eRunning)
        return;
    mPausedElapsed = getPreciseElapsedTime();
    mState = ePaused;
}

void KyTimer::resume() {
    if (mState != ePaused)
        return;
    mOrigin = getCurrentUS() - mPausedElapsed;
    mState = eRunning;
}

int KyTimer::getElapsedTime() const {
    return limitToInt(getPreciseElapsedTime() / cMicrosecondsPerMillisecond);
}

std::int64_t KyTimer::getPreciseElapsedTime() const {
    return mState == eRunning ? getCurrentUS() - mOrigin : mPausedElapsed;
}

bool KyTimer::hasReference() {
    if (mReference != cNoReference)
        return true;
    if (mState != eIdle)
        mReference = getPreciseElapsedTime();
    return false;
}

int KyTimer::getDeltaTime() {
    if (!hasReference())
        return static_cast<int>(cNoReference);
    const int delta = limitToInt((getPreciseElapsedTime() - mReference) / cMicrosecondsPerMillisecond);
    mReference += delta * cMicrosecondsPerMillisecond;
    return delta;
}

std::int64_t KyTimer::getPreciseDeltaTime() {
    if (!hasReference())
        return cNoReference;
    const std::int64_t elapsed = getPreciseElapsedTime();
    const std::int64_t delta = elapsed - mReference;
    mReference = elapsed;
    return delta;
}
