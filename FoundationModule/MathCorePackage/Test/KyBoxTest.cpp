// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyBox.h"

#include "KyMathNear.h"

namespace {

const KyQuatd cTurn(KyVec3d(0, 0, 1), std::numbers::pi / 4);
const KyBoxd cBox(KyVec3d(1, 2, 3), cTurn, KyVec3d(4, 2, 6));
const double cRoot = std::sqrt(2.0);

KyBoxd makeCube(const KyVec3d& center, const KyQuatd& orientation = KyQuatd()) {
    return KyBoxd(center, orientation, KyVec3d(2, 2, 2));
}

KyBoxd makeInfinite() {
    KyBoxd result;
    result.setInfinite();
    return result;
}

} // namespace

TEST(KyBoxTest, TheBoundEnclosesTheTurnedBox) {
    const KyVolumed bound = cBox.getBoundingVolume();
    EXPECT_TRUE(isNear(bound.getSize(), KyVec3d(3 * cRoot, 3 * cRoot, 6)));
    EXPECT_EQ(cBox.getArea(), 88.0);
    EXPECT_EQ(cBox.getVolume(), 48.0);
    EXPECT_EQ(cBox.getRadius(), std::sqrt(14.0));
    EXPECT_NEAR(cBox.getRect().width, 3 * cRoot, 1e-12);
    EXPECT_TRUE(KyBoxd().getBoundingVolume().isNull());
    EXPECT_TRUE(makeInfinite().getRect().isInfinite());
    EXPECT_EQ(makeInfinite().getRadius(), std::numeric_limits<double>::infinity());
}

TEST(KyBoxTest, FramesConvertThereAndBack) {
    EXPECT_TRUE(isNear(cBox.localToWorld(KyVec3d(1, 0, 0)), KyVec3d(1 + cRoot / 2, 2 + cRoot / 2, 3)));
    const KyBoxd other(KyVec3d(-1, 0, 2), KyQuatd(KyVec3d(1, 1, 0), 1.0), KyVec3d(1, 1, 1));
    const KyVec3d there = cBox.frameToFrame(other, KyVec3d(4, 5, 6));
    EXPECT_TRUE(isNear(other.localToWorld(there), cBox.localToWorld(KyVec3d(4, 5, 6))));
}

TEST(KyBoxTest, ContainingFollowsTheOrientation) {
    EXPECT_TRUE(cBox.contains(cBox.localToWorld(KyVec3d(1.9, 0.9, -2.9))));
    EXPECT_FALSE(cBox.contains(cBox.localToWorld(KyVec3d(1.9, 1.1, 0))));
    EXPECT_TRUE(cBox.contains(KyBoxd(cBox.getCenter(), cTurn, KyVec3d(3, 1, 5))));
    EXPECT_FALSE(cBox.contains(KyBoxd(cBox.getCenter(), KyQuatd(), KyVec3d(3, 1, 5))));
    EXPECT_FALSE(KyBoxd().contains(KyVec3d()));
}

TEST(KyBoxTest, SeparationIsFoundOnEveryKindOfAxis) {
    const std::pair<KyBoxd, bool> rows[] = {{makeCube(KyVec3d(2, 0, 0)), true},
                                            {makeCube(KyVec3d(2.01, 0, 0)), false},
                                            {makeCube(KyVec3d(2.4, 0, 0), cTurn), true},
                                            {makeCube(KyVec3d(2.42, 0, 0), cTurn), false},
                                            {makeCube(KyVec3d(2.3, 2.3, 0), cTurn), false},
                                            {KyBoxd(), false},
                                            {makeInfinite(), true}};
    for (const auto& [other, meets] : rows) {
        EXPECT_EQ(makeCube(KyVec3d()).intersects(other), meets) << other;
        EXPECT_EQ(other.intersects(makeCube(KyVec3d())), meets) << other;
    }
    // Two cubes edge against edge: only the direction across both edges separates them.
    const KyQuatd aboutX(KyVec3d(1, 0, 0), std::numbers::pi / 4);
    const KyBoxd standing = makeCube(KyVec3d(), cTurn);
    EXPECT_TRUE(standing.intersects(makeCube(KyVec3d(0, 2 * cRoot - 0.01, 0), aboutX)));
    EXPECT_FALSE(standing.intersects(makeCube(KyVec3d(0, 2 * cRoot + 0.01, 0), aboutX)));
}

TEST(KyBoxTest, CommonPartsAreExactForEqualOrientations) {
    const KyBoxd shifted(cBox.localToWorld(KyVec3d(3, 1, 0)), cTurn, KyVec3d(4, 2, 6));
    KyBoxd common;
    ASSERT_TRUE(cBox.getIntersects(shifted, common));
    EXPECT_TRUE(isNear(common.getSize(), KyVec3d(1, 1, 6)));
    EXPECT_TRUE(isNear(cBox.worldToLocal(common.getCenter()), KyVec3d(1.5, 0.5, 0)));
    EXPECT_EQ(common.getOrientation(), cTurn);
}

TEST(KyBoxTest, CommonPartsOfTurnedBoxesAreEnclosed) {
    const KyBoxd cube = makeCube(KyVec3d());
    const KyBoxd turned = makeCube(KyVec3d(1, 1, 0), cTurn);
    KyBoxd common;
    ASSERT_TRUE(cube.getIntersects(turned, common));
    for (int i = 0; i < 1000; ++i) {
        const KyVec3d point(i % 10 * 0.4 - 1.8, i / 10 % 10 * 0.4 - 1.8, i / 100 * 0.4 - 1.8);
        const bool isCommon = cube.contains(point) && turned.contains(point);
        EXPECT_TRUE(!isCommon || common.contains(point)) << point;
    }
}

TEST(KyBoxTest, MergingGrowsInItsOwnOrientation) {
    KyBoxd box;
    box.merge(cBox);
    EXPECT_EQ(box, cBox);
    box.merge(KyBoxd());
    const KyVec3d away = cBox.localToWorld(KyVec3d(6, 0, 0));
    box.merge(KyBoxd(away, away));
    EXPECT_EQ(box.getOrientation(), cTurn);
    EXPECT_TRUE(isNear(box.getSize(), KyVec3d(8, 2, 6)));
    EXPECT_TRUE(isNear(cBox.worldToLocal(box.getCenter()), KyVec3d(2, 0, 0)));
}

TEST(KyBoxTest, NullAndInfiniteDoNotMoveButTakeAPlace) {
    for (const KyBoxd& start : {KyBoxd(), makeInfinite()}) {
        KyBoxd box = start;
        box.translate(KyVec3d(1, 1, 1));
        box.scale(2);
        EXPECT_EQ(box, start);
        box.setSize(KyVec3d(2, 2, 2));
        EXPECT_EQ(box, makeCube(KyVec3d()));
        box = start;
        box.setCenter(KyVec3d(1, 2, 3));
        EXPECT_TRUE(box.isPoint());
    }
}
