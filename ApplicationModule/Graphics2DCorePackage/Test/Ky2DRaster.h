// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Ky2DNode.h"
#include "Ky2DStyle.h"

#include <QByteArray>
#include <QImage>
#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <QSvgRenderer>

#include <algorithm>
#include <cstdlib>

/// Pictures of 200 x 200 pixels of a shape, by its node and by Qt's own SVG renderer: red inside, a black outline.
namespace Ky2DRaster {

inline QImage makePaper() {
    QImage image(200, 200, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}

/// `element` lacks its closing "/>".
inline QImage renderSvg(const QByteArray& element) {
    QSvgRenderer renderer("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 200 200' width='200' height='200'>" +
                          element + " fill='#f00' stroke='#000' stroke-width='2' stroke-linejoin='bevel'/></svg>");
    QImage image = makePaper();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(0, 0, 200, 200));
    return image;
}

inline QImage renderNode(Ky2DNode& node) {
    node.editStyle()->setFillColor(KyColor(1, 0, 0));
    node.editStyle()->setStrokeMode(eSolidLine);
    node.editStyle()->setStrokeWidth(2);
    node.editStyle()->setStrokeJoin(eBevelJoin);
    node.update();
    QImage image = makePaper();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QStyleOptionGraphicsItem option;
    node.getQGraphicsItem()->paint(&painter, &option, nullptr);
    return image;
}

/// Pixels that are clearly another colour.
inline int countDifferences(const QImage& first, const QImage& second) {
    int count = 0;
    for (int y = 0; y < first.height(); ++y)
        for (int x = 0; x < first.width(); ++x) {
            const QRgb a = first.pixel(x, y), b = second.pixel(x, y);
            if (std::max(std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b))) > 48)
                ++count;
        }
    return count;
}

} // namespace Ky2DRaster
