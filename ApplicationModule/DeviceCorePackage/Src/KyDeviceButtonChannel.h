// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDeviceChannel.h"

#include <cstdint>

/// A button, hat or switch of a device: a small number, 0 for released or centred. The driver reports it in every
/// cycle, so that the value and the previous one differ in just the cycle of a change.
class KYAPPLICATION_EXPORT KyDeviceButtonChannel : public KyDeviceChannel {
public:
    /// 0 is released.
    std::uint8_t getValue() const { return mValue; }
    /// The driver's reading before the last one.
    std::uint8_t getPreviousValue() const { return mPreviousValue; }
    /// 2 for a plain button, more for a hat; it tells others and bounds nothing.
    std::uint8_t getNbValues() const { return mNbValues; }
    void setNbValues(std::uint8_t nbValues) { mNbValues = nbValues; }
    /// From others than the driver: the previous value stays, so that no press is seen. Does nothing while the access
    /// mode is read-only.
    void setValue(std::uint8_t value) {
        if (getAccessMode() != eAccessReadOnly)
            mValue = value;
    }

protected:
    friend class KyDevice;

    /// The driver's reading.
    void setDeviceValue(std::uint8_t value) {
        mPreviousValue = mValue;
        mValue = value;
    }
    /// Ends a press or a release: the previous value becomes the present one.
    void settle() { mPreviousValue = mValue; }

private:
    std::uint8_t mValue = 0;
    std::uint8_t mNbValues = 2;
    std::uint8_t mPreviousValue = 0;
};
