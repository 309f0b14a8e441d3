// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySdlSession_p.h"

#include <cstdint>
#include <memory>
#include <string>

/// A stick or pad that is opened in SDL, closed at the end. Empty when opening failed or after close().
///
/// Units come by SDL's position in the list of what is attached, which holds until the next SDL_JoystickUpdate; an
/// instance number stands for one plugging in and never comes again.
class KyJoystickUnit {
public:
    KyJoystickUnit() = default;
    explicit KyJoystickUnit(int position);

    explicit operator bool() const { return getJoystick(); }
    void close() {
        mPad.reset();
        mStick.reset();
    }

    bool isAttached() const { return SDL_JoystickGetAttached(getJoystick()) == SDL_TRUE; }
    SDL_JoystickID getInstance() const { return SDL_JoystickInstanceID(getJoystick()); }
    /// Not null when SDL knows how the controls of the standard pad lie on this unit.
    SDL_GameController* getPad() const { return mPad.get(); }
    /// Null when empty.
    SDL_Joystick* getJoystick() const { return mPad ? SDL_GameControllerGetJoystick(mPad.get()) : mStick.get(); }

private:
    struct Close {
        void operator()(SDL_GameController* pad) const { SDL_GameControllerClose(pad); }
        void operator()(SDL_Joystick* stick) const { SDL_JoystickClose(stick); }
    };

    std::unique_ptr<SDL_GameController, Close> mPad;
    std::unique_ptr<SDL_Joystick, Close> mStick;
};

/// What is known of a unit, also when it is gone.
struct KyJoystickIdentity {
    KyJoystickIdentity() = default;
    explicit KyJoystickIdentity(const KyJoystickUnit& unit);

    /// Whether this is the same piece of hardware plugged in again. Units without a serial number are told apart by
    /// their model only.
    bool isSameUnit(const KyJoystickIdentity& other) const;

    std::string name;
    std::string path;
    std::string serial;
    SDL_JoystickGUID model{};
    std::uint16_t vendorId = 0;
    std::uint16_t productId = 0;
    bool isPad = false;
};
