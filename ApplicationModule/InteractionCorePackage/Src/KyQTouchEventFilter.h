// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <QAbstractScrollArea>
#include <QObject>
#include <QPointF>
#include <QPointer>

class QTouchEvent;

/// Scrolls a scroll area by the finger, and lets it run on after a flick: an event filter, a child of the widget that
/// it serves. Of several fingers one scrolls, and another when it is lifted. Each step of a flick is shorter by the
/// decay factor; it ends below 5 pixels, at the end of the area and with the next touch.
///
/// ```
/// KyQTouchEventFilter::installTouchEventFilter(listView);
/// ```
class KYAPPLICATION_EXPORT KyQTouchEventFilter : public QObject {
public:
    /// Serves the parent when that is a scroll area; kinetic, decay factor 0.75.
    explicit KyQTouchEventFilter(QObject* parent = nullptr);
    /// A decay factor outside 0 to 0.99 counts as 0.75.
    KyQTouchEventFilter(QObject* parent, bool isKinetic, double decayFactor);
    ~KyQTouchEventFilter() override;

    /// Makes a filter for the widget and installs it, for a scroll area on its viewport too. Item views scroll by
    /// pixels from then on. Null for a null widget.
    static KyQTouchEventFilter* installTouchEventFilter(QWidget* widget, bool isKinetic = true,
                                                        double decayFactor = 0.75);

    /// Consumes touches that scroll, and a drag that enters, without accepting it.
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// While a drag is on its way touches do not scroll; the next touch end ends it.
    void setDragStarted(bool isStarted) { mIsDragStarted = isStarted; }

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    bool scrollByTouch(const QTouchEvent& event);
    void startFlick(const QPointF& way);
    void stopTimer();
    bool scroll(int x, int y);

    QPointer<QAbstractScrollArea> mScrollArea;
    int mTimerId = -1;
    bool mIsDragStarted = false;
    int mFlickSpeed = -1;
    double mDecayFactor = 0.75;
    bool mIsKinetic = true;
    /// The finger that scrolls, and where it was last.
    int mFinger = -1;
    QPointF mLastPosition;
    QPointF mFlickDirection;
    /// Of a pixel, not scrolled yet.
    QPointF mFraction;
};
