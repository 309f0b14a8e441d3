// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTrackballCoasting_p.h"

#include "KyTrackballManipulator.h"

#include "KyMainTaskManager.h"
#include "KyTimer.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// Microseconds. Events of one frame come together, so a velocity over less than a frame means nothing.
constexpr std::int64_t cWindow = 100000;
constexpr std::int64_t cFrame = 16667;
constexpr double cSecond = 1e6;
/// Of half the view: a small part of a pixel.
constexpr double cInvisible = 1e-4;

} // namespace

KyTrackballCoasting::KyTrackballCoasting(KyTrackballManipulator& owner)
    : KyTask("KyTrackballCoasting")
    , mOwner(owner)
    , mBegin(KyTimer::getCurrentUS()) {}

void KyTrackballCoasting::forgetOld(std::int64_t now) {
    while (!mSamples.empty() && now - mSamples.front().time > cWindow)
        mSamples.pop_front();
}

void KyTrackballCoasting::record(int motion, const KyVec2d& step) {
    const std::int64_t now = KyTimer::getCurrentUS();
    stop();
    if (motion != mMotion) {
        mSamples.clear();
        mBegin = mMotion < 0 ? mBegin : now;
        mMotion = motion;
    }
    forgetOld(now);
    mSamples.push_back({now, step});
}

void KyTrackballCoasting::clear() {
    stop();
    mSamples.clear();
    mMotion = -1;
    mBegin = KyTimer::getCurrentUS();
}

void KyTrackballCoasting::stop() {
    if (isMoving())
        KyMainTaskManager::get().removeTask(this);
}

KyVec2d KyTrackballCoasting::takeVelocity() {
    const std::int64_t now = KyTimer::getCurrentUS();
    forgetOld(now);
    KyVec2d way;
    for (const Sample& sample : std::exchange(mSamples, {}))
        way += sample.step;
    return way * (cSecond / static_cast<double>(std::clamp(now - mBegin, cFrame, cWindow)));
}

void KyTrackballCoasting::start(int motion, const KyVec2d& velocity) {
    if (velocity.isNull())
        return;
    mMotion = motion;
    mVelocity = velocity;
    mLastUpdate = KyTimer::getCurrentUS();
    KyMainTaskManager::get().addTask(this);
}

KyVec2d KyTrackballCoasting::advance(double seconds, double damping) {
    const double rest = std::exp(-seconds / damping);
    const KyVec2d step = mVelocity * (damping * (1.0 - rest));
    mVelocity *= rest;
    if (mVelocity.length() * damping < cInvisible)
        stop();
    return step;
}

bool KyTrackballCoasting::execute() {
    const std::int64_t now = KyTimer::getCurrentUS();
    const double seconds = static_cast<double>(now - mLastUpdate) / cSecond;
    mLastUpdate = now;
    return mOwner.coast(seconds);
}
