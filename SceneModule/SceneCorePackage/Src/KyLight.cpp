// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLight.h"

#include "KyTypeBuilder.h"

#include <array>
#include <cmath>

const KyType* KyLight::msType = nullptr;

void KyLight::initializeType() {
    if (msType)
        return;
    static constexpr std::array<const char*, eNbKinds> cKinds{"Directional", "Point"};
    KyFieldManager::get().registerEnumFieldType("KyLightKindField", eNbKinds, cKinds.data());
    msType = KyTypeBuilder<KyLight>("KyLight", KyNode::getType())
                 .factory()
                 .enumAttribute("Kind", "KyLightKindField", &KyLight::getKind, &KyLight::setKind)
                 .attribute("Color", &KyLight::getColor, &KyLight::setColor)
                 .attribute("Intensity", &KyLight::getIntensity, &KyLight::setIntensity)
                 .attribute("Range", &KyLight::getRange, &KyLight::setRange)
                 .enumeration({{"eDirectional", eDirectional}, {"ePoint", ePoint}})
                 .build();
}

void KyLight::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyLight::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyLight::getObjectType() const {
    return getType();
}

KyLight* KyLight::cast(KyObject* object) {
    return kyCast<KyLight>(object);
}

KyObject* KyLight::factory() {
    return new KyLight;
}

KyVec3d KyLight::getWorldDirection() const {
    KyVec3d direction = -getWorldFrame().getColumn(2);
    return direction.normalize() ? direction : KyVec3d(0, 0, -1);
}

void KyLight::setKind(int kind) {
    if (kind < 0 || kind >= eNbKinds || kind == mKind)
        return;
    mKind = kind;
    markModified("Kind");
}

void KyLight::setColor(const KyColor& color) {
    if (color == mColor)
        return;
    mColor = color;
    markModified("Color");
}

void KyLight::setIntensity(double intensity) {
    if (!(intensity >= 0.0) || !std::isfinite(intensity) || intensity == mIntensity)
        return;
    mIntensity = intensity;
    markModified("Intensity");
}

void KyLight::setRange(double range) {
    if (!(range >= 0.0) || !std::isfinite(range) || range == mRange)
        return;
    mRange = range;
    markModified("Range");
}
