// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPassPixel_p.h"

#include <QImage>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QPoint>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace {

/// Not in the headers of the smaller GL.
constexpr GLenum cReadFrameBuffer = 0x8CA8, cReadFrameBufferBinding = 0x8CAA;

template <class Canvas>
KyVec2f toAreaPixel(const QPoint& global, const Canvas& canvas, double ratio, const KyRect<int>& area) {
    // Only the origin is mapped by Qt: it rounds.
    const QPointF place = QPointF(global - canvas.mapToGlobal(QPoint())) * ratio;
    return {static_cast<float>(place.x() - area.origin.x), static_cast<float>(place.y() - area.origin.y)};
}

} // namespace

KyPassPixel::Bytes KyPassPixel::readFrameBuffer(unsigned frameBuffer, int x, int y) {
    Bytes bytes{};
    QOpenGLContext* context = QOpenGLContext::currentContext();
    if (!context)
        return bytes;
    QOpenGLExtraFunctions* gl = context->extraFunctions();
    GLint bound = 0;
    gl->glGetIntegerv(cReadFrameBufferBinding, &bound);
    gl->glBindFramebuffer(cReadFrameBuffer, frameBuffer);
    gl->glReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
    gl->glBindFramebuffer(cReadFrameBuffer, static_cast<GLuint>(bound));
    return bytes;
}

KyPassPixel::Bytes KyPassPixel::readImage(const QImage& image, int x, int y) {
    const QRgb pixel = reinterpret_cast<const QRgb*>(image.constScanLine(y))[x];
    const auto getByte = [pixel](int shift) { return static_cast<std::uint8_t>(pixel >> shift & 0xffU); };
    return {getByte(16), getByte(8), getByte(0), getByte(24)};
}

KyColor KyPassPixel::toColor(const Bytes& bytes) {
    const auto alpha = static_cast<float>(bytes[3]);
    if (bytes[3] == 0)
        return {0.0f, 0.0f, 0.0f, 0.0f};
    const auto straight = [&](std::size_t i) { return std::min(static_cast<float>(bytes[i]) / alpha, 1.0f); };
    return {straight(0), straight(1), straight(2), alpha / 255.0f};
}

std::optional<KyVec2<int>> KyPassPixel::find(const KyVec2f& position, const QSize& size) {
    const float x = std::floor(position.x), y = std::floor(position.y);
    const bool isInside =
        x >= 0.0f && y >= 0.0f && x < static_cast<float>(size.width()) && y < static_cast<float>(size.height());
    if (!isInside)
        return std::nullopt;
    return KyVec2<int>(static_cast<int>(x), static_cast<int>(y));
}

KyVec2f KyPassPixel::fromGlobal(const QPoint& global, const QWidget& canvas, const KyRect<int>& area) {
    return toAreaPixel(global, canvas, canvas.devicePixelRatioF(), area);
}

KyVec2f KyPassPixel::fromGlobal(const QPoint& global, const QWindow& canvas, const KyRect<int>& area) {
    return toAreaPixel(global, canvas, canvas.devicePixelRatio(), area);
}
