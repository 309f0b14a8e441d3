// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlGlTarget_p.h"

#include "KyFrameBuffer.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QQuickRenderControl>
#include <QQuickWindow>

#include <algorithm>

namespace {

QSurfaceFormat makeFormat() {
    QSurfaceFormat format;
    format.setAlphaBufferSize(8);
    format.setDepthBufferSize(16);
    format.setStencilBufferSize(8);
    return format;
}

} // namespace

KyQmlGlTarget::KyQmlGlTarget() = default;

std::unique_ptr<KyQmlTarget> KyQmlGlTarget::create(std::string& error) {
    std::unique_ptr<KyQmlGlTarget> target(new KyQmlGlTarget);
    return target->createContext(error) ? std::move(target) : nullptr;
}

KyQmlGlTarget::~KyQmlGlTarget() {
    const Scope current(*this);
    mBuffer.reset();
}

bool KyQmlGlTarget::createContext(std::string& error) {
    QOpenGLContext* viewContext = QOpenGLContext::currentContext();
    mContext = std::make_unique<QOpenGLContext>();
    mContext->setFormat(makeFormat());
    mContext->setShareContext(viewContext ? viewContext : QOpenGLContext::globalShareContext());
    if (!mContext->create()) {
        error = "this display offers no OpenGL";
        return false;
    }
    if (viewContext && !QOpenGLContext::areSharing(mContext.get(), viewContext)) {
        error = "the OpenGL of this display does not share with the view's";
        return false;
    }
    mSurface = std::make_unique<QOffscreenSurface>();
    mSurface->setFormat(mContext->format());
    mSurface->create();
    mDevice.setContext(mContext.get(), mSurface.get());
    const KyQGraphicsDevice::Scope current(mDevice);
    if (!current.isCurrent())
        error = "this display offers no off-screen surface";
    return current.isCurrent();
}

void KyQmlGlTarget::initialize(QQuickRenderControl& control) {
    control.initialize(mContext.get());
}

bool KyQmlGlTarget::fits(const QSize& size) const {
    GLint largest = 0;
    mContext->functions()->glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    return !size.isEmpty() && std::max(size.width(), size.height()) <= largest;
}

bool KyQmlGlTarget::resize(const QSize& size, QQuickWindow& window) {
    window.setRenderTarget(nullptr);
    mBuffer.reset();
    mSize = {};
    if (!fits(size))
        return false;
    mBuffer =
        std::make_unique<QOpenGLFramebufferObject>(size, QOpenGLFramebufferObject::CombinedDepthStencil, GL_TEXTURE_2D);
    if (!mBuffer->isValid()) {
        mBuffer.reset();
        return false;
    }
    mSize = size;
    window.setRenderTarget(mBuffer.get());
    clear();
    return true;
}

void KyQmlGlTarget::share(KyFrameBuffer& buffer) {
    KyTexture& texture = *buffer.getColorTexture();
    buffer.setHandle(mBuffer ? mBuffer->handle() : 0);
    texture.setHandle(mBuffer ? mBuffer->texture() : 0);
    texture.setSize(mSize.width(), mSize.height());
    buffer.setSize(mSize.width(), mSize.height());
}

void KyQmlGlTarget::render(QQuickWindow& window, QQuickRenderControl& control) {
    window.resetOpenGLState();
    control.polishItems();
    control.sync();
    control.render();
    QOpenGLFramebufferObject::bindDefault();
    // The view's context reads the texture next.
    mContext->functions()->glFlush();
}

void KyQmlGlTarget::clear() {
    QOpenGLFunctions* gl = mContext->functions();
    mBuffer->bind();
    gl->glDisable(GL_SCISSOR_TEST);
    gl->glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    gl->glDepthMask(GL_TRUE);
    gl->glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    gl->glClearDepthf(0.0f);
    gl->glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    QOpenGLFramebufferObject::bindDefault();
    gl->glFlush();
}

void KyQmlGlTarget::publish(KyTexture& texture) {
    texture.touch();
}

KyPassPixel::Bytes KyQmlGlTarget::readPixel(int x, int y) {
    return KyPassPixel::readFrameBuffer(mBuffer->handle(), x, mSize.height() - 1 - y);
}
