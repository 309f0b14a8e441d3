// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLongWork.h"
#include "KyProgress.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <utility>
#include <vector>

namespace {

class KyProgressTest : public testing::Test {
protected:
    KyProgressTest() {
        mProgress.changedSignal().connect(mSlots, [this](const std::string& title, double share) {
            mTold.emplace_back(title, share);
            mWasActive.push_back(mProgress.isActive());
            if (mCancels)
                mProgress.cancel();
        });
    }
    ~KyProgressTest() override {
        mProgress.close();
        mProgress.setQuietTime(mFormerQuietTime);
    }

    static void wait(int milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

    KyProgress& mProgress = KyProgress::get();
    const int mFormerQuietTime = mProgress.getQuietTime();
    KyHasSlots mSlots;
    std::vector<std::pair<std::string, double>> mTold;
    std::vector<bool> mWasActive;
    bool mCancels = false;
};

TEST_F(KyProgressTest, LongWorkIsToldWhileItGoesOnAndAtItsEnd) {
    mProgress.open();
    {
        KyLongWork work("copy");
        work.editTracker().setNbSteps(4);
        work.editTracker().step();
        EXPECT_TRUE(mTold.empty()) << "it may be short";
        wait(mProgress.getQuietTime() + 5);
        work.editTracker().touch();
        work.editTracker().step();
        EXPECT_EQ(mProgress.getTitle(), "copy");
        EXPECT_DOUBLE_EQ(mProgress.getShare(), 0.5);
        EXPECT_GE(mProgress.getSeconds(), 0.1);
    }
    const std::vector<std::pair<std::string, double>> told{{"copy", 0.25}, {"copy", 1.0}};
    EXPECT_EQ(mTold, told) << "the second step came too soon after the first telling";
    EXPECT_FALSE(mProgress.isActive());
    EXPECT_FALSE(mProgress.cancel());
    mProgress.setQuietTime(-1);
    KyLongWork("at once").editTracker().touch();
    EXPECT_EQ(mTold.back().first, "at once");
}

TEST_F(KyProgressTest, ASlotCancelsTheWorkThatBeganLast) {
    mProgress.open();
    mCancels = true;
    KyLongWork outer("outer");
    {
        KyLongWork inner("inner");
        wait(mProgress.getQuietTime() + 5);
        inner.editTracker().touch();
        EXPECT_TRUE(inner.editTracker().isCanceled());
        EXPECT_FALSE(outer.editTracker().isCanceled());
    }
    outer.editTracker().touch();
    EXPECT_TRUE(outer.editTracker().isCanceled());
    EXPECT_EQ(mTold.back().first, "outer");
}

TEST_F(KyProgressTest, CancelledWorkEndsWithTheShareThatItReached) {
    mProgress.open();
    mProgress.setQuietTime(0);
    mCancels = true;
    {
        KyLongWork work("download");
        work.editTracker().setNbSteps(4);
        work.editTracker().step();
    }
    const std::vector<std::pair<std::string, double>> told{{"download", 0.25}, {"download", 0.25}};
    EXPECT_EQ(mTold, told);
    EXPECT_EQ(mWasActive, (std::vector<bool>{true, false})) << "the last one tells that it is over";
}

TEST_F(KyProgressTest, WorkThatNobodyWatchesOrThatHasATrackerOfItsOwnIsNotTold) {
    KyTracker tracker;
    const auto run = [this](KyTracker* own) {
        KyLongWork work("work", own);
        EXPECT_FALSE(work.isTold());
        EXPECT_FALSE(mProgress.isActive());
        wait(mProgress.getQuietTime() + 5);
        work.editTracker().step();
    };
    run(nullptr);
    mProgress.open();
    run(&tracker);
    EXPECT_DOUBLE_EQ(tracker.getProgress(), 1.0);
    std::thread([&] { run(nullptr); }).join();
    EXPECT_TRUE(mTold.empty());
}

} // namespace
