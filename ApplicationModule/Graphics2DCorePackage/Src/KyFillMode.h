// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <cstdint>

/// How the inside of a shape is drawn; the numbers are those of Qt::BrushStyle. They are kept in files and seen by
/// scripts.
enum KyFillMode : std::int32_t {
    eNoBrush = 0,
    eSolidPattern = 1,
    eDense1Pattern = 2,
    eDense2Pattern = 3,
    eDense3Pattern = 4,
    eDense4Pattern = 5,
    eDense5Pattern = 6,
    eDense6Pattern = 7,
    eDense7Pattern = 8,
    eHorPattern = 9,
    eVerPattern = 10,
    eCrossPattern = 11,
    eBDiagPattern = 12,
    eFDiagPattern = 13,
    eDiagCrossPattern = 14,
    eNbFillMode = 15
};

namespace KyGraphics {

/// Texts of the modes, by their numbers.
KYAPPLICATION_EXPORT extern const char* const gFillModeNames[eNbFillMode];

} // namespace KyGraphics
