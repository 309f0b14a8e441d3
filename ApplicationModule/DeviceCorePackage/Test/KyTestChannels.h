// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDevice.h"

/// An axis that a test drives.
struct KyTestAxis : KyDeviceAxisChannel {
    using KyDeviceAxisChannel::getAbsoluteValue;
    using KyDeviceAxisChannel::getDeltaValue;
    using KyDeviceAxisChannel::setAbsoluteValue;
    using KyDeviceAxisChannel::setAccessMode;
    using KyDeviceAxisChannel::setDeltaValue;
    using KyDeviceAxisChannel::setDeviceValue;
};

/// A device that a test drives: enabled, with absolute axes.
struct KyTestDevice : KyDevice {
    KyTestDevice(unsigned nbAxis, unsigned nbButtons, unsigned nbOrientations) {
        setNbAxis(nbAxis);
        setNbButtons(nbButtons);
        setNbOrientations(nbOrientations);
        for (unsigned i = 0; i < nbAxis; ++i)
            editAxis(i).setAbsolute(true);
        setEnabled(true);
    }

    using KyDevice::setAxisAbsoluteValue;
    using KyDevice::setAxisAccessMode;
    using KyDevice::setAxisDeltaValue;
    using KyDevice::setAxisName;
    using KyDevice::setAxisValue;
    using KyDevice::setButtonAccessMode;
    using KyDevice::setButtonName;
    using KyDevice::setButtonValue;
    using KyDevice::setName;
    using KyDevice::setNbAxis;
    using KyDevice::setOrientationAccessMode;
    using KyDevice::setOrientationName;
    using KyDevice::setOrientationValue;
};
