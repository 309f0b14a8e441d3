// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyChannelObject.h"
#include "KyDeviceOrientationChannel.h"

/// An orientation as scripts see it. One whose channel is gone reads as the identity.
///
///     node.Orientation = tracker.Orientations[0].Value
class KYAPPLICATION_EXPORT KyOrientationObject : public KyChannelObject {
public:
    /// What the object stands for.
    using Channel = KyDeviceOrientationChannel;

    static const KyType* getType();
    static KyOrientationObject* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// The channel belongs to its device; the object is invalid once it is gone.
    explicit KyOrientationObject(Channel& channel)
        : KyChannelObject(channel) {}

    /// Null when the channel is gone.
    Channel* editOwn() const { return static_cast<Channel*>(editChannel()); }

protected:
    KyOrientationObject() = default;

private:
    static const KyType* msType;
};
