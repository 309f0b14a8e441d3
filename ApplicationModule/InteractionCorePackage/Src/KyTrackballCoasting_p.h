// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyTask.h"
#include "KyVec2.h"

#include <cstdint>
#include <deque>

class KyTrackballManipulator;

/// What a trackball knows while damping is on: the steps of the last moments, and the motion that goes on. It stands in
/// the main task manager only while something moves.
class KyTrackballCoasting final : public KyTask {
public:
    explicit KyTrackballCoasting(KyTrackballManipulator& owner);

    /// A step of a drag happens now, which ends a motion that goes on. Another motion than before forgets the former
    /// steps.
    void record(int motion, const KyVec2d& step);
    /// A drag may begin now: forgets the steps and stops.
    void clear();
    void stop();
    /// Of the last steps, in parts of half the view per second; null when they were too long ago.
    KyVec2d takeVelocity();
    /// Goes on with a motion; nothing for the null velocity.
    void start(int motion, const KyVec2d& velocity);

    bool isMoving() const { return getParent() != nullptr; }
    int getMotion() const { return mMotion; }
    /// The step for that time; the velocity falls, and stops when what is left cannot be seen.
    KyVec2d advance(double seconds, double damping);

    bool execute() override;

private:
    struct Sample {
        std::int64_t time;
        KyVec2d step;
    };

    void forgetOld(std::int64_t now);

    KyTrackballManipulator& mOwner;
    std::deque<Sample> mSamples;
    std::int64_t mBegin = 0;
    std::int64_t mLastUpdate = 0;
    int mMotion = -1;
    KyVec2d mVelocity;
};
