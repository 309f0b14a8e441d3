// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyVec3.h"

#include <numbers>

/// A rotation of space as a quaternion; T is float or double. The default is the identity (0, 0, 0, 1).
/// `a * b` rotates by b first, then by a. Rotating works with any length but 0, which rotates nothing.
/// Angles are radians, right-handed. Computed in double precision, stored as T.
///
///     const KyQuatd quarter(KyVec3d(0, 0, 1), std::numbers::pi / 2);
///     quarter.rotate(KyVec3d(1, 0, 0));   // (0, 1, 0)
template <class T>
class KyQuat {
public:
    /// @{
    /// The axis times the sine of half the angle.
    T x = T{0};
    T y = T{0};
    T z = T{0};
    /// @}
    /// The cosine of half the angle.
    T w = T{1};

    /// The identity.
    KyQuat() = default;
    constexpr KyQuat(T xValue, T yValue, T zValue, T wValue)
        : x(xValue)
        , y(yValue)
        , z(zValue)
        , w(wValue) {}
    /// As `setAxisAngle`.
    KyQuat(const KyVec3<T>& axis, T angle) { setAxisAngle(axis, angle); }
    template <class U>
    constexpr explicit KyQuat(const KyQuat<U>& other)
        : x(static_cast<T>(other.x))
        , y(static_cast<T>(other.y))
        , z(static_cast<T>(other.z))
        , w(static_cast<T>(other.w)) {}

    /// Radians, right-handed, about an axis of any length.
    static KyQuat fromAxisAngle(const KyVec3<T>& axis, T angle) { return KyQuat(axis, angle); }
    /// As `setEulerAngles`.
    static KyQuat fromEuler(const KyVec3<T>& angles);
    /// The rotation that turns x, y and z into these axes, which must be of length 1, orthogonal and right-handed.
    static KyQuat fromAxes(const KyVec3<double>& xAxis, const KyVec3<double>& yAxis, const KyVec3<double>& zAxis);

    /// 0 ... 2 pi, about `axis()`; 0 for the null quaternion.
    T angle() const;
    /// Length 1; (0, 0, 1) when nothing is rotated.
    KyVec3<T> axis() const;
    /// As getLength, in T.
    T length() const { return static_cast<T>(getLength()); }
    /// The opposite rotation; the identity for the null quaternion.
    KyQuat getInverse() const;
    /// Where the -z axis points to: the looking direction of a camera.
    KyVec3<T> frontDirection() const { return rotate(KyVec3<T>(T{0}, T{0}, T{-1})); }
    /// The vector turned; its length stays for a quaternion of length 1.
    KyVec3<T> rotate(const KyVec3<T>& vector) const;
    /// The rotation matrix; declared here, defined in KyMat4.h.
    KyMat4<T> getMatrix() const;
    /// The angles (a, b, c) of `setEulerAngles`: a and c in -pi ... pi, b in -pi/2 ... pi/2.
    /// A pure rotation about z gives (0, 0, c); where a and c turn about the same axis, c is 0.
    KyVec3<T> getEulerAngles() const;
    /// As getEulerAngles.
    KyVec3<T> toEuler() const { return getEulerAngles(); }
    /// Spherical interpolation along the shorter way: this rotation at 0, `other` at 1, of length 1.
    KyQuat slerp(const KyQuat& other, T factor) const;

    /// The identity.
    void setNull() { *this = KyQuat(); }
    /// Rotates about `axis`, of any length; a null axis gives the identity.
    void setAxisAngle(const KyVec3<T>& axis, T angle);
    /// Turns c about z, then b about x, then a about y, for the angles (a, b, c).
    void setEulerAngles(const KyVec3<T>& angles);
    /// Looks along `direction` with the y axis as far up as it goes, then turns by `twist` about the direction.
    /// A null direction changes nothing.
    void setFrontDirectionAndTwist(const KyVec3<T>& direction, T twist);
    /// Makes the length 1; false, unchanged, for a null or not finite quaternion.
    bool normalize();

    /// The same rotation, all components negated.
    KyQuat operator-() const { return KyQuat(-x, -y, -z, -w); }
    /// Component by component.
    KyQuat operator+(const KyQuat& other) const { return KyQuat(x + other.x, y + other.y, z + other.z, w + other.w); }
    KyQuat operator-(const KyQuat& other) const { return KyQuat(x - other.x, y - other.y, z - other.z, w - other.w); }
    /// Hamilton product: `other` acts first.
    KyQuat operator*(const KyQuat& other) const;
    /// Component by component; q and -q differ though they rotate alike.
    bool operator==(const KyQuat&) const = default;

    /// "x y z w".
    std::string toString(int precision = KyNumberText::cDefaultPrecision) const {
        return KyNumberText::format(std::array<T, 4>{x, y, z, w}, precision);
    }
    friend std::ostream& operator<<(std::ostream& stream, const KyQuat& quat) { return stream << quat.toString(); }

private:
    static constexpr double cNullSquare = 1e-300;

    double getLength() const;
    double getSquaredLength() const;
    static T wrapAngle(double angle);
};

/// Reads "x y z w"; false leaves `quat` unchanged.
template <class T>
bool fromString(std::string_view text, KyQuat<T>& quat) {
    std::array<T, 4> numbers;
    if (!KyNumberText::parse(text, numbers))
        return false;
    quat = KyQuat<T>(numbers[0], numbers[1], numbers[2], numbers[3]);
    return true;
}

template <class T>
KyQuat<T> KyQuat<T>::fromEuler(const KyVec3<T>& angles) {
    KyQuat result;
    result.setEulerAngles(angles);
    return result;
}

template <class T>
KyQuat<T> KyQuat<T>::fromAxes(const KyVec3<double>& xAxis, const KyVec3<double>& yAxis, const KyVec3<double>& zAxis) {
    // Four times the squared component; dividing by the largest one loses no precision.
    const std::array<double, 4> squares{1.0 + xAxis.x - yAxis.y - zAxis.z, 1.0 - xAxis.x + yAxis.y - zAxis.z,
                                        1.0 - xAxis.x - yAxis.y + zAxis.z, 1.0 + xAxis.x + yAxis.y + zAxis.z};
    int largest = 3;
    for (int i = 0; i < 3; ++i)
        if (squares[static_cast<std::size_t>(i)] > squares[static_cast<std::size_t>(largest)])
            largest = i;
    const double square = squares[static_cast<std::size_t>(largest)];
    const double xy = yAxis.x + xAxis.y, xz = zAxis.x + xAxis.z, yz = zAxis.y + yAxis.z;
    const double xw = yAxis.z - zAxis.y, yw = zAxis.x - xAxis.z, zw = xAxis.y - yAxis.x;
    const std::array<KyQuat<double>, 4> candidates{
        KyQuat<double>(square, xy, xz, xw), KyQuat<double>(xy, square, yz, yw), KyQuat<double>(xz, yz, square, zw),
        KyQuat<double>(xw, yw, zw, square)};
    KyQuat<double> result = candidates[static_cast<std::size_t>(largest)];
    if (!result.normalize())
        return KyQuat();
    return KyQuat(result.w < 0.0 ? -result : result);
}

template <class T>
double KyQuat<T>::getLength() const {
    const KyQuat<double> q(*this);
    return KyScalar::length(KyScalar::length(q.x, q.y, q.z), q.w);
}

template <class T>
double KyQuat<T>::getSquaredLength() const {
    const KyQuat<double> q(*this);
    return q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w;
}

template <class T>
T KyQuat<T>::wrapAngle(double angle) {
    return static_cast<T>(std::abs(angle) > std::numbers::pi ? std::remainder(angle, 2.0 * std::numbers::pi) : angle);
}

template <class T>
T KyQuat<T>::angle() const {
    const double sine = KyVec3<T>(x, y, z).length();
    return static_cast<T>(2.0 * std::atan2(sine, static_cast<double>(w)));
}

template <class T>
KyVec3<T> KyQuat<T>::axis() const {
    KyVec3<T> result(x, y, z);
    return result.normalize() ? result : KyVec3<T>(T{0}, T{0}, T{1});
}

template <class T>
KyQuat<T> KyQuat<T>::getInverse() const {
    const double square = getSquaredLength();
    if (square < cNullSquare)
        return KyQuat();
    return KyQuat(KyQuat<double>(-static_cast<double>(x) / square, -static_cast<double>(y) / square,
                                 -static_cast<double>(z) / square, static_cast<double>(w) / square));
}

template <class T>
KyVec3<T> KyQuat<T>::rotate(const KyVec3<T>& vector) const {
    const double square = getSquaredLength();
    if (square < cNullSquare)
        return vector;
    const KyVec3<double> u(static_cast<double>(x), static_cast<double>(y), static_cast<double>(z));
    const KyVec3<double> v(vector);
    const KyVec3<double> t = u.cross(v) * (2.0 / square);
    return KyVec3<T>(v + t * static_cast<double>(w) + u.cross(t));
}

template <class T>
KyVec3<T> KyQuat<T>::getEulerAngles() const {
    // With sa = sin(a / 2) and so on, y + z and w - x have the common factor cb - sb, y - z and w + x the factor
    // cb + sb; neither is negative, so the half sum and half difference of a and c follow without loss.
    const KyQuat<double> q(*this);
    const double lower = KyScalar::length(q.w - q.x, q.y + q.z);
    const double upper = KyScalar::length(q.w + q.x, q.y - q.z);
    if (lower == 0.0 && upper == 0.0)
        return KyVec3<T>();
    const double b = std::numbers::pi / 2 - 2.0 * std::atan2(lower, upper);
    const double halfSum = std::atan2(q.y + q.z, q.w - q.x);
    const double halfDifference = std::atan2(q.y - q.z, q.w + q.x);
    constexpr double cLocked = std::is_same_v<T, float> ? 1e-6 : 1e-12;
    if (lower < cLocked * upper)
        return KyVec3<T>(wrapAngle(2.0 * halfDifference), static_cast<T>(b), T{0});
    if (upper < cLocked * lower)
        return KyVec3<T>(wrapAngle(2.0 * halfSum), static_cast<T>(b), T{0});
    return KyVec3<T>(wrapAngle(halfSum + halfDifference), static_cast<T>(b), wrapAngle(halfSum - halfDifference));
}

template <class T>
KyQuat<T> KyQuat<T>::slerp(const KyQuat& other, T factor) const {
    KyQuat<double> from(*this), to(other);
    if (!from.normalize())
        from.setNull();
    if (!to.normalize())
        to.setNull();
    if (from.x * to.x + from.y * to.y + from.z * to.z + from.w * to.w < 0.0)
        to = -to;
    const KyQuat<double> gap = to - from, sum = to + from;
    const double halfAngle = std::atan2(gap.length(), sum.length());
    const double sine = std::sin(2.0 * halfAngle);
    const double t = static_cast<double>(factor);
    const bool isClose = sine < 1e-9;
    const double a = isClose ? 1.0 - t : std::sin((1.0 - t) * 2.0 * halfAngle) / sine;
    const double b = isClose ? t : std::sin(t * 2.0 * halfAngle) / sine;
    KyQuat<double> result(a * from.x + b * to.x, a * from.y + b * to.y, a * from.z + b * to.z, a * from.w + b * to.w);
    return result.normalize() ? KyQuat(result) : *this;
}

template <class T>
void KyQuat<T>::setAxisAngle(const KyVec3<T>& axis, T angle) {
    KyVec3<double> unit(axis);
    if (!unit.normalize())
        return setNull();
    const double half = static_cast<double>(angle) / 2.0;
    const KyVec3<double> part = unit * std::sin(half);
    *this = KyQuat(KyQuat<double>(part.x, part.y, part.z, std::cos(half)));
}

template <class T>
void KyQuat<T>::setEulerAngles(const KyVec3<T>& angles) {
    const KyVec3<double> half = KyVec3<double>(angles) / 2.0;
    const double sa = std::sin(half.x), ca = std::cos(half.x);
    const double sb = std::sin(half.y), cb = std::cos(half.y);
    const double sc = std::sin(half.z), cc = std::cos(half.z);
    *this = KyQuat(KyQuat<double>(sb * ca * cc + cb * sa * sc, cb * sa * cc - sb * ca * sc, cb * ca * sc - sb * sa * cc,
                                  cb * ca * cc + sb * sa * sc));
}

template <class T>
void KyQuat<T>::setFrontDirectionAndTwist(const KyVec3<T>& direction, T twist) {
    KyVec3<double> front(direction);
    if (!front.normalize())
        return;
    const double level = KyScalar::length(front.x, front.z);
    const double yaw = level == 0.0 ? 0.0 : std::atan2(-front.x, -front.z);
    const double pitch = std::atan2(front.y, level);
    *this = KyQuat(KyQuat<double>::fromEuler(KyVec3<double>(yaw, pitch, -static_cast<double>(twist))));
}

template <class T>
bool KyQuat<T>::normalize() {
    const KyQuat<double> q(*this);
    const double size = getLength();
    if (size == 0.0 || !std::isfinite(size))
        return false;
    *this = KyQuat(KyQuat<double>(q.x / size, q.y / size, q.z / size, q.w / size));
    return true;
}

template <class T>
KyQuat<T> KyQuat<T>::operator*(const KyQuat& other) const {
    return KyQuat(
        w * other.x + x * other.w + y * other.z - z * other.y, w * other.y - x * other.z + y * other.w + z * other.x,
        w * other.z + x * other.y - y * other.x + z * other.w, w * other.w - x * other.x - y * other.y - z * other.z);
}

// KyMat4.h needs this class whole and defines getMatrix.
#include "KyMat4.h"
