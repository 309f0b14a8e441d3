// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTrackballFixture.h"

#include "KyMainTaskManager.h"

#include <functional>
#include <limits>
#include <random>
#include <thread>

namespace {

using KyTrackballManipulatorTest = KyTrackballFixture;
constexpr std::uint32_t cLeft = 1, cRight = 2, cMiddle = 4;
constexpr int cMin = std::numeric_limits<int>::min(), cMax = std::numeric_limits<int>::max();

TEST_F(KyTrackballManipulatorTest, TheSceneFollowsAnOrbit) {
    const KyVec3d front(0, 0, 1);
    EXPECT_TRUE(drag(cLeft, 40, 0));
    expectNear(project(front), KyVec2d(435.79, 300), 0.01);
    camera->setWorldFrame(KyMat4d::fromTranslation(KyVec3d(0, 0, 5)));
    EXPECT_TRUE(drag(cLeft, 0, -40));
    expectNear(project(front), KyVec2d(400, 252.70), 0.01);
    camera->setWorldFrame(KyMat4d::fromTranslation(KyVec3d(0, 0, 5)));
    trackball->setOrbitInverseCtrl(false);
    drag(cLeft, 0, -40);
    expectNear(project(front), KyVec2d(400, 347.30), 0.01);
}

TEST_F(KyTrackballManipulatorTest, NoEventNearThePolesMakesThePictureJump) {
    send(Event::eMousePressed, 400, 300, cLeft);
    double height = 0.0;
    for (int i = 1; i < 900; ++i) {
        const KyMat4d before = camera->getWorldFrame();
        ASSERT_TRUE(send(Event::eMouseMoved, 400 + i % 2, 300 + i, cLeft));
        // 1 px down turns by 2 * 2 / 600, 1 px sideways by 2 * 2 / 800.
        for (int axis = 0; axis < 3; ++axis)
            ASSERT_LE((before.getColumn(axis) - camera->getWorldFrame().getColumn(axis)).length(), 0.0117) << i;
        height = std::max(height, camera->getWorldPosition().y);
    }
    EXPECT_GT(height, 4.9999);
    for (int i = 0; i < 20000; ++i)
        send(Event::eMouseMoved, 7 * i, (i % 400) * 3, cLeft);
    EXPECT_NEAR(camera->getRight().dot(KyVec3d(0, 1, 0)), 0.0, 1e-12) << "it rolls";
    EXPECT_NEAR(camera->getWorldPosition().length(), 5.0, 1e-9) << "it drifts";
}

TEST_F(KyTrackballManipulatorTest, TheGrabbedPointStaysUnderThePointerOfAPan) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> any(-1.0, 1.0);
    for (int i = 0; i < 200; ++i) {
        camera->setOrthographic(i % 2 == 0);
        camera->setVerticalExtent(2.0 + any(random));
        camera->setVerticalAperture(0.8 + 0.5 * any(random));
        camera->lookAt(KyVec3d(any(random), any(random), any(random)) * 9.0, KyVec3d(any(random), 0, 0));
        trackball->setCenter(camera->getWorldPosition() + camera->getForward() * 3.0 + camera->getUp());
        const KyVec3d grabbed = unproject(300, 200, 3.0);
        ASSERT_TRUE(drag(cMiddle, i - 100, 70, 300, 200));
        expectNear(project(grabbed), KyVec2d(200 + i, 270), 1e-9);
    }
}

TEST_F(KyTrackballManipulatorTest, ZoomGoesByPartsOfTheDistance) {
    struct Row {
        std::vector<int> deltas;
        double z;
    };
    const Row rows[] = {{{120}, 4.45}, {{120, -120}, 4.9395}, {{-120}, 5.55},          {{1200 * 9}, 0.5},
                        {{0}, 5.0},    {{cMax}, 0.5},         {{-1200 * 1000}, 5505.0}};
    for (const Row& row : rows) {
        camera->setPosition(KyVec3d(0, 0, 5));
        for (const int delta : row.deltas)
            EXPECT_TRUE(wheel(delta));
        expectNear(camera->getWorldPosition(), KyVec3d(0, 0, row.z), 1e-9);
    }
    EXPECT_FALSE(wheel(1200, false));
    trackball->setCenter(camera->getWorldPosition());
    EXPECT_TRUE(wheel(120));
    EXPECT_NEAR(camera->getWorldPosition().z, 5505.0 - 0.0011, 1e-6);
    camera->setOrthographic(true);
    wheel(120);
    EXPECT_NEAR(camera->getVerticalExtent(), 8.9, 1e-12);
    struct Twice : KyTrackballManipulator {
        bool doZoom() override { return KyTrackballManipulator::doZoom() && KyTrackballManipulator::doZoom(); }
    };
    trackball->destroy();
    living = KyObjectReference(trackball = new Twice);
    trackball->setObject(camera.get());
    EXPECT_TRUE(wheel(120));
    EXPECT_NEAR(camera->getVerticalExtent(), 8.9 * 0.89 * 0.89, 1e-12);
}

TEST_F(KyTrackballManipulatorTest, MoveDrivesAndRotateLooksRound) {
    trackball->setMaskRotate(cLeft | cRight);
    struct Row {
        std::uint32_t state;
        int dx, dy;
        bool isInverse;
        KyVec3d eye, forward;
    };
    const double full = 10.0 * std::tan(std::numbers::pi / 8.0);
    const Row rows[] = {{cRight, 0, -600, false, {0, 0, 5 - full}, {0, 0, -1}},
                        {cRight, 0, -600, true, {0, 0, 5 + full}, {0, 0, -1}},
                        {cRight, 400, 0, false, {full * 2 / 3, 0, 5}, {0, 0, -1}},
                        {cLeft | cRight, 40, 0, false, {0, 0, 5}, {std::sin(0.1), 0, -std::cos(0.1)}},
                        {cLeft | cRight, 0, -30, false, {0, 0, 5}, {0, std::sin(0.1), -std::cos(0.1)}},
                        {cLeft | cRight, 0, -30, true, {0, 0, 5}, {0, -std::sin(0.1), -std::cos(0.1)}}};
    for (const Row& row : rows) {
        camera->setWorldFrame(KyMat4d::fromTranslation(KyVec3d(0, 0, 5)));
        trackball->setMoveInverseCtrl(row.isInverse);
        trackball->setRotateInverseCtrl(row.isInverse);
        EXPECT_TRUE(drag(row.state, row.dx, row.dy));
        expectNear(camera->getWorldPosition(), row.eye, 1e-12);
        expectNear(camera->getForward(), row.forward, 1e-12);
    }
}

TEST_F(KyTrackballManipulatorTest, AMaskIsTheWholeStateWord) {
    const KyMat4d start = camera->getWorldFrame();
    const std::pair<int, std::uint32_t> rows[] = {
        {0x20000000, 0x20000000}, {0x20000001, 0x20000001}, {static_cast<int>(0x80000001u), 0x80000001u}, {0, 0}};
    for (const auto& [mask, state] : rows) {
        trackball->setMaskOrbit(mask);
        for (const std::uint32_t other : {std::uint32_t{cLeft}, 0xFFFFFFFFu, 0x40000001u}) {
            EXPECT_FALSE(drag(other, 50, 50));
            expectFrameStays(start);
        }
        EXPECT_TRUE(drag(state, 50, 0)) << mask;
        camera->setWorldFrame(start);
    }
    trackball->setMaskOrbit(KyTrackballManipulator::cNoMask);
    EXPECT_FALSE(drag(0xFFFFFFFFu, 50, 50));
    trackball->setMask2Orbit(cMiddle);
    EXPECT_TRUE(drag(cMiddle, 0, 50));
    EXPECT_GT(camera->getWorldPosition().y, 0.5) << "orbit comes before pan";
}

TEST_F(KyTrackballManipulatorTest, OnlyTheDragItselfMovesTheCamera) {
    const KyMat4d start = camera->getWorldFrame();
    EXPECT_FALSE(send(Event::eMouseMoved, 700, 500, cLeft)) << "its press went elsewhere";
    EXPECT_FALSE(send(Event::eMouseMoved, 10, 10));
    EXPECT_FALSE(send(Event::eMouseMoved, 300, 10, cLeft));
    EXPECT_TRUE(send(Event::eMousePressed, 100, 100, cLeft));
    EXPECT_FALSE(send(Event::eMouseMoved, 400, 300, cMiddle));
    EXPECT_TRUE(send(Event::eMouseReleased, 500, 300));
    EXPECT_FALSE(send(Event::eMouseDoubleClicked, 1, 1, cLeft));
    EXPECT_FALSE(send(Event::eKeyPressed, 1, 1, cLeft));
    Event repeated = makeEvent(Event::eMousePressed, 5, 5, cLeft);
    repeated.setRepeatsTouch(true);
    EXPECT_FALSE(trackball->setInputEvent(repeated));
    expectFrameStays(start);
    EXPECT_TRUE(send(Event::eMousePressed, 400, 300, cLeft));
    trackball->setIsEnabled(false);
    EXPECT_FALSE(send(Event::eMouseMoved, 500, 300, cLeft));
    trackball->setIsEnabled(true);
    EXPECT_FALSE(send(Event::eMouseMoved, 700, 300, cLeft)) << "what it missed is no part of the drag";
    expectFrameStays(start);
    EXPECT_TRUE(send(Event::eMouseMoved, 701, 300, cLeft));
    expectNear(camera->getForward(), KyVec3d(std::sin(0.005), 0, -std::cos(0.005)), 1e-12);
    canvas->setSize(0, 600);
    EXPECT_FALSE(drag(cLeft, 50, 0));
}

TEST_F(KyTrackballManipulatorTest, APinchKeepsBothFingersOnTheirPoints) {
    camera->lookAt(KyVec3d(0, 5, 0), KyVec3d(), KyVec3d(0, 0, -1));
    const KyVec3d resting = unproject(300, 300, 5.0), moving = unproject(500, 300, 5.0);
    touch(Event::eTouchBegan, {{1, 300, 300}, {2, 500, 300}});
    EXPECT_TRUE(touch(Event::eTouchUpdated, {{1, 300, 300}, {2, 420, 460}}));
    expectNear(project(resting), KyVec2d(300, 300), 1e-9);
    expectNear(project(moving), KyVec2d(420, 460), 1e-9);
    EXPECT_FALSE(touch(Event::eTouchUpdated, {{1, 300, 300}, {2, 420, 460}}));
    EXPECT_LE(getError(), 1e-12);
}

TEST_F(KyTrackballManipulatorTest, NothingJumpsWhenFingersComeAndGo) {
    struct Row {
        Event::Type type;
        Fingers fingers;
        bool moves;
    };
    const Row rows[] = {{Event::eTouchBegan, {{1, 100, 100}}, false},
                        {Event::eTouchUpdated, {{1, 100, 110}}, true},
                        {Event::eTouchUpdated, {{1, 100, 130}, {2, 500, 400}}, false},
                        {Event::eTouchUpdated, {{1, 100, 130}, {2, 510, 400}}, true},
                        {Event::eTouchUpdated, {{2, 510, 400}, {3, 100, 130}}, false},
                        {Event::eTouchUpdated, {{3, 100, 130}}, false},
                        {Event::eTouchUpdated, {{3, 100, 140}}, true},
                        {Event::eTouchUpdated, {{1, 300, 300}, {2, 500, 300}, {3, 400, 140}}, false},
                        {Event::eTouchUpdated, {{1, 300, 300}, {2, 500, 301}, {3, 400, 150}}, true},
                        {Event::eTouchEnded, {{3, 400, 150}}, false},
                        {Event::eTouchBegan, {{1, 600, 500}}, false},
                        {Event::eTouchEnded, {{1, 620, 500}}, false}};
    for (const Row& row : rows) {
        const KyMat4d before = camera->getWorldFrame();
        EXPECT_EQ(touch(row.type, row.fingers), row.moves) << &row - rows;
        EXPECT_EQ(camera->getWorldFrame() == before, !row.moves) << &row - rows;
        // 20 px of a pan at 5 units are 0.14 units, 10 px of a tilt 0.33, of a pinch less.
        EXPECT_LE((camera->getWorldPosition() - before.translation()).length(), 0.4) << &row - rows;
    }
}

TEST_F(KyTrackballManipulatorTest, AnyFrameBecomesOrthonormal) {
    const auto makeFrame = [](KyVec3d x, KyVec3d y, KyVec3d z) {
        KyMat4d frame = KyMat4d::fromTranslation(KyVec3d(0, 0, 5));
        frame.setColumn(0, x);
        frame.setColumn(1, y);
        frame.setColumn(2, z);
        return frame;
    };
    const KyMat4d frames[] = {makeFrame({3, 0, 0}, {0, 0.001, 0}, {0, 0, 1e9}),
                              makeFrame({1, 0, 0}, {0.9, 1, 0.3}, {0, 0.2, 1}),
                              makeFrame({-1, 0, 0}, {0, 1, 0}, {0, 0, 1}),
                              makeFrame({}, {}, {}),
                              makeFrame({1, 0, 0}, {0, 1, 0}, {}),
                              makeFrame({1, 0, 0}, {}, {0, 0, 1}),
                              makeFrame({1, 0, 0}, {0, 1e-9, 1}, {0, 0, 1}),
                              makeFrame({1, 1, 1}, {1, 1, 1}, {1, 1, 1}),
                              makeFrame({1e-200, 0, 0}, {0, 1e200, 0}, {0, 0, -1e-300})};
    for (const KyMat4d& frame : frames) {
        camera->setWorldFrame(frame);
        EXPECT_TRUE(drag(cLeft, 3, 5));
        EXPECT_LE(getError(), 1e-9) << frame;
    }
    KyHolder<KyNode> parent(new KyNode);
    parent->addChild(camera.get());
    parent->setScale(KyVec3d(2, 0.1, 30));
    EXPECT_TRUE(drag(cLeft, 3, 5));
    EXPECT_LE(getError(), 1e-9);
    parent->setScale(KyVec3d(1, 0, 1));
    EXPECT_FALSE(drag(cLeft, 3, 5)) << "no frame can be set under a parent that is flat";
}

TEST_F(KyTrackballManipulatorTest, WhatLeavesTheWorldIsRefused) {
    for (const int x : {cMin, cMax})
        for (const std::uint32_t state : {cLeft, cRight, cMiddle}) {
            send(Event::eMousePressed, x, -1 - x, state);
            send(Event::eMouseMoved, -1 - x, x, state);
            EXPECT_LE(getError(), 1e-9);
        }
    camera->setWorldFrame(KyMat4d::fromTranslation(KyVec3d(0, 0, 9e11)));
    const KyMat4d start = camera->getWorldFrame();
    drag(cRight, 0, 600);
    for (const int delta : {-1200, cMin})
        wheel(delta);
    expectFrameStays(start);
    trackball->setPanSpeed(1e300);
    EXPECT_FALSE(drag(cMiddle, 1, 1));
    trackball->setOrbitSpeed(std::numeric_limits<double>::max());
    drag(cLeft, 100, 400);
    expectFrameStays(start);
}

TEST_F(KyTrackballManipulatorTest, TheCenterIsThePointGivenOrShown) {
    const Event press = makeEvent(Event::eMousePressed, 400, 300, cLeft);
    EXPECT_TRUE(trackball->setInputEvent(press, KyVec3d(1, 2, 3)));
    trackball->setInputEvent(press, KyVec3d(NAN, 2, 3));
    EXPECT_TRUE(trackball->setInputEvent(press));
    EXPECT_EQ(trackball->getCenter(), KyVec3d(1, 2, 3)) << "nothing is shown there";
    view->shown = KyVec3d(0.5, 1, -1);
    const KyVec2d pixel = project(view->shown);
    EXPECT_TRUE(wheel(120));
    EXPECT_EQ(trackball->getCenter(), view->shown);
    expectNear(project(view->shown), pixel, 1e-9);
    view->nbPicks = 0;
    touch(Event::eTouchBegan, {{1, 100, 100}});
    for (int i = 1; i < 9; ++i)
        EXPECT_TRUE(touch(Event::eTouchUpdated, {{1, 100 + i, 100}}));
    EXPECT_EQ(view->nbPicks, 1) << "while a pan goes on the centre stays";
    const struct {
        std::vector<Fingers> updates;
        int nbPicks;
    } rows[] = {{{{{1, 101, 0}}, {{1, 101, 0}}, {{1, 102, 0}}, {{1, 102, 0}}, {{1, 103, 0}}}, 1},
                {{{{1, 101, 0}}, {{2, 0, 0}}, {{2, 9, 0}}}, 2},
                {{{{1, 0, 0}, {2, 9, 0}}, {{1, 0, 0}, {2, 9, 0}}, {{1, 0, 0}, {2, 8, 0}}, {{1, 0, 0}, {2, 7, 0}}}, 1},
                {{{{1, 0, 0}, {2, 9, 0}, {3, 0, 9}},
                  {{1, 0, 0}, {2, 9, 0}, {3, 0, 9}},
                  {{1, 0, 0}, {2, 9, 0}, {3, 0, 19}},
                  {{1, 0, 0}, {2, 9, 0}, {3, 0, 29}}},
                 1}};
    for (const auto& [updates, nbPicks] : rows) {
        view->nbPicks = 0;
        touch(Event::eTouchBegan, {{1, 100, 0}});
        for (const Fingers& fingers : updates)
            touch(Event::eTouchUpdated, fingers);
        EXPECT_EQ(view->nbPicks, nbPicks) << &updates - &rows[0].updates;
    }
    view->nbPicks = 1;
    send(Event::eMousePressed, 900, cMin);
    wheel(120, false);
    trackball->setAutoCenter(false);
    trackball->setInputEvent(press, KyVec3d(4, 5, 6));
    trackball->setCenter(KyVec3d(1e13, 0, 0));
    EXPECT_EQ(view->nbPicks, 1);
    EXPECT_EQ(trackball->getCenter(), view->shown);
}

TEST_F(KyTrackballManipulatorTest, DampingLetsAMotionGoOnUntilTheNextPress) {
    KyMainTaskManager& tasks = KyMainTaskManager::get();
    const unsigned nbTasks = tasks.getNbTasks();
    drag(cMiddle, 40, 0);
    EXPECT_FALSE(trackball->coast(0.1)) << "off by default";
    for (const double bad : {-1.0, std::nan(""), HUGE_VAL})
        trackball->setDamping(bad);
    EXPECT_EQ(trackball->getDamping(), 0.0);
    trackball->setDamping(0.5);
    const double x = camera->getWorldPosition().x;
    drag(cMiddle, 40, 0);
    const double afterDrag = camera->getWorldPosition().x - x;
    EXPECT_EQ(tasks.getNbTasks(), nbTasks + 1);
    EXPECT_TRUE(trackball->coast(0.5));
    const double first = camera->getWorldPosition().x - x - afterDrag;
    EXPECT_TRUE(trackball->coast(0.5));
    const double second = camera->getWorldPosition().x - x - afterDrag - first;
    EXPECT_LT(first, afterDrag);
    EXPECT_NEAR(second / first, std::exp(-1.0), 1e-9);
    while (trackball->coast(1.0))
        EXPECT_LE(getError(), 1e-9);
    EXPECT_EQ(tasks.getNbTasks(), nbTasks);
    const Fingers finger{{1, 5, 5}};
    const KyVolumed box({0, 0, 0}, {1, 1, 1});
    const std::function<void()> ends[] = {[&] { send(Event::eMousePressed, 0, 0, cLeft); },
                                          [&] { wheel(120); },
                                          [&] { touch(Event::eTouchBegan, finger); },
                                          [&] { trackball->reset(); },
                                          [&] { trackball->setIsEnabled(false), trackball->setIsEnabled(true); },
                                          [&] {
                                              trackball->setMask2Orbit(0);
                                              send(Event::eMouseMoved, 0, 0), send(Event::eMouseMoved, 1, 0);
                                              trackball->setMask2Orbit(KyTrackballManipulator::cNoMask);
                                          },
                                          [&] { trackball->setObject(camera.get()); },
                                          [&] { trackball->focusFront(box); },
                                          [&] { trackball->setDamping(0.0); }};
    for (const auto& end : ends) {
        trackball->setDamping(0.5);
        touch(Event::eTouchBegan, finger);
        for (int i = 0; i < 4; ++i)
            touch(Event::eTouchUpdated, {{1, 5 + 9 * i, 5}});
        touch(Event::eTouchEnded, {{1, 40, 5}});
        EXPECT_EQ(tasks.getNbTasks(), nbTasks + 1);
        end();
        EXPECT_FALSE(trackball->coast(0.1)) << &end - ends;
        EXPECT_EQ(tasks.getNbTasks(), nbTasks);
    }
    trackball->setDamping(0.5);
    send(Event::eMousePressed, 0, 0, cLeft);
    send(Event::eMouseMoved, 9, 9, cLeft);
    std::this_thread::sleep_for(std::chrono::milliseconds(120));
    send(Event::eMouseReleased, 9, 9);
    EXPECT_FALSE(trackball->coast(0.1)) << "the pointer rested";
}

TEST_F(KyTrackballManipulatorTest, ListenersMayEndEverythingInTheMiddleOfAnEvent) {
    using End = std::function<void(KyTrackballManipulatorTest&)>;
    const End ends[] = {[](auto& t) { t.trackball->destroy(); }, [](auto& t) { t.trackball->setDamping(0.0); },
                        [](auto& t) { t.camera.reset(); }, [](auto& t) { t.view.reset(), t.canvas.reset(); },
                        [](auto& t) { t.trackball->setObject(nullptr); }};
    const std::function<void(KyTrackballManipulatorTest&)> motions[] = {
        [](auto& t) { t.send(Event::eMouseMoved, 420, 300, cLeft); },
        [](auto& t) { t.wheel(120); },
        [](auto& t) { t.trackball->focusFront(KyVolumed(KyVec3d(), KyVec3d(900, 900, 900))); },
        [](auto& t) { t.trackball->coast(0.1); },
        [](auto&) { KyMainTaskManager::get().update(); },
        [](auto& t) {
            t.touch(Event::eTouchEnded, {{{1, 90, 5}}});
        }};
    struct Scratch : KyTrackballManipulatorTest {
        void TestBody() override {}
    };
    for (const End& end : ends)
        for (std::size_t i = 0; i < std::size(motions); ++i) {
            bool hasEnded = false;
            Scratch t;
            t.trackball->setDamping(1.0);
            t.camera->setOrthographic(i % 2 == 1);
            t.send(Event::eMousePressed, 400, 300, cLeft);
            t.send(Event::eMouseMoved, 410, 300, cLeft);
            if (i > 2)
                t.send(Event::eMouseReleased, 410, 300);
            for (int j = 0; i == 5 && j < 4; ++j)
                t.touch(j == 0 ? Event::eTouchBegan : Event::eTouchUpdated, {{1, 5, 5}});
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            t.camera->modifiedSignal().connect([&](KyObject*, KyObjectModificationType, const std::string&, int) {
                if (!std::exchange(hasEnded, true))
                    end(t);
            });
            motions[i](t);
            EXPECT_TRUE(hasEnded) << i;
        }
}

} // namespace
