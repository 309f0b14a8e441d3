// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyObjectQmlBinding.h"

#include "KyQmlTypedBinding_p.h"

#include "KyObject.h"

KyObjectQmlBinding* KyObjectQmlBinding::create(KyObject& object, QObject* parent) {
    return new KyQmlTypedBinding(object, parent);
}

KyObjectQmlBinding::KyObjectQmlBinding(KyObject& object, QObject* parent)
    : QObject(parent)
    , mObject(&object) {
    object.connectModified(this, &KyObjectQmlBinding::onModified);
}

KyObjectQmlBinding::~KyObjectQmlBinding() = default;

void KyObjectQmlBinding::onObjectModified(KyObjectModificationType, const std::string&, int) {}

void KyObjectQmlBinding::onObjectEnded() {}

void KyObjectQmlBinding::forgetObject() {
    mObject->disconnectModified(this, &KyObjectQmlBinding::onModified);
    mObject = nullptr;
}

void KyObjectQmlBinding::onModified(KyObject*, KyObjectModificationType kind, const std::string& name, int index) {
    if (kind != eObjectEnding && kind != eObjectEnded)
        return onObjectModified(kind, name, index);
    forgetObject();
    onObjectEnded();
}
