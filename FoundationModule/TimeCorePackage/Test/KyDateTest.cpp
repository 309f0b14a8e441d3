// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyDate.h"

#include <gtest/gtest.h>
#include <limits>
#include <type_traits>

static_assert(std::is_trivially_copyable_v<KyDate>);
static_assert(alignof(KyDate) <= 8);

TEST(KyDateTest, TheDefaultIsInvalid) {
    const KyDate date;
    EXPECT_FALSE(date.isValid());
    EXPECT_EQ(date.getYear(), 0);
    EXPECT_EQ(date.getMonth(), 0);
    EXPECT_EQ(date.getDay(), 0);
    EXPECT_EQ(date.getJulianDay(), KyDate::cInvalidJulianDay);
    EXPECT_EQ(date.toString(), "");
}

TEST(KyDateTest, DaysThatDoNotExistAreRefused) {
    struct Row {
        int mYear, mMonth, mDay;
        bool mExists;
    };
    constexpr Row cRows[] = {{2024, 2, 29, true},
                             {2023, 2, 29, false},
                             {1900, 2, 29, false},
                             {2000, 2, 29, true},
                             {-1, 2, 29, true},
                             {-5, 2, 29, true},
                             {-4, 2, 29, false},
                             {0, 1, 1, false},
                             {2024, 4, 31, false},
                             {2024, 12, 31, true},
                             {2024, 0, 1, false},
                             {2024, 13, 1, false},
                             {2024, 1, 0, false},
                             {2024, 1, 32, false},
                             {1, 1, 1, true},
                             {2024, 1, -1, false},
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
    struct Row {
        KyDate mDate;
        std::int64_t mJulianDay;
    };
    const Row cRows[] = {{KyDate(2000, 1, 1), 2451545},   {KyDate(1970, 1, 1), 2440588}, {KyDate(2024, 2, 29), 2460370},
                         {KyDate(1858, 11, 17), 2400001}, {KyDate(1, 1, 1), 1721426},    {KyDate(-1, 12, 31), 1721425},
                         {KyDate(-4714, 11, 24), 0},      {KyDate(-4714, 11, 23), -1}};
    for (const Row& row : cRows) {
        EXPECT_EQ(row.mDate.getJulianDay(), row.mJulianDay) << row.mDate;
        EXPECT_EQ(KyDate::fromJulianDay(row.mJulianDay), row.mDate);
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
    EXPECT_EQ(KyDate::fromJulianDay(last).getYear(), std::numeric_limits<int>::max());
    EXPECT_FALSE(KyDate::fromJulianDay(last + 1).isValid());
    const std::int64_t first = KyDate(std::numeric_limits<int>::min(), 1, 1).getJulianDay();
    EXPECT_EQ(KyDate::fromJulianDay(first).getYear(), std::numeric_limits<int>::min());
    EXPECT_FALSE(KyDate::fromJulianDay(first - 1).isValid());
    EXPECT_FALSE(KyDate::fromJulianDay(KyDate::cInvalidJulianDay).isValid());
    EXPECT_FALSE(KyDate::fromJulianDay(std::numeric_limits<std::int64_t>::max()).isValid());
}

TEST(KyDateTest, DatesAreOrdered) {
    const KyDate ordered[] = {KyDate(), KyDate(-44, 3, 15), KyDate(2023, 12, 31), KyDate(2024, 1, 1),
                              KyDate(2024, 1, 2)};
    for (std::size_t i = 0; i + 1 < std::size(ordered); ++i) {
        EXPECT_TRUE(ordered[i] < ordered[i + 1]);
        EXPECT_TRUE(ordered[i] <= ordered[i + 1]);
        EXPECT_TRUE(ordered[i + 1] > ordered[i]);
        EXPECT_FALSE(ordered[i] >= ordered[i + 1]);
        EXPECT_TRUE(ordered[i] <= ordered[i]);
    }
}

TEST(KyDateTest, TextGoesThereAndBack) {
    struct Row {
        KyDate mDate;
        const char* mText;
    };
    const Row cRows[] = {{KyDate(2024, 2, 9), "2024-02-09"},
                         {KyDate(7, 12, 31), "0007-12-31"},
                         {KyDate(-44, 3, 15), "-0044-03-15"},
                         {KyDate(12345, 1, 1), "12345-01-01"},
                         {KyDate(), ""}};
    for (const Row& row : cRows) {
        KyDate read(1999, 9, 9);
        EXPECT_EQ(row.mDate.toString(), row.mText);
        EXPECT_TRUE(fromString(row.mText, read)) << row.mText;
        EXPECT_EQ(read, row.mDate);
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
