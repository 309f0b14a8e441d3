// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQTouchEventFilter.h"

#include <QAbstractItemView>
#include <QScrollBar>
#include <QTimerEvent>
#include <QTouchEvent>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

namespace {

constexpr double cDefaultDecay = 0.75;
constexpr double cGreatestDecay = 0.99;
/// Pixels; a shorter way is no flick.
constexpr double cLeastFlick = 25;
constexpr int cLeastSpeed = 5;
constexpr int cTimerInterval = 30;

int saturate(double value) {
    using Limits = std::numeric_limits<int>;
    return std::isnan(value) ? 0 : static_cast<int>(std::clamp<double>(value, Limits::min(), Limits::max()));
}

/// The whole pixels of a way; what is left of it stays.
int takeWhole(double& way) {
    const int whole = saturate(way);
    way = std::isfinite(way) ? way - std::trunc(way) : 0;
    return whole;
}

/// True when the bar moved. Its listeners may delete it.
bool move(QScrollBar* bar, int pixels) {
    if (!bar || pixels == 0)
        return false;
    const int former = bar->value();
    const std::int64_t value = std::int64_t{former} + pixels;
    const auto bounded =
        static_cast<int>(std::clamp(value, std::int64_t{bar->minimum()}, std::int64_t{bar->maximum()}));
    if (bounded != former)
        bar->setValue(bounded);
    return bounded != former;
}

/// The one with the identity, or the first of them; Qt keeps no order.
const QTouchEvent::TouchPoint& findFinger(const QList<QTouchEvent::TouchPoint>& points, int id) {
    const auto found = std::ranges::find(points, id, &QTouchEvent::TouchPoint::id);
    return found != points.end() ? *found : points.front();
}

bool isTouch(QEvent::Type type) {
    return type == QEvent::TouchBegin || type == QEvent::TouchUpdate || type == QEvent::TouchEnd;
}

} // namespace

KyQTouchEventFilter::KyQTouchEventFilter(QObject* parent)
    : KyQTouchEventFilter(parent, true, cDefaultDecay) {}

KyQTouchEventFilter::KyQTouchEventFilter(QObject* parent, bool isKinetic, double decayFactor)
    : QObject(parent)
    , mScrollArea(qobject_cast<QAbstractScrollArea*>(parent))
    , mDecayFactor(decayFactor >= 0 && decayFactor <= cGreatestDecay ? decayFactor : cDefaultDecay)
    , mIsKinetic(isKinetic) {}

KyQTouchEventFilter::~KyQTouchEventFilter() = default;

KyQTouchEventFilter* KyQTouchEventFilter::installTouchEventFilter(QWidget* widget, bool isKinetic, double decayFactor) {
    if (!widget)
        return nullptr;
    auto* filter = new KyQTouchEventFilter(widget, isKinetic, decayFactor);
    if (auto* view = qobject_cast<QAbstractItemView*>(widget)) {
        view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    }
    QWidget* touched = filter->mScrollArea ? filter->mScrollArea->viewport() : widget;
    touched->setAttribute(Qt::WA_AcceptTouchEvents);
    touched->installEventFilter(filter);
    if (touched != widget)
        widget->installEventFilter(filter);
    return filter;
}

bool KyQTouchEventFilter::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::TouchEnd)
        mIsDragStarted = false;
    if (isTouch(type) && mScrollArea && !mIsDragStarted && scrollByTouch(*static_cast<QTouchEvent*>(event)))
        return true;
    if (type != QEvent::DragEnter)
        return QObject::eventFilter(watched, event);
    mIsDragStarted = true;
    return true;
}

bool KyQTouchEventFilter::scrollByTouch(const QTouchEvent& event) {
    if (event.touchPoints().isEmpty())
        return false;
    const QTouchEvent::TouchPoint& point = findFinger(event.touchPoints(), mFinger);
    const bool isSameFinger = std::exchange(mFinger, point.id()) == point.id();
    const QPointF position = point.pos(), last = point.lastPos();
    if (event.type() == QEvent::TouchBegin) {
        stopTimer();
        mFlickSpeed = -1;
        mFraction = {};
        mLastPosition = position;
    } else if (event.type() == QEvent::TouchUpdate) {
        mLastPosition = last;
    }
    const QPointF flick = mLastPosition - position;
    mFraction += last - position;
    const QPointer<KyQTouchEventFilter> guard(this);
    const int y = takeWhole(mFraction.ry()), x = takeWhole(mFraction.rx());
    scroll(x, y);
    if (guard && mIsKinetic && isSameFinger && event.type() == QEvent::TouchEnd)
        startFlick(flick);
    return true;
}

void KyQTouchEventFilter::startFlick(const QPointF& way) {
    const double length = std::hypot(way.x(), way.y());
    if (!std::isfinite(length) || length <= cLeastFlick)
        return;
    stopTimer();
    mTimerId = startTimer(cTimerInterval, Qt::CoarseTimer);
    mFlickSpeed = saturate(length);
    mFlickDirection = way / length;
}

void KyQTouchEventFilter::stopTimer() {
    if (mTimerId >= 0)
        killTimer(mTimerId);
    mTimerId = -1;
}

bool KyQTouchEventFilter::scroll(int x, int y) {
    const QPointer<QAbstractScrollArea> area = mScrollArea;
    bool isMoved = area && move(area->verticalScrollBar(), y);
    // The first bar's listeners may have deleted the area.
    if (area && move(area->horizontalScrollBar(), x))
        isMoved = true;
    return isMoved;
}

void KyQTouchEventFilter::timerEvent(QTimerEvent* event) {
    if (event->timerId() != mTimerId) {
        QObject::timerEvent(event);
        return;
    }
    const QPointer<KyQTouchEventFilter> guard(this);
    const bool isMoved =
        scroll(saturate(mFlickDirection.x() * mFlickSpeed), saturate(mFlickDirection.y() * mFlickSpeed));
    if (!guard)
        return;
    if (!isMoved || mFlickSpeed < cLeastSpeed)
        stopTimer();
    mFlickSpeed = saturate(mFlickSpeed * mDecayFactor);
}
