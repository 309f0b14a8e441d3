// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBenchmark.h"

#include "KyGestureRecognizer.h"
#include "KyManipulator.h"
#include "KyQEventManipulatorProvider.h"
#include "KyTrackballManipulator.h"

#include "KyCamera.h"
#include "KyCanvas.h"
#include "KyGraphicsViewMultiPass.h"

#include "KyHolder.h"
#include "KyMat4.h"

#include <QMouseEvent>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <numbers>
#include <utility>
#include <vector>

namespace {

constexpr int cWidth = 800;
constexpr int cHeight = 600;
constexpr std::size_t cNbEvents = 64;

/// Where the pointer, or a finger, is at each event: round a circle.
QPoint getPointOfCircle(std::size_t index, double radius) {
    const double angle = 2.0 * std::numbers::pi * static_cast<double>(index) / cNbEvents;
    return {cWidth / 2 + qRound(radius * std::cos(angle)), cHeight / 2 + qRound(radius * std::sin(angle))};
}

void placeCamera(KyCamera& camera) {
    camera.lookAt(KyVec3d(3, 4, 5), KyVec3d());
}

/// The orbit of a drag with the left button as a program writes it that needs nothing else.
class OrbitFilter : public QObject {
public:
    OrbitFilter() { placeCamera(*mCamera); }

    const KyCamera& getCamera() const { return *mCamera; }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::MouseMove)
            orbit(static_cast<const QMouseEvent&>(*event));
        return false;
    }

private:
    /// What a drag needs of an event: the state word too, because it tells what the drag does.
    struct Move {
        QPoint position;
        std::uint32_t state;
    };

    static Move convert(const QMouseEvent& event) {
        constexpr std::uint32_t cModifiers = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier;
        return {event.pos(), (static_cast<std::uint32_t>(int(event.buttons())) & KyInputEvent::cMouseButtons) |
                                 (static_cast<std::uint32_t>(int(event.modifiers())) & cModifiers) << 4};
    }

    void orbit(const QMouseEvent& event) {
        const Move move = convert(event), former = std::exchange(mFormer, move);
        const QPoint position = move.position, last = former.position;
        if (move.state != KyInputEvent::cLeftButton || former.state != move.state || position == last)
            return;
        const double a = 2.0 * (position.x() - last.x()) / cWidth, b = 2.0 * (position.y() - last.y()) / cHeight;
        KyMat4d frame = mCamera->getWorldFrame();
        const KyQuatd rotation = KyQuatd(KyVec3d(0, 1, 0), -2.0 * a) * KyQuatd(frame.getColumn(0), -2.0 * b);
        // The frame is turned step by step: without this it would lose its right angles.
        KyVec3d back = rotation.rotate(frame.getColumn(2)), up = rotation.rotate(frame.getColumn(1));
        back.normalize();
        up -= back * back.dot(up);
        up.normalize();
        frame.setColumn(0, up.cross(back));
        frame.setColumn(1, up);
        frame.setColumn(2, back);
        frame.setColumn(3, mCenter + rotation.rotate(frame.translation() - mCenter));
        mCamera->setWorldFrame(frame);
    }

    const KyHolder<KyCamera> mCamera{new KyCamera};
    Move mFormer{getPointOfCircle(0, 200), KyInputEvent::cLeftButton};
    KyVec3d mCenter;
};

struct OrbitFixture {
    QObject watched;
    std::vector<std::unique_ptr<QMouseEvent>> moves;
    OrbitFilter peer;
    KyQEventManipulatorProvider ours;
    KyTrackballManipulator trackball;
    KyHolder<KyCamera> camera{new KyCamera};
    KyHolder<KyCanvas> canvas{new KyCanvas};
    KyHolder<KyGraphicsViewMultiPass> view{new KyGraphicsViewMultiPass};

    OrbitFixture() {
        placeCamera(*camera);
        canvas->setSize(cWidth, cHeight);
        canvas->insertView(view.get());
        trackball.setObject(camera.get());
        trackball.setViewMultiPass(view.get());
        ours.setManipulator(&trackball);
        for (std::size_t i = 1; i <= cNbEvents; ++i)
            moves.push_back(std::make_unique<QMouseEvent>(QEvent::MouseMove, getPointOfCircle(i, 200), Qt::NoButton,
                                                          Qt::LeftButton, Qt::NoModifier));
        QMouseEvent press(QEvent::MouseButtonPress, getPointOfCircle(0, 200), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        ours.eventFilter(&watched, &press);
    }

    /// The camera must have turned: less would be a measurement of something else.
    void send(QObject& filter, const KyCamera& turned, long count) {
        const KyMat4d before = turned.getWorldFrame();
        for (long i = 0; i < count; ++i)
            filter.eventFilter(&watched, moves[static_cast<std::size_t>(i) % cNbEvents].get());
        if (turned.getWorldFrame() == before)
            std::abort();
    }
};

KyBenchmarkSides prepareOrbit() {
    const auto fixture = std::make_shared<OrbitFixture>();
    return {[fixture](long count) { fixture->send(fixture->ours, *fixture->camera, count); },
            [fixture](long count) { fixture->send(fixture->peer, fixture->peer.getCamera(), count); }, fixture};
}

/// Recognises and does nothing about it.
struct Recognizing : KyManipulator {
    bool take(const KyInputEvent& event) {
        pushEvent(event);
        return KyGestureRecognizer(*this).recognizeGesture() != nullptr;
    }
};

/// The rules of all four gestures, as a program writes them that has nothing else to do with events.
struct TouchPeer {
    using Points = std::vector<KyTouchPoint>;

    KyInputEvent previous;
    KyInputEvent current;
    int nbSinceBegin = 0;
    int tiltIndex = -1;
    KyVec2i point;
    double scale = 1.0;
    double angle = 0.0;

    bool take(const KyInputEvent& event) {
        std::swap(previous, current);
        current = event;
        current.setGestureKind(-1);
        nbSinceBegin = current.getType() == KyInputEvent::eTouchBegan ? 0 : nbSinceBegin + 1;
        if (!current.isTouch() || !previous.isTouch() || current.getType() == KyInputEvent::eTouchBegan)
            return false;
        const Points &p = previous.getTouchPoints(), &c = current.getTouchPoints();
        const bool isFirst = p.empty() && c.size() == 1;
        if (!isFirst && !std::ranges::equal(p, c, {}, &KyTouchPoint::id, &KyTouchPoint::id))
            return false;
        switch (c.size()) {
        case 1:
            return panOrTap(p, c);
        case 2:
            return pinch(p, c);
        case 3:
            return tilt(p, c);
        default:
            return false;
        }
    }

    bool panOrTap(const Points& p, const Points& c) {
        const bool isTap = current.getType() == KyInputEvent::eTouchEnded && nbSinceBegin <= 3;
        if (!isTap && (p.empty() || (p[0].x == c[0].x && p[0].y == c[0].y)))
            return false;
        point = KyVec2i(c[0].x, c[0].y);
        current.setGestureKind(isTap ? KyGesture::eTap : KyGesture::ePan);
        return true;
    }

    bool pinch(const Points& p, const Points& c) {
        current.setGestureKind(KyGesture::ePinch);
        const std::int64_t moved0 = getDistance(p[0], c[0]), moved1 = getDistance(p[1], c[1]);
        if (moved0 + moved1 == 0)
            return false;
        point = KyVec2i(static_cast<int>((c[0].x * moved1 + c[1].x * moved0) / (moved0 + moved1)),
                        static_cast<int>((c[0].y * moved1 + c[1].y * moved0) / (moved0 + moved1)));
        const double px = p[1].x - p[0].x, py = p[1].y - p[0].y, cx = c[1].x - c[0].x, cy = c[1].y - c[0].y;
        const double pp = px * px + py * py, cc = cx * cx + cy * cy;
        scale = 1.0;
        angle = 0.0;
        if (pp == 0.0 || cc == 0.0)
            return true;
        scale = std::sqrt(pp / cc);
        const double pLength = std::sqrt(pp), cLength = std::sqrt(cc);
        const double ux = px / pLength, uy = py / pLength, vx = cx / cLength, vy = cy / cLength;
        if (ux == vx && uy == vy)
            return true;
        angle = std::acos(std::clamp(ux * vx + uy * vy, -1.0, 1.0)) * (180.0 / std::numbers::pi);
        if (vx * uy - vy * ux > 0.0)
            angle = -angle;
        return true;
    }

    bool tilt(const Points& p, const Points& c) {
        int nbMoving = 0;
        std::size_t moving = 0;
        for (std::size_t i = 0; i < 3; ++i)
            if (getSquare(p[i], c[i]) >= 9.0) {
                ++nbMoving;
                moving = i;
            }
        if (nbMoving > 1)
            return false;
        current.setGestureKind(KyGesture::eTilt);
        if (nbMoving == 1)
            tiltIndex = static_cast<int>(moving);
        if (tiltIndex < 0)
            return false;
        point = KyVec2i(c[static_cast<std::size_t>(tiltIndex)].x, c[static_cast<std::size_t>(tiltIndex)].y);
        return true;
    }

    static double getSquare(const KyTouchPoint& from, const KyTouchPoint& to) {
        const double x = to.x - from.x, y = to.y - from.y;
        return x * x + y * y;
    }
    static std::int64_t getDistance(const KyTouchPoint& from, const KyTouchPoint& to) {
        return static_cast<std::int64_t>(std::sqrt(getSquare(from, to)));
    }
};

struct TouchFixture {
    std::vector<KyInputEvent> events;
    Recognizing ours;
    TouchPeer peer;
    long nbGestures = 0;

    explicit TouchFixture(std::size_t nbFingers) {
        for (std::size_t i = 0; i < cNbEvents; ++i) {
            KyInputEvent event;
            event.setType(KyInputEvent::eTouchUpdated);
            for (std::size_t finger = 0; finger < nbFingers; ++finger) {
                const QPoint point = getPointOfCircle(i + finger * cNbEvents / 2, 150.0 + static_cast<double>(i));
                event.editTouchPoints().push_back({point.x(), point.y(), static_cast<int>(finger)});
            }
            event.setPosition(event.getTouchPoints()[0].x, event.getTouchPoints()[0].y);
            events.push_back(event);
        }
    }

    /// All but the first are gestures: less would be a measurement of something else.
    template <class Take>
    void send(long count, Take take) {
        for (long i = 0; i < count; ++i)
            nbGestures += take(events[static_cast<std::size_t>(i) % cNbEvents]);
        if (nbGestures < count - 1)
            std::abort();
    }
};

template <std::size_t NbFingers>
KyBenchmarkSides prepareTouch() {
    const auto fixture = std::make_shared<TouchFixture>(NbFingers);
    const auto send = [fixture](auto TouchFixture::*side) {
        return [fixture, side](long count) {
            fixture->send(count, [&](const KyInputEvent& event) { return ((*fixture).*side).take(event); });
        };
    };
    return {send(&TouchFixture::ours), send(&TouchFixture::peer), fixture};
}

} // namespace

std::vector<KyBenchmark> getInteractionBenchmarks() {
    using enum KyBenchmark::Gate;
    return {
        {"event conversion and orbit, one event", "the same arithmetic in a bare event filter", 1.2, eInstructions,
         20000, &prepareOrbit},
        {"touch pan recognised", "the same rules written out", 1.2, eInstructions, 20000, &prepareTouch<1>},
        {"pinch recognised", "the same rules written out", 1.2, eInstructions, 20000, &prepareTouch<2>},
    };
}
