// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyRegexp.h"

#include "KyException.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
std::vector<std::string> gReports;

class KyRegexpTest : public ::testing::Test {
protected:
    void SetUp() override {
        gReports.clear();
        KyException::setReportHandler([](const std::string& text) { gReports.push_back(text); });
    }
    void TearDown() override { KyException::setReportHandler(nullptr); }
};
} // namespace

TEST_F(KyRegexpTest, OnlyTheWholeTextMatches) {
    struct Case {
        const char* text;
        bool matches;
    };
    constexpr Case cCases[] = {
        {"wheel", true}, {"_1", true},   {"A9_z", true}, {"", false},    {"9a", false},
        {"a-b", false},  {"a b", false}, {" a", false},  {"a\n", false}, {"a\xC3\xA9", false},
    };
    const KyRegexp name("[a-zA-Z_][a-zA-Z0-9_]*");
    for (const auto& [text, matches] : cCases)
        EXPECT_EQ(name.exactMatch(text), matches) << text;
    EXPECT_TRUE(gReports.empty());
}

TEST_F(KyRegexpTest, AZeroByteIsPartOfTheText) {
    EXPECT_FALSE(KyRegexp("ab").exactMatch(std::string("ab\0", 3)));
}

TEST_F(KyRegexpTest, AnInvalidExpressionIsReportedOnceAndMatchesNothing) {
    for (const char* expression : {"(", "[a", "*", "a{2,1}", "\\"}) {
        gReports.clear();
        const KyRegexp broken(expression);
        EXPECT_FALSE(broken.isValid()) << expression;
        EXPECT_FALSE(broken.exactMatch("a")) << expression;
        EXPECT_FALSE(broken.exactMatch("")) << expression;
        EXPECT_EQ(gReports.size(), 1U) << expression;
    }
}

TEST_F(KyRegexpTest, TheLongestTextMatchesAndALongerOneIsReported) {
    const KyRegexp name("[a-z]*");
    EXPECT_TRUE(name.exactMatch(std::string(KyRegexp::cMaxTextLength, 'a')));
    EXPECT_TRUE(gReports.empty());
    EXPECT_FALSE(name.exactMatch(std::string(KyRegexp::cMaxTextLength + 1, 'a')));
    EXPECT_EQ(gReports.size(), 1U);
}

TEST_F(KyRegexpTest, VeryLongTextsAndNestedGroupsDoNotExhaustTheStack) {
    const KyRegexp nested("(((((((((a|b)*)*)*)*)*)*)*)*)*");
    EXPECT_TRUE(nested.exactMatch(std::string(KyRegexp::cMaxTextLength / 10, 'a')));
    EXPECT_FALSE(nested.exactMatch(std::string(10'000'000, 'a')));
}
