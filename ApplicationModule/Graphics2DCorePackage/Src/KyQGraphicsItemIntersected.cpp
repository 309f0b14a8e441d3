// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQGraphicsItemIntersected.h"

#include "KyTypeBuilder.h"

const KyType* KyQGraphicsItemIntersected::msType = nullptr;

void KyQGraphicsItemIntersected::initializeType() {
    if (msType)
        return;
    KyIntersected::initializeType();
    msType = KyTypeBuilder<KyQGraphicsItemIntersected>("KyQGraphicsItemIntersected", KyIntersected::getType())
                 .factory()
                 .build();
}

void KyQGraphicsItemIntersected::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyQGraphicsItemIntersected::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyQGraphicsItemIntersected::getObjectType() const {
    return getType();
}

KyQGraphicsItemIntersected* KyQGraphicsItemIntersected::cast(KyObject* object) {
    return kyCast<KyQGraphicsItemIntersected>(object);
}
