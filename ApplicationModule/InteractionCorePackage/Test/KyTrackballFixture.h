// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyTrackballManipulator.h"

#include "KyCamera.h"
#include "KyCanvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

/// A trackball whose camera looks from (0, 0, 5) at the origin, in a view of 800 x 600 pixels.
class KyTrackballFixture : public ::testing::Test {
public:
    using Event = KyInputEvent;
    /// Identity, x and y.
    using Fingers = std::vector<std::array<int, 3>>;

    KyTrackballFixture() {
        canvas->setSize(800, 600);
        canvas->insertView(view.get());
        camera->setPosition(KyVec3d(0, 0, 5));
        trackball->setObject(camera.get());
        trackball->setViewMultiPass(view.get());
    }
    ~KyTrackballFixture() override {
        if (living.get())
            trackball->destroy();
    }

    /// Shows one point everywhere, once it is told which.
    struct View : KyGraphicsViewMultiPass {
        bool pickPoint(int, int, KyVec3d& world) const override {
            ++nbPicks;
            world = shown;
            return !shown.isNull();
        }
        KyVec3d shown;
        mutable int nbPicks = 0;
    };

    static Event makeEvent(Event::Type type, int x, int y, std::uint32_t state) {
        Event event;
        event.setType(type);
        event.setPosition(x, y);
        event.setState(state);
        return event;
    }
    bool send(Event::Type type, int x, int y, std::uint32_t state = 0) {
        return trackball->setInputEvent(makeEvent(type, x, y, state));
    }
    /// Presses, moves once, releases; what the move returned.
    bool drag(std::uint32_t state, int dx, int dy, int x = 400, int y = 300) {
        send(Event::eMousePressed, x, y, state);
        const bool isUsed = send(Event::eMouseMoved, x + dx, y + dy, state);
        if (living.get())
            send(Event::eMouseReleased, x + dx, y + dy);
        return isUsed;
    }
    bool wheel(int delta, bool isVertical = true) {
        Event event = makeEvent(Event::eWheel, 400, 300, Event::cWheel);
        event.setWheelDelta(delta);
        event.setWheelVertical(isVertical);
        return trackball->setInputEvent(event);
    }
    bool touch(Event::Type type, const Fingers& fingers) {
        Event event;
        event.setType(type);
        for (const auto& [id, x, y] : fingers)
            event.editTouchPoints().push_back({x, y, id});
        return trackball->setInputEvent(event);
    }

    double getAspect() const { return canvas->getWidth() / static_cast<double>(canvas->getHeight()); }
    /// The pixel, y down, that shows a world point.
    KyVec2d project(const KyVec3d& point) const {
        const KyVec3d p = (camera->getProjection(getAspect()) * camera->getViewMatrix()).transformPoint(point);
        return KyVec2d((p.x + 1.0) * 0.5 * canvas->getWidth(), (1.0 - p.y) * 0.5 * canvas->getHeight());
    }
    /// The world point under a pixel at a depth along the view.
    KyVec3d unproject(double x, double y, double depth) const {
        const double half = camera->isOrthographic() ? camera->getVerticalExtent() / 2.0
                                                     : depth * std::tan(camera->getEffectiveAperture() / 2.0);
        return camera->getWorldPosition() + camera->getForward() * depth +
               camera->getRight() * ((2.0 * x / canvas->getWidth() - 1.0) * half * getAspect()) +
               camera->getUp() * ((1.0 - 2.0 * y / canvas->getHeight()) * half);
    }
    /// How far the frame is from orthonormal, right-handed and finite.
    double getError() const {
        const KyMat4d& frame = camera->getWorldFrame();
        const KyVec3d x = frame.getColumn(0), y = frame.getColumn(1), z = frame.getColumn(2);
        const double error = std::max({(x.cross(y) - z).length(), std::abs(x.length() - 1), std::abs(y.length() - 1),
                                       std::abs(x.dot(y)), std::abs(z.length() - 1)});
        return frame.translation().isFinite() && std::isfinite(error) ? error : HUGE_VAL;
    }
    void expectFrameStays(const KyMat4d& frame) const { EXPECT_EQ(camera->getWorldFrame(), frame); }

    KyHolder<KyCanvas> canvas{new KyCanvas};
    KyHolder<View> view{new View};
    KyHolder<KyCamera> camera{new KyCamera};
    KyTrackballManipulator* trackball = KyTrackballManipulator::create();
    KyObjectReference living{trackball};
};

inline void expectNear(const KyVec2d& a, const KyVec2d& b, double tolerance) {
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
}

inline void expectNear(const KyVec3d& a, const KyVec3d& b, double tolerance) {
    EXPECT_LE((a - b).length(), tolerance) << a << " / " << b;
}
