// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <cstdint>

/// How two segments of an outline meet.
enum KyStrokeJoin : std::int32_t {
    eMiterJoin = 0,
    eBevelJoin = 1,
    eRoundJoin = 2,
    /// A mitre that SVG limits: beyond the limit it is a bevel.
    eSvgMiterJoin = 3,
    eNbStrokeJoin = 4
};

namespace KyGraphics {

/// Texts of the joins, by their numbers.
KYAPPLICATION_EXPORT extern const char* const gStrokeJoinNames[eNbStrokeJoin];

} // namespace KyGraphics
