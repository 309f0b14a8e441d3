// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHidDetection.h"

// Before the headers that need its types.
#include <windows.h>

#include <hidsdi.h>
#include <setupapi.h>

#include <array>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

/// Loaded once and kept.
HMODULE getHidLibrary() {
    static const HMODULE library = LoadLibraryA("HID.DLL");
    return library;
}

/// Throws while the library is loaded, which ends the process: without HID.DLL there is no Windows to run on.
template <class Function>
Function resolve(const char* name) {
    const FARPROC address = GetProcAddress(getHidLibrary(), name);
    if (!address)
        throw std::runtime_error(std::string(__FILE__) + ": GetProcAddress failed!");
    return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
}

const auto gFreePreparsedData = resolve<decltype(&HidD_FreePreparsedData)>("HidD_FreePreparsedData");
const auto gGetAttributes = resolve<decltype(&HidD_GetAttributes)>("HidD_GetAttributes");
const auto gGetHidGuid = resolve<decltype(&HidD_GetHidGuid)>("HidD_GetHidGuid");
const auto gGetManufacturerString = resolve<decltype(&HidD_GetManufacturerString)>("HidD_GetManufacturerString");
const auto gGetPreparsedData = resolve<decltype(&HidD_GetPreparsedData)>("HidD_GetPreparsedData");
const auto gGetProductString = resolve<decltype(&HidD_GetProductString)>("HidD_GetProductString");
const auto gGetSerialNumberString = resolve<decltype(&HidD_GetSerialNumberString)>("HidD_GetSerialNumberString");
const auto gGetCaps = resolve<decltype(&HidP_GetCaps)>("HidP_GetCaps");

/// The present HID interfaces.
class InterfaceSet {
public:
    explicit InterfaceSet(const GUID& interfaceClass)
        : mClass(interfaceClass)
        , mSet(SetupDiGetClassDevsA(&mClass, nullptr, nullptr, DIGCF_PRESENT | DIGCF_DEVICEINTERFACE)) {}
    InterfaceSet(const InterfaceSet&) = delete;
    InterfaceSet& operator=(const InterfaceSet&) = delete;
    ~InterfaceSet() {
        if (isValid())
            SetupDiDestroyDeviceInfoList(mSet);
    }

    bool isValid() const { return mSet != INVALID_HANDLE_VALUE; }
    /// False after the last one.
    bool get(DWORD index, SP_DEVICE_INTERFACE_DATA& entry) const {
        entry = {};
        entry.cbSize = sizeof(entry);
        return SetupDiEnumDeviceInterfaces(mSet, nullptr, &mClass, index, &entry) != FALSE;
    }
    /// Empty when it cannot be told.
    std::string getPath(SP_DEVICE_INTERFACE_DATA& entry) const {
        union {
            SP_DEVICE_INTERFACE_DETAIL_DATA_A data;
            char bytes[256];
        } detail{};
        detail.data.cbSize = sizeof(detail.data);
        const bool isTold =
            SetupDiGetDeviceInterfaceDetailA(mSet, &entry, &detail.data, sizeof(detail), nullptr, nullptr) != FALSE;
        return isTold ? std::string(detail.data.DevicePath) : std::string();
    }

private:
    GUID mClass;
    HDEVINFO mSet;
};

class Unit {
public:
    explicit Unit(const std::string& path)
        : mHandle(open(path, GENERIC_READ | GENERIC_WRITE)) {
        // Windows keeps mice and keyboards to itself; without any access they can still be asked what they are.
        if (!isOpen())
            mHandle = open(path, 0);
    }
    Unit(const Unit&) = delete;
    Unit& operator=(const Unit&) = delete;
    ~Unit() {
        if (isOpen())
            CloseHandle(mHandle);
    }

    bool isOpen() const { return mHandle != INVALID_HANDLE_VALUE; }

    bool readAttributes(KyHidRecord& record) const {
        HIDD_ATTRIBUTES attributes{};
        attributes.Size = sizeof(attributes);
        if (!gGetAttributes(mHandle, &attributes))
            return false;
        record.vendorId = attributes.VendorID;
        record.productId = attributes.ProductID;
        return true;
    }

    void readUsage(KyHidRecord& record) const {
        PHIDP_PREPARSED_DATA data = nullptr;
        if (!gGetPreparsedData(mHandle, &data) || !data)
            return;
        HIDP_CAPS caps{};
        if (gGetCaps(data, &caps) == HIDP_STATUS_SUCCESS) {
            record.usagePage = caps.UsagePage;
            record.usage = caps.Usage;
        }
        gFreePreparsedData(data);
    }

    /// Empty when the unit has no such text.
    template <class Function>
    std::string readText(Function function) const {
        std::array<wchar_t, 256 / sizeof(wchar_t)> buffer{};
        const bool isTold = function(mHandle, buffer.data(), sizeof(buffer));
        return isTold ? KyHidDetection::narrow(buffer.data()) : std::string();
    }

private:
    static HANDLE open(const std::string& path, DWORD access) {
        return CreateFileA(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                           nullptr);
    }

    HANDLE mHandle;
};

std::optional<KyHidRecord> readUnit(const std::string& path) {
    KyHidRecord record;
    const Unit unit(path);
    if (!unit.isOpen() || !unit.readAttributes(record))
        return {};
    unit.readUsage(record);
    record.manufacturer = unit.readText(gGetManufacturerString);
    record.product = unit.readText(gGetProductString);
    record.serial = unit.readText(gGetSerialNumberString);
    record.path = path;
    return record;
}

} // namespace

std::vector<KyHidRecord> KyHidDetection::detectOnBus() {
    std::vector<KyHidRecord> records;
    GUID hidClass{};
    gGetHidGuid(&hidClass);
    const InterfaceSet interfaces(hidClass);
    SP_DEVICE_INTERFACE_DATA entry{};
    for (DWORD i = 0; interfaces.isValid() && interfaces.get(i, entry); ++i) {
        const std::string path = interfaces.getPath(entry);
        if (path.empty())
            continue;
        if (std::optional<KyHidRecord> record = readUnit(path))
            records.push_back(std::move(*record));
    }
    return records;
}
