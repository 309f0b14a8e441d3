// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyObject.h"
#include "KyQuat.h"
#include "KyReferenceCounted.h"

#include <string>

class KyDeviceObject;

/// A device that a script makes and feeds: a simulation, a remote control, a test. It stands among the devices of the
/// manager, enabled, and leaves them with this object. Readings are those of a driver and stand until the next one, so
/// call rest() once a frame before those of the frame, or a press fires and a relative axis moves in every frame.
///
///     local remote = KyVirtualDevice.create("Remote", 2, 1, 0)
///     remote:setAxisName(0, "Turn") remote:setAxisMode(0, true)
///     ...
///     remote:rest()
///     remote:setAxisValue(0, 0.5)
///
/// An index out of range does nothing and gives false. Main thread.
class KYAPPLICATION_EXPORT KyVirtualDevice : public KyObject, public KyReferenceCounted {
public:
    /// Of each kind of channels.
    static constexpr int cLargestNumber = 64;

    static const KyType* getType();
    static KyVirtualDevice* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// Null and a report for numbers below 0 or above cLargestNumber, and without a device manager.
    static KyVirtualDevice* create(const std::string& name, int nbAxes, int nbButtons, int nbOrientations);
    KyVirtualDevice(const KyVirtualDevice&) = delete;
    KyVirtualDevice& operator=(const KyVirtualDevice&) = delete;
    /// The device leaves the manager; it ends unless somebody else holds it.
    ~KyVirtualDevice() override;

    /// Null when somebody ended the device.
    KyDeviceObject* getDevice() const;

    /// @{
    /// False when there is no such channel or the device is gone.
    bool setAxisName(int index, const std::string& name);
    bool setButtonName(int index, const std::string& name);
    bool setOrientationName(int index, const std::string& name);
    /// @}
    /// Positions or steps; all axes take steps at first.
    bool setAxisMode(int index, bool isAbsolute);
    /// See setAxisMode.
    bool setOrientationMode(int index, bool isAbsolute);
    /// The KyAccessMode of all channels; false for a number that is none.
    bool setAccessMode(int mode);

    /// A position or a step.
    bool setAxisValue(int index, float value);
    /// 0 to 255, others are refused.
    bool setButtonValue(int index, int value);
    /// An orientation or a turn.
    bool setOrientationValue(int index, const KyQuat<float>& value);
    /// No step and no turn, and every button as it is; false when the device was ended.
    bool rest();

private:
    class Device;

    explicit KyVirtualDevice(Device& device);
    bool hasAxis(int index) const;
    bool hasButton(int index) const;
    bool hasOrientation(int index) const;

    /// Null when somebody ended it.
    Device* mDevice;

    static const KyType* msType;
};
