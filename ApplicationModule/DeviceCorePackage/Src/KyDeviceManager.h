// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyCompositeTask.h"
#include "KyField.h"
#include "KySignal.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class KyDevice;
class KyDeviceDriver;

/// The registry of input devices: the HID units found on the machine, the drivers that host and modules registered, and
/// as child tasks the devices that the drivers made, which therefore run once a frame. Owns neither drivers nor
/// devices; both may come and go at any time, also while the devices run.
///
/// Made with the library and reached by get(). Used from one thread, that of the main task manager.
///
/// ```
/// if (KyDeviceManager* manager = KyDeviceManager::get()) {
///     manager->initialize(); // once the drivers have registered
///     const KyDevice* pad = manager->getDevice("Joystick", "Pad", {{"DeviceType", "Joystick"}, {"VendorID", 0x046D}});
///     ...
///     manager->releaseDevice("Joystick", pad);
/// }
/// ```
class KYAPPLICATION_EXPORT KyDeviceManager : public KyCompositeTask {
public:
    /// What a unit says that it is.
    enum DeviceType : std::int32_t { eJoystick = 0, eMouse = 1, eKeyboard = 2, eOther = 3, eNbDeviceTypes };

    /// One HID unit, free for a driver to build a device on while `device` is null.
    struct KyDeviceInfoStruct {
        /// Manufacturer, one blank, product.
        std::string name;
        /// The maker's number at the USB; 0 when it is not known.
        std::uint16_t vendorId = 0;
        /// The product's number at the maker; 0 when it is not known.
        std::uint16_t productId = 0;
        /// A number of DeviceType.
        std::int32_t deviceType = eOther;
        /// What the last applyDeviceFilter found.
        bool isSelected = false;
        /// For drivers.
        std::string secondName;
        /// Position among the joysticks, 3D mice not counted; cNoJoystickIndex for all that are none.
        std::uint32_t joystickIndex = cNoJoystickIndex;
        /// Set by the driver that builds on the entry, freed when the device ends.
        KyDevice* device = nullptr;
        /// Which unit it is: what opens it, and its serial number where it has one.
        std::string path;
        /// The unit's serial number; empty when it tells none.
        std::string serial;
        /// False once rescanDevices found an entry in use without its unit.
        bool isPresent = true;
    };
    /// All units, in the order in which they were found.
    using KyDeviceInfoVector = std::vector<KyDeviceInfoStruct>;

    /// What a client asks of the unit: "DeviceType" ("Joystick" or "Mouse"), "VendorID", "ProductID" (integers), or
    /// whatever else a driver knows.
    struct KyDeviceParameterStruct {
        /// What is asked for.
        std::string name;
        /// The value wanted.
        KyField value;
    };
    /// Several demands, which must all hold.
    using KyDeviceParameterVector = std::vector<KyDeviceParameterStruct>;

    /// The position of what is no joystick.
    static constexpr std::uint32_t cNoJoystickIndex = 0xFFFFFFFFu;
    /// @{
    /// Numbers at the USB of the 3D mice.
    static const std::uint16_t cLogitechVendorID;
    static const std::uint16_t c3DconnexionVendorID;
    static const std::uint16_t cSpaceNavigatorProductID;
    static const std::uint16_t cSpaceNavigatorForNotebooksProductID;
    static const std::uint16_t cSpaceMouseWirelessProductID;
    /// @}

    KyDeviceManager(const KyDeviceManager&) = delete;
    KyDeviceManager& operator=(const KyDeviceManager&) = delete;
    /// Devices stay with their drivers, without parent.
    ~KyDeviceManager() override;

    /// Null before initializeClass and after finalizeClass.
    static KyDeviceManager* get() { return msInstance; }
    /// Makes the instance, with the units of the machine, and puts it into the main task manager; nothing when there is
    /// one.
    static void initializeSingleton();
    static void finalizeSingleton();
    /// As finalizeSingleton.
    static void destroy();
    static void initializeClass();
    static void finalizeClass();

    /// Starts the registered drivers anew, in order: each ends its devices first. Drivers that register meanwhile are
    /// not started.
    void initialize();

    /// Not owned. Null and drivers that are registered already are ignored.
    void registerDeviceDriver(KyDeviceDriver* driver);
    /// Its devices stay. Ignored when it is not registered. A driver that ends leaves by itself.
    void unregisterDeviceDriver(KyDeviceDriver* driver);
    /// Those registered, in their order.
    unsigned getNbDeviceDrivers() const { return static_cast<unsigned>(mDrivers.size()); }
    /// Null when out of range.
    KyDeviceDriver* editDeviceDriver(unsigned index);
    /// The first of exactly that name, null when there is none.
    KyDeviceDriver* getDeviceDriverByName(std::string_view name) const;

    /// The child tasks; one that is no device reads as null.
    unsigned getNbDevices() const { return getNbTasks(); }
    /// Null when out of range.
    const KyDevice* getDevice(unsigned index) const;
    KyDevice* editDevice(unsigned index);
    /// Asks the driver for a device; null when there is no such driver or it has no such device. To be given back by
    /// releaseDevice.
    const KyDevice* getDevice(std::string_view driverName, const std::string& deviceName,
                              const KyDeviceParameterVector& parameters = {});
    /// False when there is no such driver. Devices that the driver does not have are ignored, also those that ended.
    bool releaseDevice(std::string_view driverName, const KyDevice* device);

    /// Adds the units found now to the list, also those that are in it already: see rescanDevices.
    void detectDevices();
    /// Brings the list up to date with the units found now, each once: new ones are added, those gone are removed, or
    /// marked as not present while a device is built on them. A unit is known by its path, then by its serial number;
    /// entries with neither are left alone. True when anything changed.
    bool rescanDevices();
    /// The units as they were at the last scan.
    const KyDeviceInfoVector& getDeviceInfoVector() const { return mDeviceInfos; }
    /// For drivers, which set `device` and `secondName`, and may add units that are found by other means.
    KyDeviceInfoVector& editDeviceInfoVector() { return mDeviceInfos; }
    /// The entry on which the device is built, null when there is none. Holds until entries are added or removed.
    const KyDeviceInfoStruct* getDeviceInfo(const KyDevice* device) const;
    /// Selects the free units that are present and fit: a later parameter counts before an earlier one of its name,
    /// and unknown names and types are ignored.
    void applyDeviceFilter(const KyDeviceParameterVector& parameters);

    /// A device was registered or left, which is done by then, detectDevices ran, or a rescan found a change. Listeners
    /// may open and end devices and unregister drivers, but not end a driver, which may be at work on its devices.
    KySignal<>& devicesChangedSignal() { return mDevicesChanged; }
    /// A device ends, whoever ends it. It is half gone: its address is all that can be used.
    KySignal<const KyDevice*>& deviceEndedSignal() { return mDeviceEnded; }

private:
    friend class KyDevice;
    friend class KyDeviceDriver;

    KyDeviceManager();

    void internalDetectDevices();
    bool isRegistered(const KyDeviceDriver* driver) const;
    void freeDeviceInfos(const KyDevice* device);
    /// Out of the children and the entries; true when it was a child.
    bool withdrawDevice(KyDevice* device);
    /// A device's last call: nothing here or in its driver points at it afterwards.
    static void forgetDevice(KyDevice& device);

    static KyDeviceManager* msInstance;
    static bool msIsClassInitialized;

    KyDeviceInfoVector mDeviceInfos;
    std::vector<KyDeviceDriver*> mDrivers;
    KySignal<> mDevicesChanged{"devicesChangedSignal"};
    KySignal<const KyDevice*> mDeviceEnded{"deviceEndedSignal"};
};
