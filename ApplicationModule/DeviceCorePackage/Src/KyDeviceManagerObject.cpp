// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeviceManagerObject.h"

#include "KyDevice.h"
#include "KyDeviceParameters_p.h"

#include "KyCallSignatures.h"
#include "KyException.h"
#include "KyTypeBuilder.h"

#include <algorithm>
#include <utility>

KyDeviceManagerObject* KyDeviceManagerObject::msInstance = nullptr;
const KyType* KyDeviceManagerObject::msType = nullptr;

KyDeviceManagerObject* KyDeviceManagerObject::get() {
    if (!msInstance) {
        msInstance = new KyDeviceManagerObject;
        msInstance->addReference();
    }
    msInstance->editManager();
    return msInstance;
}

void KyDeviceManagerObject::finalizeClass() {
    if (msInstance)
        msInstance->releaseAllDevices();
    if (KyDeviceManagerObject* const given = std::exchange(msInstance, nullptr)) {
        given->disconnectAll();
        std::exchange(given->mDevices, {}).clear();
        given->removeReference();
    }
    finalizeType();
}

KyDeviceManager* KyDeviceManagerObject::editManager() {
    if (msInstance != this)
        return nullptr;
    KyDeviceManager* const manager = KyDeviceManager::get();
    if (!mWatch.isConnected()) {
        mOpened.clear();
        std::exchange(mDevices, {}).clear();
        if (manager)
            listenTo(*manager);
    }
    return manager;
}

void KyDeviceManagerObject::listenTo(KyDeviceManager& manager) {
    mWatch = manager.deviceEndedSignal().connect(this, &KyDeviceManagerObject::onDeviceEnded);
    manager.devicesChangedSignal().connect(this, &KyDeviceManagerObject::onDevicesChanged);
}

void KyDeviceManagerObject::onDeviceEnded(const KyDevice* device) {
    std::erase_if(mOpened, [device](const Opened& opened) { return opened.device == device; });
    const auto found =
        std::ranges::find_if(mDevices, [&](const auto& object) { return object->editDevice() == device; });
    if (found == mDevices.end())
        return;
    const KyHolder<KyDeviceObject> ended = std::move(*found);
    mDevices.erase(found);
    ended->forgetDevice();
}

void KyDeviceManagerObject::onDevicesChanged() {
    const KyHolder<KyDeviceManagerObject> keep(this);
    notifyModified("Devices");
}

unsigned KyDeviceManagerObject::getNbDevices() {
    const KyDeviceManager* manager = editManager();
    return manager ? manager->getNbDevices() : 0;
}

KyDeviceObject* KyDeviceManagerObject::getDevice(unsigned index) {
    KyDeviceManager* manager = editManager();
    KyDevice* device = manager ? manager->editDevice(index) : nullptr;
    return device ? wrap(*device) : nullptr;
}

KyDeviceObject* KyDeviceManagerObject::findDevice(std::string_view name) {
    KyDeviceManager* manager = editManager();
    const unsigned number = getNbDevices();
    for (unsigned i = 0; i < number; ++i)
        if (KyDevice* device = manager->editDevice(i); device && device->getName() == name)
            return wrap(*device);
    return nullptr;
}

KyDeviceObject* KyDeviceManagerObject::wrap(KyDevice& device) {
    if (!editManager())
        return nullptr;
    const auto found =
        std::ranges::find_if(mDevices, [&](const auto& object) { return object->editDevice() == &device; });
    if (found != mDevices.end())
        return found->get();
    return mDevices.emplace_back(new KyDeviceObject(device, mWatch)).get();
}

unsigned KyDeviceManagerObject::getNbInfos() {
    const KyDeviceManager* manager = editManager();
    return manager ? static_cast<unsigned>(manager->getDeviceInfoVector().size()) : 0;
}

KyDeviceInfoObject* KyDeviceManagerObject::getInfo(unsigned index) {
    return index < getNbInfos() ? new KyDeviceInfoObject(editManager()->getDeviceInfoVector()[index]) : nullptr;
}

KyDeviceObject* KyDeviceManagerObject::openDevice(const std::string& driverName, const std::string& deviceName,
                                                  const std::string& parameters) {
    const auto parsed = KyDeviceParameters::parse(parameters);
    if (!parsed)
        KyException::create("KyDeviceManagerObject::openDevice(): malformed parameters: " + parameters);
    KyDeviceManager* manager = editManager();
    const KyDevice* device = parsed && manager ? manager->getDevice(driverName, deviceName, *parsed) : nullptr;
    if (!device)
        return nullptr;
    mOpened.push_back({driverName, device});
    return wrap(const_cast<KyDevice&>(*device));
}

bool KyDeviceManagerObject::releaseDevice(const std::string& driverName, KyObject* device) {
    const auto* object = kyCast<KyDeviceObject>(device);
    const KyDevice* released = object ? object->editDevice() : nullptr;
    KyDeviceManager* manager = editManager();
    const auto found = std::ranges::find(mOpened, Opened{driverName, released});
    if (!manager || found == mOpened.end())
        return false;
    mOpened.erase(found);
    return manager->releaseDevice(driverName, released);
}

void KyDeviceManagerObject::releaseAllDevices() {
    KyDeviceManager* const manager = editManager();
    // The end of one may end others.
    while (manager && !mOpened.empty()) {
        const Opened opened = std::move(mOpened.back());
        mOpened.pop_back();
        manager->releaseDevice(opened.driverName, opened.device);
    }
}

bool KyDeviceManagerObject::rescanDevices() {
    KyDeviceManager* manager = editManager();
    return manager && manager->rescanDevices();
}

void KyDeviceManagerObject::initializeType() {
    if (msType)
        return;
    using M = KyDeviceManagerObject;
    KyDeviceObject::initializeType();
    KyDeviceInfoObject::initializeType();
    msType = KyTypeBuilder<M>("KyDeviceManagerObject", KyObject::getType())
                 .container("Devices", &M::getNbDevices, &M::getDevice)
                 .attribute("NbDevices", &M::getNbDevices)
                 .attribute("NbInfos", &M::getNbInfos)
                 .method("getDevice", [](M& m, int index) { return m.getDevice(static_cast<unsigned>(index)); })
                 .method("findDevice", [](M& m, const std::string& name) { return m.findDevice(name); })
                 .method("getInfo", [](M& m, int index) { return m.getInfo(static_cast<unsigned>(index)); })
                 .method("openDevice", &M::openDevice)
                 .method("openDevice", [](M& m, const std::string& driver,
                                          const std::string& device) { return m.openDevice(driver, device); })
                 .method("releaseDevice", &M::releaseDevice)
                 .method("rescanDevices", &M::rescanDevices)
                 .build();
    KyCallSignatures::add("KyDeviceManagerObject",
                          {"findDevice(name)", "getDevice(index)", "getInfo(index)",
                           "openDevice(driverName, deviceName, parameters?)", "releaseDevice(driverName, device)"});
}

void KyDeviceManagerObject::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyDeviceManagerObject::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyDeviceManagerObject::getObjectType() const {
    return getType();
}

KyDeviceManagerObject* KyDeviceManagerObject::cast(KyObject* object) {
    return kyCast<KyDeviceManagerObject>(object);
}
