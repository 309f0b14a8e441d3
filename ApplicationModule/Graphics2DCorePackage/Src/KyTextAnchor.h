// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Which horizontal place of a text lies at its position.
enum KyTextAnchor : std::int32_t { eStart = 0, eMiddle = 1, eEnd = 2 };
