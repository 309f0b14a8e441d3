// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <span>

/// What the cap and the buttons of a 3D mouse do, in the frame of our cameras: x to the right, y up, z towards the
/// user.
struct KySpaceMouseState {
    enum Axis : unsigned { eX, eY, eZ, eRX, eRY, eRZ, eNbAxes };
    static constexpr unsigned cNbButtons = 32;

    /// Displacement along, then turn about each axis, right-handed: 1 at the cap's end.
    std::array<float, eNbAxes> axes{};
    /// One bit for each button that is down.
    std::uint32_t buttons = 0;
    /// One bit for each button that went down since this was last cleared, so that a short press is not lost.
    std::uint32_t pressed = 0;
    /// The unit tells the turn in reports of its own: what follows the displacement is padding, not a turn.
    bool turnsApart = false;

    /// Counts along and about the axes; beyond `fullCount` reads as the end.
    void setAxes(unsigned first, const std::array<int, 3>& counts, int fullCount);
    /// Ignored from cNbButtons on.
    void setButton(unsigned index, bool isDown);
    void setButtons(std::uint32_t bits);
};

/// The reports in which 3D mice tell their state over HID: 1 the displacement, in some models with the turn, 2 the
/// turn, 3 the buttons. Some systems pad every report to the length of the longest: from the first report 2 on, what
/// follows the displacement is not read.
class KySpaceMouseReport {
public:
    KySpaceMouseReport() = delete;

    /// Brings `state` up to date. False, and nothing changed, for reports of other numbers and those that are too
    /// short; bytes beyond what is known are ignored.
    static bool apply(std::span<const std::uint8_t> report, KySpaceMouseState& state);
};
