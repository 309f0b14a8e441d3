// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyVolume.h"

#include "KyMathNear.h"

namespace {

const KyVolumed cVolume(KyVec3d(1, 2, 3), KyVec3d(3, 5, 9));

KyVolumed makeInfinite() {
    KyVolumed result;
    result.setInfinite();
    return result;
}

} // namespace

TEST(KyVolumeTest, StatesAreToldApart) {
    KyVolumed volume;
    EXPECT_TRUE(volume.isNull() && volume.isEmpty() && !volume.isFinite() && !volume.isPoint());
    volume.setPoint(KyVec3d());
    EXPECT_TRUE(volume.isFinite() && volume.isPoint() && !volume.isEmpty());
    volume.setInfinite();
    EXPECT_TRUE(volume.isInfinite() && !volume.isFinite() && !volume.isPoint());
    EXPECT_TRUE(volume.getRect().isInfinite() && KyVolumed().getRect().isNull());
    volume.state = 77;
    EXPECT_EQ(volume.getType(), 1);
}

TEST(KyVolumeTest, MeasuresFollowTheCorners) {
    EXPECT_EQ(KyVolumed(KyVec3d(3, 2, 9), KyVec3d(1, 5, 3)), cVolume) << "in any order";
    EXPECT_EQ(cVolume.getCorners()[5], KyVec3d(3, 2, 9));
    EXPECT_EQ(cVolume.getRadius(), 3.5);
    EXPECT_EQ(cVolume.getArea(), 72.0);
    EXPECT_EQ(cVolume.getRect(), KyRectd(1, 2, 2, 3));
    EXPECT_EQ(KyVolumei(KyVec3i(), KyVec3i(5000, 5000, 5000)).getVolume(), std::numeric_limits<int>::max());
}

TEST(KyVolumeTest, SizesChangeAroundTheCentre) {
    KyVolumed volume = cVolume;
    volume.setSize(KyVec3d(4, -5, 8));
    EXPECT_EQ(volume, KyVolumed(KyVec3d(0, 1, 2), KyVec3d(4, 6, 10)));
    volume.scale(2);
    EXPECT_EQ(volume, KyVolumed(KyVec3d(-2, -1.5, -2), KyVec3d(6, 8.5, 14)));
    volume.setCenter(KyVec3d());
    volume.translate(KyVec3d(4, 5, 8));
    EXPECT_EQ(volume, KyVolumed(KyVec3d(), KyVec3d(8, 10, 16)));
}

TEST(KyVolumeTest, NullAndInfiniteDoNotMoveButTakeAPlace) {
    for (const KyVolumed& start : {KyVolumed(), makeInfinite()}) {
        KyVolumed volume = start;
        volume.translate(KyVec3d(1, 1, 1));
        volume.scale(3);
        EXPECT_EQ(volume, start);
        volume.setSize(KyVec3d(2, 2, 2));
        EXPECT_EQ(volume, KyVolumed(KyVec3d(-1, -1, -1), KyVec3d(1, 1, 1)));
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

TEST(KyVolumeTest, StatesHaveTexts) {
    for (const KyVolumed& volume : {KyVolumed(), cVolume, makeInfinite()}) {
        KyVolumed read(KyVec3d(7, 7, 7), KyVec3d(8, 8, 8));
        EXPECT_TRUE(fromString(volume.toString(), read));
        EXPECT_EQ(read, volume);
    }
}
