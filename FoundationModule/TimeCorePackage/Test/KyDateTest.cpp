// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyDate.h"

#include <gtest/gtest.h>
#include <limits>
#include <type_traits>

static_assert(std::is_trivially_copyable_v<KyDate>);
static_assert(alignof(KyDate) <= 8);

TEST(KyDateTest, DaysThatDoNotExistAreRefused) {
    struct Row {
        int mYear, mMonth, mDay;
        bool mExists;
    };
    constexpr Row cRows[] = {{2024, 2, 29, true},
                             {2023, 2, 29, false},
                             {1900, 2, 29, false},
                             {-1, 2, 29, true},
                             {-4, 2, 29, false},
                             {0, 1, 1, false},
                             {2024, 4, 31, false},
                             {2024, 13, 1, false},
                             {2024, 1, 32, false},
                             {std::numeric_limits<int>::min(), 1, 1, true},
                             {std::numeric_limits<int>::max(), 12, 31, true}};
    for (const Row& row : cRows) {
        KyDate date(1999, 9, 9);
        EXPECT_EQ(date.setYMD(row.mYear, row.mMonth, row.mDay), row.mExists) << row.mYear << " " << row.mMonth;
        EXPECT_EQ(date, row.mExists ? KyDate(row.mYear, row.mMonth, row.mDay) : KyDate(1999, 9, 9));
        EXPECT_EQ(KyDate(row.mYear, row.mMonth, row.mDay).isValid(), row.mExists);
    }
}

TEST(KyDateTest, JulianDaysAreKnown) {
    const std::pair<KyDate, std::int64_t> cRows[] = {{KyDate(2000, 1, 1), 2451545},  {KyDate(1970, 1, 1), 2440588},
                                                     {KyDate(2024, 2, 29), 2460370}, {KyDate(1858, 11, 17), 2400001},
                                                     {KyDate(1, 1, 1), 1721426},     {KyDate(-1, 12, 31), 1721425},
                                                     {KyDate(-4714, 11, 24), 0},     {KyDate(-4714, 11, 23), -1}};
    for (const auto& [date, julianDay] : cRows) {
        EXPECT_EQ(date.getJulianDay(), julianDay) << date;
        EXPECT_EQ(KyDate::fromJulianDay(julianDay), date);
    }
}

TEST(KyDateTest, EveryDayOfFourCenturiesFollowsTheOneBefore) {
    KyDate before = KyDate::fromJulianDay(1721425 - 1000);
    for (std::int64_t day = 1721425 - 999; day < 1721425 + 146097; ++day) {
        const KyDate date = KyDate::fromJulianDay(day);
        ASSERT_EQ(date.getJulianDay(), day);
        const bool isNextDay = date.getMonth() == before.getMonth() && date.getDay() == before.getDay() + 1;
        ASSERT_TRUE(isNextDay || date.getDay() == 1) << before << " " << date;
        ASSERT_TRUE(before < date);
        before = date;
    }
}

TEST(KyDateTest, JulianDaysBeyondAnIntYearAreInvalid) {
    const std::int64_t last = KyDate(std::numeric_limits<int>::max(), 12, 31).getJulianDay();
    EXPECT_FALSE(KyDate::fromJulianDay(last + 1).isValid());
    const std::int64_t first = KyDate(std::numeric_limits<int>::min(), 1, 1).getJulianDay();
    EXPECT_FALSE(KyDate::fromJulianDay(first - 1).isValid());
    EXPECT_FALSE(KyDate::fromJulianDay(std::numeric_limits<std::int64_t>::max()).isValid());
}

TEST(KyDateTest, TextGoesThereAndBack) {
    const std::pair<KyDate, const char*> cRows[] = {{KyDate(2024, 2, 9), "2024-02-09"},
                                                    {KyDate(7, 12, 31), "0007-12-31"},
                                                    {KyDate(-44, 3, 15), "-0044-03-15"},
                                                    {KyDate(12345, 1, 1), "12345-01-01"},
                                                    {KyDate(), ""}};
    for (const auto& [date, text] : cRows) {
        KyDate read(1999, 9, 9);
        EXPECT_EQ(date.toString(), text);
        EXPECT_TRUE(fromString(text, read)) << text;
        EXPECT_EQ(read, date);
    }
}

TEST(KyDateTest, UnreadableTextLeavesTheDateAlone) {
    for (const char* text : {"2024", "2024-2-9", "2024-02-30", "2024/02/09", "24-02-09", "2024-02-09T", " 2024-02-09",
                             "--2024-02-09", "2024-02--9", "99999999999-01-01", "0000-01-01", "-"}) {
        KyDate date(1999, 9, 9);
        EXPECT_FALSE(fromString(text, date)) << text;
        EXPECT_EQ(date, KyDate(1999, 9, 9)) << text;
    }
}
