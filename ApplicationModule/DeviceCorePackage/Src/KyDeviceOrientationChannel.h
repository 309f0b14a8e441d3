// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDeviceChannel.h"

#include "KyQuat.h"

/// A rotation of a device. An absolute one reads orientations, a relative one turns, each in the frame that the device
/// has by then; their lengths are taken as they come. A new one is relative and the identity. Readings that are not
/// finite are ignored.
class KYAPPLICATION_EXPORT KyDeviceOrientationChannel : public KyDeviceChannel {
public:
    /// The orientation when absolute, else the last turn.
    const KyQuat<float>& getValue() const { return mValue; }
    /// The last turn.
    const KyQuat<float>& getDeltaValue() const { return mDeltaValue; }
    /// A reading from others than the driver; does nothing while the access mode is read-only.
    void setValue(const KyQuat<float>& value);
    /// Whether the driver's readings are orientations.
    void setAbsolute(bool absolute) { mIsAbsolute = absolute; }
    /// Whether the driver's readings are turns.
    void setRelative(bool relative) { mIsAbsolute = !relative; }
    /// True when the driver's readings are orientations, false when they are turns.
    bool isAbsolute() const { return mIsAbsolute; }

protected:
    friend class KyDevice;

    /// The driver's reading: an orientation when absolute, else a turn.
    void setDeviceValue(const KyQuat<float>& value);
    /// An orientation, whatever the channel is.
    void setAbsoluteValue(const KyQuat<float>& value);
    /// A turn, whatever the channel is.
    void setDeltaValue(const KyQuat<float>& value);

private:
    KyQuat<float> mValue;
    KyQuat<float> mDeltaValue;
    bool mIsAbsolute = false;
};
