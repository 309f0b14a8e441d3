// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

/// Arithmetic that the maths types share for element types int, float and double.
/// Integers saturate where a plain cast or operation would be undefined.
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

    /// a + b; an integer is limited to its range.
    template <class T>
    static constexpr T add(T a, T b) {
        if constexpr (std::is_integral_v<T>)
            return saturate<T>(widen(a) + widen(b));
        else
            return a + b;
    }

    /// a - b; an integer is limited to its range.
    template <class T>
    static constexpr T subtract(T a, T b) {
        if constexpr (std::is_integral_v<T>)
            return saturate<T>(widen(a) - widen(b));
        else
            return a - b;
    }

    /// a * b; an integer is limited to its range.
    template <class T>
    static constexpr T multiply(T a, T b) {
        if constexpr (std::is_integral_v<T>)
            return saturate<T>(widen(a) * widen(b));
        else
            return a * b;
    }

    /// a * b - c * d; an integer is limited to its range at the end only.
    template <class T>
    static constexpr T determinant(T a, T b, T c, T d) {
        if constexpr (std::is_integral_v<T>)
            return saturate<T>(widen(a) * widen(b) - widen(c) * widen(d));
        else
            return a * b - c * d;
    }

    /// -a; the smallest integer gives the largest.
    template <class T>
    static constexpr T negate(T a) {
        if constexpr (std::is_integral_v<T>)
            return saturate<T>(-widen(a));
        else
            return -a;
    }

    /// `a` without sign; the smallest integer gives the largest.
    template <class T>
    static constexpr T absolute(T a) {
        if constexpr (std::is_integral_v<T>)
            return a < T{0} ? negate(a) : a;
        else
            return std::abs(a);
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

    /// The smallest value of T: minus infinity where there is one.
    template <class T>
    static constexpr T lowest() {
        using Limits = std::numeric_limits<T>;
        return Limits::has_infinity ? -Limits::infinity() : Limits::lowest();
    }

    /// Euclidean length, without overflow or underflow on the way.
    static double length(double x, double y, double z = 0.0) {
        const double squared = x * x + y * y + z * z;
        const bool isSafe = squared > 1e-280 && squared < 1e280;
        return isSafe ? std::sqrt(squared) : std::hypot(std::hypot(x, y), z);
    }

private:
    // Any two values of T have their sum and their product in it.
    template <class T>
    static constexpr std::int64_t widen(T value) {
        static_assert(sizeof(T) <= sizeof(std::int32_t) && std::is_signed_v<T>);
        return value;
    }

    template <class T>
    static constexpr T saturate(std::int64_t value) {
        return static_cast<T>(
            std::clamp(value, widen(std::numeric_limits<T>::min()), widen(std::numeric_limits<T>::max())));
    }

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
