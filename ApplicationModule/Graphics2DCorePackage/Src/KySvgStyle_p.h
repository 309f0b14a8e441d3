// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFontStyle.h"
#include "KyStrokeCap.h"
#include "KyStrokeJoin.h"
#include "KyTextAnchor.h"

#include "KyColor.h"

#include <cstdint>
#include <string>
#include <vector>

class Ky2DStyle;

/// A fill or stroke: nothing, or a colour.
struct KySvgPaint {
    bool isDrawn = false;
    KyColor color;
};

/// The properties of an element, as computed from the document; the defaults are SVG's.
struct KySvgStyle {
    /// In pen widths: where there is nothing but caps, Qt needs a line of some length.
    static constexpr double cDotLength = 1e-3;

    KyColor color;
    KySvgPaint fill{true, KyColor()};
    KySvgPaint stroke;
    double fillOpacity = 1.0;
    double strokeOpacity = 1.0;
    bool isEvenOdd = false;
    double strokeWidth = 1.0;
    std::vector<double> dashes;
    double dashOffset = 0.0;
    double miterLimit = 4.0;
    KyStrokeJoin join = eSvgMiterJoin;
    KyStrokeCap cap = eFlatCap;
    std::string fontFamily;
    /// User units.
    double fontSize = 16.0;
    /// 100 to 900.
    int fontWeight = 400;
    KyFontStyle fontStyle = eStyleNormal;
    KyTextAnchor textAnchor = eStart;
    bool isVisible = true;
    bool keepsBlanks = false;
    /// Of all groups and the element itself.
    double opacity = 1.0;

    // Not inherited.
    bool isDisplayed = true;
    bool hasConstantWidth = false;
    /// Whether a viewport cuts off what is outside.
    bool isClipped = true;
    KyColor stopColor;
    double stopOpacity = 1.0;

    /// What a child begins with.
    KySvgStyle inherit() const;
    /// Sets everything but the font; lengths are divided by the scale that the node has in its transform.
    void applyShape(Ky2DStyle& style, double scale = 1.0) const;
    /// Sets family, weight, style and anchor as well, and a size of that many pixels of the screen.
    void applyText(Ky2DStyle& style, double pixels, double scale) const;
};
