// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyVec2.h"
#include "KyVec3.h"

#include <gtest/gtest.h>

namespace {

constexpr int cMax = std::numeric_limits<int>::max();
constexpr int cMin = std::numeric_limits<int>::min();
constexpr double cInfinity = std::numeric_limits<double>::infinity();

} // namespace

TEST(KyVecTest, ArithmeticWorksComponentByComponent) {
    const KyVec3d a(1, 2, 3), b(4, -5, 6);
    EXPECT_EQ(a + b, KyVec3d(5, -3, 9));
    EXPECT_EQ(b - a, KyVec3d(3, -7, 3));
    EXPECT_EQ(a * b, KyVec3d(4, -10, 18));
    EXPECT_EQ(-a / 2.0, KyVec3d(-0.5, -1, -1.5));
    const KyVec2f c(1, 2), d(3, -4);
    EXPECT_EQ(c + d, KyVec2f(4, -2));
    EXPECT_EQ(c * d - d, KyVec2f(0, -4));
    EXPECT_EQ(2.0f * -c / 4.0f, KyVec2f(-0.5f, -1.0f));
    EXPECT_EQ(KyVec3i(1, 2, 3)[99], 3);
}

TEST(KyVecTest, ProductsFollowTheRightHandRule) {
    EXPECT_EQ(KyVec3d(1, 2, 3).cross(KyVec3d(4, 5, 6)), KyVec3d(-3, 6, -3));
    EXPECT_EQ(KyVec3f(1, 2, 3).dot(KyVec3f(4, -5, 6)), 12.0);
    EXPECT_EQ(KyVec2d(1, 0).cross(KyVec2d(0, 1)), 1.0);
    EXPECT_EQ(KyVec2i(100000, 100000).dot(KyVec2i(100000, 0)), 1e10);
}

TEST(KyVecTest, LengthNeitherOverflowsNorVanishes) {
    EXPECT_DOUBLE_EQ(KyVec2d(3e200, 4e200).length(), 5e200);
    EXPECT_DOUBLE_EQ(KyVec3d(2e-200, 3e-200, 6e-200).length(), 7e-200);
}

TEST(KyVecTest, NormalizingMakesTheLengthOneOrIsRefused) {
    KyVec3d a(2, 3, 6);
    EXPECT_TRUE(a.normalize());
    EXPECT_EQ(a, KyVec3d(2.0 / 7.0, 3.0 / 7.0, 6.0 / 7.0));
    KyVec2d tiny(0.0, -5e-324);
    EXPECT_TRUE(tiny.normalize());
    EXPECT_EQ(tiny, KyVec2d(0, -1));
    KyVec3d null;
    EXPECT_FALSE(null.normalize());
    KyVec2d infinite(cInfinity, 1.0);
    EXPECT_FALSE(infinite.normalize());
    EXPECT_EQ(infinite, KyVec2d(cInfinity, 1.0));
}

TEST(KyVecTest, DividingIntegersByZeroGivesZero) {
    EXPECT_EQ(KyVec3i(1, -2, 3) / 0, KyVec3i());
    EXPECT_EQ(KyVec2i(std::numeric_limits<int>::min(), 4) / -1, KyVec2i(std::numeric_limits<int>::max(), -4));
    EXPECT_EQ(KyVec2d(1, -1) / 0.0, KyVec2d(cInfinity, -cInfinity));
}

TEST(KyVecTest, IntegersStayInTheirRange) {
    const KyVec2i ends(cMin, cMax);
    const std::pair<KyVec2i, KyVec2i> rows[] = {
        {ends + ends, ends},
        {ends - KyVec2i(1, -1), ends},
        {KyVec2i(1, -5) - ends, KyVec2i(cMax, cMin)},
        {ends * 2, ends},
        {ends * -1, KyVec2i(cMax, -cMax)},
        {ends * ends, KyVec2i(cMax, cMax)},
        {-ends, KyVec2i(cMax, -cMax)},
    };
    for (const auto& [result, expected] : rows)
        EXPECT_EQ(result, expected);
    EXPECT_EQ(-KyVec3i(cMin, 1, cMax), KyVec3i(cMax, -1, -cMax));
    EXPECT_EQ(KyVec3i(cMin, 5, 0) - KyVec3i(1, 2, cMin), KyVec3i(cMin, 3, cMax));
    EXPECT_EQ(KyVec3i(cMax, cMax, 0).cross(KyVec3i(cMax, cMax, 1)), KyVec3i(cMax, -cMax, 0)) << "limited at the end";
    EXPECT_EQ(KyVec3i(cMin, cMin, 0).cross(KyVec3i(cMax, cMin, 0)).z, cMax);
}

TEST(KyVecTest, ConversionsTruncateAndStayInRange) {
    EXPECT_EQ(KyVec3i(KyVec3d(1.9, -1.9, 1e10)), KyVec3i(1, -1, std::numeric_limits<int>::max()));
    EXPECT_EQ(KyVec2i(KyVec2d(std::nan(""), -cInfinity)), KyVec2i(0, std::numeric_limits<int>::min()));
}
