// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPassEventHandler.h"

#include "KyTypeBuilder.h"

const KyType* KyPassEventHandler::msType = nullptr;

void KyPassEventHandler::initializeType() {
    if (!msType)
        msType = KyTypeBuilder<KyPassEventHandler>("KyPassEventHandler", KyObject::getType()).build();
}

void KyPassEventHandler::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyPassEventHandler::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyPassEventHandler::getObjectType() const {
    return getType();
}

KyPassEventHandler* KyPassEventHandler::cast(KyObject* object) {
    return kyCast<KyPassEventHandler>(object);
}

bool KyPassEventHandler::handleEvent(const KyInputEvent&, KyGraphicsViewMultiPass*, KyBaseGraphicsPass*) {
    return false;
}
