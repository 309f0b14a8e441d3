// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyMathForward.h"
#include "KyNumberText.h"
#include "KyScalar.h"

#include <array>
#include <iosfwd>

/// A vector or point of the plane; T is int, float or double. Integers are limited to their range.
///
///     KyVec2d step(3.0, 4.0);
///     step.length();      // 5
///     step.normalize();   // (0.6, 0.8)
template <class T>
class KyVec2 {
public:
    /// The first component.
    T x = T{};
    /// The second component.
    T y = T{};

    /// The null vector.
    KyVec2() = default;
    constexpr KyVec2(T xValue, T yValue)
        : x(xValue)
        , y(yValue) {}
    /// From another element type; integers are truncated and limited to their range.
    template <class U>
    constexpr explicit KyVec2(const KyVec2<U>& other)
        : x(KyScalar::convert<T>(other.x))
        , y(KyScalar::convert<T>(other.y)) {}

    /// Component 0 is x, every other index y.
    constexpr T operator[](int index) const { return index == 0 ? x : y; }
    constexpr T& operator[](int index) { return index == 0 ? x : y; }

    /// The Euclidean length, without overflow between.
    double length() const { return KyScalar::length(static_cast<double>(x), static_cast<double>(y)); }
    /// The scalar product, computed in double.
    double dot(const KyVec2& other) const {
        return static_cast<double>(x) * static_cast<double>(other.x) +
               static_cast<double>(y) * static_cast<double>(other.y);
    }
    /// z of the cross product: positive when `other` lies counter-clockwise of this vector.
    double cross(const KyVec2& other) const {
        return static_cast<double>(x) * static_cast<double>(other.y) -
               static_cast<double>(y) * static_cast<double>(other.x);
    }
    /// Both components are exactly 0.
    bool isNull() const { return x == T{} && y == T{}; }
    /// No component is infinite or NaN.
    bool isFinite() const { return std::isfinite(static_cast<double>(x)) && std::isfinite(static_cast<double>(y)); }

    /// Makes the length 1 (integers: the nearest whole components); false, unchanged, for a null or not finite vector.
    bool normalize() {
        const double size = length();
        if (size == 0.0 || !std::isfinite(size))
            return false;
        *this = KyVec2(KyScalar::round<T>(static_cast<double>(x) / size),
                       KyScalar::round<T>(static_cast<double>(y) / size));
        return true;
    }

    /// @{
    /// In T's own arithmetic, as the operators below.
    constexpr KyVec2& operator+=(const KyVec2& other) { return *this = *this + other; }
    constexpr KyVec2& operator-=(const KyVec2& other) { return *this = *this - other; }
    constexpr KyVec2& operator*=(T factor) { return *this = *this * factor; }
    constexpr KyVec2& operator/=(T divisor) { return *this = *this / divisor; }
    /// @}

    /// @{
    /// Component by component, in T's own arithmetic.
    constexpr KyVec2 operator-() const { return KyVec2(KyScalar::negate(x), KyScalar::negate(y)); }
    constexpr KyVec2 operator+(const KyVec2& other) const {
        return KyVec2(KyScalar::add(x, other.x), KyScalar::add(y, other.y));
    }
    constexpr KyVec2 operator-(const KyVec2& other) const {
        return KyVec2(KyScalar::subtract(x, other.x), KyScalar::subtract(y, other.y));
    }
    constexpr KyVec2 operator*(T factor) const {
        return KyVec2(KyScalar::multiply(x, factor), KyScalar::multiply(y, factor));
    }
    /// @}
    /// Component by component.
    constexpr KyVec2 operator*(const KyVec2& other) const {
        return KyVec2(KyScalar::multiply(x, other.x), KyScalar::multiply(y, other.y));
    }
    /// Integers: truncated, 0 when divided by 0.
    constexpr KyVec2 operator/(T divisor) const {
        return KyVec2(KyScalar::divide(x, divisor), KyScalar::divide(y, divisor));
    }
    friend constexpr KyVec2 operator*(T factor, const KyVec2& vector) { return vector * factor; }
    bool operator==(const KyVec2&) const = default;

    /// "x y".
    std::string toString(int precision = KyNumberText::cDefaultPrecision) const {
        return KyNumberText::format(std::array<T, 2>{x, y}, precision);
    }
    friend std::ostream& operator<<(std::ostream& stream, const KyVec2& vector) { return stream << vector.toString(); }
};

/// Reads "x y"; false leaves `vector` unchanged.
template <class T>
bool fromString(std::string_view text, KyVec2<T>& vector) {
    std::array<T, 2> numbers;
    if (!KyNumberText::parse(text, numbers))
        return false;
    vector = KyVec2<T>(numbers[0], numbers[1]);
    return true;
}
