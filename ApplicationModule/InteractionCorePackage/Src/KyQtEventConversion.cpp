// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtEventConversion_p.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QTouchEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace {

bool isViewport(const QGraphicsScene& scene, const QWidget* widget) {
    const QList<QGraphicsView*> views = scene.views();
    return std::ranges::any_of(views, [widget](const QGraphicsView* view) { return view->viewport() == widget; });
}

/// The event's widget is a bare pointer: an earlier handler of the event may have deleted what it points at.
bool isAlive(QWidget* widget, const QObject* scene) {
    const auto* views = qobject_cast<const QGraphicsScene*>(scene);
    return (views && isViewport(*views, widget)) || QApplication::allWidgets().contains(widget);
}

void setWheel(KyInputEvent& input, const QPoint& turn) {
    const std::int64_t x = turn.x(), y = turn.y();
    const bool isVertical = std::abs(y) >= std::abs(x);
    input.setWheelVertical(isVertical);
    input.setWheelDelta(isVertical ? turn.y() : turn.x());
}

void setWheelState(KyInputEvent& input, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
    input.setType(KyInputEvent::eWheel);
    input.setState(KyInputEvent::cWheel | KyQtEventConversion::getState(buttons, modifiers));
    input.setButton(0);
}

KyTouchPoint convertTouchPoint(const QTouchEvent::TouchPoint& point, const KyPixelScale& pixels) {
    const QPointF position = point.pos();
    const double pressure = point.pressure();
    return {.x = pixels(position.x()),
            .y = pixels(position.y()),
            .id = point.id(),
            .state = static_cast<std::uint32_t>(point.state()),
            .pressure = pressure >= 0 && pressure <= 1 ? static_cast<float>(pressure) : 1.0f};
}

} // namespace

KyInputEvent::Type KyQtEventConversion::getTouchType(QEvent::Type type) {
    switch (type) {
    case QEvent::TouchBegin:
        return KyInputEvent::eTouchBegan;
    case QEvent::TouchUpdate:
        return KyInputEvent::eTouchUpdated;
    case QEvent::TouchEnd:
        return KyInputEvent::eTouchEnded;
    default:
        return KyInputEvent::eUndefined;
    }
}

QPoint KyQtEventConversion::getViewportPosition(const QGraphicsSceneEvent& event, const QPoint& screenPosition,
                                                const QObject* scene) {
    QWidget* widget = event.widget();
    return widget && isAlive(widget, scene) ? widget->mapFromGlobal(screenPosition) : screenPosition;
}

void KyQtEventConversion::convertSceneMouse(const QGraphicsSceneMouseEvent& event, KyInputEvent& input,
                                            const KyPixelScale& pixels, const QObject* scene) {
    setPosition(getViewportPosition(event, event.screenPos(), scene), input, pixels);
    input.setState(getState(event.buttons(), event.modifiers()));
    input.setButton(getButton(event.button()));
}

void KyQtEventConversion::convertWheel(const QWheelEvent& event, KyInputEvent& input, const KyPixelScale& pixels) {
    setPosition(event.position(), input, pixels);
    setWheelState(input, event.buttons(), event.modifiers());
    setWheel(input, event.angleDelta().isNull() ? event.pixelDelta() : event.angleDelta());
}

void KyQtEventConversion::convertSceneWheel(const QGraphicsSceneWheelEvent& event, KyInputEvent& input,
                                            const KyPixelScale& pixels, const QObject* scene) {
    setPosition(getViewportPosition(event, event.screenPos(), scene), input, pixels);
    setWheelState(input, event.buttons(), event.modifiers());
    input.setWheelVertical(event.orientation() == Qt::Vertical);
    input.setWheelDelta(event.delta());
}

void KyQtEventConversion::convertTouch(const QTouchEvent& event, KyInputEvent& input, const KyPixelScale& pixels) {
    input.setType(getTouchType(event.type()));
    input.setState(getModifiers(event.modifiers()));
    input.setButton(0);
    std::vector<KyTouchPoint>& points = input.editTouchPoints();
    points.clear();
    points.reserve(static_cast<std::size_t>(event.touchPoints().size()));
    std::ranges::transform(event.touchPoints(), std::back_inserter(points),
                           [&pixels](const auto& point) { return convertTouchPoint(point, pixels); });
    std::ranges::stable_sort(points, {}, &KyTouchPoint::id);
    if (!points.empty())
        input.setPosition(points.front().x, points.front().y);
}
