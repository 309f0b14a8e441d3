// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseDriver.h"

#include "KySpaceMouseDaemon_p.h"
#include "KySpaceMouseDevice_p.h"
#include "KySpaceMouseHid_p.h"

#include "KyException.h"
#include "KyFieldSet.h"
#include "KyMainTaskManager.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr const char* cDriverName = "SpaceMouse";
constexpr const char* cTurnSpeedField = "TurnSpeed";
constexpr double cDefaultTurnSpeed = 1.0;
constexpr std::chrono::seconds cLookPeriod{3};

KySpaceMouseDriver::Finders makeFinders() {
    KySpaceMouseDriver::Finders finders;
    finders.push_back(std::make_unique<KySpaceMouseDaemon>());
    finders.push_back(std::make_unique<KySpaceMouseHid>());
    return finders;
}

/// Lays the manager's own filter over a unit that it may not have in its list, or has there as taken.
bool fits(const KySpaceMouseUnit& unit, const KyDeviceDriver::Parameters& parameters) {
    KyDeviceManager& manager = *KyDeviceManager::get();
    KyDeviceManager::KyDeviceInfoVector infos(1);
    infos[0].vendorId = unit.vendorId;
    infos[0].productId = unit.productId;
    infos[0].deviceType = KyDeviceManager::eJoystick;
    manager.editDeviceInfoVector().swap(infos);
    manager.applyDeviceFilter(parameters);
    manager.editDeviceInfoVector().swap(infos);
    return infos[0].isSelected;
}

bool isNameOf(const std::string& name, const KyDevice& device) {
    return name.empty() || name == cDriverName || name == device.getName();
}

/// A unit without path is known by its model, where that is known.
bool isUnitOf(const KyDeviceManager::KyDeviceInfoStruct& info, const KySpaceMouseUnit& unit) {
    if (!unit.path.empty())
        return info.path == unit.path;
    return unit.vendorId != 0 && info.vendorId == unit.vendorId && info.productId == unit.productId;
}

/// Those that the device no longer stands for are free: its unit may have been plugged in elsewhere.
void occupyEntries(const KySpaceMouseUnit& unit, KyDevice& device) {
    KyDeviceManager* const manager = KyDeviceManager::get();
    if (!manager)
        return;
    for (KyDeviceManager::KyDeviceInfoStruct& info : manager->editDeviceInfoVector()) {
        if (!info.device && isUnitOf(info, unit))
            info.device = &device;
        else if (info.device == &device && !isUnitOf(info, unit))
            info.device = nullptr;
    }
}

bool isHeldByDriverOnly(const KyDevice& device) {
    return device.getNbReferences() <= 1;
}

} // namespace

KySpaceMouseDriver::KySpaceMouseDriver()
    : KySpaceMouseDriver(makeFinders()) {}

KySpaceMouseDriver::KySpaceMouseDriver(Finders finders)
    : mFinders(std::move(finders)) {
    setNameDeviceDriver(cDriverName);
    KyFieldSet fields;
    fields.set(cTurnSpeedField, KyField(cDefaultTurnSpeed));
    setCompatibleConfigurationFields(fields);
}

KySpaceMouseDriver::~KySpaceMouseDriver() {
    mChanges.disconnect();
    destroyAllDevices();
}

void KySpaceMouseDriver::destroyAllDevices() {
    mUsedFinder = nullptr;
    KyDeviceDriver::destroyAllDevices();
}

void KySpaceMouseDriver::start() {
    KyDeviceManager* const manager = KyDeviceManager::get();
    if (!manager)
        return;
    // Units enter the manager's list after the driver has found them.
    if (!mChanges.isConnected())
        mChanges = manager->devicesChangedSignal().connect([this] { claimEntries(); });
    KyMainTaskManager::get().addTask(&mLook);
    for (const auto& finder : mFinders)
        finder->start();
    lookAround();
}

void KySpaceMouseDriver::claimEntries() {
    for (unsigned i = 0; i < getNbDevices(); ++i)
        if (KySpaceMouseDevice* device = editMouse(i); device->isPresent())
            occupyEntries(device->getUnit(), *device);
}

const KyDevice* KySpaceMouseDriver::getDevice(const std::string& deviceName, const Parameters& parameters) {
    KySpaceMouseDevice* chosen = nullptr;
    for (unsigned i = 0; KyDeviceManager::get() && i < getNbDevices(); ++i) {
        KySpaceMouseDevice* const device = editMouse(i);
        if (!device->isPresent() || !isNameOf(deviceName, *device) || !fits(device->getUnit(), parameters))
            continue;
        if (!chosen || (!isHeldByDriverOnly(*chosen) && isHeldByDriverOnly(*device)))
            chosen = device;
    }
    registerDevice(chosen, false);
    return chosen;
}

bool KySpaceMouseDriver::look() {
    for (unsigned i = 0; i < getNbDevices(); ++i)
        if (KySpaceMouseDevice* device = editMouse(i); !device->isEnabled())
            device->checkUnit();
    dropAbandoned();
    if (Clock::now() < mNextLook)
        return false;
    lookAround();
    return true;
}

void KySpaceMouseDriver::lookAround() {
    mNextLook = Clock::now() + cLookPeriod;
    if (!KyDeviceManager::get())
        return;
    dropAbandoned();
    if (!hasOpen())
        mUsedFinder = nullptr;
    for (const auto& finder : mFinders)
        if (!mUsedFinder || mUsedFinder == finder.get() || findGuess())
            askFinder(*finder);
        else
            finder->forget();
    if (!mUsedFinder)
        tryGuesses();
}

void KySpaceMouseDriver::askFinder(KySpaceMouseFinder& finder) {
    for (const KySpaceMouseUnit& unit : finder.find())
        if (!findOpen(unit.path))
            take(finder, unit);
}

void KySpaceMouseDriver::tryGuesses() {
    for (const auto& finder : mFinders)
        if (const auto unit = finder->guess(); unit && !hasOpen())
            take(*finder, *unit);
}

/// Its device goes to the unit that was found, where a client holds it.
void KySpaceMouseDriver::giveGuessUp() {
    if (KySpaceMouseDevice* guess = findGuess()) {
        guess->detach();
        dropAbandoned();
    }
}

void KySpaceMouseDriver::take(KySpaceMouseFinder& finder, const KySpaceMouseUnit& unit) {
    std::unique_ptr<KySpaceMouseSource> source = finder.open(unit);
    if (!source)
        return reportUnopened(unit);
    giveGuessUp();
    mUsedFinder = &finder;
    if (KySpaceMouseDevice* device = findAbandoned(unit)) {
        device->setSource(unit, std::move(source));
        return occupyEntries(unit, *device);
    }
    auto device = std::make_unique<KySpaceMouseDevice>(unit, std::move(source), getTurnSpeed());
    occupyEntries(unit, *device);
    registerDevice(device.release(), false);
}

/// The first reference is the driver's own.
void KySpaceMouseDriver::dropAbandoned() {
    for (unsigned i = getNbDevices(); i-- > 0;)
        if (KySpaceMouseDevice* device = editMouse(i); device && !device->isPresent() && isHeldByDriverOnly(*device))
            releaseDevice(device);
}

KySpaceMouseDevice* KySpaceMouseDriver::editMouse(unsigned index) {
    return static_cast<KySpaceMouseDevice*>(editDevice(index));
}

KySpaceMouseDevice* KySpaceMouseDriver::findOpen(const std::string& path) {
    for (unsigned i = 0; i < getNbDevices(); ++i)
        if (KySpaceMouseDevice* device = editMouse(i); device->isPresent() && device->getUnit().path == path)
            return device;
    return nullptr;
}

KySpaceMouseDevice* KySpaceMouseDriver::findAbandoned(const KySpaceMouseUnit& unit) {
    for (unsigned i = 0; i < getNbDevices(); ++i)
        if (KySpaceMouseDevice* device = editMouse(i); !device->isPresent() && device->getUnit().isSameAs(unit))
            return device;
    return nullptr;
}

KySpaceMouseDevice* KySpaceMouseDriver::findGuess() {
    for (unsigned i = 0; i < getNbDevices(); ++i)
        if (KySpaceMouseDevice* device = editMouse(i); device->isPresent() && device->getUnit().isGuess)
            return device;
    return nullptr;
}

bool KySpaceMouseDriver::hasOpen() {
    for (unsigned i = 0; i < getNbDevices(); ++i)
        if (editMouse(i)->isPresent())
            return true;
    return false;
}

float KySpaceMouseDriver::getTurnSpeed() const {
    const KyField* const speed = getConfigurationFields().get(cTurnSpeedField);
    const double value = speed ? speed->toDouble() : cDefaultTurnSpeed;
    return static_cast<float>(std::isfinite(value) ? value : cDefaultTurnSpeed);
}

/// Once for each unit: it is asked for again every few seconds.
void KySpaceMouseDriver::reportUnopened(const KySpaceMouseUnit& unit) {
    if (std::ranges::find(mUnopenedPaths, unit.path) != mUnopenedPaths.end())
        return;
    mUnopenedPaths.push_back(unit.path);
    KyException::create("KySpaceMouseDriver::lookAround(): cannot open " + unit.path + " (" + unit.name + ").");
}
