// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyVec3.h"

/// A station of a path: where, when (seconds), and the velocity there for cubic interpolation; T is float or double.
template <class T>
class KyWayPoint {
public:
    /// Where the path passes.
    KyVec3<T> position;
    /// When it does, in seconds.
    T time = T{0};
    /// Units a second, used by cubic interpolation alone.
    KyVec3<T> cubicVelocity;

    KyWayPoint() = default;
    /// At rest.
    constexpr KyWayPoint(const KyVec3<T>& positionValue, T timeValue)
        : position(positionValue)
        , time(timeValue) {}
    template <class U>
    constexpr explicit KyWayPoint(const KyWayPoint<U>& other)
        : position(other.position)
        , time(static_cast<T>(other.time))
        , cubicVelocity(other.cubicVelocity) {}

    bool operator==(const KyWayPoint&) const = default;

    /// Position, time, velocity.
    std::string toString(int precision = KyNumberText::cDefaultPrecision) const {
        const std::array<T, 7> numbers{position.x,      position.y,      position.z,     time,
                                       cubicVelocity.x, cubicVelocity.y, cubicVelocity.z};
        return KyNumberText::format(numbers, precision);
    }
    friend std::ostream& operator<<(std::ostream& stream, const KyWayPoint& point) {
        return stream << point.toString();
    }
};

/// Reads what `toString` writes; false leaves `point` unchanged.
template <class T>
bool fromString(std::string_view text, KyWayPoint<T>& point) {
    std::array<T, 7> n;
    if (!KyNumberText::parse(text, n))
        return false;
    point = KyWayPoint<T>(KyVec3<T>(n[0], n[1], n[2]), n[3]);
    point.cubicVelocity = KyVec3<T>(n[4], n[5], n[6]);
    return true;
}
