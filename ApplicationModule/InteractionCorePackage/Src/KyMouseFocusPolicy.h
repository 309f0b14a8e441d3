// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Where a canvas's provider sends what the pointer does.
enum KyMouseFocusPolicy : std::int32_t {
    /// The view that takes a press gets everything until a release leaves no mouse button down; a touch sequence
    /// likewise until it ends. The pointer may leave the view meanwhile.
    eFocusGrabOnPress = 0,
    /// Always the view under the pointer.
    eFocusUnderPointer = 1,
    /// Always the canvas, which asks its own event handler and then its views.
    eFocusCanvas = 2,
    eNbMouseFocusPolicies = 3
};
