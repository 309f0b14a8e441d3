// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyJoystickDevice_p.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace {

constexpr std::array<const char*, SDL_CONTROLLER_AXIS_MAX> cPadAxisNames{"LeftX",  "LeftY",       "RightX",
                                                                         "RightY", "LeftTrigger", "RightTrigger"};
constexpr std::array<const char*, SDL_CONTROLLER_BUTTON_MAX> cPadButtonNames{"A",
                                                                             "B",
                                                                             "X",
                                                                             "Y",
                                                                             "Back",
                                                                             "Guide",
                                                                             "Start",
                                                                             "LeftStick",
                                                                             "RightStick",
                                                                             "LeftShoulder",
                                                                             "RightShoulder",
                                                                             "DPadUp",
                                                                             "DPadDown",
                                                                             "DPadLeft",
                                                                             "DPadRight",
                                                                             "Misc1",
                                                                             "Paddle1",
                                                                             "Paddle2",
                                                                             "Paddle3",
                                                                             "Paddle4",
                                                                             "Touchpad"};
/// Every pad has channels for the buttons up to here, whether it has the buttons or not: scripts may count on them.
constexpr int cNbStandardPadButtons = SDL_CONTROLLER_BUTTON_DPAD_RIGHT + 1;

constexpr std::uint8_t cNbHatValues = 9;
/// By SDL's bits up 1, right 2, down 4, left 8: clockwise from up, 0 for the centre and for opposites together.
constexpr std::array<std::uint8_t, 16> cHatValues{0, 1, 3, 2, 5, 0, 4, 0, 7, 8, 0, 0, 6, 0, 0, 0};

constexpr float toPosition(Sint16 reading) {
    constexpr float cPositiveRange = SDL_JOYSTICK_AXIS_MAX;
    constexpr float cNegativeRange = -float{SDL_JOYSTICK_AXIS_MIN};
    return static_cast<float>(reading) / (reading < 0 ? cNegativeRange : cPositiveRange);
}

constexpr bool isTrigger(unsigned padAxis) {
    return padAxis >= SDL_CONTROLLER_AXIS_TRIGGERLEFT;
}

} // namespace

KyJoystickDevice::KyJoystickDevice(KyJoystickUnit unit)
    : mUnit(std::move(unit))
    , mIdentity(mUnit) {
    setName(mIdentity.name);
    KyTask::setName(mIdentity.name);
    if (mIdentity.isPad)
        makePadChannels();
    else
        makeStickChannels();
    setEnabled(true);
}

void KyJoystickDevice::addAxes(unsigned nbAxes) {
    setNbAxis(nbAxes);
    for (unsigned i = 0; i < nbAxes; ++i) {
        editAxis(i).setAbsolute(true);
        setAxisName(i, "Axis " + std::to_string(i));
    }
}

void KyJoystickDevice::makePadChannels() {
    addAxes(SDL_CONTROLLER_AXIS_MAX);
    for (unsigned i = 0; i < getNbAxis(); ++i) {
        setAxisName(i, cPadAxisNames[i]);
        if (isTrigger(i))
            editAxis(i).setMinimum(0);
    }
    for (int i = 0; i < SDL_CONTROLLER_BUTTON_MAX; ++i) {
        const auto button = static_cast<SDL_GameControllerButton>(i);
        if (i < cNbStandardPadButtons || SDL_GameControllerHasButton(mUnit.getPad(), button))
            mPadButtons.push_back(button);
    }
    setNbButtons(static_cast<unsigned>(mPadButtons.size()));
    for (unsigned i = 0; i < getNbButtons(); ++i)
        setButtonName(i, cPadButtonNames[static_cast<std::size_t>(mPadButtons[i])]);
}

void KyJoystickDevice::makeStickChannels() {
    SDL_Joystick* const stick = mUnit.getJoystick();
    addAxes(static_cast<unsigned>(std::max(SDL_JoystickNumAxes(stick), 0)));
    mNbStickButtons = std::max(SDL_JoystickNumButtons(stick), 0);
    const auto nbButtons = static_cast<unsigned>(mNbStickButtons);
    setNbButtons(nbButtons + static_cast<unsigned>(std::max(SDL_JoystickNumHats(stick), 0)));
    for (unsigned i = 0; i < nbButtons; ++i)
        setButtonName(i, "Button " + std::to_string(i));
    for (unsigned i = nbButtons; i < getNbButtons(); ++i) {
        setButtonName(i, "Hat " + std::to_string(i - nbButtons));
        editButton(i).setNbValues(cNbHatValues);
    }
}

bool KyJoystickDevice::attach(KyJoystickUnit& unit, const KyJoystickIdentity& identity) {
    if (mUnit || !mIdentity.isSameUnit(identity))
        return false;
    mUnit = std::move(unit);
    mIdentity = identity;
    return true;
}

void KyJoystickDevice::detach() {
    mUnit.close();
    // Where the device runs, execute() rests it: a second reading in this frame would hide the release of a button.
    if (!isEnabled())
        rest();
}

bool KyJoystickDevice::execute() {
    if (!mUnit)
        rest();
    else if (mUnit.getPad())
        readPad();
    else
        readStick();
    return true;
}

void KyJoystickDevice::readPad() {
    SDL_GameController* const pad = mUnit.getPad();
    for (unsigned i = 0; i < getNbAxis(); ++i)
        setAxisValue(i, toPosition(SDL_GameControllerGetAxis(pad, static_cast<SDL_GameControllerAxis>(i))));
    for (unsigned i = 0; i < getNbButtons(); ++i)
        setButtonValue(i, SDL_GameControllerGetButton(pad, mPadButtons[i]));
}

void KyJoystickDevice::readStick() {
    SDL_Joystick* const stick = mUnit.getJoystick();
    for (unsigned i = 0; i < getNbAxis(); ++i)
        setAxisValue(i, toPosition(SDL_JoystickGetAxis(stick, static_cast<int>(i))));
    const auto nbButtons = static_cast<unsigned>(mNbStickButtons);
    for (unsigned i = 0; i < nbButtons; ++i)
        setButtonValue(i, SDL_JoystickGetButton(stick, static_cast<int>(i)));
    for (unsigned i = nbButtons; i < getNbButtons(); ++i)
        setButtonValue(i, cHatValues[SDL_JoystickGetHat(stick, static_cast<int>(i - nbButtons)) & 15U]);
}

void KyJoystickDevice::rest() {
    for (unsigned i = 0; i < getNbAxis(); ++i)
        setAxisValue(i, 0);
    for (unsigned i = 0; i < getNbButtons(); ++i)
        setButtonValue(i, 0);
}
