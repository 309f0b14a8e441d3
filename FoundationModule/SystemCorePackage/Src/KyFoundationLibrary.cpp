// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFoundationLibrary.h"

#include "KyDynamicObject.h"
#include "KyModuleManager.h"
#include "KyProgress.h"

void KyFoundationLibrary::registerModule() {
    KyModuleManager::get().registerModule("KyFoundation/KyFoundation", nullptr, 0, &initialize, &finalize);
}

void KyFoundationLibrary::initialize() {
    KyObject::initializeType();
    KyDynamicObject::initializeType();
    KyProgress::initializeType();
}

void KyFoundationLibrary::finalize() {
    KyProgress::finalizeType();
    KyDynamicObject::finalizeType();
    KyObject::finalizeType();
}
