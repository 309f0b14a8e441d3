// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Which vertical place of a text lies at its position. The numbers go on after those of KyTextAnchor; 0, which a new
/// style has, is none of them and works as eTop.
enum KyTextVerticalAnchor : std::int32_t {
    eTop = 3,
    eCenter = 4,
    /// The line on which a single line of Latin letters stands, nearly.
    eLine = 5,
    eBottom = 6
};
