// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <limits>
#include <type_traits>

/// Arithmetic that the maths types share for element types int, float and double.
/// Integers saturate where a plain cast or a division would be undefined.
struct KyScalar {
    /// The type in which lengths and angles of T are given: T itself, double for integers.
    template <class T>
    using Real = std::conditional_t<std::is_integral_v<T>, double, T>;

    /// Converts; to an integer by rounding to nearest, limited to its range, NaN giving 0.
    template <class T>
    static constexpr T round(double value) {
        if constexpr (std::is_integral_v<T>)
            return saturate<T>(std::round(value));
        else
            return static_cast<T>(value);
    }

    /// Converts between element types; to an integer by truncation, limited to its range, NaN giving 0.
    template <class T, class U>
    static constexpr T convert(U value) {
        if constexpr (std::is_integral_v<T> && std::is_floating_point_v<U>)
            return saturate<T>(static_cast<double>(value));
        else
            return static_cast<T>(value);
    }

    /// a / b; an integer divided by 0 gives 0, floating point follows IEEE 754.
    template <class T>
    static constexpr T divide(T a, T b) {
        if constexpr (std::is_integral_v<T>)
            return b == 0 ? T{0} : saturate<T>(static_cast<double>(a) / static_cast<double>(b));
        else
            return a / b;
    }

    /// The largest value of T: infinity where there is one.
    template <class T>
    static constexpr T limit() {
        using Limits = std::numeric_limits<T>;
        return Limits::has_infinity ? Limits::infinity() : Limits::max();
    }

    /// Euclidean length, without overflow or underflow on the way.
    static double length(double x, double y, double z = 0.0) {
        const double squared = x * x + y * y + z * z;
        const bool isSafe = squared > 1e-280 && squared < 1e280;
        return isSafe ? std::sqrt(squared) : std::hypot(std::hypot(x, y), z);
    }

private:
    template <class T>
    static constexpr T saturate(double value) {
        constexpr double cMax = static_cast<double>(std::numeric_limits<T>::max());
        constexpr double cMin = static_cast<double>(std::numeric_limits<T>::min());
        if (value >= cMax)
            return std::numeric_limits<T>::max();
        if (value <= cMin)
            return std::numeric_limits<T>::min();
        return value == value ? static_cast<T>(value) : T{0};
    }
};
