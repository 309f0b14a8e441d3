// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "Ky2DPathCommand.h"

#include "KyVec2.h"

#include <vector>

class Ky2DStyle;
class KyColor;
class KyImage;
class QAbstractGraphicsShapeItem;
class QColor;
class QImage;
class QPainterPath;
class QTransform;

/// What the 2D shapes share: their values as Qt's.
class KYAPPLICATION_EXPORT Ky2DUtil {
public:
    Ky2DUtil() = delete;

    /// Whether there is a QApplication: without one Qt has neither scenes nor fonts.
    static bool hasApplication();

    /// Appends the commands to `path`, every point moved by `qtOffset`. The first point of commands that do not begin
    /// with a move is `qtOffset`. A command with too few numbers is skipped, and one that ends at no finite point; an
    /// unknown type is skipped after the line "Path command type not managed." on standard output.
    static void initializeQPainterPath(QPainterPath& path, const std::vector<Ky2DPathCommand>& commands,
                                       const KyVec2d& qtOffset);

    /// Components are limited to 0 ... 1; NaN is 0.
    static QColor KyColorToQColor(const KyColor& color);

    /// Whether all numbers are finite: Qt finds an item with any other transform everywhere.
    static bool isFinite(const QTransform& transform);

    /// Gives the item the pen and the brush of the style. A null item or style changes nothing.
    static void applyShapeStyle(const Ky2DStyle* style, QAbstractGraphicsShapeItem* item);

    /// A copy with straight alpha; no picture for null and for an image that is not valid. 16-bit images other than
    /// "R5G6B5" give a transparent one and the line "Unknown 16 bits format." on standard error.
    static QImage KyImageToQImage(const KyImage* image);
};
