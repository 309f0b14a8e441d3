// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeviceDriver.h"

#include "KyDevice.h"

#include "KyException.h"

#include <algorithm>
#include <iterator>
#include <utility>

KyDeviceDriver::~KyDeviceDriver() {
    KyDeviceDriver::destroyAllDevices();
    if (KyDeviceManager* manager = KyDeviceManager::get())
        manager->unregisterDeviceDriver(this);
}

void KyDeviceDriver::destroy() {
    delete this;
}

const KyDevice* KyDeviceDriver::getDevice(unsigned index) const {
    return index < mDevices.size() ? mDevices[index] : nullptr;
}

KyDevice* KyDeviceDriver::editDevice(unsigned index) {
    return const_cast<KyDevice*>(getDevice(index));
}

void KyDeviceDriver::registerDevice(KyDevice* device, bool isRunByDriver) {
    if (!device)
        return;
    if (hasDevice(device)) {
        device->addReference();
        return;
    }
    if (device->mDriver) {
        KyException::create("KyDeviceDriver::registerDevice(): the device belongs to another driver.");
        return;
    }
    mDevices.push_back(device);
    device->mDriver = this;
    device->addReference();
    if (KyDeviceManager* manager = KyDeviceManager::get()) {
        manager->insertTask(device, -1,
                            isRunByDriver ? KyCompositeTask::cUnscheduledPhase : KyCompositeTask::cDefaultPhase);
        manager->mDevicesChanged.send();
    }
}

bool KyDeviceDriver::unregisterDevice(KyDevice* device) {
    if (!hasDevice(device))
        return false;
    if (device->getNbReferences() > 1) {
        device->removeReference();
        return false;
    }
    std::erase(mDevices, device);
    device->mDriver = nullptr;
    if (KyDeviceManager* manager = KyDeviceManager::get()) {
        manager->removeTask(device);
        manager->mDevicesChanged.send();
    }
    return true;
}

void KyDeviceDriver::releaseDevice(KyDevice* device) {
    if (!unregisterDevice(device))
        return;
    if (KyDeviceManager* manager = KyDeviceManager::get())
        manager->freeDeviceInfos(device);
    device->removeReference();
}

void KyDeviceDriver::destroyAllDevices() {
    // A device may take others with it: those leave the list of the ones still to end.
    std::ranges::move(std::exchange(mDevices, {}), std::back_inserter(mEndingDevices));
    const bool hadDevices = !mEndingDevices.empty();
    while (!mEndingDevices.empty()) {
        KyDevice* const device = mEndingDevices.front();
        mEndingDevices.erase(mEndingDevices.begin());
        device->mDriver = nullptr;
        if (KyDeviceManager* manager = KyDeviceManager::get()) {
            manager->removeTask(device);
            device->destroy();
        }
    }
    if (KyDeviceManager* manager = hadDevices ? KyDeviceManager::get() : nullptr)
        manager->mDevicesChanged.send();
}

bool KyDeviceDriver::hasDevice(const KyDevice* device) const {
    return std::ranges::find(mDevices, device) != mDevices.end();
}

void KyDeviceDriver::forgetDevice(const KyDevice* device) {
    std::erase(mDevices, device);
    std::erase(mEndingDevices, device);
}
