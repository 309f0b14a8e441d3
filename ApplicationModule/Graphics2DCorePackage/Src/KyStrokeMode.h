// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <cstdint>

/// How an outline is drawn. The numbers are kept in files and seen by scripts.
enum KyStrokeMode : std::int32_t {
    eNoPen = 0,
    eSolidLine = 1,
    eDashLine = 2,
    eDotLine = 3,
    eDashDotLine = 4,
    eDashDotDotLine = 5,
    /// With the pattern of the style: Ky2DStyle::setStrokeCustomDashPattern.
    eCustomDashLine = 6,
    eNbStrokeMode = 7
};

namespace KyGraphics {

/// Texts of the modes, by their numbers.
KYAPPLICATION_EXPORT extern const char* const gStrokeModeNames[eNbStrokeMode];

} // namespace KyGraphics
