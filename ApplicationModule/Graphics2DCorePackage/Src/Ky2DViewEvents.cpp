// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DViewBusy_p.h"

#include "Ky2DScene.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

constexpr double cKeyZoom = 1.25;
constexpr double cKeyPan = 40.0;
/// One notch of a usual wheel turns by 120 and zooms by this.
constexpr double cWheelZoom = 1.2;
constexpr double cWheelNotch = 120.0;
/// Notches in one event; more are a faulty device.
constexpr double cMostNotches = 20.0;

struct KeyAction {
    int key;
    void (*run)(Ky2DView& view);
};
constexpr std::array<KeyAction, 9> cKeyActions = {{
    {Qt::Key_F, [](Ky2DView& view) { view.fit(); }},
    {Qt::Key_Home, [](Ky2DView& view) { view.fit(); }},
    {Qt::Key_Plus, [](Ky2DView& view) { view.zoom(cKeyZoom); }},
    {Qt::Key_Equal, [](Ky2DView& view) { view.zoom(cKeyZoom); }},
    {Qt::Key_Minus, [](Ky2DView& view) { view.zoom(1.0 / cKeyZoom); }},
    {Qt::Key_Left, [](Ky2DView& view) { view.pan(cKeyPan, 0.0); }},
    {Qt::Key_Right, [](Ky2DView& view) { view.pan(-cKeyPan, 0.0); }},
    {Qt::Key_Up, [](Ky2DView& view) { view.pan(0.0, cKeyPan); }},
    {Qt::Key_Down, [](Ky2DView& view) { view.pan(0.0, -cKeyPan); }},
}};
constexpr Qt::KeyboardModifiers cCommandModifiers = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

} // namespace

bool Ky2DView::event(QEvent* event) {
    if (event->type() == QEvent::DeferredDelete)
        return QGraphicsView::event(event);
    const Busy busy(*this);
    return QGraphicsView::event(event);
}

bool Ky2DView::viewportEvent(QEvent* event) {
    const Busy busy(*this);
    return QGraphicsView::viewportEvent(event);
}

void Ky2DView::paintEvent(QPaintEvent* event) {
    if (getScene() && getScene()->hasPendingChanges())
        Ky2DNode::applyModification();
    QGraphicsView::paintEvent(event);
}

void Ky2DView::resizeEvent(QResizeEvent* event) {
    QGraphicsView::resizeEvent(event);
    const QPointer<Ky2DView> self(this);
    settle();
    if (self)
        tellSize();
}

void Ky2DView::showEvent(QShowEvent* event) {
    QGraphicsView::showEvent(event);
    tellShown();
}

void Ky2DView::hideEvent(QHideEvent* event) {
    QGraphicsView::hideEvent(event);
    tellShown();
}

void Ky2DView::tell(const char* attribute) {
    if (isWatched() && !isEnding())
        notifyModified(attribute);
}

void Ky2DView::tellSize() {
    const QSize told = std::exchange(mToldSize, size());
    const QPointer<Ky2DView> self(this);
    if (told.width() != size().width())
        tell("Width");
    if (self && told.height() != size().height())
        tell("Height");
}

void Ky2DView::tellShown() {
    if (std::exchange(mToldShown, isVisible()) != isVisible())
        tell("Shown");
}

void Ky2DView::wheelEvent(QWheelEvent* event) {
    event->ignore();
    if (scene())
        QGraphicsView::wheelEvent(event);
    if (event->isAccepted())
        return;
    event->accept();
    const double notches = std::clamp(event->angleDelta().y() / cWheelNotch, -cMostNotches, cMostNotches);
    if (notches != 0.0)
        zoomAt(std::pow(cWheelZoom, notches), event->position().x(), event->position().y());
}

void Ky2DView::mousePressEvent(QMouseEvent* event) {
    if (mPressButton != Qt::NoButton) {
        event->accept();
        return;
    }
    event->ignore();
    QGraphicsView::mousePressEvent(event);
    const Qt::MouseButton button = event->button();
    if (event->isAccepted() || (button != Qt::LeftButton && button != Qt::MiddleButton))
        return;
    event->accept();
    mPressButton = button;
    mPressPosition = mLastPosition = event->pos();
    mIsDragging = false;
}

void Ky2DView::mouseMoveEvent(QMouseEvent* event) {
    // The release may have gone to another window.
    if (!(event->buttons() & mPressButton))
        endPress();
    if (mPressButton == Qt::NoButton) {
        QGraphicsView::mouseMoveEvent(event);
        return;
    }
    event->accept();
    drag(event->pos());
}

void Ky2DView::drag(const QPoint& position) {
    const int distance = (position - mPressPosition).manhattanLength();
    if (!mIsDragging && distance < QApplication::startDragDistance())
        return;
    if (!mIsDragging)
        viewport()->setCursor(Qt::ClosedHandCursor);
    mIsDragging = true;
    const QPoint offset = position - std::exchange(mLastPosition, position);
    pan(offset.x(), offset.y());
}

void Ky2DView::endPress() {
    if (mIsDragging)
        viewport()->unsetCursor();
    mIsDragging = false;
    mPressButton = Qt::NoButton;
}

void Ky2DView::mouseReleaseEvent(QMouseEvent* event) {
    const bool isOurs = mPressButton != Qt::NoButton && event->button() == mPressButton;
    const bool isClick = isOurs && !mIsDragging && mPressButton == Qt::LeftButton;
    if (isOurs)
        endPress();
    QGraphicsView::mouseReleaseEvent(event);
    if (!isOurs)
        return;
    event->accept();
    if (isClick)
        click(event->pos());
}

void Ky2DView::click(const QPoint& position) {
    mPickedNode = KyObjectReference(pick(position.x(), position.y()));
    tell("PickedNode");
    mNodePickedSignal.send(getPickedNode());
}

void Ky2DView::mouseDoubleClickEvent(QMouseEvent* event) {
    event->ignore();
    QGraphicsView::mouseDoubleClickEvent(event);
    if (event->isAccepted() || event->button() != Qt::LeftButton)
        return;
    event->accept();
    fit();
}

void Ky2DView::keyPressEvent(QKeyEvent* event) {
    const bool isForItem = scene() && scene()->focusItem();
    if (isForItem) {
        QGraphicsView::keyPressEvent(event);
        if (event->isAccepted())
            return;
    }
    const auto* action = std::find_if(cKeyActions.begin(), cKeyActions.end(),
                                      [event](const KeyAction& entry) { return entry.key == event->key(); });
    if (action != cKeyActions.end() && !(event->modifiers() & cCommandModifiers)) {
        event->accept();
        action->run(*this);
    } else if (!isForItem) {
        event->ignore();
    }
}
