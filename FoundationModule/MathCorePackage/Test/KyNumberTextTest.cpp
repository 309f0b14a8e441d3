// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyNumberText.h"

#include <array>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <locale>

namespace {

constexpr double cInfinity = std::numeric_limits<double>::infinity();

std::string format(double value, int precision) {
    return KyNumberText::format(std::array<double, 1>{value}, precision);
}

class CommaFacet : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

} // namespace

TEST(KyNumberTextTest, NumbersReadLikePrintfInTheCLocale) {
    for (const double value : {0.0, -0.0, 0.1, 100000.0, 1234567.0, 1e-5, -2.5, 1.0 / 3.0, 1e300, 5e-324, cInfinity})
        for (const int precision : {1, 2, 6, 10, 17}) {
            std::array<char, 64> expected;
            std::snprintf(expected.data(), expected.size(), "%.*g", precision, value);
            EXPECT_EQ(format(value, precision), expected.data());
        }
    EXPECT_EQ(format(2.0 / 3.0, -5), "0.7");
    EXPECT_EQ(format(0.1, 100), "0.10000000000000001");
    EXPECT_EQ(format(-std::nan(""), 6), "nan");
    EXPECT_EQ(KyNumberText::format(std::array<int, 2>{1234567, -2147483647 - 1}, 3), "1234567 -2147483648");
}

TEST(KyNumberTextTest, ReadingIsStrictAboutCountAndCharacters) {
    constexpr std::pair<const char*, bool> cRows[] = {
        {"1 2", true},    {"  1\t2\n", true}, {"+1 -2", true},   {"inf nan", true}, {"1e3 .5", true},
        {"1", false},     {"1 2 3", false},   {"1, 2", false},   {"1 2x", false},   {"0,5 1", false},
        {"+-1 2", false}, {"", false},        {"1e999 2", false}};
    for (const auto& [text, isRead] : cRows) {
        std::array<double, 2> values{7.0, 8.0};
        EXPECT_EQ(KyNumberText::parse(text, values), isRead) << text;
        EXPECT_EQ(values[0] == 7.0 && values[1] == 8.0, !isRead) << text;
    }
    int value = 7;
    EXPECT_FALSE(KyNumberText::parse("1.5", {&value, 1}));
    EXPECT_FALSE(KyNumberText::parse("2147483648", {&value, 1}));
    EXPECT_EQ(value, 7);
}

/// Where digits and powers of ten are few enough to multiply, arithmetic wider than a double rounds these twice.
TEST(KyNumberTextTest, NumbersReadAsTheNearestThereIs) {
    constexpr std::pair<const char*, double> cRows[] = {{"-2.652740330370688e+33", -2.652740330370688e+33},
                                                        {"6.841438326049714e+25", 6.841438326049714e+25}};
    for (const auto& [text, number] : cRows) {
        double value = 0.0;
        EXPECT_TRUE(KyNumberText::parse(text, {&value, 1}));
        EXPECT_EQ(value, number) << text;
    }
}

TEST(KyNumberTextTest, TheProcessLocaleChangesNothing) {
    // The facet stands for a system that has no German locale installed.
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    const std::locale before = std::locale::global(std::locale(std::locale(), new CommaFacet));
    double value = 0.0;
    EXPECT_EQ(format(1234.5, 6), "1234.5");
    EXPECT_TRUE(KyNumberText::parse("1234.5", {&value, 1}));
    EXPECT_EQ(value, 1234.5);
    std::locale::global(before);
    std::setlocale(LC_NUMERIC, "C");
}
