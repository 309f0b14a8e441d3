// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Usual weights of fonts; a style takes any from 0 to 99. The numbers are those of QFont::Weight.
enum KyFontWeight : std::int32_t { eLight = 25, eNormal = 50, eDemiBold = 63, eBold = 75, eBlack = 87 };
