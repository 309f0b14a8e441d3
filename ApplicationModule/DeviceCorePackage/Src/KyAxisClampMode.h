// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// What an axis does with a position beyond its range. `eClampOutput` clamps what is read and lets an absolute axis
/// keep the position that came in; a relative axis then reports only the part of a step that the range cut off.
enum KyAxisClampMode : std::uint32_t { eClampNone, eClampAll, eClampOutput, eNbClampModes };
