// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyShapeStage.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <numbers>
#include <utility>

namespace {

constexpr auto cPressed = KyInputEvent::eMousePressed, cMoved = KyInputEvent::eMouseMoved,
               cReleased = KyInputEvent::eMouseReleased;

class KyShapeGrabTest : public testing::Test, protected KyShapeStage {};

} // namespace

TEST_F(KyShapeGrabTest, StepsSnapWhatIsCountedFromThePress) {
    mShapes->setTranslationStep(0.5);
    mShapes->setRotationStep(std::numbers::pi / 4);
    mShapes->setScaleStep(0.5);
    mBox->setPosition(KyVec3d(0.1, 0, 0));
    press(0, 0);
    move(28, -9);
    EXPECT_EQ(mBox->getPosition(), KyVec3d(0.6, 0, 0));
    mShapes->cancel();
    mBox->setPosition(KyVec3d());
    mShapes->setMode(Shape::eRotate);
    press(20, 0);
    move(20, 17);
    EXPECT_NEAR(mBox->getOrientation().getEulerAngles().z, std::numbers::pi / 4, 1e-12);
    mShapes->cancel();
    mShapes->setMode(Shape::eScale);
    press(20, 0);
    // One step is left of the least.
    for (const auto& [x, scale] : {std::pair(33, 1.5), std::pair(1, 0.5), std::pair(5000, 100.0)}) {
        move(x, 0);
        EXPECT_EQ(mBox->getScale(), KyVec3d(scale, scale, scale));
    }
}

TEST_F(KyShapeGrabTest, OnlyAPressWithTheMaskOnANodeBeginsADrag) {
    EXPECT_FALSE(press(150, 0)) << "nothing under the pointer";
    EXPECT_FALSE(press(-300, 0)) << "outside the view";
    EXPECT_FALSE(mShapes->getObject());
    mShapes->setMask(-1);
    EXPECT_FALSE(send(cPressed, 0, 0, 0xFFFFFFFFu)) << "-1 is off, not all bits";
    mShapes->setMask2(KyInputEvent::cShift | KyInputEvent::cMiddleButton);
    EXPECT_TRUE(send(cPressed, 0, 0, KyInputEvent::cShift | KyInputEvent::cMiddleButton));
    EXPECT_TRUE(send(cMoved, 40, 0, KyInputEvent::cMiddleButton)) << "modifiers may be let go";
    EXPECT_NEAR(mBox->getPosition().x, 1.0, 1e-9);
    EXPECT_TRUE(send(cReleased, 40, 0, 0));
    EXPECT_EQ(mShapes->getObject(), mBox.get());
}

TEST_F(KyShapeGrabTest, AnotherButtonCancelsAndALostReleaseEndsTheDrag) {
    constexpr std::uint32_t cRight = KyInputEvent::cRightButton;
    const struct {
        KyInputEvent::Type type;
        int x;
        std::uint32_t state, button;
        bool isUsed;
        double position;
        const char* reason = "";
    } rows[] = {{cPressed, 0, KyInputEvent::cLeftButton, 1, false, 0, "left to the trackball"},
                {cMoved, 10, cGrab, 0, false, 0, "its press went elsewhere"},
                {KyInputEvent::eWheel, 0, KyInputEvent::cWheel, 0, false, 0},
                {cPressed, 0, cGrab, 1, true, 0},
                {cMoved, 40, cGrab, 0, true, 1},
                {cPressed, 40, cGrab | cRight, 2, true, 0},
                {cReleased, 40, cGrab, 2, true, 0, "the drag's button is down still"},
                {cMoved, 60, cGrab, 0, true, 0},
                {cReleased, 0, 0, 1, true, 0},
                {cPressed, 0, cGrab, 1, true, 0},
                {cPressed, 40, cGrab | cRight, 2, true, 0},
                {cReleased, 40, cRight, 1, true, 0},
                {cMoved, 60, cRight, 0, true, 0, "what cancelled moves no view"},
                {cReleased, 60, 0, 2, true, 0},
                {cMoved, 60, 0, 0, false, 0},
                {cPressed, 0, cGrab, 1, true, 0},
                {cMoved, 40, cGrab, 0, true, 1},
                {cMoved, 90, 0, 0, false, 1, "the release was lost"},
                {cPressed, 40, cGrab, 1, true, 1},
                {cMoved, 60, cGrab, 0, true, 1.5},
                {KyInputEvent::eMouseDoubleClicked, 60, cGrab, 1, true, 1.5, "the release in between was lost"},
                {cMoved, 80, cGrab, 0, true, 2}};
    for (const auto& row : rows) {
        EXPECT_EQ(send(row.type, row.x, 0, row.state, row.button), row.isUsed) << &row - rows << row.reason;
        EXPECT_NEAR(mBox->getPosition().x, row.position, 1e-9) << &row - rows << row.reason;
    }
    for (const bool isEnabled : {false, true}) {
        mShapes->setIsEnabled(isEnabled);
        EXPECT_FALSE(move(90, 0)) << "who knows what happened in between";
    }
    EXPECT_NEAR(mBox->getPosition().x, 2.0, 1e-9);
}

TEST_F(KyShapeGrabTest, AGivenObjectIsDraggedWhereverThePointerIs) {
    mShapes->setAutoPick(false);
    EXPECT_FALSE(press(150, 150)) << "there is none";
    mShapes->setObject(mBox.get());
    EXPECT_TRUE(press(150, 150));
    move(150, 110);
    // In the plane through the origin, which is farther off than the box's near side.
    EXPECT_NEAR(mBox->getPosition().y, -40 * cPixel * 10 / 9, 1e-9);
    release();
    mShapes->setObject(mCamera.get());
    EXPECT_EQ(mShapes->getObject(), mBox.get());
    mBox->addChild(mCamera.get());
    EXPECT_FALSE(press(0, 0)) << "the camera would be carried along";
}

TEST_F(KyShapeGrabTest, MovementsWithoutAnAnswerLeaveTheNode) {
    // A floor's plane, from above its edge: the upper half of the picture is beyond the horizon.
    mCamera->lookAt(KyVec3d(0, 2, 10), KyVec3d(0, 2, 0));
    mShapes->setConstraint(Shape::ePlaneZX);
    ASSERT_TRUE(press(0, -80));
    for (int y = -80; y < 200; ++y) {
        move(0, y);
        EXPECT_TRUE(isFinite(mBox->getWorldFrame()));
        EXPECT_LE(mBox->getPosition().z, 1e-9) << "away from the eye only";
        EXPECT_GT(mBox->getPosition().z, -150.0);
    }
    move(0, -80);
    EXPECT_EQ(mBox->getPosition(), KyVec3d());
    release();
    mShapes->setAutoPick(false);
    mShapes->setObject(mBox.get());
    // The eye at the object, and a camera that shows it from behind.
    for (const double z : {0.0, -5.0}) {
        mCamera->lookAt(KyVec3d(0, 0, z), KyVec3d(0, 0, z - 1.0));
        for (int i = 0; i < Shape::eNbModes * int{Shape::eNbConstraints}; ++i) {
            mShapes->setMode(i % Shape::eNbModes);
            mShapes->setConstraint(i / Shape::eNbModes);
            press(3, 4);
            move(-120, 75);
            move(std::numeric_limits<int>::max() - cMiddle, std::numeric_limits<int>::min() + cMiddle + 1);
            EXPECT_TRUE(isFinite(mBox->getWorldFrame()));
            mShapes->cancel();
            EXPECT_EQ(mBox->getLocalFrame(), KyMat4d());
        }
    }
}

TEST_F(KyShapeGrabTest, WhatCannotBeMovedIsNotTakenAndShearIsKept) {
    mCanvas->setSize(0, 0);
    EXPECT_FALSE(press(0, 0));
    mCanvas->setSize(cSize, cSize);
    mShapes->setAutoPick(false);
    mShapes->setObject(mBox.get());
    mParent->setScale(KyVec3d(1, 0, 1));
    EXPECT_FALSE(press(0, 0)) << "no place in a flat parent";
    mParent->setScale(KyVec3d(1, 1, 1));
    KyMat4d sheared;
    sheared.set(0, 1, 0.5);
    mBox->setLocalFrame(sheared);
    for (int mode = 0; mode < Shape::eNbModes; ++mode) {
        mShapes->setMode(mode);
        press(30, 0);
        move(30, 20);
        mParent->setScale(KyVec3d(1, 0, 1));
        move(70, 20);
        mParent->setScale(KyVec3d(1, 1, 1));
        const double cosine = mBox->getLocalFrame().getColumn(0).dot(mBox->getLocalFrame().getColumn(1));
        EXPECT_GT(cosine, 0.45) << "mode " << mode;
        mShapes->cancel();
        EXPECT_EQ(mBox->getLocalFrame(), sheared);
    }
}

TEST_F(KyShapeGrabTest, NothingIsUsedAfterItEndedInADragOrInAListener) {
    using Act = std::function<void(KyShapeStage&)>;
    const Act cActs[] = {
        [](KyShapeStage& s) { s.mParent->removeChild(s.mBox.get()), s.mBox.reset(); },
        [](KyShapeStage& s) { s.mCamera.reset(), s.mPass->setCamera(nullptr); },
        [](KyShapeStage& s) { s.mCanvas->removeView(s.mView.get()), s.mView.reset(); },
        [](KyShapeStage& s) { s.mView->setMainPass(nullptr), s.mPass.reset(); },
        [](KyShapeStage& s) { s.mShapes.reset(); },
        [](KyShapeStage& s) { s.mShapes->cancel(); },
        [](KyShapeStage& s) { s.mShapes->setObject(s.mParent.get()); },
        [](KyShapeStage& s) { s.mShapes->setObject(nullptr), s.mShapes->reset(); },
    };
    for (std::size_t i = 0; i < std::size(cActs) * 2 * Shape::eNbModes; ++i) {
        const Act& act = cActs[i % std::size(cActs)];
        const bool isInListener = i / std::size(cActs) % 2 == 1;
        KyShapeStage stage;
        stage.mShapes->setMode(static_cast<int>(i / std::size(cActs) / 2));
        ASSERT_TRUE(stage.press(20, 0));
        bool hasActed = false;
        stage.mBox->modifiedSignal().connect([&](KyObject*, KyObjectModificationType, const std::string&, int) {
            if (isInListener && !std::exchange(hasActed, true))
                act(stage);
        });
        if (!isInListener)
            act(stage);
        for (const int x : {40, 50}) {
            if (stage.mShapes)
                stage.move(x, 30);
            EXPECT_TRUE(!stage.mBox || isFinite(stage.mBox->getWorldFrame()));
        }
        EXPECT_EQ(hasActed, isInListener);
        if (stage.mShapes) {
            stage.mShapes->cancel();
            EXPECT_FALSE(stage.mShapes->isDragging());
        }
    }
    mShapes->modifiedSignal().connect([this](KyObject*, KyObjectModificationType kind, const std::string&, int) {
        if (kind == eAttributeChanged)
            mShapes.reset();
    });
    EXPECT_FALSE(press(0, 0));
    EXPECT_FALSE(mShapes) << "ended at the press";
}

TEST_F(KyShapeGrabTest, ScriptsReachAllSettingsByNameAndNothingBadIsTaken) {
    const struct {
        const char* name;
        KyField value, bad;
    } cSettings[] = {{"Mode", 2, 3},
                     {"Constraint", 6, -1},
                     {"Space", 1, 2},
                     {"AutoPick", false, {}},
                     {"Mask", -2147483647, 4294967296.0},
                     {"Mask2", -2147483647, 4294967296.0},
                     {"TranslationStep", 0.5, -1.0},
                     {"RotationStep", 0.25, std::numeric_limits<double>::quiet_NaN()},
                     {"ScaleStep", 0.1, std::numeric_limits<double>::infinity()}};
    for (const auto& [name, value, bad] : cSettings) {
        const KyAttributeInterface* attribute = mShapes->getAttribute(name);
        ASSERT_TRUE(attribute) << name;
        const bool isMask = bad == KyField(4294967296.0);
        KyField found;
        // Alt and a button, as the state word has them.
        attribute->setValue(*mShapes, isMask ? KyField(2147483649.0) : value);
        attribute->setValue(*mShapes, bad);
        EXPECT_TRUE(attribute->getValue(*mShapes, found));
        EXPECT_EQ(found, value) << name;
    }
}
