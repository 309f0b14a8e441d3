// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeviceOrientationChannel.h"

#include <cmath>

namespace {

bool isFinite(const KyQuat<float>& quat) {
    return std::isfinite(quat.x) && std::isfinite(quat.y) && std::isfinite(quat.z) && std::isfinite(quat.w);
}

} // namespace

void KyDeviceOrientationChannel::setValue(const KyQuat<float>& value) {
    if (getAccessMode() != eAccessReadOnly)
        setDeviceValue(value);
}

void KyDeviceOrientationChannel::setDeviceValue(const KyQuat<float>& value) {
    if (mIsAbsolute)
        setAbsoluteValue(value);
    else
        setDeltaValue(value);
}

void KyDeviceOrientationChannel::setAbsoluteValue(const KyQuat<float>& value) {
    if (isFinite(value))
        mValue = value;
}

void KyDeviceOrientationChannel::setDeltaValue(const KyQuat<float>& value) {
    const KyQuat<float> turned = mValue * value;
    if (!isFinite(value) || !isFinite(turned))
        return;
    mDeltaValue = value;
    mValue = turned;
}
