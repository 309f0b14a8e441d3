// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyShapeStage.h"

#include "KyPlane.h"

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
    {Shape::eTranslate, Shape::eAxisX, Stage::eFront, {10, 10}, {-30, 10}, {-1, 0, 0}},
    {Shape::eTranslate, Shape::eAxisX, Stage::eFront, {0, 0}, {0, 30}, {0, 0, 0}},
    {Shape::eTranslate, Shape::eAxisY, Stage::eRight, {0, 0}, {0, 30}, {0, 0.75, 0}},
    {Shape::eTranslate, Shape::eAxisZ, Stage::eRight, {0, 0}, {30, 0}, {0, 0, -0.75}},
    {Shape::eTranslate, Shape::eAxisZ, Stage::eFront, {0, 0}, {30, 30}, {0, 0, 0}},
    {Shape::eTranslate, Shape::ePlaneXY, Stage::eFront, {0, 0}, {40, -20}, {1, -0.5, 0}},
    {Shape::eTranslate, Shape::ePlaneYZ, Stage::eRight, {0, 0}, {40, -20}, {0, -0.5, -1}},
    {Shape::eTranslate, Shape::ePlaneZX, Stage::eTop, {0, 0}, {40, -20}, {1, 0, 0.5}},
    {Shape::eTranslate, Shape::ePlaneZX, Stage::eFront, {0, 0}, {40, -20}, {0, 0, 0}},
    {Shape::eRotate, Shape::eViewPlane, Stage::eFront, {20, 0}, {0, 20}, {0, 0, cQuarter}},
    {Shape::eRotate, Shape::eViewPlane, Stage::eRight, {20, 0}, {0, -90}, {-cQuarter, 0, 0}},
    {Shape::eRotate, Shape::eAxisX, Stage::eRight, {20, 0}, {0, 20}, {cQuarter, 0, 0}},
    {Shape::eRotate, Shape::eAxisY, Stage::eFront, {0, 0}, {20, 0}, {0, 0.5, 0}},
    {Shape::eRotate, Shape::eAxisX, Stage::eFront, {0, 0}, {0, 20}, {-0.5, 0, 0}},
    {Shape::eRotate, Shape::eAxisZ, Stage::eFront, {20, 20}, {-20, -20}, {0, 0, std::numbers::pi}},
    {Shape::eRotate, Shape::eAxisZ, Stage::eFront, {0, 0}, {1, 1}, {0, 0, 0}},
    {Shape::eRotate, Shape::ePlaneXY, Stage::eFront, {20, 0}, {0, -20}, {0, 0, -cQuarter}},
    {Shape::eRotate, Shape::ePlaneYZ, Stage::eRight, {20, 0}, {0, 20}, {cQuarter, 0, 0}},
    {Shape::eRotate, Shape::ePlaneZX, Stage::eTop, {20, 0}, {0, 20}, {0, cQuarter, 0}},
    {Shape::eScale, Shape::eViewPlane, Stage::eFront, {20, 0}, {0, 40}, {2, 2, 2}},
    {Shape::eScale, Shape::eAxisX, Stage::eFront, {20, 0}, {30, 0}, {1.5, 1, 1}},
    {Shape::eScale, Shape::eAxisX, Stage::eFront, {-20, 0}, {-50, 0}, {2.5, 1, 1}},
    {Shape::eScale, Shape::eAxisX, Stage::eFront, {20, 0}, {-30, 0}, {0.01, 1, 1}},
    {Shape::eScale, Shape::eAxisY, Stage::eFront, {0, 20}, {0, 10}, {1, 0.5, 1}},
    {Shape::eScale, Shape::eAxisZ, Stage::eRight, {-20, 0}, {-30, 0}, {1, 1, 1.5}},
    {Shape::eScale, Shape::eAxisZ, Stage::eFront, {0, 0}, {-30, 0}, {1, 1, 1}},
    {Shape::eScale, Shape::ePlaneXY, Stage::eFront, {20, 0}, {0, -60}, {3, 3, 1}},
    {Shape::eScale, Shape::ePlaneYZ, Stage::eRight, {20, 0}, {0, 30}, {1, 1.5, 1.5}},
    {Shape::eScale, Shape::ePlaneZX, Stage::eTop, {20, 0}, {30, 0}, {1.5, 1, 1.5}},
    {Shape::eScale, Shape::eAxisX, Stage::eFront, {0, 0}, {8, 0}, {1.5, 1, 1}},
};

/// What the drag must make of the box, which stands at the origin.
KyMat4d getExpectedFrame(const Drag& drag) {
    if (drag.mode == Shape::eTranslate)
        return KyMat4d::fromTranslation(drag.expected);
    if (drag.mode == Shape::eScale)
        return KyMat4d::fromScale(drag.expected);
    return KyMat4d::fromRotation(KyQuatd(drag.expected, drag.expected.length()));
}

/// The box's own axis that the constraint turns about, or the view's.
KyVec3d getTurnAxis(const KyMat4d& frame, int constraint, const KyCamera& camera) {
    constexpr std::array<int, Shape::eNbConstraints> cColumns{3, 0, 1, 2, 2, 0, 1};
    const int column = cColumns[static_cast<std::size_t>(constraint)];
    KyVec3d axis = column < 3 ? frame.getColumn(column) : camera.getForward();
    axis.normalize();
    return axis;
}

class KyShapeManipulatorTest : public testing::TestWithParam<bool>, protected Stage {
protected:
    void drag(const Drag& drag) {
        look(drag.side, GetParam());
        mShapes->setMode(drag.mode);
        mShapes->setConstraint(drag.constraint);
        ASSERT_TRUE(press(drag.from.x, drag.from.y));
        EXPECT_EQ(mBox->getWorldFrame(), KyMat4d()) << "a press moves nothing";
        EXPECT_TRUE(move(drag.to.x, drag.to.y));
    }
};

} // namespace

TEST_P(KyShapeManipulatorTest, DragsMoveTurnAndScaleAndGoBackToTheStart) {
    for (const Drag& row : cDrags) {
        SCOPED_TRACE(testing::Message() << "mode " << row.mode << ", constraint " << row.constraint << ", side "
                                        << row.side << ", to " << row.to.x << ' ' << row.to.y);
        drag(row);
        EXPECT_LT(getDistance(mBox->getWorldFrame(), getExpectedFrame(row)), 1e-9)
            << mBox->getWorldFrame() << "\nexpected " << getExpectedFrame(row);
        move(-170, 110);
        move(row.to.x, row.to.y);
        EXPECT_LT(getDistance(mBox->getWorldFrame(), getExpectedFrame(row)), 1e-9) << "whatever way it came";
        move(row.from.x, row.from.y);
        EXPECT_EQ(mBox->getLocalFrame(), KyMat4d());
        move(row.to.x, row.to.y);
        mShapes->cancel();
        EXPECT_FALSE(mShapes->isDragging());
        EXPECT_EQ(mBox->getLocalFrame(), KyMat4d());
        EXPECT_TRUE(move(90, 90));
        EXPECT_EQ(mBox->getLocalFrame(), KyMat4d()) << "a cancelled drag is over";
        EXPECT_TRUE(release());
        EXPECT_FALSE(move(0, 0));
    }
}

TEST_P(KyShapeManipulatorTest, TheGrabbedPointStaysUnderThePointerUnderAnyParent) {
    mParent->setOrientation(KyQuatd(KyVec3d(1, 2, 3), 0.7));
    mParent->setScale(KyVec3d(-0.8, 0.8, 0.8));
    mBox->setOrientation(KyQuatd(KyVec3d(3, -1, 2), 1.1));
    mBox->setScale(KyVec3d(1.0, 1.2, -0.9));
    mShapes->setSpace(Shape::eLocal);
    for (const int mode : {Shape::eTranslate, Shape::eRotate}) {
        for (int constraint = 0; constraint < Shape::eNbConstraints; ++constraint) {
            SCOPED_TRACE(testing::Message() << "mode " << mode << ", constraint " << constraint);
            look(eFront, GetParam());
            // From where no axis or plane is seen from its edge or end.
            const KyMat4d before = mBox->getWorldFrame();
            mCamera->lookAt((before.getColumn(0) + before.getColumn(1) + before.getColumn(2)) * 6.0, KyVec3d());
            mShapes->setMode(mode);
            mShapes->setConstraint(constraint);
            const Pixel from{17, 9}, to{45, 31};
            KyVec3d grabbed;
            ASSERT_TRUE(mPass->pickPoint(*mView, cMiddle + from.x, cMiddle - from.y, grabbed));
            ASSERT_TRUE(press(from.x, from.y));
            move(to.x, to.y);
            const KyMat4d change = mBox->getWorldFrame() * before.getInverse();
            const KyVec3d moved = change.transformPoint(grabbed);
            KyRayd ray = mCamera->getRay(2.0 * to.x / cSize, 2.0 * to.y / cSize, 1.0);
            // Planes may be met behind a camera whose rays are parallel.
            ray.origin -= ray.direction * 100.0;
            const KyVec3d off = (moved - ray.origin).cross(ray.direction);
            const bool isAxis = constraint >= Shape::eAxisX && constraint <= Shape::eAxisZ;
            if (mode == Shape::eTranslate && !isAxis) {
                EXPECT_LT(off.length(), 1e-9);
            }
            if (mode == Shape::eTranslate && isAxis) {
                const KyVec3d axis = before.getColumn(constraint - Shape::eAxisX);
                EXPECT_LT((moved - grabbed).cross(axis).length(), 1e-9) << "along the axis";
                EXPECT_NEAR(off.cross(ray.direction).dot(axis), 0.0, 1e-9) << "as near as it gets";
            }
            if (mode == Shape::eRotate) {
                const KyVec3d centre = before.translation(), axis = getTurnAxis(before, constraint, *mCamera);
                KyVec3d pointed;
                ASSERT_TRUE(KyPlaned(grabbed, axis).intersectsRay(ray, pointed));
                const KyVec3d spoke = axis.cross(moved - centre), wanted = axis.cross(pointed - centre);
                EXPECT_LT(spoke.cross(wanted).length(), 1e-9) << "turned as far as the pointer";
                EXPECT_GT(spoke.dot(wanted), 0.0);
                EXPECT_NEAR((moved - centre).length(), (grabbed - centre).length(), 1e-9);
            }
            EXPECT_GT(getDistance(mBox->getWorldFrame(), before), 0.005);
            mShapes->cancel();
            EXPECT_LT(getDistance(mBox->getWorldFrame(), before), 1e-12);
            release();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Cameras, KyShapeManipulatorTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "Orthographic" : "Perspective"; });
