// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostSession.h"

#include "KyHostNavigation.h"

#include "KyMeshNode.h"

#include <QCoreApplication>

#include <cmath>

namespace {

constexpr double cNear = 1e-9;

/// A box off the origin on a wide ground.
class KyHostNavigationTest : public KyHostSession<QCoreApplication> {
protected:
    KyHostNavigationTest() {
        auto* const box = new KyMeshNode;
        box->makeBox(2, 2, 2);
        box->setPosition(KyVec3d(5, 1, 0));
        mStage.getScene().addChild(box);
        auto* const ground = new KyMeshNode;
        ground->makeGrid(100, 10);
        mStage.getScene().addChild(ground);
    }

    KyCamera& mCamera = mStage.getCamera();
    KyHostNavigation mNavigation{mStage};
    const KyVec3d mBoxCenter{5, 1, 0};
};

void expectNear(const KyVec3d& expected, const KyVec3d& actual) {
    EXPECT_NEAR(0.0, (expected - actual).length(), cNear) << actual;
}

} // namespace

TEST_F(KyHostNavigationTest, FramingShowsTheModelWithoutTheGroundFromTheSameSide) {
    const KyVec3d forward = mCamera.getForward();
    mNavigation.frameModel();
    expectNear(forward, mCamera.getForward());
    expectNear(mBoxCenter, mStage.getTrackball().getCenter());
    const double distance = (mCamera.getWorldPosition() - mBoxCenter).length();
    EXPECT_GT(distance, 2.0);
    EXPECT_LT(distance, 8.0);
    // In a frame of its own the trackball's up is another one, but the side stays.
    mStage.getTrackball().setOrthonormalBasis(KyMat4d(KyQuatd(KyVec3d(1, 0, 0), 1.0), KyVec3d()));
    mNavigation.frameModel();
    expectNear(forward, mCamera.getForward());
}

TEST_F(KyHostNavigationTest, TheSixSidesLookAtTheCenterFromTheSameDistance) {
    struct Case {
        KyVec3d forward, right;
    };
    const Case cases[KyHostNavigation::eNbDirections] = {
        {KyVec3d(0, 0, -1), KyVec3d(1, 0, 0)},  {KyVec3d(0, 0, 1), KyVec3d(-1, 0, 0)},
        {KyVec3d(-1, 0, 0), KyVec3d(0, 0, -1)}, {KyVec3d(1, 0, 0), KyVec3d(0, 0, 1)},
        {KyVec3d(0, -1, 0), KyVec3d(1, 0, 0)},  {KyVec3d(0, 1, 0), KyVec3d(1, 0, 0)},
    };
    mNavigation.frameModel();
    const double distance = (mCamera.getWorldPosition() - mBoxCenter).length();
    for (int side = 0; side < KyHostNavigation::eNbDirections; ++side) {
        mNavigation.lookFrom(static_cast<KyHostNavigation::Direction>(side));
        expectNear(cases[side].forward, mCamera.getForward());
        expectNear(cases[side].right, mCamera.getRight());
        expectNear(mBoxCenter - cases[side].forward * distance, mCamera.getWorldPosition());
    }
}

TEST_F(KyHostNavigationTest, ChangingTheProjectionKeepsTheSizeAtTheCenter) {
    mNavigation.frameModel();
    const KyVec3d eye = mCamera.getWorldPosition();
    mNavigation.toggleOrthographic();
    ASSERT_TRUE(mCamera.isOrthographic());
    const double distance = (eye - mBoxCenter).length();
    EXPECT_NEAR(2.0 * distance * std::tan(mCamera.getEffectiveAperture() / 2.0), mCamera.getVerticalExtent(), cNear);
    // Half the extent is as if the eye had come to half the distance.
    mCamera.setVerticalExtent(mCamera.getVerticalExtent() / 2.0);
    mNavigation.toggleOrthographic();
    EXPECT_FALSE(mCamera.isOrthographic());
    EXPECT_NEAR(distance / 2.0, (mCamera.getWorldPosition() - mBoxCenter).length(), cNear);
}

TEST_F(KyHostNavigationTest, ScriptsCannotEndWhatTheKeysMove) {
    mStage.getTrackball().destroy();
    mStage.getShaper().destroy();
    mNavigation.frameModel();
    expectNear(mBoxCenter, mStage.getTrackball().getCenter());
}
