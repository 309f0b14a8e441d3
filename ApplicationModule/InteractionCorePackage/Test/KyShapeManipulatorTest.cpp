// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyShapeStage.h"

#include "KyRay.h"

#include <gtest/gtest.h>

#include <numbers>

namespace {

using Shape = KyShapeManipulator;
using Stage = KyShapeStage;

double getDistance(const KyMat4d& a, const KyMat4d& b) {
    double distance = 0.0;
    for (int i = 0; i < 16; ++i)
        distance = std::max(distance, std::abs(a.data()[i] - b.data()[i]));
    return distance;
}

struct Pixel {
    int x, y;
};

struct Drag {
    int mode, constraint;
    Stage::Side side;
    Pixel from, to;
    /// Of a translation the way, of a scaling the factors, of a turn its axis times its angle.
    KyVec3d expected;
};

constexpr double cQuarter = std::numbers::pi / 2;

/// Each drag along one axis of the screen, where the eye's distance makes no difference.
const Drag cDrags[] = {
    {Shape::eTranslate, Shape::eViewPlane, Stage::eFront, {0, 0}, {40, -20}, {1, -0.5, 0}},
    {Shape::eTranslate, Shape::eViewPlane, Stage::eTop, {5, 0}, {45, 20}, {1, 0, -0.5}},
    {Shape::eTranslate, Shape::eAxisX, Stage::eFront, {0, 0}, {0, 30}, {0, 0, 0}},
    {Shape::eTranslate, Shape::eAxisZ, Stage::eRight, {0, 0}, {30, 0}, {0, 0, -0.75}},
    {Shape::eTranslate, Shape::eAxisZ, Stage::eFront, {0, 0}, {30, 30}, {0, 0, 0}},
    {Shape::eTranslate, Shape::ePlaneZX, Stage::eTop, {0, 0}, {40, -20}, {1, 0, 0.5}},
    {Shape::eTranslate, Shape::ePlaneZX, Stage::eFront, {0, 0}, {40, -20}, {0, 0, 0}},
    {Shape::eRotate, Shape::eViewPlane, Stage::eRight, {20, 0}, {0, -90}, {-cQuarter, 0, 0}},
    {Shape::eRotate, Shape::eAxisY, Stage::eFront, {0, 0}, {20, 0}, {0, 0.5, 0}},
    {Shape::eRotate, Shape::eAxisX, Stage::eFront, {0, 0}, {0, 20}, {-0.5, 0, 0}},
    {Shape::eRotate, Shape::eAxisZ, Stage::eFront, {20, 20}, {-20, -20}, {0, 0, std::numbers::pi}},
    {Shape::eRotate, Shape::eAxisZ, Stage::eFront, {0, 0}, {1, 1}, {0, 0, 0}},
    {Shape::eRotate, Shape::ePlaneZX, Stage::eTop, {20, 0}, {0, 20}, {0, cQuarter, 0}},
    {Shape::eScale, Shape::eViewPlane, Stage::eFront, {20, 0}, {0, 40}, {2, 2, 2}},
    {Shape::eScale, Shape::eAxisX, Stage::eFront, {-20, 0}, {-50, 0}, {2.5, 1, 1}},
    {Shape::eScale, Shape::eAxisX, Stage::eFront, {20, 0}, {-30, 0}, {0.01, 1, 1}},
    {Shape::eScale, Shape::eAxisY, Stage::eFront, {0, 20}, {0, 10}, {1, 0.5, 1}},
    {Shape::eScale, Shape::eAxisZ, Stage::eRight, {-20, 0}, {-30, 0}, {1, 1, 1.5}},
    {Shape::eScale, Shape::eAxisZ, Stage::eFront, {0, 0}, {-30, 0}, {1, 1, 1}},
    {Shape::eScale, Shape::ePlaneXY, Stage::eFront, {20, 0}, {0, -60}, {3, 3, 1}},
    {Shape::eScale, Shape::ePlaneYZ, Stage::eRight, {20, 0}, {0, 30}, {1, 1.5, 1.5}},
    {Shape::eScale, Shape::eAxisX, Stage::eFront, {1, 0}, {9, 0}, {1.5, 1, 1}},
};

/// What the drag must make of the box, which stands at the origin.
KyMat4d getExpectedFrame(const Drag& drag) {
    if (drag.mode == Shape::eTranslate)
        return KyMat4d::fromTranslation(drag.expected);
    if (drag.mode == Shape::eScale)
        return KyMat4d::fromScale(drag.expected);
    return KyMat4d::fromRotation(KyQuatd(drag.expected, drag.expected.length()));
}

class KyShapeManipulatorTest : public testing::TestWithParam<bool>, protected Stage {
protected:
    void begin(int mode, int constraint, const Pixel& from) {
        const KyMat4d before = mBox->getWorldFrame();
        mShapes->setMode(mode);
        mShapes->setConstraint(constraint);
        ASSERT_TRUE(press(from.x, from.y));
        EXPECT_EQ(mBox->getWorldFrame(), before) << "a press moves nothing";
    }
};

} // namespace

TEST_P(KyShapeManipulatorTest, DragsMoveTurnAndScaleAnywhereAndGoBackToTheStart) {
    KyMat4d place;
    for (const bool isUnderParent : {false, true}) {
        for (const Drag& row : cDrags) {
            SCOPED_TRACE(testing::Message() << &row - cDrags << (isUnderParent ? " under a parent" : ""));
            const KyMat4d start = mBox->getLocalFrame(), expected = place * getExpectedFrame(row);
            look(row.side, GetParam());
            mCamera->setWorldFrame(place * mCamera->getWorldFrame());
            begin(row.mode, row.constraint, row.from);
            EXPECT_TRUE(move(row.to.x, row.to.y));
            EXPECT_LT(getDistance(mBox->getWorldFrame(), expected), 1e-9) << mBox->getWorldFrame();
            move(-170, 110);
            move(row.to.x, row.to.y);
            EXPECT_LT(getDistance(mBox->getWorldFrame(), expected), 1e-9) << "whatever way it came";
            move(row.from.x, row.from.y);
            EXPECT_LT(getDistance(mBox->getLocalFrame(), start), 1e-12);
            move(row.to.x, row.to.y);
            mShapes->cancel();
            EXPECT_FALSE(mShapes->isDragging());
            EXPECT_TRUE(move(90, 90));
            EXPECT_LT(getDistance(mBox->getLocalFrame(), start), 1e-12) << "a cancelled drag is over";
            EXPECT_TRUE(release());
            EXPECT_FALSE(move(0, 0));
        }
        // The same seen from the box's own axes, which lie askew in a mirroring parent.
        mShapes->setSpace(Shape::eLocal);
        mParent->setOrientation(KyQuatd(KyVec3d(1, 2, 3), 0.7));
        mParent->setScale(KyVec3d(-0.8, 0.8, 0.8));
        place = KyMat4d::fromRotation(KyQuatd(KyVec3d(3, -1, 2), 1.1));
        mBox->setWorldFrame(place);
    }
}

TEST_P(KyShapeManipulatorTest, TheGrabbedPointStaysUnderThePointerSeenAslant) {
    for (int constraint = 0; constraint < Shape::eNbConstraints; ++constraint) {
        SCOPED_TRACE(constraint);
        look(eFront, GetParam());
        mCamera->lookAt(KyVec3d(6, 6, 6), KyVec3d());
        const Pixel from{17, 9}, to{45, 31};
        KyVec3d grabbed;
        ASSERT_TRUE(mPass->pickPoint(*mView, cMiddle + from.x, cMiddle - from.y, grabbed));
        begin(Shape::eTranslate, constraint, from);
        move(to.x, to.y);
        const KyVec3d way = mBox->getPosition();
        const KyRayd ray = mCamera->getRay(2.0 * to.x / cSize, 2.0 * to.y / cSize, 1.0);
        const KyVec3d off = (grabbed + way - ray.origin).cross(ray.direction);
        EXPECT_GT(way.length(), 0.1);
        if (constraint >= Shape::eAxisX && constraint <= Shape::eAxisZ)
            EXPECT_NEAR(off.cross(ray.direction).dot(way), 0.0, 1e-9) << "as near as it gets";
        else
            EXPECT_LT(off.length(), 1e-9);
        mShapes->cancel();
        release();
    }
}

INSTANTIATE_TEST_SUITE_P(Cameras, KyShapeManipulatorTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "Orthographic" : "Perspective"; });
