// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyAccessMode.h"

#include <memory>
#include <string>

class KyDevice;
struct KyChannelCell;
template <class T>
class KyChannelReference;

/// One axis, button or orientation of a device. Its device owns it and its driver gives it readings; composite channels
/// and scripts read it. A new channel is disabled, and closed to all but its driver: setValue() does nothing.
///
/// A KyChannelReference follows a channel that is moved and learns of its end; a copy is a channel of its own.
class KYAPPLICATION_EXPORT KyDeviceChannel {
public:
    virtual ~KyDeviceChannel();
    KyDeviceChannel() = default;
    /// Name, access mode and switch; references to the other one stay there.
    KyDeviceChannel(const KyDeviceChannel& other);
    /// References to the other one follow.
    KyDeviceChannel(KyDeviceChannel&& other) noexcept;
    /// References to this channel stay.
    KyDeviceChannel& operator=(const KyDeviceChannel& other);
    /// References to the other one follow; those to this one are told that it is gone.
    KyDeviceChannel& operator=(KyDeviceChannel&& other) noexcept;

    /// "No name" until the driver names it.
    const std::string& getName() const { return mName; }
    void setName(const std::string& name) { mName = name; }
    /// Whether others than the driver may set the value.
    KyAccessMode getAccessMode() const { return mAccessMode; }
    /// Composite channels skip disabled sources.
    bool isEnabled() const { return mIsEnabled; }
    void setEnabled(bool enabled) { mIsEnabled = enabled; }
    /// Lets composite channels use it.
    void enable() { setEnabled(true); }
    /// Makes composite channels skip it.
    void disable() { setEnabled(false); }

protected:
    friend class KyDevice;

    /// The driver's decision.
    void setAccessMode(KyAccessMode mode) { mAccessMode = mode; }

private:
    template <class T>
    friend class KyChannelReference;

    std::shared_ptr<const KyChannelCell> shareCell() const;
    void carryCell(KyDeviceChannel& other) noexcept;
    void dropCell() noexcept;

    KyAccessMode mAccessMode = eAccessReadOnly;
    std::string mName = "No name";
    bool mIsEnabled : 1 = false;
    /// Made for the first reference.
    mutable std::shared_ptr<KyChannelCell> mCell;
};
