// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDeviceInfoObject.h"
#include "KyDeviceObject.h"

#include "KyHolder.h"

#include <string>
#include <string_view>
#include <vector>

/// The registry of input devices as scripts see it; the host publishes it as the global `devices`. It tells "Devices"
/// as modified when a device has come or gone or other units were found. Without a device manager it has none. Main
/// thread.
///
///     local pad = devices:openDevice("Joystick", "pad", "DeviceType=Joystick;VendorID=0x046D")
///     if pad then ... devices:releaseDevice("Joystick", pad) end
///     for i = 0, #devices.Devices - 1 do print(devices.Devices[i].Name) end
class KYAPPLICATION_EXPORT KyDeviceManagerObject : public KyObject, public KyReferenceCounted, public KyHasSlots {
public:
    static const KyType* getType();
    static KyDeviceManagerObject* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    static void initializeClass() { initializeType(); }
    /// Gives the one object up: it and the objects of devices that scripts still hold are empty from then on.
    static void finalizeClass();
    const KyType* getObjectType() const override;

    /// Made when it is first asked for.
    static KyDeviceManagerObject* get();

    /// Children of the manager that are no devices count, and read as null.
    unsigned getNbDevices();
    /// Null when out of range.
    KyDeviceObject* getDevice(unsigned index);
    /// The first of exactly that name, null when there is none.
    KyDeviceObject* findDevice(std::string_view name);
    /// The object of a device, the same one as long as it lives; null without a device manager. The device must be
    /// whole.
    KyDeviceObject* wrap(KyDevice& device);

    /// The units as they were at the last scan.
    unsigned getNbInfos();
    /// A unit as it is now; null when out of range.
    KyDeviceInfoObject* getInfo(unsigned index);

    /// Asks a driver for a device, see KyDeviceManager::getDevice. The parameters are "Name=value" pairs between
    /// semicolons; decimal and 0x numbers are integers, all other values texts. Null when the driver has none, and with
    /// a report when they are malformed or an identity, "VendorID" or "ProductID", is no integer.
    KyDeviceObject* openDevice(const std::string& driverName, const std::string& deviceName,
                               const std::string& parameters = {});
    /// Gives back what openDevice gave, once for each time; false for what it did not give, and when the device is
    /// gone.
    bool releaseDevice(const std::string& driverName, KyObject* device);
    /// Gives back all that is still open: for whoever ends the scripts that opened it.
    void releaseAllDevices();
    /// True when units have come or gone.
    bool rescanDevices();

private:
    KyDeviceManagerObject() = default;

    /// Null when there is none or this object was given up. Listens to a new one.
    KyDeviceManager* editManager();
    void listenTo(KyDeviceManager& manager);
    void onDeviceEnded(const KyDevice* device);
    void onDevicesChanged();

    struct Opened {
        std::string driverName;
        const KyDevice* device;

        bool operator==(const Opened&) const = default;
    };

    std::vector<KyHolder<KyDeviceObject>> mDevices;
    /// An entry for each time.
    std::vector<Opened> mOpened;
    KyConnection mWatch;

    static KyDeviceManagerObject* msInstance;
    static const KyType* msType;
};
