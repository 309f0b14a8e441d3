// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyJoystickDriver.h"

#include "KyJoystickDevice_p.h"

#include "KySpaceMouseProducts_p.h"

#include "KyException.h"
#include "KyMainTaskManager.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace {

/// What fails for want of memory is reported and given up.
template <class Function>
void runGuarded(Function&& function) {
    try {
        function();
    } catch (const std::exception& error) {
        KyException::create(std::string("KyJoystickDriver: ") + error.what());
    }
}

/// 3D mice count as sticks to the system; another driver knows them better.
bool is3DMouse(int position) {
    return KySpaceMouseProducts::have(SDL_JoystickGetDeviceVendor(position), SDL_JoystickGetDeviceProduct(position));
}

bool areSame(const std::string& a, const std::string& b) {
    return !a.empty() && a == b;
}

/// How surely a free entry is that of the unit; 0 when it is not.
int rankEntry(const KyDeviceManager::KyDeviceInfoStruct& info, const KyJoystickIdentity& unit) {
    const bool isOther = !info.serial.empty() && !unit.serial.empty() && info.serial != unit.serial;
    if (info.device || !info.isPresent || isOther || info.deviceType != KyDeviceManager::eJoystick ||
        info.vendorId != unit.vendorId || info.productId != unit.productId)
        return 0;
    return 1 + areSame(info.serial, unit.serial) + 2 * areSame(info.path, unit.path);
}

/// Enters the device in the list of units, where its unit is in it. It leaves an entry whose unit is gone for one that
/// is there: the unit may have been plugged in elsewhere.
void claimEntry(KyJoystickDevice& device) {
    KyDeviceManager* const manager = KyDeviceManager::get();
    if (!manager)
        return;
    auto& infos = manager->editDeviceInfoVector();
    const auto held = std::ranges::find_if(infos, [&device](const auto& info) { return info.device == &device; });
    if (held != infos.end() && held->isPresent)
        return;
    const auto rank = [&device](const auto& info) { return rankEntry(info, device.getIdentity()); };
    const auto best = std::ranges::max_element(infos, {}, rank);
    if (best == infos.end() || rank(*best) == 0)
        return;
    if (held != infos.end())
        held->device = nullptr;
    best->device = &device;
    best->secondName = device.getName();
}

KyDeviceManager::KyDeviceInfoStruct describe(const KyJoystickDevice* device) {
    KyDeviceManager::KyDeviceInfoStruct info;
    info.name = device->getName();
    info.vendorId = device->getIdentity().vendorId;
    info.productId = device->getIdentity().productId;
    info.deviceType = KyDeviceManager::eJoystick;
    return info;
}

/// Lays the manager's own filter over units that it may not have in its list, or has there as taken.
std::vector<KyJoystickDevice*> filterUnits(KyDeviceManager& manager, const std::vector<KyJoystickDevice*>& devices,
                                           const KyDeviceDriver::Parameters& parameters) {
    KyDeviceManager::KyDeviceInfoVector infos(devices.size());
    std::ranges::transform(devices, infos.begin(), &describe);
    manager.editDeviceInfoVector().swap(infos);
    runGuarded([&] { manager.applyDeviceFilter(parameters); });
    manager.editDeviceInfoVector().swap(infos);
    std::vector<KyJoystickDevice*> fitting;
    for (std::size_t i = 0; i < devices.size(); ++i)
        if (infos[i].isSelected)
            fitting.push_back(devices[i]);
    return fitting;
}

bool isHeldByDriverOnly(const KyJoystickDevice* device) {
    return device->getNbReferences() <= 1;
}

} // namespace

bool KyJoystickDriver::Poll::execute() {
    runGuarded([this] { mDriver.update(); });
    return true;
}

KyJoystickDriver::KyJoystickDriver() {
    setNameDeviceDriver("Joystick");
}

KyJoystickDriver::~KyJoystickDriver() {
    mChanges.disconnect();
    runGuarded([this] {
        if (KyDeviceManager* manager = KyDeviceManager::get())
            manager->unregisterDeviceDriver(this);
        for (KyJoystickDevice* device : editJoysticks())
            device->detach();
        for (unsigned i = getNbDevices(); i-- > 0;)
            releaseDevice(editDevice(i));
        destroyAllDevices();
    });
}

void KyJoystickDriver::start() {
    runGuarded([this] {
        mNextInstance = 0;
        listen();
        if (open())
            update();
    });
}

const KyDevice* KyJoystickDriver::getDevice(const std::string& deviceName, const Parameters& parameters) {
    KyJoystickDevice* chosen = nullptr;
    runGuarded([&] {
        // Units whose device was given back too often get a new one.
        start();
        const std::vector<KyJoystickDevice*> fitting = select(deviceName, parameters);
        const auto free = std::ranges::find_if(fitting, &isHeldByDriverOnly);
        if (free != fitting.end())
            chosen = *free;
        else if (!fitting.empty())
            chosen = fitting.front();
        registerDevice(chosen, false);
    });
    return chosen;
}

/// Units enter the manager's list after the driver has found them.
void KyJoystickDriver::listen() {
    KyDeviceManager* const manager = KyDeviceManager::get();
    if (manager && !mChanges.isConnected())
        mChanges = manager->devicesChangedSignal().connect([this] { claimEntries(); });
}

void KyJoystickDriver::claimEntries() {
    for (KyJoystickDevice* device : editJoysticks())
        if (device->isAttached())
            claimEntry(*device);
}

bool KyJoystickDriver::open() {
    if (mSession)
        return true;
    auto session = std::make_unique<KySdlSession>();
    if (!session->isOpened()) {
        KyException::create("KyJoystickDriver::start(): " + session->getError());
        return false;
    }
    mSession = std::move(session);
    KyMainTaskManager::get().addTask(&mPoll);
    return true;
}

void KyJoystickDriver::update() {
    SDL_JoystickUpdate();
    releaseVanished();
    welcomeAttached();
}

void KyJoystickDriver::releaseVanished() {
    for (unsigned i = getNbDevices(); i-- > 0;) {
        auto* const device = static_cast<KyJoystickDevice*>(editDevice(i));
        if (!device || device->isAttached())
            continue;
        device->detach();
        if (isHeldByDriverOnly(device))
            releaseDevice(device);
    }
}

void KyJoystickDriver::welcomeAttached() {
    const SDL_JoystickID firstNew = mNextInstance;
    for (int position = 0; position < SDL_NumJoysticks(); ++position) {
        const SDL_JoystickID instance = SDL_JoystickGetDeviceInstanceID(position);
        if (instance < firstNew)
            continue;
        mNextInstance = std::max(mNextInstance, instance + 1);
        const auto isPlaying = [instance](const KyJoystickDevice* device) { return device->isPlaying(instance); };
        if (!is3DMouse(position) && std::ranges::none_of(editJoysticks(), isPlaying))
            welcome(position);
    }
}

void KyJoystickDriver::welcome(int position) {
    KyJoystickUnit unit(position);
    if (!unit) {
        KyException::create(std::string("KyJoystickDriver: cannot open a unit: ") + SDL_GetError());
        return;
    }
    if (revive(unit))
        return;
    auto device = std::make_unique<KyJoystickDevice>(std::move(unit));
    claimEntry(*device);
    registerDevice(device.get(), false);
    device.release();
}

bool KyJoystickDriver::revive(KyJoystickUnit& unit) {
    const KyJoystickIdentity identity(unit);
    for (KyJoystickDevice* device : editJoysticks()) {
        if (!device->attach(unit, identity))
            continue;
        claimEntry(*device);
        return true;
    }
    return false;
}

std::vector<KyJoystickDevice*> KyJoystickDriver::editJoysticks() {
    std::vector<KyJoystickDevice*> devices(getNbDevices());
    for (unsigned i = 0; i < getNbDevices(); ++i)
        devices[i] = static_cast<KyJoystickDevice*>(editDevice(i));
    return devices;
}

std::vector<KyJoystickDevice*> KyJoystickDriver::select(const std::string& deviceName, const Parameters& parameters) {
    KyDeviceManager* const manager = KyDeviceManager::get();
    std::vector<KyJoystickDevice*> devices = editJoysticks();
    std::erase_if(devices, [&deviceName](const KyJoystickDevice* device) {
        return !device->isAttached() || (!deviceName.empty() && deviceName != device->getName());
    });
    if (!manager)
        return {};
    manager->applyDeviceFilter(parameters);
    return filterUnits(*manager, devices, parameters);
}
