// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseDevice_p.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::array<const char*, KySpaceMouseState::eNbAxes> cAxisNames{"X", "Y", "Z", "RX", "RY", "RZ"};

/// A frame that took longer, as one that loaded a scene, does not throw the view round.
constexpr float cLongestCycle = 0.1F;

} // namespace

KySpaceMouseDevice::KySpaceMouseDevice(const KySpaceMouseUnit& unit, std::unique_ptr<KySpaceMouseSource> source,
                                       float turnSpeed)
    : mUnit(unit)
    , mSource(std::move(source))
    , mTurnSpeed(turnSpeed) {
    setName(unit.name);
    nameAxes();
    nameButtons();
    setNbOrientations(1);
    setOrientationName(0, "Rotation");
    setEnabled(true);
}

void KySpaceMouseDevice::nameAxes() {
    setNbAxis(KySpaceMouseState::eNbAxes);
    for (unsigned i = 0; i < getNbAxis(); ++i) {
        setAxisName(i, cAxisNames[i]);
        editAxis(i).setAbsolute(true);
    }
}

void KySpaceMouseDevice::nameButtons() {
    setNbButtons(std::min(mUnit.nbButtons, KySpaceMouseState::cNbButtons));
    for (unsigned i = 0; i < getNbButtons(); ++i)
        setButtonName(i, "Button " + std::to_string(i));
}

void KySpaceMouseDevice::setSource(const KySpaceMouseUnit& unit, std::unique_ptr<KySpaceMouseSource> source) {
    const std::string serial = unit.serial.empty() ? mUnit.serial : unit.serial;
    mUnit = unit;
    mUnit.serial = serial;
    mSource = std::move(source);
}

void KySpaceMouseDevice::detach() {
    mSource.reset();
    mState = {};
    pushReadings();
}

bool KySpaceMouseDevice::poll() {
    if (!mSource || mSource->read(mState))
        return true;
    detach();
    return false;
}

void KySpaceMouseDevice::checkUnit() {
    poll();
    mState.pressed = 0;
}

bool KySpaceMouseDevice::execute() {
    if (poll())
        pushReadings();
    return mSource != nullptr;
}

void KySpaceMouseDevice::pushReadings() {
    for (unsigned i = 0; i < getNbAxis(); ++i)
        setAxisValue(i, mState.axes[i]);
    const std::uint32_t down = mState.buttons | mState.pressed;
    for (unsigned i = 0; i < getNbButtons(); ++i)
        setButtonValue(i, static_cast<std::uint8_t>(down >> i & 1));
    mState.pressed = 0;
    setOrientationValue(0, getTurn(measureCycle()));
}

float KySpaceMouseDevice::measureCycle() {
    const Clock::time_point now = Clock::now();
    const float seconds = std::chrono::duration<float>(now - mLastCycle).count();
    mLastCycle = now;
    return std::min(seconds, cLongestCycle);
}

KyQuat<float> KySpaceMouseDevice::getTurn(float seconds) const {
    const KyVec3<float> tilt(mState.axes[KySpaceMouseState::eRX], mState.axes[KySpaceMouseState::eRY],
                             mState.axes[KySpaceMouseState::eRZ]);
    return {tilt, static_cast<float>(tilt.length()) * mTurnSpeed * seconds};
}
