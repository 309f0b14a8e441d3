// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeviceDriver.h"

#include "KyDevice.h"

#include "KyException.h"

#include <algorithm>
#include <iterator>
#include <utility>

KyDeviceDriver::~KyDeviceDriver() {
    mIsEnding = true;
    if (KyDeviceManager* manager = KyDeviceManager::get())
        manager->unregisterDeviceDriver(this);
    KyDeviceDriver::destroyAllDevices();
    if (mEndedFlag)
        *mEndedFlag = true;
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
    if (mIsEnding)
        return KyException::create("KyDeviceDriver::registerDevice(): the driver ends.");
    if (device->mDriver)
        return KyException::create("KyDeviceDriver::registerDevice(): the device belongs to another driver.");
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
    const bool isOut = withdraw(device);
    if (KyDeviceManager* manager = isOut ? KyDeviceManager::get() : nullptr)
        manager->mDevicesChanged.send();
    return isOut;
}

bool KyDeviceDriver::withdraw(KyDevice* device) {
    if (!hasDevice(device))
        return false;
    if (device->getNbReferences() > 1) {
        device->removeReference();
        return false;
    }
    std::erase(mDevices, device);
    device->mDriver = nullptr;
    if (KyDeviceManager* manager = KyDeviceManager::get())
        manager->withdrawDevice(device);
    return true;
}

void KyDeviceDriver::releaseDevice(KyDevice* device) {
    if (!withdraw(device))
        return;
    device->removeReference();
    if (KyDeviceManager* manager = KyDeviceManager::get())
        manager->mDevicesChanged.send();
}

void KyDeviceDriver::destroyAllDevices() {
    // A device may take others with it: those leave the list of the ones still to end.
    std::ranges::move(std::exchange(mDevices, {}), std::back_inserter(mEndingDevices));
    if (mEndingDevices.empty())
        return;
    endDevices();
    if (KyDeviceManager* manager = KyDeviceManager::get())
        manager->mDevicesChanged.send();
}

void KyDeviceDriver::endDevices() {
    bool hasEnded = false;
    bool* const outerFlag = std::exchange(mEndedFlag, &hasEnded);
    while (!hasEnded && !mEndingDevices.empty()) {
        KyDevice* const device = mEndingDevices.front();
        mEndingDevices.erase(mEndingDevices.begin());
        device->mDriver = nullptr;
        if (KyDeviceManager* manager = KyDeviceManager::get()) {
            manager->withdrawDevice(device);
            device->destroy();
        }
    }
    if (!hasEnded)
        mEndedFlag = outerFlag;
    else if (outerFlag)
        *outerFlag = true;
}

bool KyDeviceDriver::hasDevice(const KyDevice* device) const {
    return std::ranges::find(mDevices, device) != mDevices.end();
}

void KyDeviceDriver::forgetDevice(const KyDevice* device) {
    std::erase(mDevices, device);
    std::erase(mEndingDevices, device);
}
