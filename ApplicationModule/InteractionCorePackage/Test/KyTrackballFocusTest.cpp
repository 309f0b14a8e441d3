// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTrackballFixture.h"

#include <limits>
#include <random>

namespace {

using KyTrackballFocusTest = KyTrackballFixture;

TEST_F(KyTrackballFocusTest, AVolumeFillsTheViewButForTheMargin) {
    std::mt19937 random(2);
    std::uniform_real_distribution<double> any(-1.0, 1.0);
    for (int i = 0; i < 1000; ++i) {
        canvas->setSize(100 + i * 3, 3000 - i * 2);
        camera->setOrthographic(i % 2 == 0);
        camera->setVerticalAperture(0.1 + i * 0.002);
        camera->setNear(1e-6);
        camera->setFar(1.0);
        const auto point = [&] { return KyVec3d(any(random), any(random), any(random)) * std::pow(10.0, i % 7); };
        const KyVolumed volume(point(), point());
        ASSERT_TRUE(i % 3 ? trackball->focusPerspective(volume, any(random), any(random), any(random))
                          : trackball->focusFront(volume));
        ASSERT_LE(getError(), 1e-12);
        EXPECT_EQ(trackball->getCenter(), volume.getCenter());
        double widest = 0.0;
        for (const KyVec3d& corner : volume.getCorners()) {
            const KyVec2d pixel = project(corner);
            widest = std::max({widest, std::abs(2.0 * pixel.x / canvas->getWidth() - 1.0),
                               std::abs(2.0 * pixel.y / canvas->getHeight() - 1.0)});
            const double depth = (corner - camera->getWorldPosition()).dot(camera->getForward());
            EXPECT_GE(depth, camera->getNear());
            EXPECT_LE(depth, camera->getFar());
        }
        EXPECT_NEAR(widest, 1.0 / 1.05, 1e-6) << i;
    }
}

TEST_F(KyTrackballFocusTest, TheDirectionIsThatOfTheBasis) {
    const KyVolumed box({-1, -1, -1}, {1, 1, 1});
    const double third = 1.0 / std::sqrt(3.0);
    // Direction, forward, right.
    const std::array<KyVec3d, 3> rows[] = {
        {{{1, 0, 0}, {-1, 0, 0}, {0, 0, -1}}},
        {{{0, 2, 0}, {0, -1, 0}, {1, 0, 0}}},
        {{{0, 0, 0}, {-third, -third, -third}, {std::sqrt(0.5), 0, -std::sqrt(0.5)}}},
        {{{NAN, 0, 0}, {-third, -third, -third}, {std::sqrt(0.5), 0, -std::sqrt(0.5)}}}};
    for (const auto& [direction, forward, right] : rows) {
        EXPECT_TRUE(trackball->focusPerspective(box, direction.x, direction.y, direction.z));
        expectNear(camera->getForward(), forward, 1e-12);
        expectNear(camera->getRight(), right, 1e-12);
    }
    // z up: the front looks along +y.
    trackball->setOrthonormalBasis(KyMat4d::fromRotation(KyQuatd(KyVec3d(1, 0, 0), std::numbers::pi / 2)));
    EXPECT_TRUE(trackball->focusFront(box));
    expectNear(camera->getForward(), KyVec3d(0, 1, 0), 1e-12);
    expectNear(camera->getUp(), KyVec3d(0, 0, 1), 1e-12);
}

TEST_F(KyTrackballFocusTest, AnOrthographicPictureCanBeZoomedAfterwards) {
    camera->setOrthographic(true);
    for (const double size : {5e-324, 1e-200, 1e-13, 1e-3, 1e11}) {
        EXPECT_TRUE(trackball->focusFront(KyVolumed({0, 0, 0}, {size, size, size})));
        const double extent = camera->getVerticalExtent();
        EXPECT_GE(extent, 1e-12);
        EXPECT_TRUE(wheel(-120));
        EXPECT_GT(camera->getVerticalExtent(), extent);
        EXPECT_TRUE(std::isfinite(camera->getProjection(2.0).get(0, 0)));
    }
    canvas->setSize(1, 100000);
    const double extent = camera->getVerticalExtent();
    EXPECT_FALSE(trackball->focusFront(KyVolumed({-1e11, -1, -1}, {1e11, 1, 1}))) << "too wide for so thin a view";
    EXPECT_EQ(camera->getVerticalExtent(), extent);
}

TEST_F(KyTrackballFocusTest, APointKeepsTheDistanceAndNothingBadIsTaken) {
    const KyMat4d start = camera->getWorldFrame();
    trackball->setCenter(KyVec3d(7, 7, 7));
    KyVolumed infinite;
    infinite.setInfinite();
    for (const KyVolumed& bad : {KyVolumed(), infinite, KyVolumed({0, 0, 0}, {HUGE_VAL, 1, 1}),
                                 KyVolumed({0, 0, 0}, {1e13, 1, 1}), KyVolumed({NAN, 0, 0}, {NAN, 1, 1})}) {
        EXPECT_FALSE(trackball->focusFront(bad));
        EXPECT_FALSE(trackball->focusPerspective(bad));
    }
    expectFrameStays(start);
    EXPECT_EQ(trackball->getCenter(), KyVec3d(7, 7, 7));
    EXPECT_TRUE(trackball->focusFront(KyVolumed({3, 0, 1}, {3, 0, 1})));
    expectNear(camera->getWorldPosition(), KyVec3d(3, 0, 6), 1e-12);
    const KyVec3d eye = camera->getWorldPosition();
    EXPECT_TRUE(trackball->focusFront(KyVolumed(eye, eye)));
    expectNear(camera->getWorldPosition(), eye + KyVec3d(0, 0, 1), 1e-12);
    EXPECT_EQ(camera->getNear(), 0.05);
    std::string told;
    trackball->modifiedSignal().connect([&](KyObject*, KyObjectModificationType kind, const std::string& name, int) {
        told += kind == eAttributeChanged ? name + " " : "";
    });
    camera->setNear(4.0);
    EXPECT_TRUE(trackball->focusFront(KyVolumed({-0.1, -0.1, -0.1}, {0.1, 0.1, 0.1})));
    expectNear(camera->getWorldPosition(), KyVec3d(0, 0, 4.1), 1e-12);
    EXPECT_EQ(told, "Center ");
    KyHolder<KyNode> flat(new KyNode);
    flat->addChild(camera.get());
    flat->setScale(KyVec3d(1, 0, 1));
    EXPECT_FALSE(trackball->focusFront(KyVolumed({0, 0, 0}, {2000, 1, 1}))) << "no place in a flat parent";
    EXPECT_EQ(camera->getFar(), 1000.0);
    EXPECT_EQ(told, "Center ");
    trackball->setObject(nullptr);
    EXPECT_FALSE(trackball->focusFront(KyVolumed({0, 0, 0}, {1, 1, 1})));
    trackball->modifiedSignal().disconnectAll();
}

} // namespace
