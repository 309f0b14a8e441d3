// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DProxy.h"

#include "Ky2DEmptyItem_p.h"

#include "KyTypeBuilder.h"

const KyType* Ky2DProxy::msType = nullptr;

void Ky2DProxy::initializeType() {
    if (!msType)
        msType = KyTypeBuilder<Ky2DProxy>("Ky2DProxy", Ky2DNode::getType()).factory().build();
}

void Ky2DProxy::finalizeType() {
    KyType::remove(msType);
}

const KyType* Ky2DProxy::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* Ky2DProxy::getObjectType() const {
    return getType();
}

Ky2DProxy* Ky2DProxy::cast(KyObject* object) {
    return kyCast<Ky2DProxy>(object);
}

KyObject* Ky2DProxy::factory() {
    return new Ky2DProxy;
}

Ky2DProxy::Ky2DProxy(QGraphicsItem* item) {
    if (!item)
        return;
    // Hangs below the item and ends with it: so the node learns of that.
    auto* guard = new Ky2DItem<Ky2DEmptyItem>;
    guard->setParentItem(item);
    setItem(item, guard, false);
}

Ky2DProxy* Ky2DProxy::clone() const {
    return new Ky2DProxy(*this);
}
