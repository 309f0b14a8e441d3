// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyObjectQmlBinding.h"

#include "KyQmlTypedBinding_p.h"

KyObjectQmlBinding* KyObjectQmlBinding::create(KyObject& object, QObject* parent) {
    return new KyQmlTypedBinding(object, parent);
}

KyObjectQmlBinding::KyObjectQmlBinding(KyObject& object, QObject* parent)
    : QObject(parent)
    , mObject(&object) {}

KyObjectQmlBinding::~KyObjectQmlBinding() = default;
