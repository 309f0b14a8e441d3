// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyInputEvent.h"

#include <QEvent>
#include <QPointF>
#include <QRectF>

#include <map>
#include <memory>

class QTouchDevice;

/// From pixels of the canvas to positions in what gets the events of a pass, and on the desktop, where that would be if
/// it were shown.
struct KyPassEventMap {
    QPointF origin;
    QPointF scale{1.0, 1.0};
    QPointF desktopOrigin;

    QPointF toLocal(int x, int y) const { return {(x - origin.x()) * scale.x(), (y - origin.y()) * scale.y()}; }
    QPointF toDesktop(const QPointF& local) const { return local + desktopOrigin; }
    /// A rectangle of what gets the events, in pixels of the canvas.
    QRectF toCanvas(const QRectF& local) const;
};

/// Makes Qt's events out of input events: the kind and where it is out of the input event, what only Qt knows out of
/// the native one, if that is of a fitting kind.
class KyPassEventMaker {
public:
    /// Null when there is no such event without the native one, which is missing.
    std::unique_ptr<QEvent> make(const KyInputEvent& input, const KyPassEventMap& map);

    /// The end of the touches that were made; null when there are none. Without `isCancel` their fingers are lifted at
    /// a place, for those that know no cancel.
    std::unique_ptr<QEvent> makeTouchCancel(bool isCancel, const QPointF& local, const QPointF& desktop);

    /// What a mouse would do in a finger's place; the type is one of the mouse's.
    static KyInputEvent toMouse(const KyInputEvent& touch, int finger, KyInputEvent::Type type);

private:
    struct Makers;
    struct Finger {
        QPointF start;
        QPointF last;
    };

    std::unique_ptr<QEvent> makeTouch(const KyInputEvent& input, const KyPassEventMap& map);

    /// Those that are down, by their identity.
    std::map<int, Finger> mFingers;
    QTouchDevice* mDevice = nullptr;
};
