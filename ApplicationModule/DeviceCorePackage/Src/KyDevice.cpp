// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDevice.h"

#include "KyDeviceManager.h"

namespace {

void enableAll(auto& channels, bool enabled) {
    for (auto& channel : channels)
        channel.setEnabled(enabled);
}

} // namespace

KyDevice::KyDevice(const KyDevice& other)
    : KyTask(other)
    , KyReferenceCounted(other)
    , mAxes(other.mAxes)
    , mButtons(other.mButtons)
    , mOrientations(other.mOrientations)
    , mName(other.mName) {}

KyDevice& KyDevice::operator=(const KyDevice& other) {
    mAxes = other.mAxes;
    mButtons = other.mButtons;
    mOrientations = other.mOrientations;
    mName = other.mName;
    return *this;
}

KyDevice::~KyDevice() {
    KyDeviceManager::forgetDevice(*this);
}

void KyDevice::destroy() {
    delete this;
}

void KyDevice::onLastReference() {
    destroy();
}

void KyDevice::setEnabledVirtual(bool enabled) {
    enableAll(mAxes, enabled);
    enableAll(mButtons, enabled);
    enableAll(mOrientations, enabled);
}
