// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Mixes revisions of several things into one number that differs when any of them does.
constexpr std::uint64_t kyMixRevision(std::uint64_t mixed, std::uint64_t revision) {
    return (mixed ^ revision) * 0x100000001b3ull + (mixed >> 29);
}
