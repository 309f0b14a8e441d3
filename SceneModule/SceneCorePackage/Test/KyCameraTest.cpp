// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCamera.h"
#include "KyHolder.h"

#include "KyRay.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace {

constexpr double cAspect = 1.6;

KyVec3d project(const KyCamera& camera, const KyVec3d& world) {
    return camera.getProjection(cAspect).transformPoint(camera.getViewMatrix().transformPoint(world));
}

TEST(KyCameraTest, ImpossibleDepthsStillGiveAProjection) {
    KyCamera camera;
    camera.setNear(-3.0);
    camera.setFar(-5.0);
    EXPECT_NE(camera.getProjection(1.0), KyMat4d());
    camera.setOrthographic(true);
    EXPECT_NE(camera.getProjection(std::numeric_limits<double>::quiet_NaN()), KyMat4d());
}

class KyCameraKindTest : public testing::TestWithParam<bool> {
protected:
    KyCameraKindTest() {
        mCamera.setOrthographic(GetParam());
        mCamera.lookAt(KyVec3d(3, 4, 5), KyVec3d(0.5, 0, 0));
    }
    KyCamera mCamera;
};

TEST_P(KyCameraKindTest, ARayHitsThePixelThatItWasMadeForAndThePointLookedAtTheMiddle) {
    EXPECT_NEAR(project(mCamera, KyVec3d(0.5, 0, 0)).x, 0.0, 1e-12);
    EXPECT_GT(project(mCamera, KyVec3d(0.5, 0.2, 0)).y, 0.0);
    for (const auto& [x, y] : {std::pair{0.3, -0.7}, {-1.0, 1.0}, {0.0, 0.0}}) {
        const KyVec3d point = project(mCamera, mCamera.getRay(x, y, cAspect).getPoint(6.0));
        EXPECT_NEAR(point.x, x, 1e-12);
        EXPECT_NEAR(point.y, y, 1e-12);
    }
}

TEST_P(KyCameraKindTest, FramingFillsTheViewButForTheMargin) {
    const KyVolumed volume(KyVec3d(10, -3, 20), KyVec3d(14, 5, 21));
    const KyVec3d forward = mCamera.getForward();
    ASSERT_TRUE(mCamera.frame(volume, cAspect, 1.25));
    double widest = 0.0;
    for (const KyVec3d& corner : volume.getCorners()) {
        const KyVec3d p = project(mCamera, corner);
        widest = std::max({widest, std::abs(p.x), std::abs(p.y)});
        EXPECT_LT(std::abs(p.z), 1.0);
    }
    EXPECT_NEAR(widest, 1.0 / 1.25, 1e-9);
    EXPECT_NEAR((mCamera.getForward() - forward).length(), 0.0, 1e-12);
}

TEST_P(KyCameraKindTest, FramingWidensTheDepthsAndNeverNarrowsThem) {
    mCamera.setNear(0.001);
    mCamera.setFar(5.0);
    ASSERT_TRUE(mCamera.frame(KyVolumed(KyVec3d(-100, -100, -100), KyVec3d(100, 100, 100)), 1.0));
    EXPECT_EQ(mCamera.getNear(), 0.001);
    EXPECT_GT(mCamera.getFar(), 200.0);
}

TEST_P(KyCameraKindTest, ThereIsNothingToFrameInANullVolume) {
    const KyMat4d before = mCamera.getWorldFrame();
    KyVolumed infinite;
    infinite.setInfinite();
    EXPECT_FALSE(mCamera.frame(KyVolumed(), 1.0));
    EXPECT_FALSE(mCamera.frame(infinite, 1.0));
    EXPECT_EQ(mCamera.getWorldFrame(), before);
}

INSTANTIATE_TEST_SUITE_P(Kinds, KyCameraKindTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "Orthographic" : "Perspective"; });

} // namespace
