// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DStyle.h"

#include "Ky2DUtil.h"

#include "KyQtText.h"

#include <QBrush>
#include <QFont>
#include <QPen>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace {

constexpr double cShortestPattern = 0.001;
constexpr int cLargestWeight = 99;
/// Points; glyphs of far greater ones fill any view with their inside.
constexpr double cLargestFontSize = 10000.0;

/// Longest of the built-in patterns.
constexpr std::size_t cPatternLength = 6;
struct DashPattern {
    std::size_t length;
    std::array<double, cPatternLength> elements;
};
/// Of the modes from eDashLine to eDashDotDotLine.
constexpr std::array<DashPattern, 4> cDashPatterns = {
    {{2, {8, 8}}, {2, {1, 7}}, {4, {7, 4, 1, 4}}, {6, {5, 3, 1, 3, 1, 3}}}};

constexpr std::array<Qt::PenJoinStyle, eNbStrokeJoin> cJoins = {Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin,
                                                                Qt::SvgMiterJoin};
constexpr std::array<Qt::PenCapStyle, eNbStrokeCap> cCaps = {Qt::FlatCap, Qt::SquareCap, Qt::RoundCap};

template <class T, std::size_t N>
const T* findEntry(const std::array<T, N>& table, std::int32_t index) {
    return index >= 0 && static_cast<std::size_t>(index) < N ? &table[static_cast<std::size_t>(index)] : nullptr;
}

/// Others make Qt's painting paint nothing, or never end.
bool isDrawable(const std::vector<double>& pattern) {
    const bool areLengths =
        std::all_of(pattern.begin(), pattern.end(), [](double x) { return std::isfinite(x) && x >= 0.0; });
    const double sum = std::accumulate(pattern.begin(), pattern.end(), 0.0);
    return areLengths && std::isfinite(sum) && sum >= cShortestPattern;
}

QVector<qreal> toDashes(const double* elements, std::size_t count) {
    QVector<qreal> dashes;
    dashes.reserve(static_cast<int>(count) + 1);
    std::copy_n(elements, count, std::back_inserter(dashes));
    if (count % 2 != 0)
        dashes.append(0.0);
    return dashes;
}

QVector<qreal> findDashes(KyStrokeMode mode, const std::vector<double>& customPattern) {
    if (mode == eCustomDashLine)
        return isDrawable(customPattern) ? toDashes(customPattern.data(), customPattern.size()) : QVector<qreal>();
    const DashPattern* pattern = findEntry(cDashPatterns, mode - eDashLine);
    return pattern ? toDashes(pattern->elements.data(), pattern->length) : QVector<qreal>();
}

double finiteOrZero(double value) {
    return std::isfinite(value) ? value : 0.0;
}

} // namespace

void Ky2DStyle::configureLineStyle(QPen* pen) const {
    *pen = QPen(Ky2DUtil::KyColorToQColor(mStrokeColor));
    // Qt warns of negative widths.
    pen->setWidthF(std::max(finiteOrZero(mStrokeWidth), 0.0));
    pen->setMiterLimit(finiteOrZero(mStrokeMiterLimit));
    pen->setCosmetic(mIsStrokeConstantWidth);
    const bool isDrawn = mStrokeMode > eNoPen && mStrokeMode < eNbStrokeMode;
    pen->setStyle(isDrawn ? Qt::SolidLine : Qt::NoPen);
    const QVector<qreal> dashes = findDashes(mStrokeMode, mStrokeCustomDashPattern);
    if (!dashes.isEmpty()) {
        pen->setDashPattern(dashes);
        pen->setDashOffset(finiteOrZero(mStrokeDashOffset));
    }
    if (const Qt::PenJoinStyle* join = findEntry(cJoins, mStrokeJoin))
        pen->setJoinStyle(*join);
    if (const Qt::PenCapStyle* cap = findEntry(cCaps, mStrokeCap))
        pen->setCapStyle(*cap);
}

void Ky2DStyle::configureShapeStyle(QPen* pen, QBrush* brush) const {
    const bool isFilled = mFillMode > eNoBrush && mFillMode < eNbFillMode;
    *brush =
        QBrush(Ky2DUtil::KyColorToQColor(mFillColor), isFilled ? static_cast<Qt::BrushStyle>(mFillMode) : Qt::NoBrush);
    configureLineStyle(pen);
}

void Ky2DStyle::configureTextStyle(QPen* pen, QBrush* brush, QFont* font) const {
    configureShapeStyle(pen, brush);
    font->setFamily(KyApplication::toQString(mFontFamily));
    font->setStyleHint(static_cast<QFont::StyleHint>(mFontStyleHint), QFont::PreferDefault);
    if (mFontSize > 0.0 && mFontSize <= cLargestFontSize)
        font->setPointSizeF(mFontSize);
    font->setWeight(std::clamp(mFontWeight, 0, cLargestWeight));
    font->setStyle(static_cast<QFont::Style>(mFontStyle));
}
