// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyRect.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

KyRectd makeInfinite() {
    KyRectd result;
    result.setInfinite();
    return result;
}

KyRectd makePoint(double x, double y) {
    KyRectd result;
    result.setPoint(KyVec2d(x, y));
    return result;
}

} // namespace

TEST(KyRectTest, StatesAreToldApart) {
    const std::tuple<KyRectd, int, bool> rows[] = {{KyRectd(0, 0, 0, 0), 0, false},
                                                   {KyRectd(1, 2, 0, 0), 1, true},
                                                   {makePoint(0, 0), 1, true},
                                                   {KyRectd(0, 0, 5, 0), 1, false},
                                                   {makeInfinite(), 2, false}};
    for (const auto& [rect, type, isPoint] : rows) {
        EXPECT_EQ(rect.getType(), type) << rect;
        EXPECT_EQ(rect.isPoint(), isPoint) << rect;
    }
}

TEST(KyRectTest, NullIsNeutralInAMergeButALineIsNot) {
    struct Row {
        KyRectd mFirst, mSecond, mResult;
    };
    const Row cRows[] = {{KyRectd(), KyRectd(5, 5, 1, 1), KyRectd(5, 5, 1, 1)},
                         {KyRectd(5, 5, 1, 1), KyRectd(0, 0, 0, 0), KyRectd(5, 5, 1, 1)},
                         {KyRectd(), KyRectd(), KyRectd()},
                         {KyRectd(5, 5, 1, 1), KyRectd(2, 3, 0, 8), KyRectd(2, 3, 4, 8)},
                         {KyRectd(5, 5, 1, 1), makePoint(0, 0), KyRectd(0, 0, 6, 6)},
                         {KyRectd(5, 5, -2, -3), KyRectd(6, 6, 1, 1), KyRectd(3, 2, 4, 5)},
                         {KyRectd(5, 5, 1, 1), makeInfinite(), makeInfinite()},
                         {makeInfinite(), KyRectd(5, 5, 1, 1), makeInfinite()}};
    for (const Row& row : cRows) {
        KyRectd merged = row.mFirst;
        merged.merge(row.mSecond);
        EXPECT_EQ(merged, row.mResult) << row.mFirst << " and " << row.mSecond << " give " << merged;
    }
}

TEST(KyRectTest, CommonPartsIncludeTheEdges) {
    struct Row {
        KyRectd mFirst, mSecond;
        bool mMeets;
        KyRectd mCommon;
    };
    const Row cRows[] = {{KyRectd(0, 0, 4, 4), KyRectd(2, 1, 4, 1), true, KyRectd(2, 1, 2, 1)},
                         {KyRectd(0, 0, 4, 4), KyRectd(4, 0, 4, 4), true, KyRectd(4, 0, 0, 4)},
                         {KyRectd(0, 0, 4, 4), KyRectd(-4, -4, 4, 4), true, makePoint(0, 0)},
                         {KyRectd(0, 0, 4, 4), KyRectd(2, 6, 0, -4), true, KyRectd(2, 2, 0, 2)},
                         {KyRectd(0, 0, 4, 4), KyRectd(5, 0, 4, 4), false, KyRectd()},
                         {KyRectd(0, 0, 4, 4), KyRectd(), false, KyRectd()},
                         {KyRectd(0, 0, 4, 4), makeInfinite(), true, KyRectd(0, 0, 4, 4)},
                         {makeInfinite(), KyRectd(), false, KyRectd()}};
    for (const Row& row : cRows) {
        KyRectd common(9, 9, 9, 9);
        EXPECT_EQ(row.mFirst.getIntersects(row.mSecond, common), row.mMeets);
        EXPECT_EQ(common, row.mMeets ? row.mCommon : KyRectd(9, 9, 9, 9)) << row.mFirst << " and " << row.mSecond;
        EXPECT_EQ(row.mSecond.intersects(row.mFirst), row.mMeets);
    }
}

TEST(KyRectTest, PointsOnTheEdgeAreInside) {
    const KyRecti rect(1, 2, 3, -2);
    for (const KyVec2i& inside : {KyVec2i(1, 2), KyVec2i(4, 0), KyVec2i(2, 1)})
        EXPECT_TRUE(rect.contains(inside)) << inside;
    for (const KyVec2i& outside : {KyVec2i(0, 2), KyVec2i(5, 0), KyVec2i(2, 3), KyVec2i(2, -1)})
        EXPECT_FALSE(rect.contains(outside)) << outside;
    EXPECT_FALSE(KyRecti().contains(KyVec2i()));
}

TEST(KyRectTest, MeasuresFollowTheMembers) {
    EXPECT_EQ(KyRectd(1, 2, 6, 8).getRadius(), 5.0);
    EXPECT_EQ(KyRectd(0, 0, -6, 8).getArea(), 48.0);
    EXPECT_EQ(KyRecti(0, 0, 100000, 100000).getArea(), std::numeric_limits<int>::max());
    EXPECT_EQ(makeInfinite().getArea(), std::numeric_limits<double>::infinity());
}

TEST(KyRectTest, CornersMayComeInAnyOrderAndScalingKeepsTheCentre) {
    KyRectd rect(1, 2, 6, 8);
    rect.setMinMax(KyVec2d(5, 1), KyVec2d(2, 3));
    EXPECT_EQ(rect, KyRectd(2, 1, 3, 2));
    rect.scale(2);
    EXPECT_EQ(rect, KyRectd(0.5, 0, 6, 4));
}

TEST(KyRectTest, InfinityHasAText) {
    KyRectd rect;
    EXPECT_EQ(makeInfinite().toString(), "infinite");
    EXPECT_TRUE(fromString("infinite", rect));
    EXPECT_TRUE(rect.isInfinite());
}
