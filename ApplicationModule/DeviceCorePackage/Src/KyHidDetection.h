// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <cstdint>
#include <string>
#include <vector>

/// One outermost collection of one HID interface: what the machine's bus says about it.
struct KyHidRecord {
    /// One byte a character, the low byte of its code: Latin-1 for nearly all devices. Empty when the unit has none.
    std::string manufacturer;
    /// See manufacturer.
    std::string product;
    /// The maker's number at the USB.
    std::uint16_t vendorId = 0;
    /// The product's number at the maker.
    std::uint16_t productId = 0;
    /// Both 0 when the unit does not tell.
    std::uint16_t usagePage = 0;
    /// The HID usage within its page.
    std::uint16_t usage = 0;
    /// What opens it, such as /dev/hidraw0; it may change when the unit is plugged again.
    std::string path;
    /// Empty for most units.
    std::string serial;
};

/// The search for HID units, one form for all systems. Any thread, one at a time.
///
/// On Windows the entry points of HID.DLL are resolved when the library is loaded. On Linux only nodes of the hidraw
/// class are seen; nothing is opened, so the search needs no permission.
class KYAPPLICATION_EXPORT KyHidDetection {
public:
    /// A function that lists the units of the machine.
    using Source = std::vector<KyHidRecord> (*)();

    KyHidDetection() = delete;

    /// In the order of the bus; empty when there is no unit or the search fails.
    static std::vector<KyHidRecord> detect();
    /// Replaces the machine's bus, for hosts that know their units by other means and for tests; null stands for the
    /// bus again. Returns the one before, null when it was the bus.
    static Source setSource(Source source);
    /// The low byte of each of the first 128 characters, up to the first that is 0. Null gives an empty text.
    static std::string narrow(const wchar_t* text);

private:
    static std::vector<KyHidRecord> detectOnBus();
};
