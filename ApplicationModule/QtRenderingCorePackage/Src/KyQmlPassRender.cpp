// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlPass_p.h"

#include "KyFrameBuffer.h"

#include "KyException.h"

#include <QOpenGLContext>

bool KyQmlPass::adaptView(const KyGraphicsViewMultiPass& view) {
    const bool isChanged = KyGraphicsPass::adaptView(view);
    if (isChanged && mFixedSize.isEmpty())
        requestUpdate();
    return isChanged;
}

void KyQmlPass::setFrameBuffer(KyFrameBuffer* buffer) {
    if (buffer == getFrameBuffer())
        return;
    releaseBuffer();
    KyGraphicsPass::setFrameBuffer(buffer);
    shareBuffer();
}

void KyQmlPass::releaseBuffer() {
    if (KyFrameBuffer* buffer = getFrameBuffer()) {
        buffer->setHandle(0);
        buffer->getColorTexture()->setHandle(0);
    }
}

void KyQmlPass::shareBuffer() {
    if (mParts->target && getFrameBuffer())
        mParts->target->share(*getFrameBuffer());
}

void KyQmlPass::preRender(KyRendererContext&) {
    if (mParts->isRendering) {
        ++mParts->nbInnerFrames;
        return;
    }
    if (!mParts->update.isNeeded())
        return;
    mParts->isRendering = true;
    if (prepare())
        return;
    mParts->frame.reset();
    mParts->isRendering = false;
    setNeedUpdate(false);
    if (isCleanedUp() && !getFboSize().isEmpty())
        requestUpdate();
}

/// By what it has called: the next frame begins anew.
bool KyQmlPass::isCleanedUp() const {
    return !mParts->window && !mParts->isUnusable;
}

bool KyQmlPass::prepare() {
    if (getFboSize().isEmpty() || !initializeGraphics())
        return false;
    mParts->frame.emplace(*mParts->target);
    if (!mParts->frame->isUsable())
        return false;
    // Once more for the errors report.
    for (int i = 0; i < 2; ++i) {
        load();
        createRootItem();
        if (isCleanedUp())
            return false;
    }
    mParts->target->makeCurrent();
    if (mState == State::eLoaded && mParts->initializedQml != mQml)
        initializeRenderControl();
    if (mParts->target->getSize() != getFboSize() && mParts->refusedSize != getFboSize())
        createFbo();
    return !isCleanedUp();
}

bool KyQmlPass::initializeGraphics() {
    if (mParts->window || mParts->isUnusable)
        return mParts->window != nullptr;
    // Making surfaces and windows, Qt may let other windows draw.
    QOpenGLContext* viewContext = QOpenGLContext::currentContext();
    KyQGraphicsDevice view(viewContext, viewContext ? viewContext->surface() : nullptr);
    const bool isMade = makeGraphics();
    view.makeCurrent();
    return isMade;
}

bool KyQmlPass::makeGraphics() {
    std::string error;
    mParts->target = KyQmlTarget::create(error);
    if (!mParts->target) {
        mParts->isUnusable = true;
        KyException::create("QML cannot be shown in the view: " + error + ".");
        return false;
    }
    mParts->control = std::make_unique<KyQmlRenderControl>();
    QQuickWindow::setDefaultAlphaBuffer(true);
    mParts->window = std::make_unique<QQuickWindow>(mParts->control.get());
    mParts->window->setColor(Qt::transparent);
    connect(mParts->control.get(), &QQuickRenderControl::renderRequested, this, &KyQmlPass::requestUpdate);
    connect(mParts->control.get(), &QQuickRenderControl::sceneChanged, this, &KyQmlPass::requestUpdate);
    return true;
}

void KyQmlPass::initializeRenderControl() {
    mParts->control->invalidate();
    mParts->target->initialize(*mParts->control);
    mParts->initializedQml = mQml;
}

void KyQmlPass::createFbo() {
    const QSize size = getFboSize();
    if (!mParts->target || size.isEmpty())
        return;
    const KyQmlTarget::Scope current(*mParts->target);
    if (!current.isUsable())
        return;
    const bool isMade = mParts->target->resize(size, *mParts->window);
    mParts->refusedSize = isMade ? QSize() : size;
    if (!isMade)
        KyException::create("A QML picture of " + std::to_string(size.width()) + " x " + std::to_string(size.height()) +
                            " pixels is larger than this device allows.");
    updateQuickSizes();
    shareBuffer();
    mParts->pixel.reset();
    mTextureHandleModifiedSignal.send();
    requestUpdate();
}

void KyQmlPass::updateQuickSizes() {
    const QSize size = getFboSize();
    if (mParts->item)
        mParts->item->setSize(size);
    if (mParts->window)
        mParts->window->setGeometry(QRect(QPoint(), size));
}

void KyQmlPass::doRender(KyRendererContext&, KyGraphicsViewMultiPass&) {
    if (!mParts->frame || !mParts->target || mParts->nbInnerFrames > 0)
        return;
    mParts->update.begin();
    if (!mParts->target->getSize().isEmpty() && mParts->target->makeCurrent())
        render();
}

void KyQmlPass::render() {
    KyQmlTarget& target = *mParts->target;
    if (mState == State::eLoaded && mParts->item)
        target.render(*mParts->window, *mParts->control);
    else
        target.clear();
    mParts->pixel.reset();
    // Also what it creates while it is painted may have ended the target.
    if (KyTexture* texture = &target == mParts->target.get() ? getTexture() : nullptr)
        target.publish(*texture);
}

void KyQmlPass::postRender(KyRendererContext&) {
    if (mParts->nbInnerFrames > 0) {
        --mParts->nbInnerFrames;
        return;
    }
    if (!mParts->isRendering)
        return;
    mParts->frame.reset();
    mParts->isRendering = false;
    if (mParts->update.end() || isCleanedUp())
        requestUpdate();
}

void KyQmlPass::cleanupGraphicsRessources() {
    change([this] { releaseGraphics(); });
}

void KyQmlPass::releaseGraphics() {
    releaseQml();
    if (mParts->target && mParts->window) {
        mParts->control->disconnect(this);
        KyQmlRemains* remains = KyQmlRemains::create();
        remains->control = std::move(mParts->control);
        remains->window = std::move(mParts->window);
        remains->target = std::move(mParts->target);
    }
    mParts->isUnusable = false;
    mParts->initializedQml.clear();
    mParts->refusedSize = {};
    mParts->pixel.reset();
    releaseBuffer();
    requestUpdate();
}
