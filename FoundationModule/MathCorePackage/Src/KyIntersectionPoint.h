// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyVec3.h"

/// Where a ray from `origin` meets a surface: position, surface normal and distance from the origin; T is float or
/// double.
template <class T>
class KyIntersectionPoint {
public:
    /// Where the ray begins.
    KyVec3<T> origin;
    /// Where it meets the surface.
    KyVec3<T> position;
    /// Of the surface there.
    KyVec3<T> normal;
    /// From the origin to the position.
    T distance = T{0};

    KyIntersectionPoint() = default;
    /// Converts the components.
    template <class U>
    constexpr explicit KyIntersectionPoint(const KyIntersectionPoint<U>& other)
        : origin(other.origin)
        , position(other.position)
        , normal(other.normal)
        , distance(static_cast<T>(other.distance)) {}

    /// The same numbers.
    bool operator==(const KyIntersectionPoint&) const = default;

    /// Origin, position, normal, distance.
    std::string toString(int precision = KyNumberText::cDefaultPrecision) const {
        const std::array<T, 10> numbers{origin.x,   origin.y, origin.z, position.x, position.y,
                                        position.z, normal.x, normal.y, normal.z,   distance};
        return KyNumberText::format(numbers, precision);
    }
    friend std::ostream& operator<<(std::ostream& stream, const KyIntersectionPoint& point) {
        return stream << point.toString();
    }
};

/// Reads what `toString` writes; false leaves `point` unchanged.
template <class T>
bool fromString(std::string_view text, KyIntersectionPoint<T>& point) {
    std::array<T, 10> n;
    if (!KyNumberText::parse(text, n))
        return false;
    point.origin = KyVec3<T>(n[0], n[1], n[2]);
    point.position = KyVec3<T>(n[3], n[4], n[5]);
    point.normal = KyVec3<T>(n[6], n[7], n[8]);
    point.distance = n[9];
    return true;
}
