// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>

/// Of an attribute that is a mask of state words: scripts write those with Alt as unsigned numbers, too. False for what
/// has more than 32 bits.
template <class T, auto Setter>
auto kyMakeMaskSetter() {
    return [](T& object, std::int64_t mask) {
        if (mask < std::numeric_limits<std::int32_t>::min() || mask > std::numeric_limits<std::uint32_t>::max())
            return false;
        (object.*Setter)(static_cast<std::int32_t>(static_cast<std::uint32_t>(mask)));
        return true;
    };
}
