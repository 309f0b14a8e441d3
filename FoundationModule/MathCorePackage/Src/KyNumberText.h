// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <span>
#include <string>
#include <string_view>

/// Text form of numbers, whatever the process's locale: what C's "%.{precision}g" gives in the "C" locale.
/// Several numbers stand side by side, separated by one blank. Usable on any thread.
///
///     const std::array<double, 2> point{0.5, 1e6};
///     KyNumberText::format(point, 6);   // "0.5 1e+06"
class KYFOUNDATION_EXPORT KyNumberText {
public:
    /// Precision of `toString` and `operator<<` where the caller names none.
    static constexpr int cDefaultPrecision = 6;

    /// Significant digits are limited to 1 ... 17.
    static std::string format(std::span<const double> values, int precision);
    static std::string format(std::span<const float> values, int precision);
    /// Integers are written in full whatever the precision.
    static std::string format(std::span<const int> values, int precision);

    /// Reads exactly `values.size()` numbers separated by white space; false leaves `values` unchanged.
    static bool parse(std::string_view text, std::span<double> values);
    static bool parse(std::string_view text, std::span<float> values);
    static bool parse(std::string_view text, std::span<int> values);
};
