// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDeviceAxisChannel.h"
#include "KyDeviceButtonChannel.h"
#include "KyDeviceOrientationChannel.h"

#include "KyReferenceCounted.h"
#include "KyTask.h"

#include <cstdint>
#include <string>
#include <vector>

class KyDeviceDriver;
class KyDeviceManager;

/// An input device: a joystick, a 3D mouse, a tracker, or one that exists in the program only. It owns its channels. A
/// driver makes it, sizes and names its channels, registers it and gives it readings, mostly from execute(), which the
/// device manager runs once a frame. Whoever uses a device holds a reference; the last one ends it. At its end it
/// leaves its driver, the manager and the list of what is attached. Main thread.
///
///     class Wheel : public KyDevice {
///     public:
///         Wheel() {
///             setName("Wheel");
///             setNbAxis(1);
///             setAxisName(0, "Turn");
///             editAxis(0).setAbsolute(true);
///             setEnabled(true);   // the channels too
///         }
///         bool execute() override {
///             setAxisValue(0, readHardware());
///             return true;
///         }
///     };
///
/// In every cycle a driver reports every button, a step of 0 for a relative axis at rest and the identity for a
/// relative orientation at rest: a reading stands until the next one.
class KYAPPLICATION_EXPORT KyDevice : public KyTask, public KyReferenceCounted {
public:
    KyDevice() = default;
    /// A copy has the same channels and name, no reference, and stands in no list.
    KyDevice(const KyDevice& other);
    /// Takes over the channels and the name; what holds and runs this device stays.
    KyDevice& operator=(const KyDevice& other);
    ~KyDevice() override;

    /// What users read, "Unnamed" at first; the task has a name of its own.
    const std::string& getName() const { return mName; }

    /// Channels of this kind; the driver sets how many there are, and so for the next two.
    unsigned getNbAxis() const { return static_cast<unsigned>(mAxes.size()); }
    /// See getNbAxis.
    unsigned getNbButtons() const { return static_cast<unsigned>(mButtons.size()); }
    /// See getNbAxis.
    unsigned getNbOrientations() const { return static_cast<unsigned>(mOrientations.size()); }
    /// The index must be below the number of such channels, here and in all that follows.
    const KyDeviceAxisChannel& getAxis(unsigned index) const { return mAxes[index]; }
    KyDeviceAxisChannel& editAxis(unsigned index) { return mAxes[index]; }
    /// @{
    /// The index must be below the number of such channels.
    const KyDeviceButtonChannel& getButton(unsigned index) const { return mButtons[index]; }
    KyDeviceButtonChannel& editButton(unsigned index) { return mButtons[index]; }
    const KyDeviceOrientationChannel& getOrientation(unsigned index) const { return mOrientations[index]; }
    KyDeviceOrientationChannel& editOrientation(unsigned index) { return mOrientations[index]; }
    /// @}

    /// Ends the device, whoever holds it.
    virtual void destroy();

protected:
    void setName(const std::string& name) { mName = name; }

    /// New channels are at their defaults. References to channels follow; to those cut off they become null.
    void setNbAxis(unsigned nbAxis) { mAxes.resize(nbAxis); }
    /// See setNbAxis.
    void setNbButtons(unsigned nbButtons) { mButtons.resize(nbButtons); }
    /// See setNbAxis.
    void setNbOrientations(unsigned nbOrientations) { mOrientations.resize(nbOrientations); }

    /// What users read.
    void setAxisName(unsigned index, const std::string& name) { mAxes[index].setName(name); }
    /// Whether others than the driver may set the value.
    void setAxisAccessMode(unsigned index, KyAccessMode mode) { mAxes[index].setAccessMode(mode); }
    /// A position of an absolute axis, a step of a relative one.
    void setAxisValue(unsigned index, float value) { mAxes[index].setDeviceValue(value); }
    /// A step, whatever the axis is.
    void setAxisDeltaValue(unsigned index, float value) { mAxes[index].setDeltaValue(value); }
    /// A position, whatever the axis is.
    void setAxisAbsoluteValue(unsigned index, float value) { mAxes[index].setAbsoluteValue(value); }

    /// What users read.
    void setButtonName(unsigned index, const std::string& name) { mButtons[index].setName(name); }
    /// Whether others than the driver may set the value.
    void setButtonAccessMode(unsigned index, KyAccessMode mode) { mButtons[index].setAccessMode(mode); }
    /// The driver's reading: 0 is released.
    void setButtonValue(unsigned index, std::uint8_t value) { mButtons[index].setDeviceValue(value); }

    /// What users read.
    void setOrientationName(unsigned index, const std::string& name) { mOrientations[index].setName(name); }
    /// Whether others than the driver may set the value.
    void setOrientationAccessMode(unsigned index, KyAccessMode mode) { mOrientations[index].setAccessMode(mode); }
    /// An orientation of an absolute channel, a turn of a relative one.
    void setOrientationValue(unsigned index, const KyQuat<float>& value) { mOrientations[index].setDeviceValue(value); }

    void onLastReference() override;

private:
    friend class KyDeviceDriver;
    friend class KyDeviceManager;

    /// Enables or disables all channels.
    void setEnabledVirtual(bool enabled) override;

    std::vector<KyDeviceAxisChannel> mAxes;
    std::vector<KyDeviceButtonChannel> mButtons;
    std::vector<KyDeviceOrientationChannel> mOrientations;
    std::string mName = "Unnamed";
    /// The driver that registered it.
    KyDeviceDriver* mDriver = nullptr;
};
