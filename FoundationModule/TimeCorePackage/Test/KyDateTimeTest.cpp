// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyDateTime.h"

#include <gtest/gtest.h>
#include <sstream>
#include <type_traits>

static_assert(std::is_trivially_copyable_v<KyDateTime>);

TEST(KyDateTimeTest, TheDateDecidesBeforeTheTime) {
    const KyDateTime ordered[] = {KyDateTime(), KyDateTime(KyDate(2023, 5, 6), KyTime(23, 0, 0.0)),
                                  KyDateTime(KyDate(2024, 1, 1), KyTime(1, 0, 0.0)),
                                  KyDateTime(KyDate(2024, 1, 1), KyTime(1, 0, 0.001))};
    for (std::size_t i = 1; i < std::size(ordered); ++i)
        EXPECT_TRUE(ordered[i - 1] < ordered[i] && ordered[i] > ordered[i - 1] && ordered[i - 1] != ordered[i]);
}

TEST(KyDateTimeTest, TextJoinsBothWithT) {
    for (const KyDateTime& original : {KyDateTime(KyDate(2024, 2, 29), KyTime(12, 30, 0.5)), KyDateTime(),
                                       KyDateTime(KyDate(-44, 3, 15), KyTime(23, 59, 59.999))}) {
        KyDateTime read(KyDate(1999, 9, 9), KyTime(9.0));
        std::ostringstream stream;
        stream << original;
        EXPECT_TRUE(fromString(stream.str(), read)) << stream.str();
        EXPECT_EQ(read, original) << stream.str();
    }
    EXPECT_EQ(KyDateTime().toString(), "T00:00:00.000");
}

TEST(KyDateTimeTest, UnreadableTextLeavesTheValueAlone) {
    for (const char* text : {"", "T", "2024-02-29", "2024-02-29 12:30", "2024-02-30T12:30", "2024-02-29T25", "12:30"}) {
        KyDateTime value(KyDate(1999, 9, 9), KyTime(9.0));
        EXPECT_FALSE(fromString(text, value)) << text;
        EXPECT_EQ(value, KyDateTime(KyDate(1999, 9, 9), KyTime(9.0))) << text;
    }
}
