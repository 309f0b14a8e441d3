// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyChannelObject.h"
#include "KyDeviceButtonChannel.h"

/// A button as scripts see it. Values are 0 to 255; others are refused.
///
///     if fire.Value ~= 0 and fire.PreviousValue == 0 then shoot() end
class KYAPPLICATION_EXPORT KyButtonObject : public KyChannelObject {
public:
    /// What the object stands for.
    using Channel = KyDeviceButtonChannel;

    static const KyType* getType();
    static KyButtonObject* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// The channel belongs to its device; the object is invalid once it is gone.
    explicit KyButtonObject(Channel& channel)
        : KyChannelObject(channel) {}

    /// Null when the channel is gone.
    Channel* editOwn() const { return static_cast<Channel*>(editChannel()); }

protected:
    KyButtonObject() = default;

private:
    static const KyType* msType;
};
