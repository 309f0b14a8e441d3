// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyDeviceManager.h"

#include "KyFieldSet.h"

#include <string>
#include <vector>

/// Makes and feeds the devices of one kind of hardware. A driver belongs to its module, which registers it with the
/// manager, unregisters and ends it.
///
/// A device lives from the first registerDevice to the release of its last reference. Registering it is the last step:
/// its channels stand, what it reads from is open, and the entries of its unit are marked with it, since those who hear
/// of it use it at once, and may end it. In every frame the driver, or the device in its own execute(), pushes what was
/// read: also a step of 0 for a relative axis at rest and the state of every button, since composites act on the last
/// reading. Used from the manager's thread; nothing may throw.
///
/// ```
/// class WheelDriver : public KyDeviceDriver {
/// public:
///     WheelDriver() { setNameDeviceDriver("Wheel"); }
///     using KyDeviceDriver::getDevice;
///     void start() override { open(); }
///     const KyDevice* getDevice(const std::string&, const Parameters&) override {
///         if (getNbDevices() == 0)
///             mWheel = makeWheel(); // whole, with its entry marked
///         registerDevice(mWheel, false);
///         return editDevice(0);
///     }
/// };
/// ```
class KYAPPLICATION_EXPORT KyDeviceDriver {
public:
    /// What a client asks of a unit.
    using Parameters = KyDeviceManager::KyDeviceParameterVector;

    KyDeviceDriver() = default;
    KyDeviceDriver(const KyDeviceDriver&) = delete;
    KyDeviceDriver& operator=(const KyDeviceDriver&) = delete;

    /// Deletes the driver.
    virtual void destroy();
    /// Opens what is there; called by KyDeviceManager::initialize, possibly again, after the devices were ended.
    virtual void start() = 0;
    /// A device for a client, registered once more for each call; null when none fits. See KyDeviceManager::getDevice.
    virtual const KyDevice* getDevice(const std::string& deviceName, const Parameters& parameters) = 0;
    /// Null when out of range.
    virtual KyDevice* editDevice(unsigned index);
    /// Gives one reference back; with the last one the device ends. Ignored for null and devices of others.
    virtual void releaseDevice(KyDevice* device);
    /// Unregisters, and ends the devices that are left.
    virtual ~KyDeviceDriver();

    void releaseDevice(const KyDevice* device) { releaseDevice(const_cast<KyDevice*>(device)); }
    /// What users and log files call the driver.
    const std::string& getNameDeviceDriver() const { return mName; }
    /// To be set by the driver's constructor.
    void setNameDeviceDriver(const std::string& name) { mName = name; }
    /// What the driver can be told, with its defaults.
    const KyFieldSet& getConfigurationFields() const { return mCompatibleConfigurationFields; }
    /// Which fields of a configuration the driver knows.
    void setCompatibleConfigurationFields(const KyFieldSet& fields) { mCompatibleConfigurationFields = fields; }
    /// Devices that the driver has made and that still live.
    unsigned getNbDevices() const { return static_cast<unsigned>(mDevices.size()); }
    /// Null when out of range.
    const KyDevice* getDevice(unsigned index) const;

protected:
    /// Takes a reference. A new device enters the list and becomes the manager's last child, and is told of; it runs by
    /// itself unless `isRunByDriver`. Null is ignored; a device of another driver, and any once the driver ends, is
    /// reported and left as it is.
    void registerDevice(KyDevice* device, bool isRunByDriver);
    /// Gives a reference back, but not the last one: then the device leaves list and manager, its entries are free, and
    /// true tells the caller to end it. False also when it is not in the list.
    bool unregisterDevice(KyDevice* device);
    /// Ends every device, whoever else holds it; those registered meanwhile stay. Where the manager is gone they are
    /// only dropped from the list. The end of a device may end the driver: overriders touch nothing of it afterwards.
    virtual void destroyAllDevices();

private:
    friend class KyDeviceManager;

    bool hasDevice(const KyDevice* device) const;
    bool withdraw(KyDevice* device);
    void endDevices();
    void forgetDevice(const KyDevice* device);

    KyFieldSet mCompatibleConfigurationFields;
    std::string mName;
    std::vector<KyDevice*> mDevices;
    /// Those that destroyAllDevices has still to end.
    std::vector<KyDevice*> mEndingDevices;
    bool mIsEnding = false;
    /// Of the destroyAllDevices under way, which outlives the driver.
    bool* mEndedFlag = nullptr;
};
