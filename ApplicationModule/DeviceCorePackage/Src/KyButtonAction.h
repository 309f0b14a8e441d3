// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// When a button counts as a source. The last two hold for one cycle, the one in which the driver reported the change.
enum KyButtonAction : std::uint32_t {
    eActionWhilePressed,
    eActionWhileReleased,
    eActionOnPress,
    eActionOnRelease,
    eNbButtonActions
};
