// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySpaceMouseReport_p.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// A 3D mouse that is attached.
struct KySpaceMouseUnit {
    std::string name;
    /// What opens it; no two attached units have the same. Empty for a unit that somebody else opened.
    std::string path;
    /// Empty where the unit does not tell.
    std::string serial;
    std::uint16_t vendorId = 0;
    std::uint16_t productId = 0;
    unsigned nbButtons = 2;
    /// Nobody told that it is there, nor what it is.
    bool isGuess = false;

    /// Whether that unit may be this one plugged in again, or found for certain.
    bool isSameAs(const KySpaceMouseUnit& other) const {
        return isGuess || (vendorId == other.vendorId && productId == other.productId &&
                           (serial == other.serial || serial.empty() || other.serial.empty()));
    }
};

/// The readings of one unit; closing it is its end.
class KySpaceMouseSource {
public:
    KySpaceMouseSource() = default;
    KySpaceMouseSource(const KySpaceMouseSource&) = delete;
    KySpaceMouseSource& operator=(const KySpaceMouseSource&) = delete;
    virtual ~KySpaceMouseSource() = default;

    /// Brings `state` up to date without waiting; false when the unit is gone.
    virtual bool read(KySpaceMouseState& state) = 0;
};

/// One way to reach 3D mice.
class KySpaceMouseFinder {
public:
    KySpaceMouseFinder() = default;
    KySpaceMouseFinder(const KySpaceMouseFinder&) = delete;
    KySpaceMouseFinder& operator=(const KySpaceMouseFinder&) = delete;
    virtual ~KySpaceMouseFinder() = default;

    /// The driver starts, and asks at once: who answers late may be waited for here, for a tenth of a second at most.
    virtual void start() {}
    /// The units that are attached now. Runs in the frame: what is not known yet is found the next time.
    virtual std::vector<KySpaceMouseUnit> find() = 0;
    /// After find(): a unit that may be there, which is worth a try where no way finds any.
    virtual std::optional<KySpaceMouseUnit> guess() { return std::nullopt; }
    /// One of those found last, or the guess; null when it can not be opened.
    virtual std::unique_ptr<KySpaceMouseSource> open(const KySpaceMouseUnit& unit) = 0;
    /// Another way is used: what was found and not opened is let go.
    virtual void forget() {}
};
