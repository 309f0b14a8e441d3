// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

class KyDeviceChannel;

/// Where a channel is now; null once it is gone. The channel keeps it up to date.
struct KyChannelCell {
    /// Null once the channel is gone.
    const KyDeviceChannel* channel = nullptr;
};

/// A pointer to a channel that follows it: null once the channel has ended, and right when its device has moved it.
/// T is one of the channel classes, const where it is only read. Nothing is owned; one thread.
///
///     KyChannelReference<const KyDeviceAxisChannel> throttle(device.getAxis(2));
///     ...
///     if (const auto* axis = throttle.get())
///         setSpeed(axis->getValue());
template <class T>
class KyChannelReference {
public:
    /// Refers to nothing.
    KyChannelReference()
        : mCell(std::make_shared<KyChannelCell>()) {}
    explicit KyChannelReference(T& channel)
        : mCell(channel.shareCell()) {}
    KyChannelReference(const KyChannelReference&) = default;
    KyChannelReference& operator=(const KyChannelReference&) = default;

    /// Null when the channel is gone.
    T* get() const { return static_cast<T*>(const_cast<KyDeviceChannel*>(mCell->channel)); }

private:
    /// Never null: copying in place of moving keeps it so.
    std::shared_ptr<const KyChannelCell> mCell;
};
