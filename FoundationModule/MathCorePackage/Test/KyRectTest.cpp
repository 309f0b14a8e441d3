// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyRect.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>

namespace {

constexpr int cMax = std::numeric_limits<int>::max();
constexpr int cMin = std::numeric_limits<int>::min();

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

TEST(KyRectTest, MeasuresFollowTheMembers) {
    EXPECT_EQ(KyRectd(1, 2, 6, 8).getRadius(), 5.0);
    EXPECT_TRUE(KyRecti(1, 2, 3, -2).contains(KyVec2i(4, 0))) << "on the edge";
    EXPECT_FALSE(KyRecti(1, 2, 3, -2).contains(KyVec2i(2, 3)));
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

TEST(KyRectTest, IntegersStayInTheirRange) {
    struct Row {
        KyRecti mRect;
        void (*mChange)(KyRecti& rect);
        KyRecti mResult;
    };
    const Row cRows[] = {
        {KyRecti(0, 0, 2000000000, 1), [](KyRecti& rect) { rect.scale(3); }, KyRecti(-73741823, -1, cMax, 3)},
        {KyRecti(0, 0, -2000000000, 1), [](KyRecti& rect) { rect.scale(3); }, KyRecti(73741824, -1, cMin, 3)},
        {KyRecti(cMax - 1, cMin, 1, 1), [](KyRecti& rect) { rect.translate(KyVec2i(5, -5)); },
         KyRecti(cMax, cMin, 1, 1)},
        {KyRecti(), [](KyRecti& rect) { rect.setMinMax(KyVec2i(cMin, 0), KyVec2i(cMax, 4)); },
         KyRecti(cMin, 0, cMax, 4)},
        {KyRecti(cMin, 0, 1, 1), [](KyRecti& rect) { rect.merge(KyRecti(5, 5, 1, 1)); }, KyRecti(cMin, 0, cMax, 6)},
        {KyRecti(-1, 7, 1, 1), [](KyRecti& rect) { rect.setWidth(cMin); }, KyRecti(-1, 7, cMin, 1)},
    };
    for (const Row& row : cRows) {
        KyRecti changed = row.mRect;
        row.mChange(changed);
        EXPECT_EQ(changed, row.mResult) << row.mRect << " became " << changed;
    }
    EXPECT_EQ(KyRecti(cMax, 0, 10, 10).getCenter(), KyVec2i(cMax, 5));
    EXPECT_TRUE(KyRecti(2147483600, 0, 100, 10).contains(KyVec2i(2147483640, 5)));
    EXPECT_EQ(KyRecti(-1, 7, cMin, 1).getMin(), KyVec2i(cMin, 7));
    KyRecti infinite;
    infinite.setInfinite();
    EXPECT_TRUE(infinite.contains(KyVec2i(cMin, cMin)));
}

TEST(KyRectTest, InfinityHasAText) {
    KyRectd rect;
    EXPECT_EQ(makeInfinite().toString(), "infinite");
    EXPECT_TRUE(fromString("infinite", rect));
    EXPECT_TRUE(rect.isInfinite());
}
