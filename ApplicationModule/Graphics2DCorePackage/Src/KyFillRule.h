// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <cstdint>

/// What is inside of a path that crosses itself.
enum KyFillRule : std::int32_t { eEvenOdd = 0, eNonZero = 1, eNbFillRule = 2 };

namespace KyGraphics {

/// Texts of the rules, by their numbers.
KYAPPLICATION_EXPORT extern const char* const gFillRuleNames[eNbFillRule];

} // namespace KyGraphics
