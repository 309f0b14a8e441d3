// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTracker.h"

#include <gtest/gtest.h>

namespace {

TEST(KyTracker, SubTasksTakeTheShareOfOneStep) {
    KyTracker tracker;
    tracker.setNbSteps(2);
    tracker.beginSubTask();
    tracker.setNbSteps(4);
    tracker.step();
    EXPECT_DOUBLE_EQ(tracker.getProgress(), 0.125);
    tracker.endSubTask();
    EXPECT_DOUBLE_EQ(tracker.getProgress(), 0.5);
    tracker.step();
    EXPECT_DOUBLE_EQ(tracker.getProgress(), 1);
    tracker.endSubTask();
    tracker.setNbSteps(0);
    tracker.step();
    tracker.setNbSteps(10);
    tracker.step();
    EXPECT_DOUBLE_EQ(tracker.getProgress(), 1) << "never back or beyond its end";
}

} // namespace
