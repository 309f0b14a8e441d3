// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDevice.h"

/// A device that works with one native window, such as a mouse that reports positions in it. A copy is bound to none.
class KYAPPLICATION_EXPORT KyBoundDevice : public KyDevice {
public:
    KyBoundDevice() = default;
    /// Holds the same device: one more reference to it.
    KyBoundDevice(const KyBoundDevice& other);
    /// The window stays.
    KyBoundDevice& operator=(const KyBoundDevice& other);

    /// The window's native identifier, null for none; the same one again does nothing.
    void bindToWindow(void* windowId);

protected:
    /// Null while bound to none.
    void* getWindowId() const { return mWindowId; }
    /// After another window was bound.
    virtual void windowChanged() = 0;

private:
    void* mWindowId = nullptr;
};
