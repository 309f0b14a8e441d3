// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// One finger of a touch event, in pixels of the view.
struct KyTouchPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
    /// Identity of the finger while it is down; -1 when the source gives none.
    std::int32_t id = -1;
    /// Pressed, moved, stationary or released, as the source numbers them.
    std::uint32_t state = 0;
    /// 0 to 1; 1 when the source measures none.
    float pressure = 1;
};
