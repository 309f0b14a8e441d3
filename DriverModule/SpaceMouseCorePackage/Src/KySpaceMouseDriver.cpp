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

bool fits(const KySpaceMouseUnit& unit, const KyDeviceManager::KyDeviceParameterStruct& parameter) {
    if (parameter.name == "DeviceType")
        return parameter.value.getText() != "Mouse";
    if (parameter.name == "VendorID")
        return parameter.value.getInteger() == unit.vendorId;
    if (parameter.name == "ProductID")
        return (parameter.value.getInteger() & 0xFFFF) == unit.productId;
    return true;
}

/// Of several parameters of one name the last counts.
bool fits(const KySpaceMouseUnit& unit, const KyDeviceDriver::Parameters& parameters) {
    for (auto parameter = parameters.begin(); parameter != parameters.end(); ++parameter) {
        const auto isLater = [parameter](const auto& other) { return other.name == parameter->name; };
        if (std::none_of(parameter + 1, parameters.end(), isLater) && !fits(unit, *parameter))
            return false;
    }
    return true;
}

bool isNameOf(const std::string& name, const KyDevice& device) {
    return name.empty() || name == cDriverName || name == device.getName();
}

/// A unit without path is known by its model.
bool isUnitOf(const KyDeviceManager::KyDeviceInfoStruct& info, const KySpaceMouseUnit& unit) {
    if (!unit.path.empty())
        return info.path == unit.path;
    return info.vendorId == unit.vendorId && info.productId == unit.productId;
}

void occupyEntries(const KySpaceMouseUnit& unit, KyDevice& device) {
    for (KyDeviceManager::KyDeviceInfoStruct& info : KyDeviceManager::get()->editDeviceInfoVector())
        if (!info.device && isUnitOf(info, unit))
            info.device = &device;
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
    destroyAllDevices();
}

void KySpaceMouseDriver::destroyAllDevices() {
    KyDeviceDriver::destroyAllDevices();
    mUsedFinder = nullptr;
}

void KySpaceMouseDriver::start() {
    if (!KyDeviceManager::get())
        return;
    KyMainTaskManager::get().addTask(&mLook);
    lookAround();
}

const KyDevice* KySpaceMouseDriver::getDevice(const std::string& deviceName, const Parameters& parameters) {
    for (unsigned i = 0; i < getNbDevices(); ++i) {
        KySpaceMouseDevice* const device = editMouse(i);
        if (!device->isPresent() || !isNameOf(deviceName, *device) || !fits(device->getUnit(), parameters))
            continue;
        registerDevice(device, false);
        return device;
    }
    return nullptr;
}

bool KySpaceMouseDriver::look() {
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
        if (!mUsedFinder || mUsedFinder == finder.get())
            askFinder(*finder);
}

void KySpaceMouseDriver::askFinder(KySpaceMouseFinder& finder) {
    for (const KySpaceMouseUnit& unit : finder.find())
        if (!findOpen(unit.path))
            take(finder, unit);
    if (hasOpen())
        mUsedFinder = &finder;
}

void KySpaceMouseDriver::take(KySpaceMouseFinder& finder, const KySpaceMouseUnit& unit) {
    std::unique_ptr<KySpaceMouseSource> source = finder.open(unit);
    if (!source)
        return reportUnopened(unit);
    KySpaceMouseDevice* device = findAbandoned(unit);
    if (!device)
        device = makeDevice(unit);
    device->setSource(unit, std::move(source));
    occupyEntries(unit, *device);
}

KySpaceMouseDevice* KySpaceMouseDriver::makeDevice(const KySpaceMouseUnit& unit) {
    auto* const device = new KySpaceMouseDevice(unit, nullptr, getTurnSpeed());
    registerDevice(device, false);
    return device;
}

/// The first reference is the driver's own.
void KySpaceMouseDriver::dropAbandoned() {
    for (unsigned i = getNbDevices(); i-- > 0;)
        if (KySpaceMouseDevice* device = editMouse(i); !device->isPresent() && device->getNbReferences() <= 1)
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
