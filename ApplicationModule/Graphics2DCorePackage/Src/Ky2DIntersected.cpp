// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DIntersected.h"

#include "Ky2DNode.h"

#include "KyTypeBuilder.h"

const KyType* Ky2DIntersected::msType = nullptr;

void Ky2DIntersected::initializeType() {
    if (msType)
        return;
    KyIntersected::initializeType();
    msType = KyTypeBuilder<Ky2DIntersected>("Ky2DIntersected", KyIntersected::getType())
                 .factory()
                 .attribute("Element", &Ky2DIntersected::getElement, &Ky2DIntersected::setElement)
                 .method("getElement", &Ky2DIntersected::getElement)
                 .method("setElement", &Ky2DIntersected::setElement)
                 .build();
}

void Ky2DIntersected::finalizeType() {
    KyType::remove(msType);
}

const KyType* Ky2DIntersected::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* Ky2DIntersected::getObjectType() const {
    return getType();
}

Ky2DIntersected* Ky2DIntersected::cast(KyObject* object) {
    return kyCast<Ky2DIntersected>(object);
}

Ky2DNode* Ky2DIntersected::getElement() const {
    return static_cast<Ky2DNode*>(mElement.get());
}

void Ky2DIntersected::setElement(Ky2DNode* element) {
    mElement = KyObjectReference(element);
}
