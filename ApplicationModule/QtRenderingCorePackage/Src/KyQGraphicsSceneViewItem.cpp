// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQGraphicsSceneViewItem.h"

#include "KyQEventCanvasProvider.h"

#include "KyQtInput.h"

#include "KyFrameBuffer.h"
#include "KyImage.h"

#include "KyTypeBuilder.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsSceneHoverEvent>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsSceneWheelEvent>
#include <QGraphicsView>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

constexpr int cSamples = 4;

/// Where the pointer is in the item; none for events that do not say.
std::optional<QPointF> getPosition(const QEvent* event) {
    switch (event ? event->type() : QEvent::None) {
    case QEvent::GraphicsSceneMousePress:
    case QEvent::GraphicsSceneMouseRelease:
    case QEvent::GraphicsSceneMouseDoubleClick:
    case QEvent::GraphicsSceneMouseMove:
        return static_cast<const QGraphicsSceneMouseEvent*>(event)->pos();
    case QEvent::GraphicsSceneWheel:
        return static_cast<const QGraphicsSceneWheelEvent*>(event)->pos();
    case QEvent::GraphicsSceneHoverMove:
        return static_cast<const QGraphicsSceneHoverEvent*>(event)->pos();
    default:
        return std::nullopt;
    }
}

int toPixel(double position) {
    constexpr double cLimit = 1e9;
    return static_cast<int>(std::lround(std::clamp(position, -cLimit, cLimit)));
}

/// What lies behind the canvas is a window, so nothing shines through.
QImage toOpaqueImage(const KyImage& picture) {
    const QImage image(picture.getData(), picture.getWidth(), picture.getHeight(), QImage::Format_RGBX8888);
    return image.convertToFormat(QImage::Format_RGB32);
}

} // namespace

const KyType* KyQGraphicsSceneViewItem::msType = nullptr;

void KyQGraphicsSceneViewItem::initializeType() {
    if (msType)
        return;
    KyWindow::initializeType();
    msType = KyTypeBuilder<KyQGraphicsSceneViewItem>("KyQGraphicsSceneViewItem", KyWindow::getType()).factory().build();
}

void KyQGraphicsSceneViewItem::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyQGraphicsSceneViewItem::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyQGraphicsSceneViewItem::getObjectType() const {
    return getType();
}

KyQGraphicsSceneViewItem* KyQGraphicsSceneViewItem::cast(KyObject* object) {
    return kyCast<KyQGraphicsSceneViewItem>(object);
}

KyQGraphicsSceneViewItem* KyQGraphicsSceneViewItem::create(KyCanvas* canvas) {
    return hasApplication("KyQGraphicsSceneViewItem", true) ? new KyQGraphicsSceneViewItem(canvas) : nullptr;
}

KyQGraphicsSceneViewItem::KyQGraphicsSceneViewItem(KyCanvas* canvas, QGraphicsItem* parent)
    : QGraphicsObject(parent)
    , KyWindow(canvas) {
    setFlag(ItemIsFocusable);
    setAcceptHoverEvents(true);
    setAcceptTouchEvents(true);
}

KyQGraphicsSceneViewItem::~KyQGraphicsSceneViewItem() {
    const KyQGraphicsDevice::Scope current(editGraphicsDevice());
    mTarget.reset();
    end();
}

double KyQGraphicsSceneViewItem::getPixelRatio() const {
    const QList<QGraphicsView*> views = scene() ? scene()->views() : QList<QGraphicsView*>();
    if (views.isEmpty())
        return qApp->devicePixelRatio();
    double ratio = 0.0;
    for (const QGraphicsView* view : views)
        ratio = std::max(ratio, view->viewport()->devicePixelRatioF());
    return ratio;
}

bool KyQGraphicsSceneViewItem::isShown() const {
    if (!isVisible() || !scene())
        return false;
    const QList<QGraphicsView*> views = scene()->views();
    return std::any_of(views.begin(), views.end(), [](const QGraphicsView* view) { return view->isVisible(); });
}

void KyQGraphicsSceneViewItem::setShown(bool isShown) {
    setVisible(isShown);
    notifyModified("Visible");
}

void KyQGraphicsSceneViewItem::requestRedraw() {
    setStale();
    update();
}

QSize KyQGraphicsSceneViewItem::getDeviceSize() const {
    return (mSize * getPixelRatio()).toSize();
}

void KyQGraphicsSceneViewItem::resizeTo(const QSize& size) {
    setItemSize(size);
}

void KyQGraphicsSceneViewItem::setItemSize(const QSizeF& size) {
    const bool isFinite = std::isfinite(size.width()) && std::isfinite(size.height());
    if (!isFinite || size.width() < 0.0 || size.height() < 0.0 || size == mSize)
        return;
    prepareGeometryChange();
    mSize = size;
}

bool KyQGraphicsSceneViewItem::prepareContext() {
    if (editGraphicsDevice().getContext())
        return true;
    if (!checkSupport())
        return false;
    std::string error;
    auto device = KyQGraphicsDevice::createOffscreen(error, getDefaultFormat());
    if (!device)
        return false;
    setDevice(std::move(device));
    return true;
}

void KyQGraphicsSceneViewItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) {
    const Busy busy(*this);
    if (needsRedraw())
        drawImage();
    if (!mImage.isNull())
        painter->drawImage(boundingRect(), mImage);
}

void KyQGraphicsSceneViewItem::drawImage() {
    if (!prepareContext())
        return;
    // A view may be painting with a context of its own.
    const KyQGraphicsDevice::Scope current(editGraphicsDevice());
    if (!current.isCurrent())
        return;
    if (!mTarget) {
        mTarget.reset(KyFrameBuffer::create());
        mTarget->setSamples(cSamples);
    }
    mTarget->setSize(getWidth(), getHeight());
    if (!drawCanvas(mTarget.get()))
        return;
    const KyHolder<KyImage> picture(mTarget->readPixels());
    mImage = picture ? toOpaqueImage(*picture) : QImage();
    QMetaObject::invokeMethod(
        this, [this] { tellDrawn(); }, Qt::QueuedConnection);
}

void KyQGraphicsSceneViewItem::placeEvent(KyInputEvent& event) {
    const auto position = getPosition(static_cast<const QEvent*>(event.getNativeEvent()));
    if (!position)
        return;
    const double ratio = getPixelRatio();
    event.setPosition(toPixel(position->x() * ratio), toPixel(position->y() * ratio));
}

void KyQGraphicsSceneViewItem::sendHover(QGraphicsSceneHoverEvent& event) {
    KyQEventCanvasProvider& provider = editEventProvider();
    if (provider.isMouseTrackingAvoided())
        return;
    KyInputEvent input;
    input.setType(KyInputEvent::eMouseMoved);
    input.setNativeEvent(static_cast<QEvent*>(&event));
    input.setState(KyApplication::toKyKeyboardModifiers(event.modifiers()));
    provider.setInputEvent(input);
}

bool KyQGraphicsSceneViewItem::sceneEvent(QEvent* event) {
    const Busy busy(*this);
    if (event->type() == QEvent::GraphicsSceneHoverMove)
        sendHover(*static_cast<QGraphicsSceneHoverEvent*>(event));
    if (editEventProvider().eventFilter(scene(), event))
        return true;
    return finishEvent(event, QGraphicsObject::sceneEvent(event));
}
