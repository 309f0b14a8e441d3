// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyReferenceCounted.h"

#include "KyObject.h"

KyReferenceCounted::~KyReferenceCounted() = default;

void KyReferenceCounted::removeReference() const {
    if (mNbReferences > 0 && --mNbReferences == 0)
        const_cast<KyReferenceCounted*>(this)->onLastReference();
}

void KyReferenceCounted::onLastReference() {
    if (auto* object = dynamic_cast<KyObject*>(this))
        object->destroy();
    else
        delete this;
}
