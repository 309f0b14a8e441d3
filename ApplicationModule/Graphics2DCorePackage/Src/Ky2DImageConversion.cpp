// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DUtil.h"

#include "KyImage.h"

#include <QColor>
#include <QImage>

#include <algorithm>
#include <cstring>
#include <iostream>

namespace {

constexpr int cBitsPerByte = 8;

/// One row of the source as Qt's pixels.
using RowConverter = void (*)(const unsigned char* source, QRgb* target, int width);

void convertMono(const unsigned char* source, QRgb* target, int width) {
    for (int x = 0; x < width; ++x) {
        const bool isWhite = (source[x / cBitsPerByte] & 0x80 >> x % cBitsPerByte) != 0;
        target[x] = isWhite ? 0xFFFFFFFFu : 0xFF000000u;
    }
}

void convertGrey(const unsigned char* source, QRgb* target, int width) {
    std::transform(source, source + width, target, [](unsigned char grey) { return qRgb(grey, grey, grey); });
}

/// The nearest of 255 steps, as KyImage reads pixels.
int widen(unsigned value, unsigned largest) {
    return static_cast<int>((value * 255 + largest / 2) / largest);
}

void convert565(const unsigned char* source, QRgb* target, int width) {
    std::uint16_t word = 0;
    for (int x = 0; x < width; ++x, source += sizeof word) {
        std::memcpy(&word, source, sizeof word);
        target[x] = qRgb(widen(word >> 11 & 31u, 31), widen(word >> 5 & 63u, 63), widen(word & 31u, 31));
    }
}

void convertRgb(const unsigned char* source, QRgb* target, int width) {
    for (int x = 0; x < width; ++x, source += 3)
        target[x] = qRgb(source[0], source[1], source[2]);
}

void convertRgba(const unsigned char* source, QRgb* target, int width) {
    for (int x = 0; x < width; ++x, source += 4)
        target[x] = qRgba(source[0], source[1], source[2], source[3]);
}

RowConverter findConverter(const KyImage& image) {
    switch (image.getBitsPerPixel()) {
    case 1:
        return &convertMono;
    case 8:
        return &convertGrey;
    case 16:
        return image.getLayoutName() == "R5G6B5" ? &convert565 : nullptr;
    case 24:
        return &convertRgb;
    case 32:
        return &convertRgba;
    default:
        return nullptr;
    }
}

} // namespace

QImage Ky2DUtil::KyImageToQImage(const KyImage* image) {
    if (!image || !image->isValid())
        return {};
    const int width = image->getWidth();
    QImage result(width, image->getHeight(), QImage::Format_ARGB32);
    if (result.isNull())
        return {};
    const RowConverter convert = findConverter(*image);
    if (!convert) {
        std::cerr << "Unknown 16 bits format." << std::endl;
        result.fill(0u);
        return result;
    }
    for (int y = 0; y < result.height(); ++y)
        convert(image->getData() + image->getBytesPerRow() * static_cast<std::size_t>(y),
                reinterpret_cast<QRgb*>(result.scanLine(y)), width);
    return result;
}
