// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// While one lives, arithmetic on this thread, code compiled elsewhere included, rounds to the 53 bits of a double.
/// Only the older floating-point unit of 32-bit x86 has another width to begin with.
class KyDoublePrecision {
public:
#if defined(__i386__)
    KyDoublePrecision() {
        asm volatile("fnstcw %0" : "=m"(mBefore));
        const auto control = static_cast<std::uint16_t>((mBefore & ~cWidths) | cDouble);
        asm volatile("fldcw %0" : : "m"(control));
    }
    ~KyDoublePrecision() {
        asm volatile("fldcw %0" : : "m"(mBefore));
    }
#else
    KyDoublePrecision() {}
    ~KyDoublePrecision() {}
#endif
    KyDoublePrecision(const KyDoublePrecision&) = delete;
    KyDoublePrecision& operator=(const KyDoublePrecision&) = delete;

private:
#if defined(__i386__)
    /// Bits 8 and 9 of the unit's control word.
    static constexpr std::uint16_t cWidths = 0x300;
    static constexpr std::uint16_t cDouble = 0x200;
    std::uint16_t mBefore = 0;
#endif
};
