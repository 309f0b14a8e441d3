// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtPass.h"

#include "KyQtPassPainting_p.h"

#include "Ky2DNode.h"
#include "Ky2DScene.h"

#include "KyFrameBuffer.h"
#include "KyGraphicsDeviceManager.h"
#include "KyRendererContext.h"

#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainter>

#include <cmath>
#include <utility>

namespace {

constexpr QGraphicsItem::CacheMode cCacheMode = QGraphicsItem::NoCache;

/// Of a proxy and of all that its widget opened.
void setCacheMode(QGraphicsItem& item) {
    if (item.cacheMode() != cCacheMode)
        item.setCacheMode(cCacheMode);
    for (QGraphicsItem* child : item.childItems())
        setCacheMode(*child);
}

bool isPaintable(const QRectF& source) {
    const double area = source.width() * source.height();
    return std::isfinite(area) && area != 0.0;
}

} // namespace

bool KyQtPass::isUpdateNeeded() const {
    return mPainting->update.isNeeded();
}

void KyQtPass::setNeedUpdate(bool isNeeded) {
    if (!isNeeded) {
        mPainting->update.clear();
        return;
    }
    if (!mPainting->update.request())
        return;
    touch();
    needUpdate(this);
}

bool KyQtPass::isPaintedByFrameBuffer() const {
    return mPainting->target && mPainting->target->isFrameBuffer();
}

void KyQtPass::setFrameBuffer(KyFrameBuffer* buffer) {
    if (buffer && buffer == getFrameBuffer())
        return;
    mPainting->isTargetStale = true;
    KyHolder<KyFrameBuffer> kept(buffer);
    if (!buffer) {
        const KyHolder<KyTexture> texture(KyTexture::create());
        texture->setMinFilter(KyTexture::eLinear);
        kept.reset(KyFrameBuffer::create(texture.get()));
    }
    KyGraphicsPass::setFrameBuffer(kept.get());
    setNeedUpdate(true);
}

bool KyQtPass::adaptView(const KyGraphicsViewMultiPass& view) {
    const bool isChanged = KyGraphicsPass::adaptView(view);
    if (isChanged)
        setNeedUpdate(true);
    return isChanged;
}

bool KyQtPass::prepareTarget(KyRendererContext& context) {
    std::unique_ptr<KyQtPaintTarget>& target = mPainting->target;
    const bool isStale = std::exchange(mPainting->isTargetStale, false);
    if (target && (isStale || !target->isUsable()))
        target.reset();
    if (!target || target->isLost())
        setNeedUpdate(true);
    if (!isUpdateNeeded())
        return false;
    if (!target)
        target = mPaintMethod == eImage
                     ? KyQtPaintTarget::createImage(*getFrameBuffer())
                     : KyQtPaintTarget::create(*getFrameBuffer(), context, mPaintMethod == eFrameBuffer);
    return target->begin();
}

void KyQtPass::preRender(KyRendererContext& context) {
    // Nothing to show: the last picture goes.
    if (!mGraphicsScene)
        mPainting->target.reset();
    mPainting->isUnderWay = mGraphicsScene && prepareTarget(context);
    if (!mPainting->isUnderWay) {
        // Where nothing can be painted the next request must be told again.
        mPainting->update.clear();
        return;
    }
    Ky2DNode::applyModification();
    synchronizeFrameBuffer();
}

QSize KyQtPass::getWantedSize() const {
    const double width = getViewportWidth(), height = getViewportHeight();
    if (!mWidget)
        return {getViewportWidth(), getViewportHeight()};
    return {KyScalar::convert<int>(width * static_cast<double>(mViewScale.x)),
            KyScalar::convert<int>(height * static_cast<double>(mViewScale.y))};
}

void KyQtPass::synchronizeFrameBuffer() {
    if (mPainting->target->resize(getWantedSize())) {
        finalizeDataForReadPixelOperation();
        setNeedUpdate(true);
    }
}

void KyQtPass::doRender(KyRendererContext&, KyGraphicsViewMultiPass&) {
    if (!mPainting->isUnderWay)
        return;
    mPainting->update.begin();
    if (mWidget)
        renderWidgetMode();
    else
        renderSceneMode();
}

void KyQtPass::postRender(KyRendererContext& context) {
    if (!mPainting->isUnderWay)
        return;
    mPainting->isUnderWay = false;
    mPainting->target->end();
    if (context.getGraphicsDevice())
        KyGraphicsDeviceManager::get().makeCurrent(context.getGraphicsDevice());
    if (mPainting->update.end())
        setNeedUpdate(true);
}

QRectF KyQtPass::getSourceRect(double width, double height) const {
    double w = static_cast<double>(mViewRectSize.x), h = static_cast<double>(mViewRectSize.y);
    const double ratio = width / height;
    if (mIsKeepAspectRatio && ratio >= 1.0)
        w = ratio * h;
    else if (mIsKeepAspectRatio)
        h = w / ratio;
    w *= static_cast<double>(mViewScale.x);
    h *= static_cast<double>(mViewScale.y);
    return {static_cast<double>(mViewPosition.x) - w / 2.0, static_cast<double>(mViewPosition.y) - h / 2.0, w, h};
}

void KyQtPass::renderSceneMode() {
    if (mViewRectSize.x * mViewRectSize.y != 0.0f)
        paint(getSourceRect(getViewportWidth(), getViewportHeight()));
    getFrameBuffer()->getColorTexture()->touch();
}

void KyQtPass::renderWidgetMode() {
    if (mIsOverrideCacheMode && mProxy)
        updateCacheModeOnDynamicallyCreatedItem();
    const QRectF rect(QPointF(), mPainting->target->getSize());
    if (!rect.isEmpty() && mProxy && (mProxy->geometry() != rect || mGraphicsScene->sceneRect() != rect))
        adaptWidget(rect);
    if (mGraphicsScene)
        paint(mGraphicsScene->sceneRect());
    getFrameBuffer()->getColorTexture()->touch();
}

void KyQtPass::adaptWidget(const QRectF& rect) {
    mWidget->resize(rect.size().toSize());
    // A resize runs the widget's own code.
    if (!mProxy || !mGraphicsScene)
        return;
    mProxy->setPos(rect.topLeft());
    mGraphicsScene->setSceneRect(rect);
    if (mGraphicsView)
        mGraphicsView->resize(rect.size().toSize());
}

void KyQtPass::updateCacheModeOnDynamicallyCreatedItem() {
    for (QGraphicsItem* item : mProxy->childItems())
        setCacheMode(*item);
}

void KyQtPass::paint(const QRectF& source) {
    const QSize size = mPainting->target->getSize();
    if (!isPaintable(source) || size.isEmpty() || !mGraphicsScene)
        return;
    finalizeDataForReadPixelOperation();
    mPainting->target->paint([&](QPainter& painter) {
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        mGraphicsScene->render(&painter, QRectF(QPointF(), size), source, Qt::IgnoreAspectRatio);
    });
    ++mNbPaintings;
}

void KyQtPass::adaptQGraphicsView(const KyGraphicsViewMultiPass* view) {
    const KyRect<int> area = getAreaPixels(view);
    const QSize size = mWidget ? getWantedSize() : QSize(area.getWidth(), area.getHeight());
    const QRectF source = mWidget ? QRectF(QPointF(), size) : getSourceRect(size.width(), size.height());
    if (!mGraphicsView || size.isEmpty() || !isPaintable(source))
        return;
    const double x = size.width() / source.width(), y = size.height() / source.height();
    mGraphicsView->resize(size);
    mGraphicsView->setSceneRect(source.normalized());
    // The window's corner comes to 0: the view knows whole pixels only.
    mGraphicsView->setTransform(QTransform::fromTranslate(-source.x(), -source.y()) * QTransform::fromScale(x, y));
}

KyVec2f KyQtPass::getScenePosition(const KyVec2f& pixel, const KyGraphicsViewMultiPass* view) const {
    if (mWidget)
        return {pixel.x * mViewScale.x, pixel.y * mViewScale.y};
    const KyRect<int> area = getAreaPixels(view);
    const double width = area.getWidth(), height = area.getHeight();
    if (!(width > 0.0 && height > 0.0))
        return mViewPosition;
    const QRectF source = getSourceRect(width, height);
    const double x = 0.5 - (width - static_cast<double>(pixel.x)) / width;
    const double y = 0.5 - (height - static_cast<double>(pixel.y)) / height;
    return {static_cast<float>(x * source.width() + static_cast<double>(mViewPosition.x)),
            static_cast<float>(y * source.height() + static_cast<double>(mViewPosition.y))};
}

KyVec2f KyQtPass::getScenePositionFromGlobalPosition(const QPoint& global, const KyGraphicsViewMultiPass* view,
                                                     const QWidget* canvas) const {
    return canvas ? getScenePosition(KyPassPixel::fromGlobal(global, *canvas, getAreaPixels(view)), view) : KyVec2f();
}

KyVec2f KyQtPass::getScenePositionFromGlobalPosition(const QPoint& global, const KyGraphicsViewMultiPass* view,
                                                     const QWindow* canvas) const {
    return canvas ? getScenePosition(KyPassPixel::fromGlobal(global, *canvas, getAreaPixels(view)), view) : KyVec2f();
}

bool KyQtPass::pick(const KyVec2f& pixel, const KyGraphicsViewMultiPass* view, std::vector<KyIntersected*>& results,
                    const KyIntersectedCreator& creator) const {
    Ky2DScene* scene = edit2DScene();
    if (!scene)
        return false;
    const std::size_t before = results.size();
    const KyVec2f position = getScenePosition(pixel, view);
    scene->pick(static_cast<double>(position.x), static_cast<double>(position.y), results, creator);
    return results.size() > before;
}

void KyQtPass::initializeDataForReadPixelOperation() {
    mPainting->pixel.reset();
}

void KyQtPass::finalizeDataForReadPixelOperation() {
    mPainting->pixel.reset();
}

KyColor KyQtPass::getPixelColor(const KyVec2f& pixel, const KyGraphicsViewMultiPass*) {
    const std::unique_ptr<KyQtPaintTarget>& target = mPainting->target;
    const KyVec2f scale = mWidget ? mViewScale : KyVec2f(1.0f, 1.0f);
    const auto found = target ? KyPassPixel::find({pixel.x * scale.x, pixel.y * scale.y}, target->getSize())
                              : std::optional<KyVec2<int>>();
    if (!found)
        return {0.0f, 0.0f, 0.0f, 0.0f};
    return mPainting->pixel.get(found->x, found->y, [&] { return target->read(found->x, found->y); });
}
