// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDeviceDriver.h"

#include "KyTask.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class KyJoystickDevice;
class KyJoystickUnit;
class KySdlSession;

/// The driver "Joystick": every stick and pad that SDL finds, from the start on and also when it is plugged in later.
///
/// A pad whose controls SDL knows (its database holds most; more come by the environment variable
/// SDL_GAMECONTROLLERCONFIG) has the channels of the standard pad, always in this order:
///
/// | channels    |                                                                                                   |
/// |-------------|---------------------------------------------------------------------------------------------------|
/// | axes 0-5    | LeftX, LeftY, RightX, RightY (-1 to 1), LeftTrigger, RightTrigger (0 to 1)                        |
/// | buttons 0-14| A, B, X, Y, Back, Guide, Start, LeftStick, RightStick, LeftShoulder, RightShoulder, DPadUp,       |
/// |             | DPadDown, DPadLeft, DPadRight; A is the lower one, whatever is printed on it                      |
/// | from 15 on  | those it has of Misc1, Paddle1 to Paddle4, Touchpad                                               |
///
/// All others have "Axis 0", ..., "Button 0", ... and, after the buttons, "Hat 0", ..., with 9 values: 0 in the centre,
/// else 1 to 8 clockwise from up. All axes are absolute, those that go up and down are positive downwards, and nobody
/// but the driver writes the channels.
///
/// The driver holds one reference on each device, each client one for every getDevice(). A device whose unit is
/// unplugged ends, unless a client holds it: then it stays with all channels at rest and wakes when the unit is back.
/// 3D mice are left to their own driver. Used from the manager's thread; nothing throws.
///
///     KyJoystickDriver driver;
///     KyDeviceManager::get()->registerDeviceDriver(&driver);
///     KyDeviceManager::get()->initialize();
///     const KyDevice* pad = driver.getDevice("", {});   // any
class KyJoystickDriver : public KyDeviceDriver {
public:
    KyJoystickDriver();
    ~KyJoystickDriver() override;

    using KyDeviceDriver::getDevice;

    /// Makes a device for each unit that is attached. A failure of SDL is reported.
    void start() override;
    /// The name is that of the unit, or empty for any; parameters as KyDeviceManager::applyDeviceFilter takes them. A
    /// unit that no client holds goes first; null when none fits.
    const KyDevice* getDevice(const std::string& deviceName, const Parameters& parameters) override;

private:
    /// Runs before the devices do.
    class Poll : public KyTask {
    public:
        explicit Poll(KyJoystickDriver& driver)
            : KyTask("KyJoystickDriverTask")
            , mDriver(driver) {}
        bool execute() override;

    private:
        KyJoystickDriver& mDriver;
    };

    bool open();
    void listen();
    void claimEntries();
    void update();
    void releaseVanished();
    void welcomeAttached();
    void welcome(int position);
    bool revive(KyJoystickUnit& unit);
    std::vector<KyJoystickDevice*> editJoysticks();
    std::vector<KyJoystickDevice*> select(const std::string& deviceName, const Parameters& parameters);

    std::unique_ptr<KySdlSession> mSession;
    Poll mPoll{*this};
    /// To the manager's devicesChangedSignal().
    KyConnection mChanges;
    /// SDL's instance numbers below this one are known: they grow with each plugging in.
    std::int32_t mNextInstance = 0;
};
