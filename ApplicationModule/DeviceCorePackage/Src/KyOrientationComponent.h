// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// The angle of an orientation that an axis or a button turns.
enum KyOrientationComponent : std::uint32_t {
    /// About Y.
    eComponentHeading,
    /// About X.
    eComponentPitch,
    /// About Z.
    eComponentRoll,
    eNbOrientationComponents
};
