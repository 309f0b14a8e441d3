// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyInputEvent.h"
#include "KyObjectReference.h"

#include <QObject>

class KyManipulator;
class QMouseEvent;
class QTouchEvent;
class QWheelEvent;

/// A light event filter that brings mouse, wheel and touch events of a widget to a manipulator, in Qt's pixels. Nothing
/// is consumed: the watched object gets everything too, unless the event made somebody delete it: then it is accepted,
/// so that Qt does not ask that one's parent.
///
/// Qt goes on with a touch only when the widget itself takes it: a widget that shows a 3D view sets
/// Qt::WA_AcceptTouchEvents and accepts touch begin, update and end in its own event(). Mouse events that Qt makes of
/// a touch are dropped from the sequence's first update to its end or cancel; one that comes sooner says that it
/// repeats a touch.
///
/// ```
/// auto* provider = new KyQMouseEventProvider(widget);
/// provider->setManipulator(trackball);
/// widget->installEventFilter(provider);
/// ```
class KYAPPLICATION_EXPORT KyQMouseEventProvider : public QObject {
public:
    /// The parent owns it.
    explicit KyQMouseEventProvider(QObject* parent = nullptr);
    ~KyQMouseEventProvider() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Null when there is none or it is gone.
    KyManipulator* getManipulator() const;
    /// Not owned; null for none: events are dropped.
    void setManipulator(KyManipulator* manipulator);

    /// @{
    /// Sends the event on as a mouse event.
    void mousePressed(QMouseEvent* event);
    void mouseReleased(QMouseEvent* event);
    void mouseDoubleClicked(QMouseEvent* event);
    void mouseMove(QMouseEvent* event);
    void wheel(QWheelEvent* event);
    void touch(QTouchEvent* event);
    /// @}

    /// Position, state and button; the type stays.
    static void convertMouseEvent(QMouseEvent* event, KyInputEvent& input);
    /// Type, position, state and the delta of the axis that turned more: vertical when both did alike. Pixels stand in
    /// for angles where the device gives none.
    static void convertWheelEvent(QWheelEvent* event, KyInputEvent& input);

private:
    struct Dispatch;

    void sendMouse(QMouseEvent& event, KyInputEvent::Type type);
    void send(KyInputEvent& input, QEvent* event);

    KyObjectReference mManipulator;
    /// From the first update on; mouse events are dropped.
    bool mIsTouchUpdated = false;
    bool mIsTouching = false;
};
