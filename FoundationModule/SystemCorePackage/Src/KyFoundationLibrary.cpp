// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFoundationLibrary.h"

#include "KyDynamicObject.h"
#include "KyModuleManager.h"

void KyFoundationLibrary::registerModule() {
    KyModuleManager::get().registerModule("KyFoundation/KyFoundation", nullptr, 0, &initialize, &finalize);
}

void KyFoundationLibrary::initialize() {
    KyObject::initializeType();
    KyDynamicObject::initializeType();
}

void KyFoundationLibrary::finalize() {
    KyDynamicObject::finalizeType();
    KyObject::finalizeType();
}
