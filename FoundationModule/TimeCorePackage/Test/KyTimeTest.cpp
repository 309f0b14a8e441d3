// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyTime.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <type_traits>

static_assert(std::is_trivially_copyable_v<KyTime>);
static_assert(!std::is_convertible_v<double, KyTime>);

TEST(KyTimeTest, TextIsRoundedToMillisecondsWithinTheDay) {
    const double cInfinity = std::numeric_limits<double>::infinity();
    const std::pair<double, const char*> cRows[] = {
        {0.0, "00:00:00.000"},     {45015.25, "12:30:15.250"},     {0.0005, "00:00:00.001"},
        {0.0004, "00:00:00.000"},  {59.9996, "00:01:00.000"},      {86399.9996, "23:59:59.999"},
        {86400.0, "24:00:00.000"}, {360000.0, "100:00:00.000"},    {-1.5, "-00:00:01.500"},
        {-0.0001, "00:00:00.000"}, {std::nan(""), "00:00:00.000"}, {cInfinity, "277777777:46:40.000"}};
    for (const auto& [seconds, text] : cRows)
        EXPECT_EQ(KyTime(seconds).toString(), text) << seconds;
}

TEST(KyTimeTest, EveryMillisecondSurvivesItsText) {
    for (int milliseconds = 0; milliseconds < 86400000; milliseconds += 997) {
        KyTime read;
        const std::string text = KyTime(milliseconds / 1000.0).toString();
        ASSERT_TRUE(fromString(text, read)) << text;
        ASSERT_EQ(std::lround(read.getTime() * 1000.0), milliseconds) << text;
    }
}

TEST(KyTimeTest, ShorterTextsAreReadAndUnreadableOnesLeaveTheTimeAlone) {
    KyTime read;
    EXPECT_TRUE(fromString("12:30", read));
    EXPECT_EQ(read, KyTime(12, 30, 0.0));
    EXPECT_TRUE(fromString("-1:2:3.5", read));
    EXPECT_EQ(read - KyTime(0.0), -3723.5);
    for (const char* text : {"", "12", "12:60", "12:30:60", "12:30:15.", "12:30:.5", "12:-30", "a:b", "12:30:15:00",
                             "12:30 ", "1e1:00", "12:3.5", "12:30:inf", ":", "--1:00"}) {
        KyTime time(7.0);
        EXPECT_FALSE(fromString(text, time)) << text;
        EXPECT_EQ(time, KyTime(7.0)) << text;
    }
}
