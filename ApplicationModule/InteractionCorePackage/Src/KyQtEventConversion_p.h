// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyInputEvent.h"

#include <QGraphicsSceneEvent>
#include <QMouseEvent>
#include <QWidget>

#include <cmath>
#include <cstdint>
#include <limits>

/// Pixels of the canvas from Qt's positions.
struct KyPixelScale {
    unsigned scale = 1;
    double ratio = 1;
    /// Neither changes anything: what is true of nearly all.
    bool isPlain = ratio == 1.0 && scale == 1;

    int operator()(double position) const {
        if (isPlain && std::abs(position) < cIntLimit) [[likely]]
            return qRound(position);
        if (ratio == 1.0)
            return saturate(round(position) * scale);
        return saturate(round(position * ratio * scale));
    }

private:
    /// Whole positions below it, and those between, are ints when they are rounded.
    static constexpr double cIntLimit = 2147483647.0;

    /// As Qt rounds, for all positions.
    static std::int64_t round(double position) {
        constexpr double cLimit = 2147483648.0;
        if (std::abs(position) < cLimit) [[likely]]
            return qRound64(position);
        return std::isnan(position) ? 0 : static_cast<std::int64_t>(std::copysign(cLimit, position));
    }
    static int saturate(std::int64_t position) {
        const auto pixel = static_cast<int>(position);
        if (pixel == position) [[likely]]
            return pixel;
        return position < 0 ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    }
};

/// From Qt's events to what input events hold. The functions set what they can find out and leave the rest.
namespace KyQtEventConversion {

/// The same as KyApplication::toKyKeyboardModifiers; every mouse event passes here.
inline std::uint32_t getModifiers(Qt::KeyboardModifiers modifiers) {
    static_assert(KyInputEvent::cShift == std::uint32_t{Qt::ShiftModifier} << 4 &&
                  KyInputEvent::cControl == std::uint32_t{Qt::ControlModifier} << 4 &&
                  KyInputEvent::cAlt == std::uint32_t{Qt::AltModifier} << 4);
    constexpr std::uint32_t cModifiers = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier;
    return (static_cast<std::uint32_t>(int(modifiers)) & cModifiers) << 4;
}

inline std::uint32_t getState(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
    static_assert(Qt::LeftButton == KyInputEvent::cLeftButton && Qt::RightButton == KyInputEvent::cRightButton &&
                  Qt::MiddleButton == KyInputEvent::cMiddleButton && Qt::ExtraButton1 == KyInputEvent::cExtraButton1 &&
                  Qt::ExtraButton2 == KyInputEvent::cExtraButton2);
    return (static_cast<std::uint32_t>(int(buttons)) & KyInputEvent::cMouseButtons) | getModifiers(modifiers);
}

/// Events are about one button or none.
inline std::uint32_t getButton(Qt::MouseButton button) {
    return static_cast<std::uint32_t>(button) & KyInputEvent::cMouseButtons;
}

inline void setPosition(const QPointF& position, KyInputEvent& input, const KyPixelScale& pixels) {
    input.setPosition(pixels(position.x()), pixels(position.y()));
}

inline void convertMouse(const QMouseEvent& event, KyInputEvent& input, const KyPixelScale& pixels) {
    setPosition(event.localPos(), input, pixels);
    input.setState(getState(event.buttons(), event.modifiers()));
    input.setButton(getButton(event.button()));
}

/// True for a mouse event that Qt made of something else.
template <class Event>
bool isSynthesized(const Event& event) {
    return event.source() != Qt::MouseEventNotSynthesized;
}

/// Where the pointer is in the widget that a scene's event came by; on the screen when that is gone. The scene may be
/// null or something else.
QPoint getViewportPosition(const QGraphicsSceneEvent& event, const QPoint& screenPosition, const QObject* scene);

/// eUndefined for what is neither begin, update nor end of a touch.
KyInputEvent::Type getTouchType(QEvent::Type type);

void convertSceneMouse(const QGraphicsSceneMouseEvent& event, KyInputEvent& input, const KyPixelScale& pixels,
                       const QObject* scene);
void convertWheel(const QWheelEvent& event, KyInputEvent& input, const KyPixelScale& pixels);
void convertSceneWheel(const QGraphicsSceneWheelEvent& event, KyInputEvent& input, const KyPixelScale& pixels,
                       const QObject* scene);
void convertTouch(const QTouchEvent& event, KyInputEvent& input, const KyPixelScale& pixels);

} // namespace KyQtEventConversion
