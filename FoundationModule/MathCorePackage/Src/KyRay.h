// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyVec3.h"

/// A half line: from `origin` along `direction`, whose length is the unit of `getPoint`; T is float or double.
///
///     KyRayd(KyVec3d(0, 0, 5), KyVec3d(0, 0, -1)).getPoint(2.0);   // (0, 0, 3)
template <class T>
class KyRay {
public:
    /// Where it begins.
    KyVec3<T> origin;
    /// Where it goes; of any length.
    KyVec3<T> direction;

    KyRay() = default;
    /// The direction is taken as it is.
    constexpr KyRay(const KyVec3<T>& originValue, const KyVec3<T>& directionValue)
        : origin(originValue)
        , direction(directionValue) {}
    /// Converts the components.
    template <class U>
    constexpr explicit KyRay(const KyRay<U>& other)
        : origin(other.origin)
        , direction(other.direction) {}

    /// The point that lies that many lengths of the direction from the origin.
    KyVec3<T> getPoint(T distance) const { return origin + direction * distance; }
    bool operator==(const KyRay&) const = default;

    /// Origin, then direction.
    std::string toString(int precision = KyNumberText::cDefaultPrecision) const {
        const std::array<T, 6> numbers{origin.x, origin.y, origin.z, direction.x, direction.y, direction.z};
        return KyNumberText::format(numbers, precision);
    }
    friend std::ostream& operator<<(std::ostream& stream, const KyRay& ray) { return stream << ray.toString(); }
};

/// Reads what `toString` writes; false leaves `ray` unchanged.
template <class T>
bool fromString(std::string_view text, KyRay<T>& ray) {
    std::array<T, 6> n;
    if (!KyNumberText::parse(text, n))
        return false;
    ray = KyRay<T>(KyVec3<T>(n[0], n[1], n[2]), KyVec3<T>(n[3], n[4], n[5]));
    return true;
}
