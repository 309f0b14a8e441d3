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
    constexpr std::pair<const char*, bool> cCases[] = {
        {"wheel", true}, {"_1", true},   {"A9_z", true}, {"", false},    {"9a", false},
        {"a-b", false},  {"a b", false}, {" a", false},  {"a\n", false}, {"a\xC3\xA9", false},
    };
    const KyRegexp name("[a-zA-Z_][a-zA-Z0-9_]*");
    for (const auto& [text, matches] : cCases)
        EXPECT_EQ(name.exactMatch(text), matches) << text;
    EXPECT_FALSE(name.exactMatch(std::string("ab\0", 3)));
    EXPECT_TRUE(gReports.empty());
}

TEST_F(KyRegexpTest, AnInvalidExpressionIsReportedOnceAndMatchesNothing) {
    for (const char* expression : {"(", "[a", "*", "a{2,1}", "\\"}) {
        gReports.clear();
        const KyRegexp broken(expression);
        EXPECT_FALSE(broken.isValid()) << expression;
        EXPECT_FALSE(broken.exactMatch("")) << expression;
        EXPECT_EQ(gReports.size(), 1U) << expression;
    }
}

TEST_F(KyRegexpTest, VeryLongTextsAndNestedGroupsDoNotExhaustTheStack) {
    EXPECT_TRUE(KyRegexp("[a-z]*").exactMatch(std::string(KyRegexp::cMaxTextLength, 'a')));
    const KyRegexp nested("(((((((((a|b)*)*)*)*)*)*)*)*)*");
    EXPECT_TRUE(nested.exactMatch(std::string(KyRegexp::cMaxTextLength / 10, 'a')));
    EXPECT_TRUE(gReports.empty());
    EXPECT_FALSE(nested.exactMatch(std::string(10'000'000, 'a')));
    EXPECT_EQ(gReports.size(), 1U);
}
