// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Slant of a font; the numbers are those of QFont::Style.
enum KyFontStyle : std::int32_t { eStyleNormal = 0, eStyleItalic = 1, eStyleOblique = 2 };
