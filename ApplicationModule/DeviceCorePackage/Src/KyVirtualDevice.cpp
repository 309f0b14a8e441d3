// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyVirtualDevice.h"

#include "KyDevice.h"
#include "KyDeviceManager.h"
#include "KyDeviceManagerObject.h"

#include "KyCallSignatures.h"
#include "KyException.h"
#include "KyTypeBuilder.h"

#include <cstdint>
#include <limits>

const KyType* KyVirtualDevice::msType = nullptr;

/// Opens the driver's side of a device, and tells its owner when it ends.
class KyVirtualDevice::Device : public KyDevice {
public:
    using KyDevice::setAxisName;
    using KyDevice::setAxisValue;
    using KyDevice::setButtonName;
    using KyDevice::setButtonValue;
    using KyDevice::setOrientationName;
    using KyDevice::setOrientationValue;

    Device(const std::string& name, unsigned nbAxes, unsigned nbButtons, unsigned nbOrientations) {
        setName(name);
        setNbAxis(nbAxes);
        setNbButtons(nbButtons);
        setNbOrientations(nbOrientations);
        setEnabled(true);
    }
    ~Device() override {
        if (mOwner)
            mOwner->mDevice = nullptr;
    }
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    void setAccessModes(KyAccessMode mode) {
        for (unsigned i = 0; i < getNbAxis(); ++i)
            setAxisAccessMode(i, mode);
        for (unsigned i = 0; i < getNbButtons(); ++i)
            setButtonAccessMode(i, mode);
        for (unsigned i = 0; i < getNbOrientations(); ++i)
            setOrientationAccessMode(i, mode);
    }
    void rest() {
        for (unsigned i = 0; i < getNbAxis(); ++i)
            if (!getAxis(i).isAbsolute())
                setAxisValue(i, 0.0F);
        for (unsigned i = 0; i < getNbButtons(); ++i)
            setButtonValue(i, getButton(i).getValue());
        for (unsigned i = 0; i < getNbOrientations(); ++i)
            if (!getOrientation(i).isAbsolute())
                setOrientationValue(i, KyQuat<float>());
    }

    KyVirtualDevice* mOwner = nullptr;
};

namespace {

bool isBelow(int index, unsigned end) {
    return index >= 0 && static_cast<unsigned>(index) < end;
}

constexpr unsigned cNbButtonValues = std::numeric_limits<std::uint8_t>::max() + 1U;

bool isNumberOfChannels(int number) {
    return number >= 0 && number <= KyVirtualDevice::cLargestNumber;
}

} // namespace

KyVirtualDevice* KyVirtualDevice::create(const std::string& name, int nbAxes, int nbButtons, int nbOrientations) {
    if (!isNumberOfChannels(nbAxes) || !isNumberOfChannels(nbButtons) || !isNumberOfChannels(nbOrientations)) {
        KyException::create("KyVirtualDevice::create(): a device has 0 to 64 channels of each kind.");
        return nullptr;
    }
    KyDeviceManager* const manager = KyDeviceManager::get();
    if (!manager) {
        KyException::create("KyVirtualDevice::create(): there is no device manager.");
        return nullptr;
    }
    auto* device = new Device(name, static_cast<unsigned>(nbAxes), static_cast<unsigned>(nbButtons),
                              static_cast<unsigned>(nbOrientations));
    auto* object = new KyVirtualDevice(*device);
    manager->insertTask(device, -1, KyCompositeTask::cUnscheduledPhase);
    manager->devicesChangedSignal().send();
    return object;
}

KyVirtualDevice::KyVirtualDevice(Device& device)
    : mDevice(&device) {
    mDevice->mOwner = this;
    mDevice->addReference();
}

KyVirtualDevice::~KyVirtualDevice() {
    if (!mDevice)
        return;
    mDevice->mOwner = nullptr;
    KyDeviceManager* const manager = KyDeviceManager::get();
    const bool wasListed = manager && manager->removeTask(mDevice);
    mDevice->removeReference();
    if (wasListed && KyDeviceManager::get() == manager)
        manager->devicesChangedSignal().send();
}

bool KyVirtualDevice::hasAxis(int index) const {
    return mDevice && isBelow(index, mDevice->getNbAxis());
}

bool KyVirtualDevice::hasButton(int index) const {
    return mDevice && isBelow(index, mDevice->getNbButtons());
}

bool KyVirtualDevice::hasOrientation(int index) const {
    return mDevice && isBelow(index, mDevice->getNbOrientations());
}

KyDeviceObject* KyVirtualDevice::getDevice() const {
    return mDevice ? KyDeviceManagerObject::get()->wrap(*mDevice) : nullptr;
}

bool KyVirtualDevice::setAxisName(int index, const std::string& name) {
    const bool isThere = hasAxis(index);
    if (isThere)
        mDevice->setAxisName(static_cast<unsigned>(index), name);
    return isThere;
}

bool KyVirtualDevice::setButtonName(int index, const std::string& name) {
    const bool isThere = hasButton(index);
    if (isThere)
        mDevice->setButtonName(static_cast<unsigned>(index), name);
    return isThere;
}

bool KyVirtualDevice::setOrientationName(int index, const std::string& name) {
    const bool isThere = hasOrientation(index);
    if (isThere)
        mDevice->setOrientationName(static_cast<unsigned>(index), name);
    return isThere;
}

bool KyVirtualDevice::setAxisMode(int index, bool isAbsolute) {
    const bool isThere = hasAxis(index);
    if (isThere)
        mDevice->editAxis(static_cast<unsigned>(index)).setAbsolute(isAbsolute);
    return isThere;
}

bool KyVirtualDevice::setOrientationMode(int index, bool isAbsolute) {
    const bool isThere = hasOrientation(index);
    if (isThere)
        mDevice->editOrientation(static_cast<unsigned>(index)).setAbsolute(isAbsolute);
    return isThere;
}

bool KyVirtualDevice::setAccessMode(int mode) {
    const bool isThere = mDevice && isBelow(mode, eNbAccessModes);
    if (isThere)
        mDevice->setAccessModes(static_cast<KyAccessMode>(mode));
    return isThere;
}

bool KyVirtualDevice::setAxisValue(int index, float value) {
    const bool isThere = hasAxis(index);
    if (isThere)
        mDevice->setAxisValue(static_cast<unsigned>(index), value);
    return isThere;
}

bool KyVirtualDevice::setButtonValue(int index, int value) {
    const bool isThere = hasButton(index) && isBelow(value, cNbButtonValues);
    if (isThere)
        mDevice->setButtonValue(static_cast<unsigned>(index), static_cast<std::uint8_t>(value));
    return isThere;
}

bool KyVirtualDevice::setOrientationValue(int index, const KyQuat<float>& value) {
    const bool isThere = hasOrientation(index);
    if (isThere)
        mDevice->setOrientationValue(static_cast<unsigned>(index), value);
    return isThere;
}

bool KyVirtualDevice::rest() {
    if (mDevice)
        mDevice->rest();
    return mDevice != nullptr;
}

void KyVirtualDevice::initializeType() {
    if (msType)
        return;
    using V = KyVirtualDevice;
    msType = KyTypeBuilder<V>("KyVirtualDevice", KyObject::getType())
                 .staticMethod("create", &V::create)
                 .method("getDevice", &V::getDevice)
                 .method("setAxisName", &V::setAxisName)
                 .method("setButtonName", &V::setButtonName)
                 .method("setOrientationName", &V::setOrientationName)
                 .method("setAxisMode", &V::setAxisMode)
                 .method("setOrientationMode", &V::setOrientationMode)
                 .method("setAccessMode", &V::setAccessMode)
                 .method("setAxisValue", &V::setAxisValue)
                 .method("setButtonValue", &V::setButtonValue)
                 .method("setOrientationValue", &V::setOrientationValue)
                 .method("rest", &V::rest)
                 .build();
    KyCallSignatures::add("KyVirtualDevice",
                          {"create(name, nbAxes, nbButtons, nbOrientations)", "setAxisMode(index, isAbsolute)",
                           "setAxisName(index, name)", "setAxisValue(index, value)", "setButtonName(index, name)",
                           "setButtonValue(index, value)", "setOrientationMode(index, isAbsolute)",
                           "setOrientationName(index, name)", "setOrientationValue(index, value)"});
}

void KyVirtualDevice::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyVirtualDevice::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyVirtualDevice::getObjectType() const {
    return getType();
}

KyVirtualDevice* KyVirtualDevice::cast(KyObject* object) {
    return kyCast<KyVirtualDevice>(object);
}
