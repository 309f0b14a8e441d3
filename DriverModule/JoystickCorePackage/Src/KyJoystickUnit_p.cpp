// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyJoystickUnit_p.h"

#include <algorithm>
#include <iterator>

namespace {

std::string toText(const char* text, const char* fallback = "") {
    return text && *text ? text : fallback;
}

} // namespace

KyJoystickUnit::KyJoystickUnit(int position) {
    if (SDL_IsGameController(position))
        mPad.reset(SDL_GameControllerOpen(position));
    if (!mPad)
        mStick.reset(SDL_JoystickOpen(position));
}

KyJoystickIdentity::KyJoystickIdentity(const KyJoystickUnit& unit)
    : name(toText(SDL_JoystickName(unit.getJoystick()), "Joystick"))
    , path(toText(SDL_JoystickPath(unit.getJoystick())))
    , serial(toText(SDL_JoystickGetSerial(unit.getJoystick())))
    , model(SDL_JoystickGetGUID(unit.getJoystick()))
    , vendorId(SDL_JoystickGetVendor(unit.getJoystick()))
    , productId(SDL_JoystickGetProduct(unit.getJoystick()))
    , isPad(unit.getPad()) {}

bool KyJoystickIdentity::isSameUnit(const KyJoystickIdentity& other) const {
    return isPad == other.isPad && serial == other.serial && std::ranges::equal(model.data, other.model.data);
}
