// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySvgStyle_p.h"

#include "Ky2DStyle.h"
#include "KyFontWeight.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace {

constexpr double cPointsPerInch = 72.0;
constexpr double cPixelsPerInch = 96.0;

struct Weight {
    int largest;
    KyFontWeight weight;
};
constexpr std::array<Weight, 5> cWeights{
    {{300, eLight}, {500, eNormal}, {600, eDemiBold}, {700, eBold}, {1000, eBlack}}};

KyFontWeight findWeight(int weight) {
    return std::ranges::lower_bound(cWeights, weight, {}, &Weight::largest)->weight;
}

/// The style's fonts are measured in points of the screen.
double getPointsPerPixel() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return cPointsPerInch / (screen ? std::round(screen->logicalDotsPerInchY()) : cPixelsPerInch);
}

KyColor withAlpha(KyColor color, double opacity) {
    color.alpha *= float(opacity);
    return color;
}

bool isDashed(const std::vector<double>& dashes, double width) {
    return width > 0.0 && std::accumulate(dashes.begin(), dashes.end(), 0.0) > 0.0;
}

/// Qt counts in pen widths, and wants pairs. It draws no caps at dashes without length.
std::vector<double> makePattern(const std::vector<double>& dashes, double width, bool hasCaps) {
    std::vector<double> pattern(dashes);
    if (dashes.size() % 2 != 0)
        pattern.insert(pattern.end(), dashes.begin(), dashes.end());
    std::ranges::transform(pattern, pattern.begin(), [width](double dash) { return dash / width; });
    for (std::size_t i = 0; hasCaps && i < pattern.size(); i += 2) {
        const double missing = std::max(KySvgStyle::cDotLength - pattern[i], 0.0);
        pattern[i] += missing;
        pattern[i + 1] = std::max(pattern[i + 1] - missing, 0.0);
    }
    return pattern;
}

} // namespace

KySvgStyle KySvgStyle::inherit() const {
    KySvgStyle child(*this);
    child.isDisplayed = true;
    child.hasConstantWidth = false;
    child.isClipped = true;
    child.stopColor = KyColor();
    child.stopOpacity = 1.0;
    return child;
}

void KySvgStyle::applyShape(Ky2DStyle& style, double scale) const {
    style.setFillMode(fill.isDrawn ? eSolidPattern : eNoBrush);
    style.setFillRule(isEvenOdd ? eEvenOdd : eNonZero);
    style.setFillColor(withAlpha(fill.color, fillOpacity * opacity));
    style.setStrokeColor(withAlpha(stroke.color, strokeOpacity * opacity));
    style.setStrokeConstantWidth(hasConstantWidth);
    const double width = strokeWidth / (hasConstantWidth ? 1.0 : scale);
    style.setStrokeWidth(width);
    style.setStrokeMiterLimit(miterLimit);
    style.setStrokeJoin(join);
    style.setStrokeCap(cap);
    // Qt draws a width of 0 one pixel wide.
    style.setStrokeMode(stroke.isDrawn && strokeWidth > 0.0 ? eSolidLine : eNoPen);
    if (!isDashed(dashes, strokeWidth) || !stroke.isDrawn)
        return;
    style.setStrokeMode(eCustomDashLine);
    style.setStrokeCustomDashPattern(makePattern(dashes, strokeWidth, cap != eFlatCap));
    style.setStrokeDashOffset(dashOffset / strokeWidth);
}

void KySvgStyle::applyText(Ky2DStyle& style, double pixels, double scale) const {
    applyShape(style, scale);
    style.setFontFamily(fontFamily);
    style.setFontSize(pixels * getPointsPerPixel());
    style.setFontWeight(findWeight(fontWeight));
    style.setFontStyle(fontStyle);
    style.setTextAnchor(textAnchor);
    style.setTextVerticalAnchor(eLine);
}
