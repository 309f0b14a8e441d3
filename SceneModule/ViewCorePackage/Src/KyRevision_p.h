// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Mixes revisions of several things into one number that differs when any of them does.
constexpr std::uint64_t kyMixRevision(std::uint64_t mixed, std::uint64_t revision) {
    // The multiplier keeps small numbers apart: one that rises must not make up for another one that falls.
    const std::uint64_t sum = mixed * 0x9e3779b97f4a7c15ull + revision;
    return sum ^ (sum >> 32);
}
