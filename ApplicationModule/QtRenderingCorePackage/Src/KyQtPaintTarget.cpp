// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtPaintTarget_p.h"

#include "KyGraphicsDevice.h"
#include "KyRendererContext.h"

#include "KyException.h"

#include <QOpenGLContext>

namespace {

/// What Qt's contexts cannot share with needs another way.
bool isSharedWithQt() {
    QOpenGLContext* const current = QOpenGLContext::currentContext();
    QOpenGLContext* const global = QOpenGLContext::globalShareContext();
    return current && global && QOpenGLContext::areSharing(current, global);
}

bool isSoftware(const KyRendererContext& context) {
    KyGraphicsDevice anyDevice;
    KyGraphicsDevice* const device = context.getGraphicsDevice();
    return (device ? device : &anyDevice)->isSoftware();
}

void reportOnce(const std::string& error) {
    static bool isReported = false;
    if (!std::exchange(isReported, true))
        KyException::create("KyQtPass: painting without GL: " + error + ".");
}

} // namespace

std::unique_ptr<KyQtPaintTarget> KyQtPaintTarget::create(KyFrameBuffer& buffer, const KyRendererContext& context,
                                                         bool prefersFrameBuffer) {
    if (!isSharedWithQt() || (!prefersFrameBuffer && isSoftware(context)))
        return createImage(buffer);
    std::string error;
    if (auto target = createFrameBuffer(buffer, error))
        return target;
    reportOnce(error);
    return createImage(buffer);
}

KyQtPaintTarget::~KyQtPaintTarget() {
    handOver(0, 0, {0, 0});
}

bool KyQtPaintTarget::resize(const QSize& size) {
    const QSize wanted = size.isEmpty() ? QSize(0, 0) : size;
    if (wanted == mSize || wanted == mRefusedSize)
        return false;
    const bool isMade = allocate(wanted);
    // A device that refused once would be asked again with every frame.
    mRefusedSize = isMade ? QSize() : wanted;
    mSize = isMade ? wanted : QSize(0, 0);
    return true;
}

void KyQtPaintTarget::handOver(unsigned frameBuffer, unsigned texture, const QSize& size) {
    editTexture().setHandle(texture);
    editTexture().setSize(size.width(), size.height());
    mBuffer->setHandle(frameBuffer);
    mBuffer->setSize(size.width(), size.height());
}
