// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyRect.h"

#include <gtest/gtest.h>

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
    struct Row {
        KyRectd mRect;
        int mType;
        bool mIsPoint;
    };
    const Row cRows[] = {{KyRectd(), 0, false},           {KyRectd(0, 0, 0, 0), 0, false},
                         {KyRectd(1, 2, 3, 4), 1, false}, {KyRectd(1, 2, 0, 0), 1, true},
                         {KyRectd(0, 0, 5, 0), 1, false}, {makePoint(0, 0), 1, true},
                         {makeInfinite(), 2, false}};
    for (const Row& row : cRows) {
        EXPECT_EQ(row.mRect.getType(), row.mType) << row.mRect;
        EXPECT_EQ(row.mRect.isNull(), row.mType == 0);
        EXPECT_EQ(row.mRect.isFinite(), row.mType == 1);
        EXPECT_EQ(row.mRect.isInfinite(), row.mType == 2);
        EXPECT_EQ(row.mRect.isPoint(), row.mIsPoint);
    }
}

TEST(KyRectTest, WritingAMemberMakesANullRectangleFinite) {
    KyRectd rect;
    rect.width = 3.0;
    EXPECT_TRUE(rect.isFinite());
    EXPECT_EQ(rect, KyRectd(0, 0, 3, 0));
}

TEST(KyRectTest, StatesAreSet) {
    KyRectd rect(1, 2, 3, 4);
    rect.setNull();
    EXPECT_EQ(rect, KyRectd());
    rect.setFinite();
    EXPECT_TRUE(rect.isPoint());
    rect.setInfinite();
    rect.setWidth(2.0);
    EXPECT_EQ(rect, KyRectd(0, 0, 2, 0));
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
                         {makeInfinite(), makeInfinite(), true, makeInfinite()},
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
    EXPECT_TRUE(makeInfinite().contains(KyVec2d(1e300, -1e300)));
}

TEST(KyRectTest, MeasuresFollowTheMembers) {
    const KyRectd rect(1, 2, 6, 8);
    EXPECT_EQ(rect.getSize(), KyVec2d(6, 8));
    EXPECT_EQ(rect.getCenter(), KyVec2d(4, 6));
    EXPECT_EQ(rect.getRadius(), 5.0);
    EXPECT_EQ(rect.getArea(), 48.0);
    EXPECT_EQ(KyRectd(0, 0, -6, 8).getArea(), 48.0);
    EXPECT_EQ(KyRecti(0, 0, 100000, 100000).getArea(), std::numeric_limits<int>::max());
    EXPECT_EQ(KyRectd().getRadius(), 0.0);
    EXPECT_EQ(makeInfinite().getArea(), std::numeric_limits<double>::infinity());
    EXPECT_EQ(makeInfinite().getWidth(), std::numeric_limits<double>::infinity());
}

TEST(KyRectTest, SettersChangeOneThing) {
    KyRectd rect(1, 2, 6, 8);
    rect.setOrigin(KyVec2d(0, 0));
    EXPECT_EQ(rect, KyRectd(0, 0, 6, 8));
    rect.setHeight(3);
    EXPECT_EQ(rect, KyRectd(0, 0, 6, 3));
    rect.setSize(KyVec2d(1, 2));
    EXPECT_EQ(rect, KyRectd(KyVec2d(), KyVec2d(1, 2)));
    rect.setMinMax(KyVec2d(5, 1), KyVec2d(2, 3));
    EXPECT_EQ(rect, KyRectd(2, 1, 3, 2));
}

TEST(KyRectTest, ScalingKeepsTheCentre) {
    KyRectd rect(1, 2, 6, 8);
    rect.scale(0.5);
    EXPECT_EQ(rect, KyRectd(2.5, 4, 3, 4));
    rect.translate(KyVec2d(1, -1));
    EXPECT_EQ(rect, KyRectd(3.5, 3, 3, 4));
}

TEST(KyRectTest, NullAndInfiniteDoNotMove) {
    for (KyRectd rect : {KyRectd(), makeInfinite()}) {
        const KyRectd before = rect;
        rect.translate(KyVec2d(1, 1));
        rect.scale(3.0);
        EXPECT_EQ(rect, before);
    }
}

TEST(KyRectTest, InfinityHasAText) {
    KyRectd rect;
    EXPECT_EQ(makeInfinite().toString(), "infinite");
    EXPECT_TRUE(fromString("infinite", rect));
    EXPECT_TRUE(rect.isInfinite());
    EXPECT_TRUE(fromString("0 0 0 0", rect));
    EXPECT_TRUE(rect.isNull());
}
