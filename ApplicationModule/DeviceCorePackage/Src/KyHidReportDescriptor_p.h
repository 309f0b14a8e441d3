// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <cstdint>
#include <span>
#include <vector>

/// A usage with its page.
struct KyHidUsage {
    std::uint16_t page = 0;
    std::uint16_t usage = 0;

    bool operator==(const KyHidUsage&) const = default;
};

/// Reads what a unit says about its reports. The unit may say anything: nothing is read out of the bytes given, and
/// what makes no sense is passed over.
class KYAPPLICATION_EXPORT KyHidReportDescriptor {
public:
    KyHidReportDescriptor() = delete;

    /// The usages of the outermost collections, in order; one without a usage of its own has usage 0. Reading ends at
    /// an item that is cut short.
    static std::vector<KyHidUsage> getOutermostUsages(std::span<const std::uint8_t> descriptor);
};
