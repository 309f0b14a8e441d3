// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyIntersected.h"

#include "KyTypeBuilder.h"

const KyType* KyIntersected::msType = nullptr;

void KyIntersected::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyIntersected>("KyIntersected", KyObject::getType())
                 .factory()
                 .attribute("Point", &KyIntersected::getPoint, &KyIntersected::setPoint)
                 .attribute("Distance", &KyIntersected::getDistance, &KyIntersected::setDistance)
                 .attribute("Valid", &KyIntersected::isValid, &KyIntersected::setValid)
                 .build();
}

void KyIntersected::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyIntersected::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyIntersected::getObjectType() const {
    return getType();
}

KyIntersected* KyIntersected::cast(KyObject* object) {
    return kyCast<KyIntersected>(object);
}

KyObject* KyIntersected::factory() {
    return new KyIntersected;
}
