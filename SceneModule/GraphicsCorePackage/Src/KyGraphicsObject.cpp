// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGraphicsObject.h"

#include "KyTypeBuilder.h"

const KyType* KyGraphicsObject::msType = nullptr;

void KyGraphicsObject::initializeType() {
    if (!msType)
        msType = KyTypeBuilder<KyGraphicsObject>("KyGraphicsObject", KyObject::getType()).build();
}

void KyGraphicsObject::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyGraphicsObject::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyGraphicsObject::getObjectType() const {
    return getType();
}

KyGraphicsObject* KyGraphicsObject::cast(KyObject* object) {
    return kyCast<KyGraphicsObject>(object);
}

void KyGraphicsObject::decrementReference() {
    if (mNbReferences > 0)
        --mNbReferences;
}

void KyGraphicsObject::deleteIfUnused() {
    if (mNbReferences == 0)
        destroy();
}
