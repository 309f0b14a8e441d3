// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFontFormat.h"

#include "KyTypeBuilder.h"

#include <algorithm>
#include <cmath>

const KyType* KyFontFormat::msType = nullptr;

void KyFontFormat::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyFontFormat>("KyFontFormat", KyObject::getType())
                 .factory()
                 .attribute("Family", &KyFontFormat::getFamily, &KyFontFormat::setFamily)
                 .attribute("StyleHint", &KyFontFormat::getStyleHint, &KyFontFormat::setStyleHint)
                 .attribute("Size", &KyFontFormat::getSize, &KyFontFormat::setSize)
                 .attribute("Weight", &KyFontFormat::getWeight, &KyFontFormat::setWeight)
                 .attribute("Style", &KyFontFormat::getStyle, &KyFontFormat::setStyle)
                 .attribute("Underline", &KyFontFormat::isUnderline, &KyFontFormat::setUnderline)
                 .attribute("StrikeOut", &KyFontFormat::isStrikeOut, &KyFontFormat::setStrikeOut)
                 .enumeration({{"eNormal", eNormal}, {"eItalic", eItalic}, {"eOblique", eOblique}})
                 .build();
}

void KyFontFormat::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyFontFormat::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyFontFormat::getObjectType() const {
    return getType();
}

KyFontFormat* KyFontFormat::cast(KyObject* object) {
    return kyCast<KyFontFormat>(object);
}

KyObject* KyFontFormat::factory() {
    return new KyFontFormat;
}

template <class T>
void KyFontFormat::assign(T& member, const T& value, const char* name) {
    if (member == value)
        return;
    member = value;
    notifyModified(name);
}

void KyFontFormat::setFamily(const std::string& family) {
    assign(mFamily, family, "Family");
}

void KyFontFormat::setStyleHint(int hint) {
    assign(mStyleHint, hint, "StyleHint");
}

void KyFontFormat::setSize(double points) {
    if (points > 0.0 && std::isfinite(points))
        assign(mSize, points, "Size");
}

void KyFontFormat::setWeight(int weight) {
    assign(mWeight, std::clamp(weight, 0, 99), "Weight");
}

void KyFontFormat::setStyle(int style) {
    if (style >= 0 && style < eNbStyles)
        assign(mStyle, style, "Style");
}

void KyFontFormat::setUnderline(bool isOn) {
    assign(mIsUnderline, isOn, "Underline");
}

void KyFontFormat::setStrikeOut(bool isOn) {
    assign(mIsStrikeOut, isOn, "StrikeOut");
}
