// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DRect.h"
#include "Ky2DStyle.h"

#include "KyAttributeInterface.h"
#include "KyField.h"

#include <QBrush>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPen>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

namespace {

constexpr double cNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double cInfinity = std::numeric_limits<double>::infinity();

QPen getPen(const Ky2DStyle& style) {
    // What the pen held before must not show through.
    QPen pen(Qt::red, 9.0, Qt::DashLine, Qt::RoundCap, Qt::SvgMiterJoin);
    style.configureLineStyle(&pen);
    return pen;
}

} // namespace

TEST(Ky2DStyle, StrokeModesGivePens) {
    const std::tuple<int, Qt::PenStyle, QVector<qreal>> rows[] = {
        {eNoPen, Qt::NoPen, {}},
        {eSolidLine, Qt::SolidLine, {}},
        {eDashLine, Qt::CustomDashLine, {8, 8}},
        {eDotLine, Qt::CustomDashLine, {1, 7}},
        {eDashDotLine, Qt::CustomDashLine, {7, 4, 1, 4}},
        {eDashDotDotLine, Qt::CustomDashLine, {5, 3, 1, 3, 1, 3}},
        {eCustomDashLine, Qt::CustomDashLine, {4, 2, 1, 0}},
        {eNbStrokeMode, Qt::NoPen, {}},
        {std::numeric_limits<std::int32_t>::min(), Qt::NoPen, {}},
    };
    for (const double offset : {0.0, 3.0}) {
        for (const auto& [mode, penStyle, pattern] : rows) {
            Ky2DStyle style;
            style.setStrokeCustomDashPattern({4, 2, 1});
            style.setStrokeDashOffset(offset);
            style.setStrokeMode(static_cast<KyStrokeMode>(mode));
            const QPen pen = getPen(style);
            EXPECT_EQ(penStyle, pen.style()) << mode << " " << offset;
            EXPECT_EQ(pattern.isEmpty() ? 0.0 : offset, pen.dashOffset()) << mode;
            EXPECT_EQ(pattern, pen.style() == Qt::CustomDashLine ? pen.dashPattern() : QVector<qreal>());
        }
    }
}

TEST(Ky2DStyle, JoinsCapsAndFillingsGiveQtsOwn) {
    const Qt::PenJoinStyle joins[] = {Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin, Qt::SvgMiterJoin};
    const Qt::PenCapStyle caps[] = {Qt::FlatCap, Qt::SquareCap, Qt::RoundCap};
    Ky2DStyle style;
    for (int i = -1; i <= eNbStrokeJoin; ++i) {
        style.setStrokeJoin(static_cast<KyStrokeJoin>(i));
        style.setStrokeCap(static_cast<KyStrokeCap>(i));
        EXPECT_EQ(i >= 0 && i < eNbStrokeJoin ? joins[i] : QPen().joinStyle(), getPen(style).joinStyle()) << i;
        EXPECT_EQ(i >= 0 && i < eNbStrokeCap ? caps[i] : QPen().capStyle(), getPen(style).capStyle()) << i;
    }
    for (int i = -1; i <= eNbFillMode + 1; ++i) {
        QPen pen;
        QBrush brush;
        style.setFillMode(static_cast<KyFillMode>(i));
        style.configureShapeStyle(&pen, &brush);
        EXPECT_EQ(i > 0 && i < eNbFillMode ? i : 0, static_cast<int>(brush.style()));
    }
}

TEST(Ky2DStyle, DashPatternsThatQtCannotDrawLeaveTheLineSolidAndPaintingEnds) {
    const std::vector<double> patterns[] = {{},      {0, 0},    {cNaN, 1},    {cInfinity, 1},
                                            {4, -1}, {1e-9, 0}, {1e-4, 1e-4}, {1e308, 1e308}};
    for (const auto& pattern : patterns) {
        Ky2DStyle style;
        style.setStrokeMode(eCustomDashLine);
        style.setStrokeCustomDashPattern(pattern);
        style.setStrokeDashOffset(cNaN);
        EXPECT_EQ(Qt::SolidLine, getPen(style).style()) << (pattern.empty() ? 0.0 : pattern[0]);
        QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setPen(getPen(style));
        painter.drawRect(5, 5, 10, 10);
        EXPECT_EQ(0xff000000u, image.pixel(5, 8));
    }
}

TEST(Ky2DStyle, WidthsAndColoursAreLimited) {
    Ky2DStyle style;
    style.setStrokeConstantWidth(true);
    EXPECT_TRUE(getPen(style).isCosmetic());
    for (const auto& [width, expected] : {std::pair(2.5, 2.5), {-1.0, 0.0}, {cNaN, 0.0}, {cInfinity, 0.0}}) {
        style.setStrokeWidth(width);
        style.setStrokeMiterLimit(width);
        EXPECT_EQ(expected, getPen(style).widthF());
        EXPECT_EQ(std::isfinite(width) ? width : 0.0, getPen(style).miterLimit());
    }
    const std::pair<KyColor, QRgb> rows[] = {{KyColor(2, -1, 0.5f, 7), qRgba(255, 0, 128, 255)},
                                             {KyColor(1, 1, 1, -3), qRgba(255, 255, 255, 0)},
                                             {KyColor(static_cast<float>(cNaN), 1, 0, 1), qRgba(0, 255, 0, 255)}};
    for (const auto& [color, expected] : rows) {
        style.setStrokeColor(color);
        EXPECT_EQ(expected, getPen(style).color().rgba());
    }
}

TEST(Ky2DStyle, DashElementsAreEditedAndToldWithKindAndIndex) {
    std::vector<std::pair<int, int>> changes;
    Ky2DStyle style;
    style.modifiedSignal().connect([&](KyObject*, KyObjectModificationType kind, const std::string& name, int index) {
        if (name == "StrokeCustomDashPattern")
            changes.emplace_back(kind, index);
    });
    style.insertDashElement(1, 99);
    style.insertDashElement(2, 0);
    style.insertDashElement(3, 1);
    style.setDashElement(7, 2);
    style.setDashElement(8, 3);
    style.removeDashElement(5, true);
    style.removeDashElement(0, false);
    EXPECT_EQ((std::vector<double>{3, 7}), style.getStrokeCustomDashPattern());
    EXPECT_EQ(7.0, style.getDashElement(1));
    EXPECT_EQ(0.0, style.getDashElement(2));
    EXPECT_EQ((std::vector<std::pair<int, int>>{{4, 0}, {4, 0}, {4, 1}, {3, 2}, {5, 0}}), changes);
}

TEST(Ky2DStyle, TheFamilyGivesTheHint) {
    constexpr std::pair<const char*, int> cRows[] = {
        {"", 1},
        {"Times, serif", 1},
        {"Arial, SANS-serif", 0},
        {"Zapfino, cursive", 3},
        {"a monospace", 2},
        {"cursive, sans-serif", 0},
        {"monospace, Fantasy Font", 3},
    };
    Ky2DStyle style;
    for (const auto& [family, hint] : cRows) {
        style.setFontFamily(family);
        EXPECT_EQ(hint, style.getFontStyleHint()) << family;
    }
}

TEST(Ky2DStyle, FontsTakeWhatIsSaneAndKeepTheRest) {
    Ky2DStyle style;
    style.setFontFamily("DejaVu Sans, sans-serif");
    style.setFontStyle(eStyleOblique);
    const std::tuple<double, int, double, int> rows[] = {
        {20.5, eBold, 20.5, 75}, {0.0, 200, 11.0, 99},       {-3.0, -5, 11.0, 0},         {cNaN, eLight, 11.0, 25},
        {1e4, eBold, 1e4, 75},   {10000.5, eBold, 11.0, 75}, {cInfinity, eBold, 11.0, 75}};
    for (const auto& [size, weight, expectedSize, expectedWeight] : rows) {
        QFont font("serif", 11);
        QPen pen;
        QBrush brush;
        style.setFontSize(size);
        style.setFontWeight(weight);
        style.configureTextStyle(&pen, &brush, &font);
        EXPECT_EQ(expectedSize, font.pointSizeF());
        EXPECT_EQ(expectedWeight, font.weight());
        EXPECT_EQ(QFont::StyleOblique, font.style());
        EXPECT_EQ(QFont::SansSerif, font.styleHint());
        EXPECT_EQ("DejaVu Sans, sans-serif", font.family());
    }
}

TEST(Ky2DStyle, NumbersWithoutNameAreRefusedAsAttributes) {
    const std::tuple<const char*, int, int> rows[] = {
        {"FillRule", 0, 1},    {"TextAnchor", 0, 2}, {"FontStyle", 0, 2},
        {"FontWeight", 0, 99}, {"StrokeMode", 0, 6}, {"FillMode", 0, 14},
        {"StrokeJoin", 0, 3},  {"StrokeCap", 0, 2},  {"TextVerticalAnchor", 3, 6}};
    Ky2DStyle style;
    for (const auto& [name, first, last] : rows) {
        const KyAttributeInterface* attribute = style.getAttribute(name);
        ASSERT_NE(nullptr, attribute) << name;
        for (int number = first - 1; number <= last + 1; ++number)
            EXPECT_EQ(number >= first && number <= last, attribute->setValue(style, KyField(number))) << name << number;
    }
    EXPECT_TRUE(style.getAttribute("TextVerticalAnchor")->setValue(style, KyField(0)));
}

TEST(Ky2DStyle, CopiesHaveAllButTheOwnerAndAssignmentMarksTheNode) {
    const std::unique_ptr<Ky2DRect> node(Ky2DRect::create());
    Ky2DStyle* style = node->editStyle();
    EXPECT_EQ(Qt::NoPen, getPen(*style).style());
    EXPECT_EQ(0, style->getTextVerticalAnchor());
    style->setFontFamily("monospace");
    const std::unique_ptr<Ky2DStyle> copy(style->clone());
    EXPECT_EQ(2, copy->getFontStyleHint());
    Ky2DNode::applyModification();
    copy->setFillColor(KyColor(1, 0, 0));
    EXPECT_FALSE(node->isModified());
    *style = *copy;
    EXPECT_TRUE(node->isStyleModified());
    EXPECT_EQ(1.0f, node->getStyle()->getFillColor().red);
}
