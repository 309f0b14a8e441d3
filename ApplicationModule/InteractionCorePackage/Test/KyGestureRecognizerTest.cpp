// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGestureRecognizer.h"
#include "KyManipulator.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace {

constexpr int cMin = std::numeric_limits<int>::min(), cMax = std::numeric_limits<int>::max();
constexpr auto cBegan = KyInputEvent::eTouchBegan, cUpdated = KyInputEvent::eTouchUpdated,
               cEnded = KyInputEvent::eTouchEnded, cMoved = KyInputEvent::eMouseMoved;
constexpr int cNone = -1;

/// Without identities, unless the test gives them.
using Fingers = std::vector<KyTouchPoint>;

class KyGestureRecognizerTest : public ::testing::Test {
protected:
    void send(KyInputEvent::Type type, const Fingers& fingers) {
        KyInputEvent event;
        event.setType(type);
        event.setGestureKind(7);
        event.editTouchPoints() = fingers;
        manipulator->setInputEvent(event);
    }
    KyGesture* recognize() { return KyGestureRecognizer(*manipulator).recognizeGesture(); }
    KyGesture* recognize(const Fingers& former, const Fingers& present, KyInputEvent::Type formerType = cUpdated,
                         KyInputEvent::Type type = cUpdated) {
        manipulator->reset();
        send(formerType, former);
        send(type, present);
        return recognize();
    }
    int getKind() const { return manipulator->getInputEvent().getGestureKind(); }

    std::unique_ptr<KyManipulator> manipulator{KyManipulator::create()};
};

TEST_F(KyGestureRecognizerTest, KindsFollowFromTypesAndFingers) {
    const Fingers none, one{{10, 10}}, moved{{11, 10}}, two{{10, 10}, {90, 10}}, pinched{{10, 10}, {80, 10}};
    const Fingers three{{0, 0}, {50, 0}, {90, 0}}, tilted{{0, 0}, {50, 3}, {91, 0}}, all{{3, 0}, {53, 0}, {93, 0}};
    const Fingers twoOfThree{{0, 3}, {50, 0}, {93, 0}}, four(4), fourMoved(4, {5, 5});
    Fingers identified{{10, 10, 1}, {90, 10, 2}}, swapped{{10, 10, 2}, {90, 11, 1}}, other{{11, 10, 9}};
    struct Row {
        KyInputEvent::Type formerType;
        const Fingers& former;
        KyInputEvent::Type type;
        const Fingers& present;
        int kind;
        bool isFound;
    };
    const Row rows[] = {{cUpdated, one, cUpdated, moved, KyGesture::ePan, true},
                        {cUpdated, one, cUpdated, one, cNone, false},
                        {cUpdated, one, cUpdated, other, cNone, false},
                        {cUpdated, one, cMoved, moved, cNone, false},
                        {cMoved, one, cUpdated, moved, cNone, false},
                        {cEnded, one, cBegan, moved, cNone, false},
                        {cUpdated, none, cUpdated, none, cNone, false},
                        {cUpdated, none, cUpdated, two, cNone, false},
                        {cBegan, one, cEnded, moved, KyGesture::eTap, true},
                        {cBegan, none, cEnded, one, KyGesture::eTap, true},
                        {cUpdated, one, cEnded, moved, KyGesture::ePan, true},
                        {cUpdated, two, cUpdated, two, KyGesture::ePinch, false},
                        {cUpdated, two, cUpdated, pinched, KyGesture::ePinch, true},
                        {cUpdated, identified, cUpdated, swapped, cNone, false},
                        {cUpdated, three, cUpdated, three, KyGesture::eTilt, false},
                        {cUpdated, three, cUpdated, all, cNone, false},
                        {cUpdated, three, cUpdated, twoOfThree, cNone, false},
                        {cUpdated, three, cUpdated, tilted, KyGesture::eTilt, true},
                        {cUpdated, three, cUpdated, three, KyGesture::eTilt, true},
                        {cUpdated, four, cUpdated, fourMoved, cNone, false}};
    for (const Row& row : rows) {
        const KyGesture* gesture = recognize(row.former, row.present, row.formerType, row.type);
        EXPECT_EQ(getKind(), row.kind) << &row - rows;
        ASSERT_EQ(gesture && gesture->getKind() == row.kind, row.isFound) << &row - rows;
    }
    EXPECT_EQ(manipulator->editPanGesture()->getPoint(), KyVec2i(11, 10));
    EXPECT_EQ(manipulator->editTiltGesture()->getIndex(), 1);
    EXPECT_EQ(manipulator->editTiltGesture()->getOrientationPoint(), KyVec2i(50, 0));
    EXPECT_TRUE(recognize(three, {{2, 2}, {50, 0}, {90, 3}}));
    EXPECT_EQ(manipulator->editTiltGesture()->getIndex(), 2);
    EXPECT_TRUE(recognize(three, {{2, 2}, {51, 0}, {92, 2}}));
    EXPECT_EQ(manipulator->editTiltGesture()->getOrientationPoint(), KyVec2i(92, 2));
    manipulator->editTiltGesture()->setIndex(3);
    EXPECT_FALSE(recognize(three, three)) << "no finger has that index";
}

TEST_F(KyGestureRecognizerTest, ATapHasTwoUpdatesAtMost) {
    for (int nbUpdates = 0; nbUpdates < 5; ++nbUpdates) {
        manipulator->reset();
        send(cBegan, {{10, 10}});
        for (int i = 0; i < nbUpdates; ++i)
            send(cUpdated, {{10, 10}});
        send(cEnded, {{12, 13}});
        recognize();
        EXPECT_EQ(getKind(), nbUpdates <= 2 ? KyGesture::eTap : KyGesture::ePan) << nbUpdates;
    }
    EXPECT_EQ(manipulator->editTapGesture()->getPoint(), KyVec2i(12, 13));
}

TEST_F(KyGestureRecognizerTest, APinchHasScaleAngleAndCentre) {
    struct Row {
        Fingers former, present;
        double scale, angle;
        KyVec2i center;
    };
    const Row rows[] = {{{{0, 0}, {100, 0}}, {{-50, 0}, {150, 0}}, 0.5, 0, {50, 0}},
                        {{{0, 0}, {100, 0}}, {{25, 0}, {75, 0}}, 2.0, 0, {50, 0}},
                        {{{0, 0}, {100, 0}}, {{0, 0}, {0, -100}}, 1.0, -90, {0, 0}},
                        {{{0, 0}, {100, 0}}, {{100, 0}, {0, 0}}, 1.0, 180, {50, 0}},
                        {{{0, 0}, {100, 0}}, {{-3, 4}, {100, 5}}, 100 / std::hypot(103, 1), 0.5562, {48, 4}},
                        {{{5, 5}, {5, 5}}, {{5, 5}, {9, 5}}, 1.0, 0, {5, 5}},
                        {{{5, 5}, {9, 5}}, {{5, 5}, {5, 5}}, 1.0, 0, {5, 5}},
                        {{{cMin, cMin}, {cMax, cMax}}, {{cMax, cMax}, {cMin, cMin}}, 1.0, 180, {0, 0}},
                        {{{cMin, cMin}, {cMin, cMax}}, {{cMax, cMax}, {cMax, cMax}}, 1.0, 0, {cMax, cMax}}};
    for (const Row& row : rows) {
        ASSERT_TRUE(recognize(row.former, row.present)) << &row - rows;
        const KyPinchGesture& pinch = *manipulator->editPinchGesture();
        EXPECT_NEAR(pinch.getScaleFactor(), row.scale, 1e-12) << &row - rows;
        EXPECT_NEAR(pinch.getRotationAngle(), row.angle, 1e-4);
        EXPECT_EQ(pinch.getRotationCenter(), row.center) << &row - rows;
    }
}

} // namespace
