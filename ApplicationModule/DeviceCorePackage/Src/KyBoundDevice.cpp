// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBoundDevice.h"

KyBoundDevice::KyBoundDevice(const KyBoundDevice& other)
    : KyDevice(other) {}

KyBoundDevice& KyBoundDevice::operator=(const KyBoundDevice& other) {
    KyDevice::operator=(other);
    return *this;
}

void KyBoundDevice::bindToWindow(void* windowId) {
    if (windowId == mWindowId)
        return;
    mWindowId = windowId;
    windowChanged();
}
