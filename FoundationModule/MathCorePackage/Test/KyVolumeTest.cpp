// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyVolume.h"

#include "KyMathNear.h"

namespace {

constexpr int cMax = std::numeric_limits<int>::max();
constexpr int cMin = std::numeric_limits<int>::min();

const KyVolumed cVolume(KyVec3d(1, 2, 3), KyVec3d(3, 5, 9));

KyVolumed makeInfinite() {
    KyVolumed result;
    result.setInfinite();
    return result;
}

} // namespace

TEST(KyVolumeTest, MeasuresFollowTheCorners) {
    EXPECT_EQ(KyVolumed(KyVec3d(3, 2, 9), KyVec3d(1, 5, 3)), cVolume) << "in any order";
    EXPECT_EQ(cVolume.getCorners()[5], KyVec3d(3, 2, 9));
    EXPECT_EQ(cVolume.getRadius(), 3.5);
    EXPECT_EQ(cVolume.getArea(), 72.0);
    EXPECT_EQ(cVolume.getRect(), KyRectd(1, 2, 2, 3));
    EXPECT_EQ(KyVolumei(KyVec3i(), KyVec3i(5000, 5000, 5000)).getVolume(), std::numeric_limits<int>::max());
}

TEST(KyVolumeTest, NullAndInfiniteDoNotMoveButTakeAPlace) {
    for (const KyVolumed& start : {KyVolumed(), makeInfinite()}) {
        KyVolumed volume = start;
        volume.translate(KyVec3d(1, 1, 1));
        volume.scale(3);
        EXPECT_EQ(volume, start);
        volume.setSize(KyVec3d(2, -2, 2));
        volume.translate(KyVec3d(5, 0, 0));
        volume.scale(2);
        EXPECT_EQ(volume, KyVolumed(KyVec3d(3, -2, -2), KyVec3d(7, 2, 2))) << "about its centre";
        volume = start;
        volume.setCenter(KyVec3d(1, 2, 3));
        EXPECT_EQ(volume, KyVolumed(KyVec3d(1, 2, 3), KyVec3d(1, 2, 3)));
    }
}

TEST(KyVolumeTest, MergingTakesNullAsNeutralAndInfiniteAsAll) {
    KyVolumed volume;
    volume.mergePoint(KyVec3d(1, 5, 3));
    volume.merge(KyVolumed(KyVec3d(3, 2, 9), KyVec3d(3, 2, 9)));
    EXPECT_EQ(volume, cVolume);
    volume.merge(KyVolumed());
    EXPECT_EQ(volume, cVolume);
    volume.merge(makeInfinite());
    volume.merge(cVolume);
    EXPECT_TRUE(volume.isInfinite());
}

TEST(KyVolumeTest, CommonPartsAndContainingIncludeTheSides) {
    KyVolumed common;
    EXPECT_TRUE(cVolume.getIntersects(KyVolumed(KyVec3d(2, 0, 4), KyVec3d(9, 9, 5)), common));
    EXPECT_EQ(common, KyVolumed(KyVec3d(2, 2, 4), KyVec3d(3, 5, 5)));
    EXPECT_TRUE(cVolume.getIntersects(KyVolumed(KyVec3d(3, 2, 3), KyVec3d(4, 5, 9)), common));
    EXPECT_EQ(common.getSize(), KyVec3d(0, 3, 6));
    EXPECT_TRUE(cVolume.contains(KyVec3d(1, 5, 4)));
    EXPECT_TRUE(cVolume.contains(KyVolumed()));
    EXPECT_FALSE(cVolume.contains(KyVolumed(KyVec3d(2, 3, 4), KyVec3d(2, 3, 10))));
    EXPECT_FALSE(cVolume.contains(makeInfinite()));
    EXPECT_FALSE(cVolume.getIntersects(KyVolumed(KyVec3d(3.5, 2, 3), KyVec3d(4, 5, 9)), common));
    EXPECT_EQ(common.getSize(), KyVec3d(0, 3, 6)) << "untouched";
}

TEST(KyVolumeTest, TransformingGivesTheBoundOfTheMovedVolume) {
    const KyMat4d turn(KyQuatd(KyVec3d(0, 0, 1), std::numbers::pi / 2), KyVec3d(10, 0, 0));
    const KyVolumed moved = cVolume.getTransformed(turn);
    EXPECT_TRUE(isNear(moved.getMin(), KyVec3d(5, 1, 3)));
    EXPECT_TRUE(isNear(moved.getMax(), KyVec3d(8, 3, 9)));
    EXPECT_TRUE(KyVolumed().getTransformed(turn).isNull());
    EXPECT_TRUE(makeInfinite().getTransformed(turn).isInfinite());
}

TEST(KyVolumeTest, IntegersStayInTheirRange) {
    struct Row {
        KyVolumei mVolume;
        void (*mChange)(KyVolumei& volume);
        KyVolumei mResult;
    };
    const KyVolumei low(KyVec3i(cMin, 0, 0), KyVec3i(cMin + 10, 1, 1));
    const Row cRows[] = {
        {low, [](KyVolumei& volume) { volume.translate(KyVec3i(-3, cMax, 0)); },
         KyVolumei(KyVec3i(cMin, cMax, 0), KyVec3i(cMin + 7, cMax, 1))},
        {low, [](KyVolumei& volume) { volume.setCenter(KyVec3i(cMax - 5, 0, 0)); },
         KyVolumei(KyVec3i(cMax - 10, 0, 0), KyVec3i(cMax, 1, 1))},
        {low, [](KyVolumei& volume) { volume.setWidth(20); }, KyVolumei(KyVec3i(cMin, 0, 0), KyVec3i(cMin + 15, 1, 1))},
        {KyVolumei(), [](KyVolumei& volume) { volume.setWidth(cMin); },
         KyVolumei(KyVec3i(-cMax / 2, 0, 0), KyVec3i(cMax / 2 + 1, 0, 0))},
        {KyVolumei(KyVec3i(0, 0, 0), KyVec3i(2000000000, 0, 0)), [](KyVolumei& volume) { volume.scale(-3); },
         KyVolumei(KyVec3i(-73741823, 0, 0), KyVec3i(2073741824, 0, 0))},
    };
    for (const Row& row : cRows) {
        KyVolumei changed = row.mVolume;
        row.mChange(changed);
        EXPECT_EQ(changed, row.mResult) << row.mVolume << " became " << changed;
    }
    const KyVolumei wide(KyVec3i(cMin, 0, 0), KyVec3i(cMax, 0, 0));
    EXPECT_EQ(wide.getSize(), KyVec3i(cMax, 0, 0));
    EXPECT_EQ(wide.getRadius(), 2147483647.5);
}
