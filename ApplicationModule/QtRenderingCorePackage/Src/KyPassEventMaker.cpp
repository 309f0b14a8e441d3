// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPassEventMaker_p.h"

#include "KyQtInput.h"

#include <QContextMenuEvent>
#include <QGraphicsSceneWheelEvent>
#include <QHelpEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QTouchEvent>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <utility>

namespace {

using Made = std::unique_ptr<QEvent>;

/// The native event, if it is one of these types, which are all of the same class.
template <class Event, QEvent::Type... Types>
const Event* getNative(const KyInputEvent& input) {
    const auto* event = static_cast<const QEvent*>(input.getNativeEvent());
    return event && ((event->type() == Types) || ...) ? static_cast<const Event*>(event) : nullptr;
}

const QInputEvent* getNativeInput(const KyInputEvent& input) {
    return getNative<QInputEvent, QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick,
                     QEvent::MouseMove, QEvent::Wheel, QEvent::KeyPress, QEvent::KeyRelease, QEvent::TouchBegin,
                     QEvent::TouchUpdate, QEvent::TouchEnd, QEvent::ContextMenu>(input);
}

const QMouseEvent* getNativeMouse(const KyInputEvent& input) {
    return getNative<QMouseEvent, QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick,
                     QEvent::MouseMove>(input);
}

const QTouchEvent* getNativeTouch(const KyInputEvent& input) {
    return getNative<QTouchEvent, QEvent::TouchBegin, QEvent::TouchUpdate, QEvent::TouchEnd>(input);
}

Qt::KeyboardModifiers getModifiers(const KyInputEvent& input) {
    const QInputEvent* native = getNativeInput(input);
    return native ? native->modifiers() : KyApplication::toQKeyboardModifiers(input.getState());
}

Qt::MouseButtons getButtons(const KyInputEvent& input) {
    return Qt::MouseButtons(static_cast<int>(input.getState() & KyInputEvent::cMouseButtons));
}

template <class Event>
Made finish(std::unique_ptr<Event> made, const KyInputEvent& input) {
    if (const QInputEvent* native = getNativeInput(input))
        made->setTimestamp(native->timestamp());
    return made;
}

/// By the number of the input event's type.
constexpr std::array cMouseTypes = {QEvent::None,
                                    QEvent::None,
                                    QEvent::None,
                                    QEvent::MouseButtonPress,
                                    QEvent::MouseButtonRelease,
                                    QEvent::MouseButtonDblClick,
                                    QEvent::None,
                                    QEvent::MouseMove};

Qt::MouseEventSource getSource(const KyInputEvent& input) {
    if (getNativeTouch(input))
        return Qt::MouseEventSynthesizedByQt;
    const QMouseEvent* native = getNativeMouse(input);
    return native ? native->source() : Qt::MouseEventNotSynthesized;
}

} // namespace

QRectF KyPassEventMap::toCanvas(const QRectF& local) const {
    const auto toPixel = [this](const QPointF& point) {
        return QPointF(point.x() / scale.x(), point.y() / scale.y()) + origin;
    };
    return {toPixel(local.topLeft()), toPixel(local.bottomRight())};
}

struct KyPassEventMaker::Makers {
    using Maker = Made (*)(KyPassEventMaker& maker, const KyInputEvent& input, const KyPassEventMap& map);

    static Made makeKey(KyPassEventMaker&, const KyInputEvent& input, const KyPassEventMap&) {
        const auto* native = getNative<QKeyEvent, QEvent::KeyPress, QEvent::KeyRelease>(input);
        return native ? std::make_unique<QKeyEvent>(*native) : nullptr;
    }
    static Made makeMouse(KyPassEventMaker&, const KyInputEvent& input, const KyPassEventMap& map) {
        const QPointF local = map.toLocal(input.getX(), input.getY());
        const auto button = static_cast<Qt::MouseButton>(input.getButton() & KyInputEvent::cMouseButtons);
        return finish(std::make_unique<QMouseEvent>(cMouseTypes[static_cast<std::size_t>(input.getType())], local,
                                                    local, map.toDesktop(local), button, getButtons(input),
                                                    getModifiers(input), getSource(input)),
                      input);
    }
    static Made makeWheel(KyPassEventMaker&, const KyInputEvent& input, const KyPassEventMap& map) {
        const auto* native = getNative<QWheelEvent, QEvent::Wheel>(input);
        const QPointF local = map.toLocal(input.getX(), input.getY());
        const int delta = input.getWheelDelta();
        const QPoint turn = input.isWheelVertical() ? QPoint(0, delta) : QPoint(delta, 0);
        return finish(
            std::make_unique<QWheelEvent>(local, map.toDesktop(local), native ? native->pixelDelta() : QPoint(),
                                          native ? native->angleDelta() : turn, getButtons(input), getModifiers(input),
                                          native ? native->phase() : Qt::NoScrollPhase, native && native->inverted(),
                                          native ? native->source() : Qt::MouseEventNotSynthesized),
            input);
    }
    static Made makeTouch(KyPassEventMaker& maker, const KyInputEvent& input, const KyPassEventMap& map) {
        return maker.makeTouch(input, map);
    }
    static Made makeContextMenu(KyPassEventMaker&, const KyInputEvent& input, const KyPassEventMap& map) {
        const auto* native = getNative<QContextMenuEvent, QEvent::ContextMenu>(input);
        const QPointF local = map.toLocal(input.getX(), input.getY());
        return finish(std::make_unique<QContextMenuEvent>(native ? native->reason() : QContextMenuEvent::Other,
                                                          local.toPoint(), map.toDesktop(local).toPoint(),
                                                          getModifiers(input)),
                      input);
    }
    static Made makeToolTip(KyPassEventMaker&, const KyInputEvent& input, const KyPassEventMap& map) {
        const QPointF local = map.toLocal(input.getX(), input.getY());
        return std::make_unique<QHelpEvent>(QEvent::ToolTip, local.toPoint(), map.toDesktop(local).toPoint());
    }
    static Made makeInputMethod(KyPassEventMaker&, const KyInputEvent& input, const KyPassEventMap&) {
        if (const auto* query = getNative<QInputMethodQueryEvent, QEvent::InputMethodQuery>(input))
            return std::make_unique<QInputMethodQueryEvent>(query->queries());
        const auto* native = getNative<QInputMethodEvent, QEvent::InputMethod>(input);
        return native ? std::make_unique<QInputMethodEvent>(*native) : nullptr;
    }

    /// By the number of the input event's type.
    static constexpr std::array<Maker, KyInputEvent::eNbTypes> cMakers = {
        nullptr,    &makeKey,   &makeKey,   &makeMouse, &makeMouse,       &makeMouse,   &makeWheel,
        &makeMouse, &makeTouch, &makeTouch, &makeTouch, &makeContextMenu, &makeToolTip, &makeInputMethod};
};

std::unique_ptr<QEvent> KyPassEventMaker::make(const KyInputEvent& input, const KyPassEventMap& map) {
    const auto index = static_cast<std::size_t>(input.getType());
    const Makers::Maker maker = index < Makers::cMakers.size() ? Makers::cMakers[index] : nullptr;
    return maker ? maker(*this, input, map) : nullptr;
}

std::unique_ptr<QEvent> KyPassEventMaker::makeTouch(const KyInputEvent& input, const KyPassEventMap& map) {
    const QTouchEvent* native = getNativeTouch(input);
    if (!native)
        return nullptr;
    if (input.getType() == KyInputEvent::eTouchBegan)
        mFingers.clear();
    mDevice = native->device();
    QList<QTouchEvent::TouchPoint> points = native->touchPoints();
    for (QTouchEvent::TouchPoint& point : points) {
        const auto place = std::ranges::find(input.getTouchPoints(), point.id(), &KyTouchPoint::id);
        if (place == input.getTouchPoints().end())
            continue;
        const QPointF local = map.toLocal(place->x, place->y);
        Finger& finger = mFingers.try_emplace(point.id(), Finger{local, local}).first->second;
        point.setPos(local);
        point.setScenePos(local);
        point.setScreenPos(map.toDesktop(local));
        point.setStartPos(finger.start);
        point.setStartScenePos(finger.start);
        point.setStartScreenPos(map.toDesktop(finger.start));
        point.setLastPos(finger.last);
        point.setLastScenePos(finger.last);
        point.setLastScreenPos(map.toDesktop(finger.last));
        finger.last = local;
        if (point.state() == Qt::TouchPointReleased)
            mFingers.erase(point.id());
    }
    return finish(std::make_unique<QTouchEvent>(native->type(), native->device(), native->modifiers(),
                                                native->touchPointStates(), points),
                  input);
}

std::unique_ptr<QEvent> KyPassEventMaker::makeTouchCancel(bool isCancel, const QPointF& local, const QPointF& desktop) {
    const std::map<int, Finger> fingers = std::exchange(mFingers, {});
    if (fingers.empty())
        return nullptr;
    if (isCancel)
        return std::make_unique<QTouchEvent>(QEvent::TouchCancel, mDevice);
    QList<QTouchEvent::TouchPoint> points;
    for (const auto& [id, finger] : fingers) {
        QTouchEvent::TouchPoint point(id);
        point.setState(Qt::TouchPointReleased);
        point.setPos(local);
        point.setScenePos(local);
        point.setScreenPos(desktop);
        point.setStartPos(finger.start);
        point.setLastPos(finger.last);
        points.append(point);
    }
    return std::make_unique<QTouchEvent>(QEvent::TouchEnd, mDevice, Qt::NoModifier, Qt::TouchPointReleased, points);
}

KyInputEvent KyPassEventMaker::toMouse(const KyInputEvent& touch, int finger, KyInputEvent::Type type) {
    KyInputEvent mouse;
    mouse.setType(type);
    mouse.setNativeEvent(touch.getNativeEvent());
    const auto place = std::ranges::find(touch.getTouchPoints(), finger, &KyTouchPoint::id);
    if (place != touch.getTouchPoints().end())
        mouse.setPosition(place->x, place->y);
    else
        mouse.setPosition(touch.getX(), touch.getY());
    const bool isDown = type != KyInputEvent::eMouseReleased;
    mouse.setState(touch.getState() | (isDown ? KyInputEvent::cLeftButton : 0));
    mouse.setButton(type == KyInputEvent::eMouseMoved ? 0 : KyInputEvent::cLeftButton);
    return mouse;
}
