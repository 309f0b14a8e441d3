// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyChannelObject.h"
#include "KyDeviceAxisChannel.h"

/// An axis as scripts see it. Setting its value is a reading from others than the driver, which an axis closed to them
/// ignores; a number that is no clamp mode is refused.
///
///     local stick = devices.Devices[0]:findAxis("LeftX")
///     stick.DeadZoneWidth = 0.15
///     turn(stick.Value)
class KYAPPLICATION_EXPORT KyAxisObject : public KyChannelObject {
public:
    /// What the object stands for.
    using Channel = KyDeviceAxisChannel;

    static const KyType* getType();
    static KyAxisObject* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// The channel belongs to its device; the object is invalid once it is gone.
    explicit KyAxisObject(Channel& channel)
        : KyChannelObject(channel) {}

    /// Null when the channel is gone.
    Channel* editOwn() const { return static_cast<Channel*>(editChannel()); }

protected:
    KyAxisObject() = default;

private:
    static const KyType* msType;
};
