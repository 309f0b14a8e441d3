// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DViewBusy_p.h"

#include "Ky2DScene.h"
#include "Ky2DUtil.h"
#include "KyGraphicsItemType.h"

#include "KyException.h"

#include <QApplication>
#include <QPainter>
#include <QPointer>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

/// Never destroyed: the last view may end late.
std::vector<Ky2DView*>& editViews() {
    static auto* const views = new std::vector<Ky2DView*>;
    return *views;
}

/// Part of the view that a fitted scene takes.
constexpr double cFitPart = 0.94;
/// Pixels about a click in which thin lines are found too.
constexpr int cPickReach = 3;
/// The view's own rectangle of the scene; as small as this there is nothing to scroll.
constexpr double cNoSize = 1e-9;
/// Pixels further away than any screen reaches.
constexpr double cFarAway = 1e6;

bool isFinite(double a, double b) {
    return std::isfinite(a) && std::isfinite(b);
}

bool isFinite(const QRectF& rect) {
    return isFinite(rect.x(), rect.y()) && isFinite(rect.right(), rect.bottom());
}

bool isShownItem(const QGraphicsItem& item) {
    return item.isVisible() && !(item.flags() & QGraphicsItem::ItemHasNoContents);
}

/// Infinity where there is nothing to fit.
double getRatio(double available, double needed) {
    return needed > 0.0 ? available / needed : std::numeric_limits<double>::infinity();
}

} // namespace

Ky2DView* Ky2DView::create() {
    if (Ky2DUtil::hasApplication())
        return new Ky2DView;
    KyException::create("Ky2DView::create(): there is no QApplication.");
    return nullptr;
}

Ky2DView::Ky2DView(QWidget* parent)
    : QGraphicsView(parent) {
    editViews().push_back(this);
    setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTransformationAnchor(NoAnchor);
    setResizeAnchor(NoAnchor);
    setViewportUpdateMode(SmartViewportUpdate);
    setFocusPolicy(Qt::StrongFocus);
    setBackgroundColor(mBackgroundColor);
    mToldSize = size();
}

Ky2DView::~Ky2DView() {
    std::erase(editViews(), this);
    mSlots.disconnectAll();
}

unsigned Ky2DView::getNbViews() {
    return static_cast<unsigned>(editViews().size());
}

Ky2DView* Ky2DView::getView(unsigned index) {
    const std::vector<Ky2DView*>& views = editViews();
    return index < views.size() ? views[index] : nullptr;
}

void Ky2DView::destroy() {
    if (isEnding())
        return;
    notifyEnd();
    setScene(nullptr);
    hide();
    if (mNbBusy == 0)
        delete this;
    else
        deleteLater();
}

Ky2DScene* Ky2DView::getScene() const {
    return static_cast<Ky2DScene*>(mScene.get());
}

void Ky2DView::setScene(Ky2DScene* scene) {
    const Busy busy(*this);
    mSlots.disconnectAll();
    endPress();
    mScene = KyObjectReference(scene);
    mPickedNode = KyObjectReference();
    QGraphicsView::setScene(scene ? scene->getQGraphicsScene() : nullptr);
    if (scene) {
        scene->changesPendingSignal().connect(mSlots, [this](Ky2DScene*) { onChangesPending(); });
        scene->modifiedSignal().connect(mSlots,
                                        [this](KyObject*, KyObjectModificationType kind, const std::string&, int) {
                                            if (kind == eObjectEnding)
                                                setScene(nullptr);
                                        });
    }
    if (mIsFitted)
        fit();
    if (!busy.isAlive())
        return;
    viewport()->update();
    tell("Scene");
}

void Ky2DView::onChangesPending() {
    if (mIsApplyQueued || !isVisible())
        return;
    mIsApplyQueued = true;
    // Later, for all changes of this turn; Qt then repaints what they touch.
    QMetaObject::invokeMethod(
        this,
        [this] {
            mIsApplyQueued = false;
            const Busy busy(*this);
            Ky2DNode::applyModification();
            if (busy.isAlive() && mIsFitted && mIsFitPending)
                fit();
        },
        Qt::QueuedConnection);
}

void Ky2DView::setBackgroundColor(const KyColor& color) {
    mBackgroundColor = color;
    const QColor base = Ky2DUtil::KyColorToQColor(color);
    setBackgroundBrush(base);
    // Without scene Qt paints the palette's colour.
    QPalette colors = palette();
    colors.setColor(QPalette::Base, base);
    setPalette(colors);
    tell("BackgroundColor");
}

std::string Ky2DView::getCaption() const {
    return windowTitle().toStdString();
}

void Ky2DView::setCaption(const std::string& caption) {
    setWindowTitle(QString::fromStdString(caption));
    tell("Caption");
}

void Ky2DView::setWidth(int width) {
    if (width < 1)
        return;
    mToldSize.setWidth(-1);
    resize(std::min(width, cLargestSize), height());
    tellSize();
}

void Ky2DView::setHeight(int height) {
    if (height < 1)
        return;
    mToldSize.setHeight(-1);
    resize(width(), std::min(height, cLargestSize));
    tellSize();
}

void Ky2DView::setShown(bool isShown) {
    mToldShown = !isShown;
    setVisible(isShown);
    tellShown();
}

void Ky2DView::place() {
    QTransform transform;
    transform.translate(width() / 2.0, height() / 2.0);
    transform.rotate(mRotation);
    transform.scale(mZoom, mZoom);
    transform.translate(-mCenter.x, -mCenter.y);
    mPlacedSize = size();
    if (!isFinite(transform.m31(), transform.m32()))
        return;
    setSceneRect(QRectF(mCenter.x, mCenter.y, cNoSize, cNoSize));
    setTransform(transform);
}

void Ky2DView::settle() {
    if (mPlacedSize == size())
        return;
    if (mIsFitted)
        fit();
    else
        place();
}

KyVec2d Ky2DView::toSceneOffset(double dx, double dy) const {
    const QPointF turned = QTransform().rotate(-mRotation).map(QPointF(dx, dy));
    return KyVec2d(turned.x(), turned.y()) / mZoom;
}

void Ky2DView::setZoom(double zoom) {
    if (!std::isfinite(zoom) || zoom <= 0.0)
        return;
    mZoom = std::clamp(zoom, cMinZoom, cMaxZoom);
    mIsFitted = false;
    place();
    tell("Zoom");
}

void Ky2DView::setCenter(const KyVec2d& center) {
    if (!isFinite(center.x, center.y))
        return;
    mCenter = center;
    mIsFitted = false;
    place();
    tell("Center");
}

void Ky2DView::setRotation(double degrees) {
    if (!std::isfinite(degrees))
        return;
    mRotation = std::fmod(degrees, 360.0);
    const Busy busy(*this);
    if (mIsFitted)
        fit();
    else
        place();
    if (busy.isAlive())
        tell("Rotation");
}

void Ky2DView::zoom(double factor) {
    zoomAt(factor, width() / 2.0, height() / 2.0);
}

void Ky2DView::zoomAt(double factor, double x, double y) {
    if (!isFinite(x, y) || !std::isfinite(factor) || factor <= 0.0)
        return;
    const Busy busy(*this);
    settle();
    if (!busy.isAlive())
        return;
    const double dx = x - width() / 2.0, dy = y - height() / 2.0;
    const KyVec2d fixed = mCenter + toSceneOffset(dx, dy);
    mZoom = std::clamp(mZoom * factor, cMinZoom, cMaxZoom);
    setCenter(fixed - toSceneOffset(dx, dy));
    if (busy.isAlive())
        tell("Zoom");
}

void Ky2DView::pan(double dx, double dy) {
    const Busy busy(*this);
    settle();
    if (busy.isAlive())
        setCenter(mCenter - toSceneOffset(dx, dy));
}

QRectF Ky2DView::getVisibleBound() const {
    QRectF bound;
    if (!scene())
        return bound;
    for (const QGraphicsItem* item : scene()->items()) {
        const QRectF rect = isShownItem(*item) ? item->sceneBoundingRect() : QRectF();
        if (isFinite(rect))
            bound |= rect;
    }
    return bound;
}

void Ky2DView::fit() {
    const Busy busy(*this);
    Ky2DNode::applyModification();
    if (!busy.isAlive())
        return;
    mIsFitted = true;
    const QRectF bound = getVisibleBound();
    mIsFitPending = bound.isNull() || size().isEmpty();
    if (mIsFitPending)
        place();
    else
        showRect(bound);
}

void Ky2DView::fitNode(Ky2DNode* node) {
    if (!node || !getScene() || node->getScene() != getScene())
        return;
    const Busy busy(*this);
    const Ky2DNode::Watch watch(node);
    const KyRectd bound = node->getBound();
    const QRectF rect(bound.origin.x, bound.origin.y, bound.width, bound.height);
    if (!busy.isAlive() || !watch.isAlive() || !bound.isFinite() || !isFinite(rect))
        return;
    mIsFitted = false;
    showRect(rect);
}

void Ky2DView::showRect(const QRectF& rect) {
    const QSizeF needed = QTransform().rotate(mRotation).mapRect(rect).size();
    const double zoom = cFitPart * std::min(getRatio(width(), needed.width()), getRatio(height(), needed.height()));
    if (std::isfinite(zoom) && zoom > 0.0)
        mZoom = std::clamp(zoom, cMinZoom, cMaxZoom);
    mCenter = KyVec2d(rect.center().x(), rect.center().y());
    place();
    const Busy busy(*this);
    tell("Zoom");
    if (busy.isAlive())
        tell("Center");
}

KyVec2d Ky2DView::toScene(double x, double y) const {
    const_cast<Ky2DView*>(this)->settle();
    const QPointF point = viewportTransform().inverted().map(QPointF(x, y));
    return KyVec2d(point.x(), point.y());
}

KyVec2d Ky2DView::fromScene(const KyVec2d& point) const {
    const_cast<Ky2DView*>(this)->settle();
    const QPointF pixel = viewportTransform().map(QPointF(point.x, point.y));
    return KyVec2d(pixel.x(), pixel.y());
}

Ky2DNode* Ky2DView::pick(double x, double y) {
    const Busy busy(*this);
    Ky2DNode::applyModification();
    if (!busy.isAlive() || !getScene() || !(std::abs(x) < cFarAway && std::abs(y) < cFarAway))
        return nullptr;
    settle();
    const QRect pixel(QPoint(static_cast<int>(std::floor(x)), static_cast<int>(std::floor(y))), QSize(1, 1));
    Ky2DNode* node = findNode(pixel);
    return node ? node : findNode(pixel.adjusted(-cPickReach, -cPickReach, cPickReach, cPickReach));
}

Ky2DNode* Ky2DView::findNode(const QRect& area) const {
    for (const QGraphicsItem* item : items(area)) {
        if (item->type() == eGraphicsItem3DView)
            continue;
        for (; item; item = item->parentItem())
            if (Ky2DNode* node = getScene()->getNode(item))
                return node;
    }
    return nullptr;
}

Ky2DNode* Ky2DView::getPickedNode() const {
    return static_cast<Ky2DNode*>(mPickedNode.get());
}

QImage Ky2DView::toImage(int width, int height) {
    if (width < 1 || height < 1 || width > cLargestSize || height > cLargestSize)
        return {};
    const Busy busy(*this);
    Ky2DNode::applyModification();
    if (busy.isAlive())
        settle();
    if (!busy.isAlive())
        return {};
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    const QColor base = Ky2DUtil::KyColorToQColor(mBackgroundColor);
    // The view paints its background itself, which shows when done twice.
    image.fill(base.alpha() == 255 ? base : QColor(Qt::transparent));
    if (!scene() || size().isEmpty()) {
        image.fill(base);
        return image;
    }
    QRectF target(QPointF(), QSizeF(size()).scaled(width, height, Qt::KeepAspectRatio));
    target.moveCenter(QPointF(width / 2.0, height / 2.0));
    QPainter painter(&image);
    painter.setRenderHints(renderHints());
    render(&painter, target, QRect(QPoint(), size()), Qt::IgnoreAspectRatio);
    return image;
}

bool Ky2DView::saveImage(const std::string& path) {
    const QSizeF pixels = QSizeF(size()) * devicePixelRatioF();
    return toImage(qRound(pixels.width()), qRound(pixels.height())).save(QString::fromStdString(path));
}
