// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQGLGraphicsView.h"

#include "KyQEventCanvasProvider.h"

#include "KyImage.h"

#include "KyTypeBuilder.h"

#include <QGraphicsItem>
#include <QHelpEvent>
#include <QOpenGLContext>
#include <QOpenGLWidget>
#include <QTouchEvent>
#include <QWheelEvent>

#include <algorithm>

namespace {

constexpr int cDepthBits = 24;
constexpr int cStencilBits = 8;
constexpr int cSamples = 4;

/// Qt cannot paint with a core profile, so version and profile are left to it.
QSurfaceFormat getPaintFormat() {
    QSurfaceFormat format;
    format.setDepthBufferSize(cDepthBits);
    format.setStencilBufferSize(cStencilBits);
    format.setSamples(cSamples);
    return format;
}

} // namespace

const KyType* KyQGLGraphicsView::msType = nullptr;

void KyQGLGraphicsView::initializeType() {
    if (msType)
        return;
    KyWindow::initializeType();
    msType = KyTypeBuilder<KyQGLGraphicsView>("KyQGLGraphicsView", KyWindow::getType()).factory().build();
}

void KyQGLGraphicsView::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyQGLGraphicsView::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyQGLGraphicsView::getObjectType() const {
    return getType();
}

KyQGLGraphicsView* KyQGLGraphicsView::cast(KyObject* object) {
    return kyCast<KyQGLGraphicsView>(object);
}

KyQGLGraphicsView* KyQGLGraphicsView::create(KyCanvas* canvas) {
    return hasApplication("KyQGLGraphicsView", true) ? new KyQGLGraphicsView(canvas) : nullptr;
}

double KyQGLGraphicsView::getPixelRatio() const {
    return devicePixelRatioF();
}

std::string KyQGLGraphicsView::getCaption() const {
    return windowTitle().toStdString();
}

void KyQGLGraphicsView::setCaption(const std::string& caption) {
    setWindowTitle(QString::fromStdString(caption));
    notifyModified("Title");
}

bool KyQGLGraphicsView::isShown() const {
    return isVisible() && !window()->isMinimized();
}

void KyQGLGraphicsView::setShown(bool isShown) {
    setVisible(isShown);
    notifyModified("Visible");
}

void KyQGLGraphicsView::resizeTo(const QSize& size) {
    resize(size);
}

KyQGLGraphicsView::KyQGLGraphicsView(KyCanvas* canvas, QWidget* parent)
    : QGraphicsView(parent)
    , KyWindow(canvas) {
    auto* const port = new QOpenGLWidget;
    port->setFormat(getPaintFormat());
    // So that QWidget::grab() finds the frame.
    port->setUpdateBehavior(QOpenGLWidget::PartialUpdate);
    setViewport(port);
    setScene(new QGraphicsScene(this));
    setViewportUpdateMode(FullViewportUpdate);
    setRenderHint(QPainter::Antialiasing);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::StrongFocus);
    port->setMouseTracking(true);
    port->setAttribute(Qt::WA_AcceptTouchEvents);
    // Keys come to the view, all else to its viewport.
    watch(*this);
    watch(*port);
    QObject::connect(port, &QOpenGLWidget::frameSwapped, this, [this] { tellDrawn(); });
}

KyQGLGraphicsView::~KyQGLGraphicsView() {
    end();
}

QSize KyQGLGraphicsView::getDeviceSize() const {
    return viewport()->size() * viewport()->devicePixelRatioF();
}

void KyQGLGraphicsView::requestRedraw() {
    viewport()->update();
}

bool KyQGLGraphicsView::isForCanvas(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    const bool isKey = type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::InputMethodQuery;
    if (watched == this)
        return isKey && !(scene() && scene()->focusItem());
    return !isKey && isPointerForCanvas(event);
}

bool KyQGLGraphicsView::isPointerForCanvas(QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        return isMouseForCanvas(*static_cast<QMouseEvent*>(event));
    case QEvent::Wheel:
        return !hasItemAt(static_cast<QWheelEvent*>(event)->position().toPoint());
    case QEvent::ToolTip:
        return !hasItemAt(static_cast<QHelpEvent*>(event)->pos());
    case QEvent::ContextMenu:
        return !hasItemAt(static_cast<QContextMenuEvent*>(event)->pos());
    case QEvent::TouchBegin: {
        const auto& points = static_cast<QTouchEvent*>(event)->touchPoints();
        mIsTouchWithItems = !points.isEmpty() && hasItemAt(points.first().pos().toPoint());
        return !mIsTouchWithItems;
    }
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        return !mIsTouchWithItems;
    default:
        return true;
    }
}

bool KyQGLGraphicsView::isMouseForCanvas(const QMouseEvent& event) {
    // The first button decides for all until the last one is up.
    const bool isPress = event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
    if (isPress ? event.buttons() == event.button() : event.type() == QEvent::MouseMove && !event.buttons())
        mIsMouseWithItems = hasItemAt(event.pos());
    return !mIsMouseWithItems;
}

bool KyQGLGraphicsView::hasItemAt(const QPoint& position) const {
    if (!scene())
        return false;
    // One that holds the mouse without a button down, as a menu does, has it everywhere.
    if (scene()->mouseGrabberItem())
        return true;
    const QList<QGraphicsItem*> found = items(position);
    return std::any_of(found.begin(), found.end(), [](const QGraphicsItem* item) {
        return item->isEnabled() && item->acceptedMouseButtons() != Qt::NoButton;
    });
}

void KyQGLGraphicsView::drawBackground(QPainter* painter, const QRectF&) {
    QOpenGLContext* const context = QOpenGLContext::currentContext();
    if (!mIsPainting || !context) {
        drawPicture(*painter);
        return;
    }
    painter->beginNativePainting();
    setContext(context, context->surface());
    drawCanvas();
    painter->endNativePainting();
}

void KyQGLGraphicsView::drawPicture(QPainter& painter) {
    const KyHolder<KyImage> picture(grabPicture());
    if (!picture)
        return;
    const QImage image(picture->getData(), picture->getWidth(), picture->getHeight(), QImage::Format_RGBX8888);
    painter.drawImage(mapToScene(viewport()->rect()).boundingRect(), image);
}

void KyQGLGraphicsView::paintEvent(QPaintEvent* event) {
    if (!checkSupport())
        return;
    mIsPainting = true;
    QGraphicsView::paintEvent(event);
    mIsPainting = false;
}

void KyQGLGraphicsView::showEvent(QShowEvent* event) {
    checkSupport();
    QGraphicsView::showEvent(event);
}

bool KyQGLGraphicsView::viewportEvent(QEvent* event) {
    const Busy busy(*this);
    return finishEvent(event, QGraphicsView::viewportEvent(event));
}

bool KyQGLGraphicsView::event(QEvent* event) {
    if (event->type() == QEvent::DeferredDelete)
        return QGraphicsView::event(event);
    const Busy busy(*this);
    return finishEvent(event, QGraphicsView::event(event));
}
