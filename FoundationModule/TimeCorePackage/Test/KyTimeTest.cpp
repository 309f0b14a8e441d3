// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyTime.h"

#include <cmath>
#include <ctime>
#include <gtest/gtest.h>
#include <limits>
#include <type_traits>

static_assert(std::is_trivially_copyable_v<KyTime>);
static_assert(!std::is_convertible_v<double, KyTime>);

TEST(KyTimeTest, PartsSumUpToSeconds) {
    EXPECT_EQ(KyTime().getTime(), 0.0);
    EXPECT_EQ(KyTime(12, 30, 15.25).getTime(), 45015.25);
    EXPECT_EQ(KyTime(0, 90, 0.0), KyTime(5400.0));
    KyTime time;
    time.setTime(86399.5);
    EXPECT_EQ(time, KyTime(23, 59, 59.5));
}

TEST(KyTimeTest, DifferencesAreSignedSeconds) {
    EXPECT_EQ(KyTime(2, 0, 0.5) - KyTime(1, 59, 0.0), 60.5);
    EXPECT_EQ(KyTime(1, 0, 0.0) - KyTime(2, 0, 0.0), -3600.0);
    EXPECT_TRUE(KyTime(1.0) < KyTime(2.0));
    EXPECT_TRUE(KyTime(2.0) >= KyTime(2.0));
    EXPECT_FALSE(KyTime(2.0) <= KyTime(1.0));
    EXPECT_TRUE(KyTime(2.0) > KyTime(1.0));
}

TEST(KyTimeTest, TextIsRoundedToMillisecondsWithinTheDay) {
    struct Row {
        double mSeconds;
        const char* mText;
    };
    const double cInfinity = std::numeric_limits<double>::infinity();
    const Row cRows[] = {{0.0, "00:00:00.000"},     {45015.25, "12:30:15.250"},     {0.0005, "00:00:00.001"},
                         {0.0004, "00:00:00.000"},  {59.9996, "00:01:00.000"},      {86399.9996, "23:59:59.999"},
                         {86400.0, "24:00:00.000"}, {360000.0, "100:00:00.000"},    {-1.5, "-00:00:01.500"},
                         {-0.0001, "00:00:00.000"}, {std::nan(""), "00:00:00.000"}, {cInfinity, "277777777:46:40.000"}};
    for (const Row& row : cRows)
        EXPECT_EQ(KyTime(row.mSeconds).toString(), row.mText) << row.mSeconds;
}

TEST(KyTimeTest, EveryMillisecondSurvivesItsText) {
    for (int milliseconds = 0; milliseconds < 86400000; milliseconds += 997) {
        KyTime read;
        const std::string text = KyTime(milliseconds / 1000.0).toString();
        ASSERT_TRUE(fromString(text, read)) << text;
        ASSERT_EQ(std::lround(read.getTime() * 1000.0), milliseconds) << text;
    }
}

TEST(KyTimeTest, ShorterTextsAndSignsAreRead) {
    struct Row {
        const char* mText;
        double mSeconds;
    };
    constexpr Row cRows[] = {{"12:30", 45000.0},
                             {"12:30:15", 45015.0},
                             {"1:2:3.5", 3723.5},
                             {"-00:00:01.500", -1.5},
                             {"100:00:00.000", 360000.0}};
    for (const Row& row : cRows) {
        KyTime read;
        EXPECT_TRUE(fromString(row.mText, read)) << row.mText;
        EXPECT_EQ(read.getTime(), row.mSeconds) << row.mText;
    }
}

TEST(KyTimeTest, UnreadableTextLeavesTheTimeAlone) {
    for (const char* text : {"", "12", "12:60", "12:30:60", "12:30:15.", "12:30:.5", "12:-30", "a:b", "12:30:15:00",
                             "12:30 ", "1e1:00", "12:3.5", "12:30:inf", ":", "--1:00"}) {
        KyTime time(7.0);
        EXPECT_FALSE(fromString(text, time)) << text;
        EXPECT_EQ(time, KyTime(7.0)) << text;
    }
}

TEST(KyTimeTest, NowIsTheLocalTimeOfDay) {
    const std::time_t now = std::time(nullptr);
    const std::tm local = *std::localtime(&now);
    KyTime time;
    time.setToNow();
    const double difference = time - KyTime(local.tm_hour, local.tm_min, local.tm_sec);
    // A test that runs across midnight is a day off.
    EXPECT_LT(std::abs(std::remainder(difference, 86400.0)), 5.0);
    EXPECT_GE(time.getTime(), 0.0);
    EXPECT_LT(time.getTime(), 86401.0);
}
