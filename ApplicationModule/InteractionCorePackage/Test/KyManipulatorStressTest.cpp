// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTrackballFixture.h"

#include <limits>
#include <random>

namespace {

/// Events of every kind, with the numbers that hurt.
class KyManipulatorStressTest : public KyTrackballFixture {
protected:
    KyManipulatorStressTest() {
        parent->addChild(camera.get());
        trackball->setMask2Orbit(0);
        trackball->setMask2Move(0x20000001);
        trackball->setMask2Pan(static_cast<int>(0x80000001u));
        trackball->setMask2Zoom(8);
        trackball->setMaskRotate(16);
    }

    int roll(int count) { return static_cast<int>(mRandom() % static_cast<unsigned>(count)); }
    int getCoordinate() {
        constexpr int cLimits[] = {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
        return roll(20) == 0 ? cLimits[roll(2)] : roll(900) - 50;
    }
    std::vector<KyTouchPoint> getFingers() {
        std::vector<KyTouchPoint> fingers(static_cast<std::size_t>(roll(50) == 0 ? 100 : roll(5)));
        for (KyTouchPoint& finger : fingers)
            finger = {getCoordinate(), getCoordinate(), roll(8) == 0 ? roll(3) : -1};
        return fingers;
    }
    KyInputEvent getEvent() {
        constexpr std::uint32_t cStates[] = {0, 1, 2, 4, 8, 16, 32, 0x20000001u, 0x80000001u, 0xFFFFFFFFu};
        KyInputEvent event = makeEvent(mType, getCoordinate(), getCoordinate(), cStates[mState]);
        if (roll(4) == 0)
            mType = static_cast<Event::Type>(roll(15));
        if (roll(4) == 0)
            mState = roll(10);
        event.setWheelDelta(roll(3) ? roll(2400) - 1200 : getCoordinate());
        event.setWheelVertical(roll(2) == 0);
        if (event.isTouch())
            event.editTouchPoints() = getFingers();
        return event;
    }
    void disturb() {
        camera->setOrthographic(roll(2) == 0);
        canvas->setSize(roll(3) * 400, roll(3) * 300);
        parent->setScale(KyVec3d(roll(3) + 0.5, roll(3) + 0.1, roll(3) + 2));
        trackball->setOrthographicMovements(roll(2) == 0);
        trackball->setDamping(roll(2));
        if (roll(3) == 0)
            camera->setWorldFrame(KyMat4d::fromTranslation(KyVec3d(roll(3), 0, 5)));
    }

    KyHolder<KyNode> parent{new KyNode};

private:
    std::mt19937 mRandom{20260101};
    Event::Type mType = Event::eMouseMoved;
    int mState = 1;
};

TEST_F(KyManipulatorStressTest, AMillionEventsLeaveTheCameraOrthonormal) {
    constexpr int cNbEvents = 1000000;
    int nbUsed = 0;
    for (int i = 0; i < cNbEvents; ++i) {
        if (roll(100) == 0)
            disturb();
        if (roll(50) == 0)
            trackball->coast(roll(2));
        // A frame that is left alone under a parent whose scale changed is not of the trackball's making.
        const KyMat4d before = camera->getWorldFrame();
        nbUsed += trackball->setInputEvent(getEvent());
        const bool isOther = !(camera->getWorldFrame() == before);
        ASSERT_LE(isOther ? getError() : 0.0, 1e-9) << i << "\n" << camera->getWorldFrame();
        ASSERT_TRUE(camera->getWorldPosition().isFinite() && std::isfinite(camera->getVerticalExtent()));
    }
    EXPECT_GT(nbUsed, cNbEvents / 10);
}

} // namespace
