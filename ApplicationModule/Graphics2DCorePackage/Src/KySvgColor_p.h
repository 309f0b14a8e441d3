// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyColor.h"

#include <optional>
#include <string_view>

namespace KySvgColor {

/// A name of SVG's list, "transparent", "#rgb", "#rrggbb", "rgb(...)" of numbers or percentages or "hsl(...)", the last
/// four with an alpha too: "#rgba", "rgba(...)", "rgb(... / alpha)". What a colour profile says is passed over.
std::optional<KyColor> read(std::string_view text);

} // namespace KySvgColor
