// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QTouchDevice>
#include <QTouchEvent>
#include <QtTest/qtesttouch.h>

/// A finger as Qt gives it.
struct KyTestFinger {
    int id;
    QPointF position;
    Qt::TouchPointState state = Qt::TouchPointMoved;
    QPointF lastPosition = {};
};

inline QTouchEvent kyMakeTouch(QEvent::Type type, const QList<KyTestFinger>& fingers) {
    static QTouchDevice* const device = QTest::createTouchDevice();
    QList<QTouchEvent::TouchPoint> points;
    for (const KyTestFinger& finger : fingers) {
        QTouchEvent::TouchPoint point(finger.id);
        point.setPos(finger.position);
        point.setLastPos(finger.lastPosition);
        point.setState(finger.state);
        points.append(point);
    }
    return QTouchEvent(type, device, Qt::NoModifier, {}, points);
}

/// Qt's answer: whether somebody took the event.
inline bool kySendTouch(QObject& receiver, QEvent::Type type, const QList<KyTestFinger>& fingers) {
    QTouchEvent event = kyMakeTouch(type, fingers);
    return QCoreApplication::sendEvent(&receiver, &event);
}
