// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// One finger of a touch event, in device pixels of the canvas.
struct KyTouchPoint {
    /// Pixels of the canvas, to the right.
    std::int32_t x = 0;
    /// Pixels of the canvas, downwards.
    std::int32_t y = 0;
    /// Identity of the finger while it is down; -1 when the source gives none.
    std::int32_t id = -1;
    /// What the finger did.
    enum State : std::uint32_t { ePressed = 1, eMoved = 2, eStationary = 4, eReleased = 8 };

    /// One of State; 0 when the source gives none.
    std::uint32_t state = 0;
    /// 0 to 1; 1 when the source measures none.
    float pressure = 1;
};
