// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQGraphicsDevice.h"

#include "KyGraphicsDeviceManager.h"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>

KyQGraphicsDevice::KyQGraphicsDevice() = default;

KyQGraphicsDevice::KyQGraphicsDevice(QOpenGLContext* context, QSurface* surface) {
    setContext(context, surface);
}

KyQGraphicsDevice::~KyQGraphicsDevice() {
    mOwnContext.reset();
    QObject::disconnect(mContextEnds);
}

std::unique_ptr<KyQGraphicsDevice> KyQGraphicsDevice::createOffscreen(std::string& error,
                                                                      const QSurfaceFormat& format) {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        error = "there is no QGuiApplication";
        return nullptr;
    }
    auto context = std::make_unique<QOpenGLContext>();
    context->setFormat(format);
    context->setShareContext(QOpenGLContext::globalShareContext());
    if (!context->create()) {
        error = "this display offers no OpenGL";
        return nullptr;
    }
    auto surface = std::make_unique<QOffscreenSurface>();
    surface->setFormat(context->format());
    surface->create();
    if (!surface->isValid()) {
        error = "this display offers no off-screen surface";
        return nullptr;
    }
    auto device = std::make_unique<KyQGraphicsDevice>(context.get(), surface.get());
    device->mOwnSurface = std::move(surface);
    device->mOwnContext = std::move(context);
    return device;
}

void KyQGraphicsDevice::setContext(QOpenGLContext* context, QSurface* surface) {
    const bool isOwn = context && mOwnContext.get() == context;
    if (!isOwn) {
        mOwnContext.reset();
        mOwnSurface.reset();
    }
    QObject::disconnect(mContextEnds);
    mContext = context;
    mSurface = surface;
    if (context)
        mContextEnds = QObject::connect(context, &QOpenGLContext::aboutToBeDestroyed, [this] { endContext(); });
}

void KyQGraphicsDevice::endContext() {
    const Scope current(*this);
    if (current.isCurrent())
        KyGraphicsDeviceManager::get().endContext();
}

QOpenGLContext* KyQGraphicsDevice::getContext() const {
    return mContext.data();
}

QSurface* KyQGraphicsDevice::getSurface() const {
    return mContext ? mSurface : nullptr;
}

bool KyQGraphicsDevice::makeCurrent() {
    if (!mContext || !mSurface)
        return false;
    if (QOpenGLContext::currentContext() == mContext && mContext->surface() == mSurface)
        return true;
    return mContext->makeCurrent(mSurface);
}

void KyQGraphicsDevice::doneCurrent() {
    if (mContext && QOpenGLContext::currentContext() == mContext)
        mContext->doneCurrent();
}

KyQGraphicsDevice::Scope::Scope(KyQGraphicsDevice& device)
    : mBefore(QOpenGLContext::currentContext())
    , mSurfaceBefore(mBefore ? mBefore->surface() : nullptr)
    , mIsCurrent(device.makeCurrent()) {
    mSwitches = mIsCurrent && (mBefore != device.getContext() || mSurfaceBefore != device.getSurface());
    // A context that cannot become current may leave none behind.
    if (!mIsCurrent && mBefore && QOpenGLContext::currentContext() != mBefore)
        mBefore->makeCurrent(mSurfaceBefore);
}

KyQGraphicsDevice::Scope::~Scope() {
    if (!mSwitches)
        return;
    if (mBefore)
        mBefore->makeCurrent(mSurfaceBefore);
    else if (QOpenGLContext* current = QOpenGLContext::currentContext())
        current->doneCurrent();
}
