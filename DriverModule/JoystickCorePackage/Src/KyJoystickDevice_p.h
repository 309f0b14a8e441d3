// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyJoystickUnit_p.h"

#include "KyDevice.h"

#include <vector>

/// The device of one unit. It outlives the unit while somebody holds it: then all channels are at rest, and attach()
/// brings it back to life when the unit is plugged in again.
class KyJoystickDevice : public KyDevice {
public:
    /// The unit must not be empty. Sizes and names the channels and enables them.
    explicit KyJoystickDevice(KyJoystickUnit unit);

    const KyJoystickIdentity& getIdentity() const { return mIdentity; }
    bool isAttached() const { return mUnit && mUnit.isAttached(); }
    bool isPlaying(SDL_JoystickID instance) const { return mUnit && mUnit.getInstance() == instance; }
    /// Takes the unit over when it is this device's own, come back; else leaves it with the caller.
    bool attach(KyJoystickUnit& unit, const KyJoystickIdentity& identity);
    /// Closes the unit that is gone, and brings the channels to rest.
    void detach();

    /// Gives every channel its reading.
    bool execute() override;

private:
    void makePadChannels();
    void makeStickChannels();
    void addAxes(unsigned nbAxes);
    void readPad();
    void readStick();
    void rest();

    KyJoystickUnit mUnit;
    KyJoystickIdentity mIdentity;
    /// Pads: SDL's button of each channel.
    std::vector<SDL_GameControllerButton> mPadButtons;
    /// Sticks: the channels after these are hats.
    int mNbStickButtons = 0;
};
