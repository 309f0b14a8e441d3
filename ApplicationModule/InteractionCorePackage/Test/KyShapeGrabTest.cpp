// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyShapeStage.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <numbers>
#include <utility>

namespace {

class KyShapeGrabTest : public testing::Test, protected KyShapeStage {};

} // namespace

TEST_F(KyShapeGrabTest, StepsSnapWhatIsCountedFromThePress) {
    mBox->setPosition(KyVec3d(0.1, 0, 0));
    mShapes->setTranslationStep(0.5);
    mShapes->setRotationStep(std::numbers::pi / 4);
    mShapes->setScaleStep(0.5);
    press(0, 0);
    move(28, -9);
    EXPECT_EQ(mBox->getPosition(), KyVec3d(0.6, 0, 0));
    mShapes->cancel();
    release();
    mShapes->setMode(Shape::eRotate);
    mBox->setPosition(KyVec3d());
    press(20, 0);
    move(20, 17);
    EXPECT_NEAR(mBox->getOrientation().getEulerAngles().z, std::numbers::pi / 4, 1e-12);
    mShapes->cancel();
    release();
    mShapes->setMode(Shape::eScale);
    press(20, 0);
    move(33, 0);
    EXPECT_EQ(mBox->getScale(), KyVec3d(1.5, 1.5, 1.5));
    move(1, 0);
    EXPECT_EQ(mBox->getScale(), KyVec3d(0.5, 0.5, 0.5)) << "one step is left";
    move(5000, 0);
    EXPECT_EQ(mBox->getScale(), KyVec3d(100, 100, 100));
}

TEST_F(KyShapeGrabTest, OnlyAPressWithTheMaskOnANodeBeginsADrag) {
    EXPECT_FALSE(send(KyInputEvent::eMousePressed, 0, 0, KyInputEvent::cLeftButton)) << "left to the trackball";
    EXPECT_FALSE(move(10, 0)) << "a move whose press went elsewhere";
    EXPECT_FALSE(press(150, 0)) << "nothing under the pointer";
    EXPECT_FALSE(press(-300, 0)) << "outside the view";
    EXPECT_FALSE(send(KyInputEvent::eWheel, 0, 0, KyInputEvent::cWheel));
    EXPECT_FALSE(mShapes->getObject());
    mShapes->setMask(-1);
    EXPECT_FALSE(press(0, 0));
    EXPECT_FALSE(send(KyInputEvent::eMousePressed, 0, 0, 0xFFFFFFFFu)) << "-1 is off, not all bits";
    mShapes->setMask2(KyInputEvent::cShift | KyInputEvent::cMiddleButton);
    EXPECT_TRUE(send(KyInputEvent::eMousePressed, 0, 0, KyInputEvent::cShift | KyInputEvent::cMiddleButton));
    EXPECT_EQ(mShapes->getObject(), mBox.get());
    EXPECT_TRUE(send(KyInputEvent::eMouseMoved, 40, 0, KyInputEvent::cMiddleButton)) << "modifiers may be let go";
    EXPECT_NEAR(mBox->getPosition().x, 1.0, 1e-9);
    EXPECT_TRUE(send(KyInputEvent::eMouseReleased, 40, 0, 0));
    EXPECT_EQ(mShapes->getObject(), mBox.get());
}

TEST_F(KyShapeGrabTest, AnotherButtonCancelsAndALostReleaseEndsTheDrag) {
    press(0, 0);
    move(40, 0);
    EXPECT_TRUE(send(KyInputEvent::eMousePressed, 40, 0, cGrab | KyInputEvent::cRightButton, 2));
    EXPECT_EQ(mBox->getPosition(), KyVec3d());
    EXPECT_TRUE(send(KyInputEvent::eMouseReleased, 40, 0, cGrab, 2)) << "the drag's button is down still";
    EXPECT_TRUE(move(60, 0));
    EXPECT_EQ(mBox->getPosition(), KyVec3d());
    EXPECT_TRUE(release());
    press(0, 0);
    send(KyInputEvent::eMousePressed, 40, 0, cGrab | KyInputEvent::cRightButton, 2);
    EXPECT_TRUE(send(KyInputEvent::eMouseReleased, 40, 0, KyInputEvent::cRightButton, 1));
    EXPECT_TRUE(send(KyInputEvent::eMouseMoved, 60, 0, KyInputEvent::cRightButton)) << "what cancelled moves no view";
    EXPECT_TRUE(send(KyInputEvent::eMouseReleased, 60, 0, 0, 2));
    EXPECT_FALSE(send(KyInputEvent::eMouseMoved, 60, 0, 0));
    press(0, 0);
    move(40, 0);
    EXPECT_FALSE(send(KyInputEvent::eMouseMoved, 90, 0, 0));
    EXPECT_FALSE(mShapes->isDragging());
    EXPECT_NEAR(mBox->getPosition().x, 1.0, 1e-9);
    press(40, 0);
    move(60, 0);
    EXPECT_TRUE(send(KyInputEvent::eMouseDoubleClicked, 60, 0, cGrab, 1)) << "the release in between was lost";
    move(80, 0);
    EXPECT_NEAR(mBox->getPosition().x, 2.0, 1e-9);
    mShapes->setIsEnabled(false);
    EXPECT_FALSE(move(90, 0));
    mShapes->setIsEnabled(true);
    EXPECT_FALSE(move(100, 0)) << "who knows what happened in between";
    EXPECT_NEAR(mBox->getPosition().x, 2.0, 1e-9);
}

TEST_F(KyShapeGrabTest, AListenerMayEndTheManipulatorAtThePress) {
    mShapes->modifiedSignal().connect([this](KyObject*, KyObjectModificationType kind, const std::string&, int) {
        if (kind == eAttributeChanged)
            mShapes.reset();
    });
    EXPECT_FALSE(press(0, 0));
    EXPECT_FALSE(mShapes);
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
    EXPECT_FALSE(mShapes->acceptObject(mCamera.get()));
    EXPECT_TRUE(mShapes->acceptObject(nullptr));
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
        for (int mode = 0; mode < Shape::eNbModes; ++mode)
            for (int constraint = 0; constraint < Shape::eNbConstraints; ++constraint) {
                mShapes->setMode(mode);
                mShapes->setConstraint(constraint);
                press(3, 4);
                move(-120, 75);
                move(std::numeric_limits<int>::max() - cMiddle, std::numeric_limits<int>::min() + cMiddle + 1);
                EXPECT_TRUE(isFinite(mBox->getWorldFrame()));
                mShapes->cancel();
                EXPECT_EQ(mBox->getLocalFrame(), KyMat4d());
                release();
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
        release();
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
    for (const Act& act : cActs) {
        for (const bool isInListener : {false, true}) {
            for (int mode = 0; mode < Shape::eNbModes; ++mode) {
                KyShapeStage stage;
                stage.mShapes->setMode(mode);
                ASSERT_TRUE(stage.press(20, 0));
                bool hasActed = false;
                if (isInListener)
                    stage.mBox->modifiedSignal().connect(
                        [&](KyObject*, KyObjectModificationType, const std::string&, int) {
                            if (!std::exchange(hasActed, true))
                                act(stage);
                        });
                else
                    act(stage);
                for (const int x : {40, 50}) {
                    if (stage.mShapes)
                        stage.move(x, 30);
                    EXPECT_TRUE(!stage.mBox || isFinite(stage.mBox->getWorldFrame()));
                }
                EXPECT_EQ(hasActed, isInListener);
                if (stage.mShapes) {
                    stage.mShapes->cancel();
                    stage.release();
                    EXPECT_FALSE(stage.mShapes->isDragging());
                }
            }
        }
    }
}

TEST_F(KyShapeGrabTest, ScriptsReachAllSettingsByName) {
    const struct {
        const char* name;
        KyField value, bad;
    } cSettings[] = {
        {"Mode", 2, 3},
        {"Constraint", 6, -1},
        {"Space", 1, 2},
        {"Mask", 5, {}},
        {"Mask2", 7, {}},
        {"AutoPick", false, {}},
        {"TranslationStep", 0.5, -1.0},
        {"RotationStep", 0.25, std::numeric_limits<double>::quiet_NaN()},
        {"ScaleStep", 0.1, std::numeric_limits<double>::infinity()},
    };
    for (const auto& [name, value, bad] : cSettings) {
        SCOPED_TRACE(name);
        const KyAttributeInterface* attribute = mShapes->getAttribute(name);
        ASSERT_TRUE(attribute);
        KyField found;
        attribute->setValue(*mShapes, value);
        attribute->setValue(*mShapes, bad);
        EXPECT_TRUE(attribute->getValue(*mShapes, found));
        EXPECT_EQ(found, value);
    }
    for (const char* mask : {"Mask", "Mask2"}) {
        EXPECT_TRUE(mShapes->getAttribute(mask)->setValue(*mShapes, KyField(2147483649.0))) << "Alt and a button";
        EXPECT_FALSE(mShapes->getAttribute(mask)->setValue(*mShapes, KyField(4294967296.0)));
    }
    EXPECT_EQ(mShapes->getMask(), -2147483647);
    EXPECT_EQ(mShapes->getMask2(), -2147483647);
}
