// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyRay.h"

/// The points p with normal . p = distance; T is int, float or double. With a normal of length 1, `distance` is the
/// distance from the origin along it; other lengths work too. A null normal describes no plane: it meets nothing.
///
///     const KyPlaned ground(KyVec3d(0, 1, 0), 2.0);
///     ground.getDistanceTo(KyVec3d(5, 3, 5));   // 1
template <class T>
class KyPlane {
public:
    /// Type of the numbers in rays and meeting points: double for integers.
    using Real = KyScalar::Real<T>;

    /// Across the plane; of any length but 0.
    KyVec3<T> normal{T{0}, T{0}, T{1}};
    /// In lengths of the normal, from the origin.
    T distance = T{0};

    /// The plane z = 0.
    KyPlane() = default;
    KyPlane(const KyVec3<T>& normalValue, T distanceValue)
        : normal(normalValue)
        , distance(distanceValue) {}
    /// Through `point`.
    KyPlane(const KyVec3<T>& point, const KyVec3<T>& normalValue)
        : normal(normalValue)
        , distance(KyScalar::round<T>(normalValue.dot(point))) {}
    template <class U>
    explicit KyPlane(const KyPlane<U>& other)
        : normal(other.normal)
        , distance(KyScalar::convert<T>(other.distance)) {}

    /// Positive on the side that the normal points to; 0 for a null normal.
    double getDistanceTo(const KyVec3<T>& point) const;
    /// The nearest point of the plane (integers: rounded); the point itself for a null normal.
    KyVec3<T> projectPoint(const KyVec3<T>& point) const;
    /// Stores where the ray meets the plane, not behind its origin; false, leaving `point`, when it does not or is
    /// parallel.
    bool intersectsRay(const KyRay<Real>& ray, KyVec3<Real>& point) const;
    /// Stores the common line: its point nearest to (0, 0, 0) and a direction of length 1. False, leaving `line`,
    /// for parallel planes.
    bool intersectsPlane(const KyPlane& other, KyRay<Real>& line) const;

    bool operator==(const KyPlane&) const = default;

    /// "normalX normalY normalZ distance".
    std::string toString(int precision = KyNumberText::cDefaultPrecision) const {
        return KyNumberText::format(std::array<T, 4>{normal.x, normal.y, normal.z, distance}, precision);
    }
    friend std::ostream& operator<<(std::ostream& stream, const KyPlane& plane) { return stream << plane.toString(); }

private:
    /// Normal of length 1 and the distance that belongs to it; false for a null normal.
    bool getUnit(KyVec3<double>& unit, double& unitDistance) const;
};

/// Reads what `toString` writes; false leaves `plane` unchanged.
template <class T>
bool fromString(std::string_view text, KyPlane<T>& plane) {
    std::array<T, 4> n;
    if (!KyNumberText::parse(text, n))
        return false;
    plane = KyPlane<T>(KyVec3<T>(n[0], n[1], n[2]), n[3]);
    return true;
}

template <class T>
bool KyPlane<T>::getUnit(KyVec3<double>& unit, double& unitDistance) const {
    unit = KyVec3<double>(normal);
    const double length = unit.length();
    unitDistance = length == 0.0 ? 0.0 : static_cast<double>(distance) / length;
    return unit.normalize();
}

template <class T>
double KyPlane<T>::getDistanceTo(const KyVec3<T>& point) const {
    KyVec3<double> unit;
    double unitDistance = 0.0;
    return getUnit(unit, unitDistance) ? unit.dot(KyVec3<double>(point)) - unitDistance : 0.0;
}

template <class T>
KyVec3<T> KyPlane<T>::projectPoint(const KyVec3<T>& point) const {
    KyVec3<double> unit;
    double unitDistance = 0.0;
    if (!getUnit(unit, unitDistance))
        return point;
    const KyVec3<double> nearest = KyVec3<double>(point) - unit * getDistanceTo(point);
    return KyVec3<T>(KyScalar::round<T>(nearest.x), KyScalar::round<T>(nearest.y), KyScalar::round<T>(nearest.z));
}

template <class T>
bool KyPlane<T>::intersectsRay(const KyRay<Real>& ray, KyVec3<Real>& point) const {
    const KyVec3<double> n(normal), origin(ray.origin), direction(ray.direction);
    const double slope = n.dot(direction);
    if (std::abs(slope) <= 1e-14 * n.length() * direction.length())
        return false;
    const double reach = (static_cast<double>(distance) - n.dot(origin)) / slope;
    if (!(reach >= 0.0) || !std::isfinite(reach))
        return false;
    point = KyVec3<Real>(origin + direction * reach);
    return true;
}

template <class T>
bool KyPlane<T>::intersectsPlane(const KyPlane& other, KyRay<Real>& line) const {
    KyVec3<double> mine, theirs;
    double myDistance = 0.0, theirDistance = 0.0;
    if (!getUnit(mine, myDistance) || !other.getUnit(theirs, theirDistance))
        return false;
    KyVec3<double> direction = mine.cross(theirs);
    const double square = direction.dot(direction);
    constexpr double cParallelSquare = std::is_same_v<T, float> ? 1e-12 : 1e-28;
    if (square < cParallelSquare)
        return false;
    const KyVec3<double> origin =
        (theirs.cross(direction) * myDistance + direction.cross(mine) * theirDistance) / square;
    direction.normalize();
    line = KyRay<Real>(KyVec3<Real>(origin), KyVec3<Real>(direction));
    return true;
}
