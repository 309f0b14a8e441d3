// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DStyle.h"

#include "KyCallSignatures.h"
#include "KyTypeBuilder.h"

namespace {

constexpr int cLargestWeight = 99;

/// The setters for scripts and files: numbers that name nothing are refused.
template <class Enum, Enum First, Enum Last, void (Ky2DStyle::*Setter)(Enum)>
bool setNamed(Ky2DStyle& style, std::int32_t number) {
    if (number < First || number > Last)
        return false;
    (style.*Setter)(static_cast<Enum>(number));
    return true;
}

bool setVerticalAnchor(Ky2DStyle& style, std::int32_t number) {
    if (number != 0 && (number < eTop || number > eBottom))
        return false;
    style.setTextVerticalAnchor(static_cast<KyTextVerticalAnchor>(number));
    return true;
}

bool setWeight(Ky2DStyle& style, std::int32_t weight) {
    if (weight < 0 || weight > cLargestWeight)
        return false;
    style.setFontWeight(weight);
    return true;
}

constexpr auto cSetFillRule = &setNamed<KyFillRule, eEvenOdd, eNonZero, &Ky2DStyle::setFillRule>;
constexpr auto cSetFontStyle = &setNamed<KyFontStyle, eStyleNormal, eStyleOblique, &Ky2DStyle::setFontStyle>;
constexpr auto cSetTextAnchor = &setNamed<KyTextAnchor, eStart, eEnd, &Ky2DStyle::setTextAnchor>;

void setDash(Ky2DStyle& style, unsigned index, double value) {
    style.setDashElement(value, index);
}

void insertDash(Ky2DStyle& style, unsigned index, double value) {
    style.insertDashElement(value, index);
}

void removeDash(Ky2DStyle& style, unsigned index) {
    style.removeDashElement(index);
}

void addOutline(KyTypeBuilder<Ky2DStyle>& builder) {
    using S = Ky2DStyle;
    builder.attribute("StrokeConstantWidth", &S::isStrokeConstantWidth, &S::setStrokeConstantWidth)
        .enumAttribute("StrokeMode", "KyStrokeModeField", &S::getStrokeMode, &S::setStrokeMode)
        .container("StrokeCustomDashPattern", &S::getNbDashElements, &S::getDashElement, &setDash, &insertDash,
                   &removeDash)
        .attribute("StrokeDashOffset", &S::getStrokeDashOffset, &S::setStrokeDashOffset)
        .enumAttribute("StrokeJoin", "KyStrokeJoinField", &S::getStrokeJoin, &S::setStrokeJoin)
        .enumAttribute("StrokeCap", "KyStrokeCapField", &S::getStrokeCap, &S::setStrokeCap)
        .attribute("StrokeColor", &S::getStrokeColor, &S::setStrokeColor)
        .attribute("StrokeWidth", &S::getStrokeWidth, &S::setStrokeWidth)
        .attribute("StrokeMiterLimit", &S::getStrokeMiterLimit, &S::setStrokeMiterLimit);
}

void addFilling(KyTypeBuilder<Ky2DStyle>& builder) {
    using S = Ky2DStyle;
    builder.enumAttribute("FillMode", "KyFillModeField", &S::getFillMode, &S::setFillMode)
        .attribute("FillRule", &S::getFillRule, cSetFillRule)
        .attribute("FillColor", &S::getFillColor, &S::setFillColor);
}

void addFont(KyTypeBuilder<Ky2DStyle>& builder) {
    using S = Ky2DStyle;
    builder.attribute("FontFamily", &S::getFontFamily, &S::setFontFamily)
        .attribute("FontSize", &S::getFontSize, &S::setFontSize)
        .attribute("FontWeight", &S::getFontWeight, &setWeight)
        .attribute("FontStyle", &S::getFontStyle, cSetFontStyle)
        .attribute("TextAnchor", &S::getTextAnchor, cSetTextAnchor)
        .attribute("TextVerticalAnchor", &S::getTextVerticalAnchor, &setVerticalAnchor);
}

void addMethods(KyTypeBuilder<Ky2DStyle>& builder) {
    using S = Ky2DStyle;
    builder.method("getNbDashElements", &S::getNbDashElements)
        .method("getDashElement", &S::getDashElement)
        .method("setDashElement", &S::setDashElement)
        .method("insertDashElement", &S::insertDashElement)
        .method("removeDashElement", &S::removeDashElement)
        .method("removeDashElement", &removeDash)
        .method("getStrokeCustomDashPattern", &S::getStrokeCustomDashPattern)
        .method("setStrokeCustomDashPattern", &S::setStrokeCustomDashPattern)
        .method("isStrokeConstantWidth", &S::isStrokeConstantWidth)
        .method("setStrokeConstantWidth", &S::setStrokeConstantWidth)
        .method("getFillRule", &S::getFillRule)
        .method("setFillRule", cSetFillRule)
        .method("getFontStyleHint", &S::getFontStyleHint);
}

void addNames(KyTypeBuilder<Ky2DStyle>& builder) {
    builder
        .enumeration({{"eNoPen", eNoPen},
                      {"eSolidLine", eSolidLine},
                      {"eDashLine", eDashLine},
                      {"eDotLine", eDotLine},
                      {"eDashDotLine", eDashDotLine},
                      {"eDashDotDotLine", eDashDotDotLine},
                      {"eCustomDashLine", eCustomDashLine},
                      {"eNbStrokeMode", eNbStrokeMode}})
        .enumeration({{"eNoBrush", eNoBrush},
                      {"eSolidPattern", eSolidPattern},
                      {"eDense1Pattern", eDense1Pattern},
                      {"eDense2Pattern", eDense2Pattern},
                      {"eDense3Pattern", eDense3Pattern},
                      {"eDense4Pattern", eDense4Pattern},
                      {"eDense5Pattern", eDense5Pattern},
                      {"eDense6Pattern", eDense6Pattern},
                      {"eDense7Pattern", eDense7Pattern},
                      {"eHorPattern", eHorPattern},
                      {"eVerPattern", eVerPattern},
                      {"eCrossPattern", eCrossPattern},
                      {"eBDiagPattern", eBDiagPattern},
                      {"eFDiagPattern", eFDiagPattern},
                      {"eDiagCrossPattern", eDiagCrossPattern},
                      {"eNbFillMode", eNbFillMode}})
        .enumeration({{"eEvenOdd", eEvenOdd}, {"eNonZero", eNonZero}, {"eNbFillRule", eNbFillRule}})
        .enumeration({{"eMiterJoin", eMiterJoin},
                      {"eBevelJoin", eBevelJoin},
                      {"eRoundJoin", eRoundJoin},
                      {"eSvgMiterJoin", eSvgMiterJoin},
                      {"eNbStrokeJoin", eNbStrokeJoin}})
        .enumeration({{"eFlatCap", eFlatCap},
                      {"eSquareCap", eSquareCap},
                      {"eRoundCap", eRoundCap},
                      {"eNbStrokeCap", eNbStrokeCap}})
        .enumeration({{"eStart", eStart}, {"eMiddle", eMiddle}, {"eEnd", eEnd}})
        .enumeration({{"eTop", eTop}, {"eCenter", eCenter}, {"eLine", eLine}, {"eBottom", eBottom}})
        .enumeration(
            {{"eLight", eLight}, {"eNormal", eNormal}, {"eDemiBold", eDemiBold}, {"eBold", eBold}, {"eBlack", eBlack}})
        .enumeration(
            {{"eStyleNormal", eStyleNormal}, {"eStyleItalic", eStyleItalic}, {"eStyleOblique", eStyleOblique}});
}

} // namespace

const KyType* Ky2DStyle::msType = nullptr;

void Ky2DStyle::initializeType() {
    if (msType)
        return;
    KyTypeBuilder<Ky2DStyle> builder("Ky2DStyle", KyObject::getType());
    addOutline(builder.factory());
    addFilling(builder);
    addFont(builder);
    addMethods(builder);
    addNames(builder);
    msType = builder.build();
    KyCallSignatures::add("Ky2DStyle", {"getDashElement(index)", "insertDashElement(value, index)",
                                        "setDashElement(value, index)", "removeDashElement(index, destroy?)"});
}

void Ky2DStyle::finalizeType() {
    KyType::remove(msType);
}

const KyType* Ky2DStyle::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* Ky2DStyle::getObjectType() const {
    return getType();
}

Ky2DStyle* Ky2DStyle::cast(KyObject* object) {
    return kyCast<Ky2DStyle>(object);
}
