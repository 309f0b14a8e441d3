// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeviceAxisChannel.h"

float KyDeviceAxisChannel::getValue() const {
    return mIsAbsolute ? mValue : mDeltaValue;
}

void KyDeviceAxisChannel::setValue(float value) {
    if (getAccessMode() != eAccessReadOnly)
        setDeviceValue(value);
}
