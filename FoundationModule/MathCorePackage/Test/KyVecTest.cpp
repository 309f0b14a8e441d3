// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyVec2.h"
#include "KyVec3.h"

#include <gtest/gtest.h>

namespace {

constexpr double cInfinity = std::numeric_limits<double>::infinity();

} // namespace

TEST(KyVecTest, ArithmeticWorksComponentByComponent) {
    const KyVec3d a(1, 2, 3), b(4, -5, 6);
    EXPECT_EQ(a + b, KyVec3d(5, -3, 9));
    EXPECT_EQ(a - b, KyVec3d(-3, 7, -3));
    EXPECT_EQ(a * b, KyVec3d(4, -10, 18));
    EXPECT_EQ(a * 2.0, KyVec3d(2, 4, 6));
    EXPECT_EQ(2.0 * a, a * 2.0);
    EXPECT_EQ(a / 2.0, KyVec3d(0.5, 1, 1.5));
    EXPECT_EQ(-a, KyVec3d(-1, -2, -3));
    const KyVec2f c(1, 2), d(3, -4);
    EXPECT_EQ(c + d, KyVec2f(4, -2));
    EXPECT_EQ(c - d, KyVec2f(-2, 6));
    EXPECT_EQ(c * d, KyVec2f(3, -8));
    EXPECT_EQ(2.0f * c / 4.0f, KyVec2f(0.5f, 1.0f));
    EXPECT_EQ(-c, KyVec2f(-1, -2));
}

TEST(KyVecTest, CompoundAssignmentChangesTheVector) {
    KyVec3i a(2, 4, 6);
    EXPECT_EQ(a += KyVec3i(1, 1, 1), KyVec3i(3, 5, 7));
    EXPECT_EQ(a -= KyVec3i(1, 2, 3), KyVec3i(2, 3, 4));
    EXPECT_EQ(a *= 3, KyVec3i(6, 9, 12));
    EXPECT_EQ(a /= 2, KyVec3i(3, 4, 6));
    EXPECT_EQ(a, KyVec3i(3, 4, 6));
}

TEST(KyVecTest, ProductsFollowTheRightHandRule) {
    EXPECT_EQ(KyVec3d(1, 0, 0).cross(KyVec3d(0, 1, 0)), KyVec3d(0, 0, 1));
    EXPECT_EQ(KyVec3d(1, 2, 3).cross(KyVec3d(4, 5, 6)), KyVec3d(-3, 6, -3));
    EXPECT_EQ(KyVec3f(1, 2, 3).dot(KyVec3f(4, -5, 6)), 12.0);
    EXPECT_EQ(KyVec2d(1, 0).cross(KyVec2d(0, 1)), 1.0);
    EXPECT_EQ(KyVec2i(2, 3).cross(KyVec2i(5, 7)), -1.0);
    EXPECT_EQ(KyVec2i(100000, 100000).dot(KyVec2i(100000, 0)), 1e10);
}

TEST(KyVecTest, LengthNeitherOverflowsNorVanishes) {
    EXPECT_EQ(KyVec2i(3, 4).length(), 5.0);
    EXPECT_EQ(KyVec3d(2, 3, 6).length(), 7.0);
    EXPECT_DOUBLE_EQ(KyVec2d(3e200, 4e200).length(), 5e200);
    EXPECT_DOUBLE_EQ(KyVec3d(2e-200, 3e-200, 6e-200).length(), 7e-200);
}

TEST(KyVecTest, NormalizingMakesTheLengthOne) {
    KyVec3d a(2, 3, 6);
    EXPECT_TRUE(a.normalize());
    EXPECT_EQ(a, KyVec3d(2.0 / 7.0, 3.0 / 7.0, 6.0 / 7.0));
    KyVec2d tiny(0.0, -5e-324);
    EXPECT_TRUE(tiny.normalize());
    EXPECT_EQ(tiny, KyVec2d(0, -1));
    KyVec2i whole(3, 4);
    EXPECT_TRUE(whole.normalize());
    EXPECT_EQ(whole, KyVec2i(1, 1));
}

TEST(KyVecTest, NormalizingRefusesNullAndInfiniteVectors) {
    KyVec3d null;
    EXPECT_FALSE(null.normalize());
    EXPECT_EQ(null, KyVec3d(0, 0, 0));
    KyVec2d infinite(cInfinity, 1.0);
    EXPECT_FALSE(infinite.normalize());
    EXPECT_EQ(infinite, KyVec2d(cInfinity, 1.0));
    KyVec2i nullInteger;
    EXPECT_FALSE(nullInteger.normalize());
}

TEST(KyVecTest, NullMeansExactlyZero) {
    EXPECT_TRUE(KyVec3d().isNull());
    EXPECT_TRUE(KyVec2d(-0.0, 0.0).isNull());
    EXPECT_FALSE(KyVec3d(0, 0, 1e-300).isNull());
    EXPECT_FALSE(KyVec2i(0, 1).isNull());
}

TEST(KyVecTest, FiniteMeansNeitherInfiniteNorNaN) {
    EXPECT_TRUE(KyVec3d(1, 2, 3).isFinite());
    EXPECT_FALSE(KyVec3d(1, 2, cInfinity).isFinite());
    EXPECT_FALSE(KyVec2d(std::nan(""), 0).isFinite());
}

TEST(KyVecTest, IndicesReachTheComponents) {
    KyVec3d a(1, 2, 3);
    EXPECT_EQ(a[0], 1.0);
    EXPECT_EQ(a[1], 2.0);
    EXPECT_EQ(a[2], 3.0);
    EXPECT_EQ(a[99], 3.0);
    a[1] = 7.0;
    EXPECT_EQ(a, KyVec3d(1, 7, 3));
    KyVec2f b(1, 2);
    b[0] = 5.0f;
    EXPECT_EQ(b, KyVec2f(5, 2));
}

TEST(KyVecTest, DividingIntegersByZeroGivesZero) {
    EXPECT_EQ(KyVec3i(1, -2, 3) / 0, KyVec3i());
    EXPECT_EQ(KyVec2i(std::numeric_limits<int>::min(), 4) / -1, KyVec2i(std::numeric_limits<int>::max(), -4));
    EXPECT_EQ(KyVec2d(1, -1) / 0.0, KyVec2d(cInfinity, -cInfinity));
}

TEST(KyVecTest, ConversionsTruncateAndStayInRange) {
    EXPECT_EQ(KyVec3i(KyVec3d(1.9, -1.9, 1e10)), KyVec3i(1, -1, std::numeric_limits<int>::max()));
    EXPECT_EQ(KyVec2i(KyVec2d(std::nan(""), -cInfinity)), KyVec2i(0, std::numeric_limits<int>::min()));
    EXPECT_EQ(KyVec3d(KyVec3i(1, 2, 3)), KyVec3d(1, 2, 3));
    EXPECT_EQ(KyVec2f(KyVec2d(0.5, 0.25)), KyVec2f(0.5f, 0.25f));
}

TEST(KyVecTest, TextTakesAPrecision) {
    EXPECT_EQ(KyVec3d(1.0 / 3.0, 1e6, -0.5).toString(), "0.333333 1e+06 -0.5");
    EXPECT_EQ(KyVec2d(1.0 / 3.0, 2).toString(3), "0.333 2");
    EXPECT_EQ(KyVec2i(1234567, -1).toString(), "1234567 -1");
}
