// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGraphicsDeviceManager.h"

#include "KyGpuName_p.h"
#include "KyGraphicsDevice.h"

KyGraphicsDeviceManager& KyGraphicsDeviceManager::get() {
    static auto* manager = new KyGraphicsDeviceManager;
    return *manager;
}

bool KyGraphicsDeviceManager::makeCurrent(KyGraphicsDevice* device) {
    if (!device || !device->makeCurrent())
        return false;
    mCurrent = device;
    deletePending();
    return true;
}

void KyGraphicsDeviceManager::deletePending() {
    KyGpuName::deletePending();
}

void KyGraphicsDeviceManager::endContext() {
    kyEndCurrentGpuContext();
}

std::size_t KyGraphicsDeviceManager::getNbPending() const {
    return KyGpuName::getNbPending();
}

void KyGraphicsDeviceManager::forget(const KyGraphicsDevice* device) {
    if (mCurrent == device)
        mCurrent = nullptr;
}
