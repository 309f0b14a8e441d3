// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlImageTarget_p.h"

#include "KyFrameBuffer.h"
#include "KyImage.h"

#include <QOpenGLContext>
#include <QQuickRenderControl>
#include <QQuickWindow>

#include <algorithm>
#include <cstring>

namespace {

constexpr int cLargestSize = 16384;

} // namespace

void KyQmlImageTarget::initialize(QQuickRenderControl& control) {
    // Not used, but it must be the one that is current.
    control.initialize(QOpenGLContext::currentContext());
}

bool KyQmlImageTarget::resize(const QSize& size, QQuickWindow&) {
    const bool fits = !size.isEmpty() && std::max(size.width(), size.height()) <= cLargestSize;
    mImage = fits ? QImage(size, QImage::Format_ARGB32_Premultiplied) : QImage();
    mSize = mImage.size();
    clear();
    return !mImage.isNull();
}

void KyQmlImageTarget::share(KyFrameBuffer& buffer) {
    buffer.setHandle(0);
    buffer.getColorTexture()->setHandle(0);
    buffer.setSize(mSize.width(), mSize.height());
    publish(*buffer.getColorTexture());
}

void KyQmlImageTarget::render(QQuickWindow&, QQuickRenderControl& control) {
    QImage picture = control.grab();
    picture.setDevicePixelRatio(1.0);
    // Qt renders a window without a screen in the resolution of the application's.
    if (picture.size() != mSize && !picture.isNull())
        picture = picture.scaled(mSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    mImage = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (mImage.isNull()) {
        mImage = QImage(mSize, QImage::Format_ARGB32_Premultiplied);
        clear();
    }
}

void KyQmlImageTarget::clear() {
    mImage.fill(Qt::transparent);
}

void KyQmlImageTarget::publish(KyTexture& texture) {
    const QImage pixels = mImage.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    KyImage image(pixels.width(), pixels.height(), 32);
    if (!image.isValid())
        return;
    std::memcpy(image.editData(), pixels.constBits(), static_cast<std::size_t>(pixels.sizeInBytes()));
    texture.setImage(&image);
}

KyPassPixel::Bytes KyQmlImageTarget::readPixel(int x, int y) {
    return KyPassPixel::readImage(mImage, x, y);
}
