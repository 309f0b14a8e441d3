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
    const std::pair<int, double> rows[] = {{120, 4.45}, {-120, 5.55}, {1200 * 9, 0.5},
                                           {0, 5.0},    {cMax, 0.5},  {-1200 * 1000, 5505.0}};
    for (const auto& [delta, z] : rows) {
        camera->setPosition(KyVec3d(0, 0, 5));
        EXPECT_TRUE(wheel(delta));
        expectNear(camera->getWorldPosition(), KyVec3d(0, 0, z), 1e-9);
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

TEST_F(KyTrackballManipulatorTest, OrbitMoveAndRotateGoTheirWays) {
    trackball->setMaskRotate(cLeft | cRight);
    struct Row {
        std::uint32_t state;
        int dx, dy;
        bool isInverse;
        KyVec3d eye, forward;
    };
    const double full = 10.0 * std::tan(std::numbers::pi / 8.0);
    const double s1 = std::sin(0.1), c1 = std::cos(0.1), s2 = std::sin(0.2), c2 = std::cos(0.2);
    const Row rows[] = {{cLeft, 40, 0, true, {-5 * s2, 0, 5 * c2}, {s2, 0, -c2}},
                        {cLeft, 0, -30, true, {0, -5 * s2, 5 * c2}, {0, s2, -c2}},
                        {cLeft, 0, -30, false, {0, 5 * s2, 5 * c2}, {0, -s2, -c2}},
                        {cRight, 0, -600, false, {0, 0, 5 - full}, {0, 0, -1}},
                        {cRight, 0, -600, true, {0, 0, 5 + full}, {0, 0, -1}},
                        {cRight, 400, 0, false, {full * 2 / 3, 0, 5}, {0, 0, -1}},
                        {cLeft | cRight, 40, 0, false, {0, 0, 5}, {s1, 0, -c1}},
                        {cLeft | cRight, 0, -30, false, {0, 0, 5}, {0, s1, -c1}},
                        {cLeft | cRight, 0, -30, true, {0, 0, 5}, {0, -s1, -c1}}};
    for (const Row& row : rows) {
        camera->setWorldFrame(KyMat4d::fromTranslation(KyVec3d(0, 0, 5)));
        trackball->setOrbitInverseCtrl(row.isInverse);
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
    const struct {
        Event::Type type;
        int x;
        std::uint32_t state;
        bool isUsed;
    } rows[] = {{Event::eMouseMoved, 700, cLeft, false},       {Event::eMouseMoved, 10, 0, false},
                {Event::eMouseMoved, 300, cLeft, false},       {Event::eMousePressed, 100, cLeft, true},
                {Event::eMouseMoved, 400, cMiddle, false},     {Event::eMouseReleased, 500, 0, true},
                {Event::eMouseDoubleClicked, 1, cLeft, false}, {Event::eKeyPressed, 1, cLeft, false}};
    for (const auto& row : rows)
        EXPECT_EQ(send(row.type, row.x, 300, row.state), row.isUsed) << &row - rows;
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
    const std::array<KyVec3d, 3> frames[] = {{{{3, 0, 0}, {0, 0.001, 0}, {0, 0, 1e9}}},
                                             {{{1, 0, 0}, {0.9, 1, 0.3}, {0, 0.2, 1}}},
                                             {{{-1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
                                             {},
                                             {{{1, 0, 0}, {0, 1, 0}, {}}},
                                             {{{1, 0, 0}, {}, {0, 0, 1}}},
                                             {{{1, 0, 0}, {0, 1e-9, 1}, {0, 0, 1}}},
                                             {{{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}},
                                             {{{1e-200, 0, 0}, {0, 1e200, 0}, {0, 0, -1e-300}}}};
    for (const auto& columns : frames) {
        KyMat4d frame = KyMat4d::fromTranslation(KyVec3d(0, 0, 5));
        for (int i = 0; i < 3; ++i)
            frame.setColumn(i, columns[static_cast<std::size_t>(i)]);
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
    // The last finger's way after it came to the others; the first update of many rests.
    const struct {
        Fingers others;
        std::vector<int> ways;
    } rows[] = {
        {{}, {1, 2, 3, 4}}, {{}, {0, 1, 1, 2, 2, 3}}, {{{1, 0, 0}}, {0, 1, 2}}, {{{1, 0, 0}, {2, 9, 0}}, {0, 9, 19}}};
    for (const auto& [others, ways] : rows) {
        view->nbPicks = 0;
        Fingers fingers = others;
        fingers.push_back({7, 50, 50});
        touch(Event::eTouchBegan, fingers);
        for (const int way : ways) {
            fingers.back()[2] = 50 + way;
            touch(Event::eTouchUpdated, fingers);
        }
        EXPECT_EQ(view->nbPicks, 1) << "while a gesture goes on the centre stays: " << &others - &rows[0].others;
    }
    touch(Event::eTouchBegan, {{1, 100, 0}});
    for (const auto& [id, x] : {std::pair(1, 101), std::pair(2, 0), std::pair(2, 9)})
        touch(Event::eTouchUpdated, {{id, x, 0}});
    EXPECT_EQ(view->nbPicks, 3) << "another finger begins another pan";
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
    double x = 0.0;
    const auto getWay = [&] {
        const double former = std::exchange(x, camera->getWorldPosition().x);
        return x - former;
    };
    drag(cMiddle, 40, 0);
    getWay();
    EXPECT_FALSE(trackball->coast(0.1)) << "off by default";
    trackball->setDamping(0.5);
    for (const double bad : {-1.0, std::nan(""), HUGE_VAL})
        trackball->setDamping(bad);
    EXPECT_EQ(trackball->getDamping(), 0.5);
    // A machine may sleep between two events, and a pointer that rested throws nothing.
    const auto throwIt = [&](auto&& gesture) {
        for (int i = 0; i < 20 && tasks.getNbTasks() == nbTasks; ++i)
            gesture();
    };
    throwIt([&] { drag(cMiddle, 40, 0); });
    const double afterDrag = getWay();
    EXPECT_EQ(tasks.getNbTasks(), nbTasks + 1);
    EXPECT_TRUE(trackball->coast(0.5));
    const double first = getWay();
    EXPECT_TRUE(trackball->coast(0.5));
    EXPECT_NEAR(getWay() / first, std::exp(-1.0), 1e-9);
    EXPECT_GT(first * afterDrag, 0.0) << "the same way";
    while (trackball->coast(1.0))
        EXPECT_LE(getError(), 1e-9);
    EXPECT_EQ(tasks.getNbTasks(), nbTasks);
    const Fingers finger{{1, 5, 5}};
    const KyVolumed box({0, 0, 0}, {1, 1, 1});
    const auto orbitByMoves = [this] {
        trackball->setMask2Orbit(0);
        send(Event::eMouseMoved, 0, 0), send(Event::eMouseMoved, 1, 0);
        trackball->setMask2Orbit(KyTrackballManipulator::cNoMask);
    };
    const std::function<void()> ends[] = {[&] { send(Event::eMousePressed, 0, 0, cLeft); },
                                          [&] { wheel(120); },
                                          [&] { touch(Event::eTouchBegan, finger); },
                                          [&] { trackball->reset(); },
                                          [&] { trackball->setIsEnabled(false), trackball->setIsEnabled(true); },
                                          orbitByMoves,
                                          [&] { trackball->setObject(camera.get()); },
                                          [&] { trackball->focusFront(box); },
                                          [&] { trackball->setDamping(0.0); }};
    for (const auto& end : ends) {
        trackball->setDamping(0.5);
        throwIt([&] {
            touch(Event::eTouchBegan, finger);
            for (int i = 0; i < 4; ++i)
                touch(Event::eTouchUpdated, {{1, 5 + 9 * i, 5}});
            touch(Event::eTouchEnded, {{1, 40, 5}});
        });
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
    static const Fingers cLifted{{1, 90, 5}};
    const End ends[] = {[](auto& t) { t.trackball->destroy(); }, [](auto& t) { t.trackball->setDamping(0.0); },
                        [](auto& t) { t.camera.reset(); }, [](auto& t) { t.view.reset(), t.canvas.reset(); },
                        [](auto& t) { t.trackball->setObject(nullptr); }};
    const End motions[] = {[](auto& t) { t.send(Event::eMouseMoved, 420, 300, cLeft); },
                           [](auto& t) { t.wheel(120); },
                           [](auto& t) { t.trackball->focusFront(KyVolumed(KyVec3d(), KyVec3d(900, 900, 900))); },
                           [](auto& t) { t.trackball->coast(0.1); },
                           [](auto&) { KyMainTaskManager::get().update(); },
                           [](auto& t) { t.touch(Event::eTouchEnded, cLifted); }};
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
