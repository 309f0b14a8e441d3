// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaCounting_p.h"

#include "KyGraphicsObject.h"

#include "KyObject.h"
#include "KyReferenceCounted.h"

namespace {

KyReferenceCounted* toReferenceCounted(KyObject& object) {
    // The record's own cast is cheaper, but not there any more once the record has left the registry.
    KyReferenceCounted* counted = object.getObjectType()->getReferenceCounted(&object);
    return counted ? counted : dynamic_cast<KyReferenceCounted*>(&object);
}

} // namespace

KyLuaCounting kyGetCounting(KyObject& object) {
    if (toReferenceCounted(object))
        return KyLuaCounting::eReferenceCounted;
    return dynamic_cast<KyGraphicsObject*>(&object) ? KyLuaCounting::eGraphicsObject : KyLuaCounting::eNone;
}

void kyAddCountedReference(KyObject& object, KyLuaCounting counting) {
    if (counting == KyLuaCounting::eReferenceCounted) {
        if (const KyReferenceCounted* counted = toReferenceCounted(object))
            counted->addReference();
    } else if (counting == KyLuaCounting::eGraphicsObject) {
        if (auto* graphics = dynamic_cast<KyGraphicsObject*>(&object))
            graphics->incrementReference();
    }
}

void kyRemoveCountedReference(KyObject& object, KyLuaCounting counting) {
    if (counting == KyLuaCounting::eReferenceCounted) {
        if (const KyReferenceCounted* counted = toReferenceCounted(object))
            counted->removeReference();
    } else if (counting == KyLuaCounting::eGraphicsObject) {
        if (auto* graphics = dynamic_cast<KyGraphicsObject*>(&object)) {
            graphics->decrementReference();
            graphics->deleteIfUnused();
        }
    }
}

unsigned kyGetNbCountedReferences(KyObject& object, KyLuaCounting counting) {
    if (counting == KyLuaCounting::eReferenceCounted) {
        const KyReferenceCounted* counted = toReferenceCounted(object);
        return counted ? counted->getNbReferences() : 0;
    }
    const auto* graphics =
        counting == KyLuaCounting::eGraphicsObject ? dynamic_cast<KyGraphicsObject*>(&object) : nullptr;
    return graphics ? graphics->getNbReferences() : 0;
}
