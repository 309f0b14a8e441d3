// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <cstdint>

/// How an open outline ends.
enum KyStrokeCap : std::int32_t { eFlatCap = 0, eSquareCap = 1, eRoundCap = 2, eNbStrokeCap = 3 };

namespace KyGraphics {

/// Texts of the caps, by their numbers.
KYAPPLICATION_EXPORT extern const char* const gStrokeCapNames[eNbStrokeCap];

} // namespace KyGraphics
