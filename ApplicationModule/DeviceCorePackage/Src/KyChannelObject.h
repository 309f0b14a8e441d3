// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyChannelReference.h"
#include "KyDeviceChannel.h"

#include "KyObject.h"
#include "KyReferenceCounted.h"

class KyCompositeSources;

/// A channel as scripts see it. It keeps neither the channel nor its device alive: once the channel is gone the object
/// is not valid, reads as empty and takes no writes. KyDeviceObject makes those of a device; the composite ones own
/// their channel. A new reading is told to nobody: it is read when it is needed. Main thread.
class KYAPPLICATION_EXPORT KyChannelObject : public KyObject, public KyReferenceCounted {
public:
    static const KyType* getType();
    static KyChannelObject* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    KyChannelObject(const KyChannelObject&) = delete;
    KyChannelObject& operator=(const KyChannelObject&) = delete;

    /// The channel's; empty when it is gone.
    const std::string& getName() const override;
    /// False once the device, and the channel with it, is gone.
    bool isValid() const { return editChannel() != nullptr; }
    /// Null when it is gone.
    KyDeviceChannel* editChannel() const { return mChannel.get(); }
    /// What a composite one is computed from; null for the channels of devices.
    virtual const KyCompositeSources* getSources() const { return nullptr; }

protected:
    KyChannelObject() = default;
    /// Watches the channel, which is not owned.
    explicit KyChannelObject(KyDeviceChannel& channel)
        : mChannel(channel) {}
    /// For those that own their channel.
    void setChannel(KyDeviceChannel& channel) { mChannel = KyChannelReference<KyDeviceChannel>(channel); }

private:
    KyChannelReference<KyDeviceChannel> mChannel;

    static const KyType* msType;
};
