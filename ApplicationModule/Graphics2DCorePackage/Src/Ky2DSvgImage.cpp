// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DSvgImage.h"

#include "Ky2DUtil.h"

#include "KyTypeBuilder.h"

#include <QColor>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cstdint>

namespace {

constexpr QRgb cAlphaMask = 0xFF000000u;
/// As pictures of files.
constexpr std::int64_t cMaxPixels = std::int64_t{1} << 28;

/// Straight alpha: a colour can replace that of a pixel as it is.
QImage renderPicture(QSvgRenderer& renderer) {
    const QSize size = renderer.defaultSize();
    if (!renderer.isValid() || size.isEmpty() || std::int64_t{size.width()} * size.height() > cMaxPixels)
        return {};
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    return image.convertToFormat(QImage::Format_ARGB32);
}

} // namespace

const KyType* Ky2DSvgImage::msType = nullptr;

const KyType* Ky2DSvgImage::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* Ky2DSvgImage::getObjectType() const {
    return getType();
}

Ky2DSvgImage* Ky2DSvgImage::cast(KyObject* object) {
    return kyCast<Ky2DSvgImage>(object);
}

Ky2DSvgImage* Ky2DSvgImage::clone() const {
    return new Ky2DSvgImage(*this);
}

void Ky2DSvgImage::setColor(const KyColor& color) {
    mColor = color;
    mIsColorized = true;
    if (imageModified())
        tell("Color");
}

QImage Ky2DSvgImage::loadImage() {
    if (getSourcePath().empty())
        return {};
    QSvgRenderer renderer(QString::fromStdString(getSourcePath()));
    QImage image = renderPicture(renderer);
    if (mIsColorized)
        colorizeImage(image);
    return image;
}

void Ky2DSvgImage::colorizeImage(QImage& image) const {
    const QRgb color = Ky2DUtil::KyColorToQColor(mColor).rgb() & ~cAlphaMask;
    for (int y = 0; y < image.height(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::transform(row, row + image.width(), row, [color](QRgb pixel) { return (pixel & cAlphaMask) | color; });
    }
}
