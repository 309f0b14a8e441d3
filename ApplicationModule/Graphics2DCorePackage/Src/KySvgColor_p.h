// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyColor.h"

#include <optional>
#include <string_view>

namespace KySvgColor {

/// A name of SVG's list, "transparent", "#rgb", "#rrggbb" or "rgb(...)" of numbers or percentages; opaque but for
/// "transparent".
std::optional<KyColor> read(std::string_view text);

} // namespace KySvgColor
