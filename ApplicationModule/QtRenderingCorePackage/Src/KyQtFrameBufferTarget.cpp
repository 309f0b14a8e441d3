// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQGraphicsDevice.h"
#include "KyQtPaintTarget_p.h"

#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QOpenGLPaintDevice>
#include <QPainter>

#include <optional>

namespace {

/// A frame buffer in a context that shares with the renderer's, which sees its texture.
class FrameBufferTarget : public KyQtPaintTarget {
public:
    FrameBufferTarget(KyFrameBuffer& buffer, std::unique_ptr<KyQGraphicsDevice> device)
        : KyQtPaintTarget(buffer)
        , mDevice(std::move(device)) {}
    ~FrameBufferTarget() override {
        const KyQGraphicsDevice::Scope current(*mDevice);
        mPaintDevice.reset();
        mFrameBuffer.reset();
    }

    bool isFrameBuffer() const override { return true; }
    bool isUsable() const override {
        QOpenGLContext* const current = QOpenGLContext::currentContext();
        QOpenGLContext* const own = mDevice->getContext();
        return current && own && own->isValid() && QOpenGLContext::areSharing(current, own);
    }
    bool begin() override {
        mCurrent.emplace(*mDevice);
        if (!mCurrent->isCurrent())
            mCurrent.reset();
        return mCurrent.has_value();
    }
    void paint(const std::function<void(QPainter&)>& draw) override;
    void end() override {
        editGl().glFinish();
        mCurrent.reset();
    }
    KyPassPixel::Bytes read(int x, int y) override;

private:
    bool allocate(const QSize& size) override;
    void clear();
    QOpenGLFunctions& editGl() { return *mDevice->getContext()->functions(); }

    std::unique_ptr<KyQGraphicsDevice> mDevice;
    std::optional<KyQGraphicsDevice::Scope> mCurrent;
    std::unique_ptr<QOpenGLFramebufferObject> mFrameBuffer;
    std::unique_ptr<QOpenGLPaintDevice> mPaintDevice;
};

bool FrameBufferTarget::allocate(const QSize& size) {
    handOver(0, 0, {0, 0});
    mPaintDevice.reset();
    mFrameBuffer.reset();
    if (size.isEmpty())
        return true;
    GLint largest = 0;
    editGl().glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    if (size.width() > largest || size.height() > largest)
        return false;
    mFrameBuffer = std::make_unique<QOpenGLFramebufferObject>(size, QOpenGLFramebufferObject::CombinedDepthStencil,
                                                              GL_TEXTURE_2D, GL_RGBA8);
    if (!mFrameBuffer->isValid()) {
        mFrameBuffer.reset();
        return false;
    }
    mPaintDevice = std::make_unique<QOpenGLPaintDevice>(size);
    // The uppermost row becomes row 0 of the texture.
    mPaintDevice->setPaintFlipped(true);
    mFrameBuffer->bind();
    clear();
    handOver(mFrameBuffer->handle(), mFrameBuffer->texture(), size);
    return true;
}

void FrameBufferTarget::clear() {
    editGl().glDisable(GL_SCISSOR_TEST);
    editGl().glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    editGl().glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    editGl().glClear(GL_COLOR_BUFFER_BIT);
}

void FrameBufferTarget::paint(const std::function<void(QPainter&)>& draw) {
    if (!mFrameBuffer)
        return;
    mFrameBuffer->bind();
    clear();
    QPainter painter(mPaintDevice.get());
    draw(painter);
}

KyPassPixel::Bytes FrameBufferTarget::read(int x, int y) {
    const KyQGraphicsDevice::Scope current(*mDevice);
    return mFrameBuffer && current.isCurrent() ? KyPassPixel::readFrameBuffer(mFrameBuffer->handle(), x, y)
                                               : KyPassPixel::Bytes{};
}

} // namespace

std::unique_ptr<KyQtPaintTarget> KyQtPaintTarget::createFrameBuffer(KyFrameBuffer& buffer, std::string& error) {
    QSurfaceFormat format = QSurfaceFormat::defaultFormat();
    // Qt's painter fails with text in a core context.
    if (format.profile() == QSurfaceFormat::CoreProfile) {
        format.setProfile(QSurfaceFormat::NoProfile);
        format.setVersion(2, 0);
    }
    auto device = KyQGraphicsDevice::createOffscreen(error, format);
    return device ? std::make_unique<FrameBufferTarget>(buffer, std::move(device)) : nullptr;
}
