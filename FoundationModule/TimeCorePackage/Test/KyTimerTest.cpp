// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyTimer.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>
#include <type_traits>

static_assert(std::is_trivially_copyable_v<KyTimer>);

namespace {

void sleepMS(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace

TEST(KyTimerTest, TheClockCountsMicroseconds) {
    const std::int64_t beforeMS = KyTimer::getCurrentMS();
    const auto begin = std::chrono::steady_clock::now();
    const std::int64_t before = KyTimer::getCurrentUS();
    sleepMS(20);
    const std::int64_t passed = KyTimer::getCurrentUS() - before;
    const std::chrono::duration<double, std::micro> around = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(passed, 20000);
    EXPECT_LE(static_cast<double>(passed), around.count() + 1.0);
    EXPECT_GE(KyTimer::getCurrentMS() - beforeMS, 19);
}

TEST(KyTimerTest, ATimerThatNeverStartedStandsAtZeroAndItsFirstDeltaHasNoReference) {
    KyTimer timer;
    sleepMS(2);
    timer.resume();
    timer.pause();
    EXPECT_EQ(timer.getPreciseElapsedTime(), 0);
    EXPECT_EQ(timer.getPreciseDeltaTime(), -1);
    timer.start();
    sleepMS(5);
    EXPECT_EQ(timer.getPreciseDeltaTime(), -1) << "the first delta has no reference";
    sleepMS(5);
    EXPECT_GE(timer.getPreciseDeltaTime(), 5000);
    timer.start();
    EXPECT_EQ(timer.getDeltaTime(), -1);
}

TEST(KyTimerTest, MillisecondDeltasLoseNoRest) {
    KyTimer timer;
    timer.start();
    timer.getDeltaTime();
    const std::int64_t first = timer.getPreciseElapsedTime();
    std::int64_t sum = 0;
    // Asked far more often than once a millisecond, truncating would never get anywhere.
    while (timer.getPreciseElapsedTime() < first + 30000)
        sum += timer.getDeltaTime();
    const std::int64_t last = timer.getPreciseElapsedTime();
    sum += timer.getDeltaTime();
    EXPECT_GE(sum, (last - first) / 1000);
    EXPECT_LE(sum, timer.getElapsedTime());
}

TEST(KyTimerTest, PausedTimeDoesNotCountAndStartingBeginsAtZero) {
    KyTimer timer;
    timer.start();
    sleepMS(5);
    timer.pause();
    const std::int64_t elapsed = timer.getPreciseElapsedTime();
    EXPECT_GE(elapsed, 5000);
    sleepMS(50);
    timer.pause();
    EXPECT_EQ(timer.getPreciseElapsedTime(), elapsed);
    timer.resume();
    timer.resume();
    EXPECT_LT(timer.getPreciseElapsedTime(), elapsed + 50000);
    sleepMS(20);
    timer.start();
    EXPECT_LT(timer.getPreciseElapsedTime(), 20000);
}
