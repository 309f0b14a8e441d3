// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeviceManager.h"

#include "KyDevice.h"
#include "KyDeviceDriver.h"
#include "KyDeviceInfoMerge_p.h"
#include "KyHidDetection.h"

#include "KyMainTaskManager.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>

const std::uint16_t KyDeviceManager::cLogitechVendorID = 0x046D;
const std::uint16_t KyDeviceManager::c3DconnexionVendorID = 0x256F;
const std::uint16_t KyDeviceManager::cSpaceNavigatorProductID = 0xC626;
const std::uint16_t KyDeviceManager::cSpaceNavigatorForNotebooksProductID = 0xC628;
const std::uint16_t KyDeviceManager::cSpaceMouseWirelessProductID = 0xC62F;

KyDeviceManager* KyDeviceManager::msInstance = nullptr;
bool KyDeviceManager::msIsClassInitialized = false;

namespace {

constexpr int cTaskPosition = -1;
constexpr int cTaskPhase = 2;

constexpr std::uint16_t cGenericDesktopPage = 1;

struct UsageType {
    std::uint16_t usage;
    KyDeviceManager::DeviceType type;
};
/// Of the generic desktop page: pointer, mouse, joystick, game pad, keyboard, multi-axis controller.
constexpr std::array<UsageType, 6> cUsageTypes{{{1, KyDeviceManager::eMouse},
                                                {2, KyDeviceManager::eMouse},
                                                {4, KyDeviceManager::eJoystick},
                                                {5, KyDeviceManager::eJoystick},
                                                {6, KyDeviceManager::eKeyboard},
                                                {8, KyDeviceManager::eJoystick}}};

struct NamedType {
    std::string_view name;
    KyDeviceManager::DeviceType type;
};
/// What a filter can ask for.
constexpr std::array<NamedType, 2> cNamedTypes{
    {{"Joystick", KyDeviceManager::eJoystick}, {"Mouse", KyDeviceManager::eMouse}}};

constexpr std::int64_t cProductMask = 0xFFFF;

KyDeviceManager::DeviceType getDeviceType(const KyHidRecord& record) {
    const auto* found = std::ranges::find(cUsageTypes, record.usage, &UsageType::usage);
    const bool isKnown = record.usagePage == cGenericDesktopPage && found != cUsageTypes.end();
    return isKnown ? found->type : KyDeviceManager::eOther;
}

bool is3DMouse(const KyHidRecord& record) {
    const std::array vendors{KyDeviceManager::cLogitechVendorID, KyDeviceManager::c3DconnexionVendorID};
    const std::array products{KyDeviceManager::cSpaceNavigatorProductID,
                              KyDeviceManager::cSpaceNavigatorForNotebooksProductID,
                              KyDeviceManager::cSpaceMouseWirelessProductID};
    return std::ranges::count(vendors, record.vendorId) && std::ranges::count(products, record.productId);
}

KyDeviceManager::KyDeviceInfoVector findUnits() {
    KyDeviceManager::KyDeviceInfoVector infos;
    std::uint32_t nbJoysticks = 0;
    for (const KyHidRecord& record : KyHidDetection::detect()) {
        KyDeviceManager::KyDeviceInfoStruct& info = infos.emplace_back();
        info.name = record.manufacturer + " " + record.product;
        info.vendorId = record.vendorId;
        info.productId = record.productId;
        info.deviceType = getDeviceType(record);
        if (info.deviceType == KyDeviceManager::eJoystick && !is3DMouse(record))
            info.joystickIndex = nbJoysticks++;
        info.path = record.path;
        info.serial = record.serial;
    }
    return infos;
}

/// What parameters ask of a unit; nothing asked fits all.
struct UnitFilter {
    std::optional<std::int32_t> type;
    std::optional<std::int64_t> vendor;
    std::optional<std::int64_t> product;

    void add(const KyDeviceManager::KyDeviceParameterStruct& parameter) {
        if (parameter.name == "DeviceType")
            addType(parameter.value.getText());
        else if (parameter.name == "VendorID")
            vendor = parameter.value.getInteger();
        else if (parameter.name == "ProductID")
            product = parameter.value.getInteger() & cProductMask;
    }
    void addType(std::string_view name) {
        const auto* found = std::ranges::find(cNamedTypes, name, &NamedType::name);
        if (found != cNamedTypes.end())
            type = found->type;
    }
    bool fits(const KyDeviceManager::KyDeviceInfoStruct& info) const {
        return type.value_or(info.deviceType) == info.deviceType && vendor.value_or(info.vendorId) == info.vendorId &&
               product.value_or(info.productId) == info.productId;
    }
};

} // namespace

KyDeviceManager::KyDeviceManager() {
    internalDetectDevices();
}

KyDeviceManager::~KyDeviceManager() {
    KyMainTaskManager::get().removeTask(this);
}

void KyDeviceManager::initializeSingleton() {
    if (msInstance)
        return;
    msInstance = new KyDeviceManager;
    msInstance->setName("KyDeviceManagerTask");
    KyMainTaskManager::get().addTask(msInstance, cTaskPosition, cTaskPhase);
}

void KyDeviceManager::finalizeSingleton() {
    destroy();
}

void KyDeviceManager::destroy() {
    // Nobody whom its end makes act finds it half gone.
    const std::unique_ptr<KyDeviceManager> ended(std::exchange(msInstance, nullptr));
}

void KyDeviceManager::initializeClass() {
    if (!std::exchange(msIsClassInitialized, true))
        initializeSingleton();
}

void KyDeviceManager::finalizeClass() {
    if (std::exchange(msIsClassInitialized, false))
        destroy();
}

void KyDeviceManager::initialize() {
    const auto isLeft = [this](const KyDeviceDriver* driver) { return msInstance == this && isRegistered(driver); };
    for (KyDeviceDriver* const driver : std::vector(mDrivers)) {
        if (isLeft(driver))
            driver->destroyAllDevices();
        if (isLeft(driver))
            driver->start();
    }
}

void KyDeviceManager::registerDeviceDriver(KyDeviceDriver* driver) {
    if (driver && !isRegistered(driver))
        mDrivers.push_back(driver);
}

void KyDeviceManager::unregisterDeviceDriver(KyDeviceDriver* driver) {
    std::erase(mDrivers, driver);
}

KyDeviceDriver* KyDeviceManager::editDeviceDriver(unsigned index) {
    return index < mDrivers.size() ? mDrivers[index] : nullptr;
}

KyDeviceDriver* KyDeviceManager::getDeviceDriverByName(std::string_view name) const {
    const auto found = std::ranges::find(mDrivers, name, &KyDeviceDriver::getNameDeviceDriver);
    return found != mDrivers.end() ? *found : nullptr;
}

const KyDevice* KyDeviceManager::getDevice(unsigned index) const {
    return dynamic_cast<const KyDevice*>(getTask(index));
}

KyDevice* KyDeviceManager::editDevice(unsigned index) {
    return dynamic_cast<KyDevice*>(editTask(index));
}

const KyDevice* KyDeviceManager::getDevice(std::string_view driverName, const std::string& deviceName,
                                           const KyDeviceParameterVector& parameters) {
    KyDeviceDriver* const driver = getDeviceDriverByName(driverName);
    return driver ? driver->getDevice(deviceName, parameters) : nullptr;
}

bool KyDeviceManager::releaseDevice(std::string_view driverName, const KyDevice* device) {
    KyDeviceDriver* const driver = getDeviceDriverByName(driverName);
    if (driver)
        driver->releaseDevice(device);
    return driver != nullptr;
}

void KyDeviceManager::detectDevices() {
    internalDetectDevices();
    mDevicesChanged.send();
}

bool KyDeviceManager::rescanDevices() {
    const bool hasChanged = KyDeviceInfoMerge(mDeviceInfos, findUnits()).run();
    if (hasChanged)
        mDevicesChanged.send();
    return hasChanged;
}

const KyDeviceManager::KyDeviceInfoStruct* KyDeviceManager::getDeviceInfo(const KyDevice* device) const {
    const auto found = std::ranges::find(mDeviceInfos, device, &KyDeviceInfoStruct::device);
    return device && found != mDeviceInfos.end() ? &*found : nullptr;
}

void KyDeviceManager::applyDeviceFilter(const KyDeviceParameterVector& parameters) {
    UnitFilter filter;
    for (const KyDeviceParameterStruct& parameter : parameters)
        filter.add(parameter);
    for (KyDeviceInfoStruct& info : mDeviceInfos)
        info.isSelected = info.isPresent && !info.device && filter.fits(info);
}

void KyDeviceManager::internalDetectDevices() {
    std::ranges::move(findUnits(), std::back_inserter(mDeviceInfos));
}

bool KyDeviceManager::isRegistered(const KyDeviceDriver* driver) const {
    return std::ranges::find(mDrivers, driver) != mDrivers.end();
}

void KyDeviceManager::freeDeviceInfos(const KyDevice* device) {
    for (KyDeviceInfoStruct& info : mDeviceInfos)
        if (info.device == device)
            info.device = nullptr;
}

bool KyDeviceManager::withdrawDevice(KyDevice* device) {
    freeDeviceInfos(device);
    return removeTask(device);
}

void KyDeviceManager::forgetDevice(KyDevice& device) {
    KyDeviceDriver* const driver = std::exchange(device.mDriver, nullptr);
    if (driver)
        driver->forgetDevice(&device);
    if (!msInstance)
        return;
    const bool wasChild = msInstance->withdrawDevice(&device);
    msInstance->mDeviceEnded.send(&device);
    if (msInstance && (driver || wasChild))
        msInstance->mDevicesChanged.send();
}
