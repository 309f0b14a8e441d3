// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DSvgImage.h"

#include "Ky2DUtil.h"
#include "KyPicture_p.h"

#include "KyTypeBuilder.h"

#include <QColor>

#include <algorithm>

namespace {

constexpr QRgb cAlphaMask = 0xFF000000u;

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
    QImage image = KyPicture::renderSvg(KyPicture::readFile(getSourcePath())).image;
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
