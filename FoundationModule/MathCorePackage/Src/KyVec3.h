// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyMathForward.h"
#include "KyNumberText.h"
#include "KyScalar.h"

#include <array>
#include <iosfwd>

/// A vector or point of space; T is int, float or double. Integers are limited to their range.
///
///     const KyVec3d right(1, 0, 0), up(0, 1, 0);
///     right.cross(up);    // (0, 0, 1)
///     2.0 * right + up;   // (2, 1, 0)
template <class T>
class KyVec3 {
public:
    /// Along the first axis: to the right, where nothing else is said.
    T x = T{};
    /// Along the second axis: upwards.
    T y = T{};
    /// Along the third axis: backwards, to the viewer.
    T z = T{};

    /// The null vector.
    KyVec3() = default;
    constexpr KyVec3(T xValue, T yValue, T zValue)
        : x(xValue)
        , y(yValue)
        , z(zValue) {}
    /// From another element type; integers are truncated and limited to their range.
    template <class U>
    constexpr explicit KyVec3(const KyVec3<U>& other)
        : x(KyScalar::convert<T>(other.x))
        , y(KyScalar::convert<T>(other.y))
        , z(KyScalar::convert<T>(other.z)) {}

    /// Component 0 is x, 1 is y, every other index z.
    constexpr T operator[](int index) const { return index == 0 ? x : (index == 1 ? y : z); }
    constexpr T& operator[](int index) { return index == 0 ? x : (index == 1 ? y : z); }

    /// The Euclidean length, without overflow between.
    double length() const {
        return KyScalar::length(static_cast<double>(x), static_cast<double>(y), static_cast<double>(z));
    }
    /// The scalar product, computed in double.
    double dot(const KyVec3& other) const {
        return static_cast<double>(x) * static_cast<double>(other.x) +
               static_cast<double>(y) * static_cast<double>(other.y) +
               static_cast<double>(z) * static_cast<double>(other.z);
    }
    /// Right-handed cross product, in T's own arithmetic.
    constexpr KyVec3 cross(const KyVec3& other) const {
        return KyVec3(KyScalar::determinant(y, other.z, z, other.y), KyScalar::determinant(z, other.x, x, other.z),
                      KyScalar::determinant(x, other.y, y, other.x));
    }
    /// All components are exactly 0.
    bool isNull() const { return x == T{} && y == T{} && z == T{}; }
    /// No component is infinite or NaN.
    bool isFinite() const {
        return std::isfinite(static_cast<double>(x)) && std::isfinite(static_cast<double>(y)) &&
               std::isfinite(static_cast<double>(z));
    }

    /// Makes the length 1 (integers: the nearest whole components); false, unchanged, for a null or not finite vector.
    bool normalize() {
        const double size = length();
        if (size == 0.0 || !std::isfinite(size))
            return false;
        *this =
            KyVec3(KyScalar::round<T>(static_cast<double>(x) / size), KyScalar::round<T>(static_cast<double>(y) / size),
                   KyScalar::round<T>(static_cast<double>(z) / size));
        return true;
    }

    /// @{
    /// In T's own arithmetic, as the operators below.
    constexpr KyVec3& operator+=(const KyVec3& other) { return *this = *this + other; }
    constexpr KyVec3& operator-=(const KyVec3& other) { return *this = *this - other; }
    constexpr KyVec3& operator*=(T factor) { return *this = *this * factor; }
    constexpr KyVec3& operator/=(T divisor) { return *this = *this / divisor; }
    /// @}

    /// @{
    /// Component by component, in T's own arithmetic.
    constexpr KyVec3 operator-() const { return KyVec3(KyScalar::negate(x), KyScalar::negate(y), KyScalar::negate(z)); }
    constexpr KyVec3 operator+(const KyVec3& other) const {
        return KyVec3(KyScalar::add(x, other.x), KyScalar::add(y, other.y), KyScalar::add(z, other.z));
    }
    constexpr KyVec3 operator-(const KyVec3& other) const {
        return KyVec3(KyScalar::subtract(x, other.x), KyScalar::subtract(y, other.y), KyScalar::subtract(z, other.z));
    }
    constexpr KyVec3 operator*(T factor) const {
        return KyVec3(KyScalar::multiply(x, factor), KyScalar::multiply(y, factor), KyScalar::multiply(z, factor));
    }
    /// @}
    /// Component by component.
    constexpr KyVec3 operator*(const KyVec3& other) const {
        return KyVec3(KyScalar::multiply(x, other.x), KyScalar::multiply(y, other.y), KyScalar::multiply(z, other.z));
    }
    /// Integers: truncated, 0 when divided by 0.
    constexpr KyVec3 operator/(T divisor) const {
        return KyVec3(KyScalar::divide(x, divisor), KyScalar::divide(y, divisor), KyScalar::divide(z, divisor));
    }
    friend constexpr KyVec3 operator*(T factor, const KyVec3& vector) { return vector * factor; }
    bool operator==(const KyVec3&) const = default;

    /// "x y z".
    std::string toString(int precision = KyNumberText::cDefaultPrecision) const {
        return KyNumberText::format(std::array<T, 3>{x, y, z}, precision);
    }
    friend std::ostream& operator<<(std::ostream& stream, const KyVec3& vector) { return stream << vector.toString(); }
};

/// Reads "x y z"; false leaves `vector` unchanged.
template <class T>
bool fromString(std::string_view text, KyVec3<T>& vector) {
    std::array<T, 3> numbers;
    if (!KyNumberText::parse(text, numbers))
        return false;
    vector = KyVec3<T>(numbers[0], numbers[1], numbers[2]);
    return true;
}
