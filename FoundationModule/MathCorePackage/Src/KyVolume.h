// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyBoundState.h"
#include "KyMat4.h"
#include "KyRect.h"

#include <concepts>
#include <numeric>

/// An axis-aligned volume of space, the bound of what a scene shows; T is int, float or double. The default is null:
/// it contains nothing and is neutral when merged. Width, height and length lie along x, y and z; the sides belong
/// to the volume. Integers are limited to their range.
///
///     KyVolumed bound;
///     bound.mergePoint(KyVec3d(1, 0, 0));
///     bound.mergePoint(KyVec3d(3, 2, 4));
///     bound.getCenter();   // (2, 1, 2)
template <class T>
class KyVolume {
public:
    /// A number of KyBoundState.
    int state = KyBoundState::eNull;

    /// Null.
    KyVolume() = default;
    /// Finite, from two opposite corners in any order.
    KyVolume(const KyVec3<T>& min, const KyVec3<T>& max) { setMinMax(min, max); }
    template <class U>
    explicit KyVolume(const KyVolume<U>& other)
        : state(other.state)
        , mMin(other.mMin)
        , mMax(other.mMax) {}

    /// The state's number, one of KyBoundState; a number outside counts as finite.
    int getType() const { return isNull() || isInfinite() ? state : static_cast<int>(KyBoundState::eFinite); }
    /// @{
    /// The state; a null volume holds nothing, an infinite one everything.
    bool isNull() const { return state == KyBoundState::eNull; }
    bool isEmpty() const { return isNull(); }
    bool isFinite() const { return !isNull() && !isInfinite(); }
    bool isInfinite() const { return state == KyBoundState::eInfinite; }
    /// @}
    /// Finite, without any extent.
    bool isPoint() const { return isFinite() && mMin == mMax; }

    /// Limits of T when infinite, null vectors when null.
    KyVec3<T> getMin() const;
    /// The upper corner; see getMin.
    KyVec3<T> getMax() const;
    /// The middle.
    KyVec3<T> getCenter() const;
    /// The three extents.
    KyVec3<T> getSize() const;
    /// Along x.
    T getWidth() const { return getSize().x; }
    /// Along y.
    T getHeight() const { return getSize().y; }
    /// Along z.
    T getLength() const { return getSize().z; }
    /// Half the diagonal; 0 when null, infinity when infinite.
    double getRadius() const;
    /// Of the whole surface; the limit of T when infinite or too large.
    T getArea() const;
    /// The limit of T when infinite or too large.
    T getVolume() const;
    /// The outline seen along z, in the same state.
    KyRect<T> getRect() const;
    /// Corner i takes the maximum of x, y, z for the bits 1, 2, 4 of i.
    std::array<KyVec3<T>, 8> getCorners() const;
    /// The bound of this volume moved by `matrix`; null and infinite stay.
    KyVolume getTransformed(const KyMat4<T>& matrix) const requires std::floating_point<T>;

    /// Points of the surface are inside.
    bool contains(const KyVec3<T>& point) const;
    /// Every point of `other`; true for a null one.
    bool contains(const KyVolume& other) const;
    /// Whether there is a common point.
    bool intersects(const KyVolume& other) const;
    /// Stores the common part, which may be flat; false, leaving `common`, when there is none.
    bool getIntersects(const KyVolume& other, KyVolume& common) const;

    /// Makes the volume hold nothing.
    void setNull() { *this = KyVolume(); }
    /// Keeps the corners, which are (0, 0, 0) for a volume that was null or infinite.
    void setFinite() { state = KyBoundState::eFinite; }
    /// Makes the volume hold everything.
    void setInfinite();
    /// Without extent.
    void setPoint(const KyVec3<T>& point) { setMinMax(point, point); }
    /// Moves the volume; null and infinite become a point.
    void setCenter(const KyVec3<T>& center);
    /// The centre stays. Sizes are taken without sign; null and infinite become finite around (0, 0, 0).
    void setSize(const KyVec3<T>& size);
    /// @{
    /// As setSize, along one axis.
    void setWidth(T width) { setExtent(0, width); }
    void setHeight(T height) { setExtent(1, height); }
    void setLength(T length) { setExtent(2, length); }
    /// @}
    /// From two opposite corners, in any order.
    void setMinMax(const KyVec3<T>& first, const KyVec3<T>& second);

    /// Null and infinite stay as they are.
    void translate(const KyVec3<T>& offset);
    /// Multiplies the size; the centre stays.
    void scale(T factor);
    /// Grows to the smallest volume that contains both; null is neutral, infinite wins.
    void merge(const KyVolume& other);
    /// Grows to hold the point.
    void mergePoint(const KyVec3<T>& point) { merge(KyVolume(point, point)); }

    /// The same state, and when finite the same corners.
    bool operator==(const KyVolume& other) const {
        return getType() == other.getType() && (!isFinite() || (mMin == other.mMin && mMax == other.mMax));
    }

    /// "minX minY minZ maxX maxY maxZ", "null" or "infinite".
    std::string toString(int precision = KyNumberText::cDefaultPrecision) const;
    friend std::ostream& operator<<(std::ostream& stream, const KyVolume& volume) {
        return stream << volume.toString();
    }

private:
    template <class U>
    friend class KyVolume;

    static KyVec3<T> getLower(const KyVec3<T>& a, const KyVec3<T>& b);
    static KyVec3<T> getUpper(const KyVec3<T>& a, const KyVec3<T>& b);
    static bool isOrdered(const KyVec3<T>& low, const KyVec3<T>& high);
    void setExtent(int axis, T extent);

    KyVec3<T> mMin;
    KyVec3<T> mMax;
};

/// Reads what `toString` writes; false leaves `volume` unchanged.
template <class T>
bool fromString(std::string_view text, KyVolume<T>& volume) {
    std::array<T, 6> n;
    if (text == "null")
        volume.setNull();
    else if (text == "infinite")
        volume.setInfinite();
    else if (KyNumberText::parse(text, n))
        volume.setMinMax(KyVec3<T>(n[0], n[1], n[2]), KyVec3<T>(n[3], n[4], n[5]));
    else
        return false;
    return true;
}

template <class T>
KyVec3<T> KyVolume<T>::getLower(const KyVec3<T>& a, const KyVec3<T>& b) {
    return KyVec3<T>(std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z));
}

template <class T>
KyVec3<T> KyVolume<T>::getUpper(const KyVec3<T>& a, const KyVec3<T>& b) {
    return KyVec3<T>(std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z));
}

template <class T>
bool KyVolume<T>::isOrdered(const KyVec3<T>& low, const KyVec3<T>& high) {
    return low.x <= high.x && low.y <= high.y && low.z <= high.z;
}

template <class T>
KyVec3<T> KyVolume<T>::getMin() const {
    constexpr T cLowest = KyScalar::lowest<T>();
    return isInfinite() ? KyVec3<T>(cLowest, cLowest, cLowest) : mMin;
}

template <class T>
KyVec3<T> KyVolume<T>::getMax() const {
    constexpr T cLimit = KyScalar::limit<T>();
    return isInfinite() ? KyVec3<T>(cLimit, cLimit, cLimit) : mMax;
}

template <class T>
KyVec3<T> KyVolume<T>::getCenter() const {
    return KyVec3<T>(std::midpoint(mMin.x, mMax.x), std::midpoint(mMin.y, mMax.y), std::midpoint(mMin.z, mMax.z));
}

template <class T>
KyVec3<T> KyVolume<T>::getSize() const {
    return isInfinite() ? getMax() : mMax - mMin;
}

template <class T>
double KyVolume<T>::getRadius() const {
    return isInfinite() ? KyScalar::limit<double>() : (KyVec3<double>(mMax) - KyVec3<double>(mMin)).length() / 2.0;
}

template <class T>
T KyVolume<T>::getArea() const {
    const KyVec3<double> size(getSize());
    return isInfinite() ? KyScalar::limit<T>()
                        : KyScalar::round<T>(2.0 * (size.x * size.y + size.y * size.z + size.z * size.x));
}

template <class T>
T KyVolume<T>::getVolume() const {
    const KyVec3<double> size(getSize());
    return isInfinite() ? KyScalar::limit<T>() : KyScalar::round<T>(size.x * size.y * size.z);
}

template <class T>
KyRect<T> KyVolume<T>::getRect() const {
    KyRect<T> result;
    if (isInfinite())
        result.setInfinite();
    else if (isFinite())
        result.setMinMax(KyVec2<T>(mMin.x, mMin.y), KyVec2<T>(mMax.x, mMax.y));
    return result;
}

template <class T>
std::array<KyVec3<T>, 8> KyVolume<T>::getCorners() const {
    const KyVec3<T> low = getMin(), high = getMax();
    std::array<KyVec3<T>, 8> result;
    for (unsigned i = 0; i < 8; ++i)
        result[i] = KyVec3<T>((i & 1u) ? high.x : low.x, (i & 2u) ? high.y : low.y, (i & 4u) ? high.z : low.z);
    return result;
}

template <class T>
KyVolume<T> KyVolume<T>::getTransformed(const KyMat4<T>& matrix) const requires std::floating_point<T> {
    if (!isFinite())
        return *this;
    KyVolume result;
    for (const KyVec3<T>& corner : getCorners())
        result.mergePoint(matrix.transformPoint(corner));
    return result;
}

template <class T>
bool KyVolume<T>::contains(const KyVec3<T>& point) const {
    return !isNull() && isOrdered(getMin(), point) && isOrdered(point, getMax());
}

template <class T>
bool KyVolume<T>::contains(const KyVolume& other) const {
    if (other.isNull() || isInfinite())
        return true;
    return isFinite() && other.isFinite() && contains(other.mMin) && contains(other.mMax);
}

template <class T>
bool KyVolume<T>::intersects(const KyVolume& other) const {
    return !isNull() && !other.isNull() &&
           isOrdered(getUpper(getMin(), other.getMin()), getLower(getMax(), other.getMax()));
}

template <class T>
bool KyVolume<T>::getIntersects(const KyVolume& other, KyVolume& common) const {
    if (!intersects(other))
        return false;
    if (isInfinite() || other.isInfinite())
        common = isInfinite() ? other : *this;
    else
        common = KyVolume(getUpper(mMin, other.mMin), getLower(mMax, other.mMax));
    return true;
}

template <class T>
void KyVolume<T>::setInfinite() {
    setNull();
    state = KyBoundState::eInfinite;
}

template <class T>
void KyVolume<T>::setCenter(const KyVec3<T>& center) {
    // Both halves fit into T where the way between two centres may not.
    const KyVec3<T> before = getCenter();
    mMin = center - (before - mMin);
    mMax = center + (mMax - before);
    setFinite();
}

template <class T>
void KyVolume<T>::setSize(const KyVec3<T>& size) {
    for (int axis = 0; axis < 3; ++axis)
        setExtent(axis, size[axis]);
}

template <class T>
void KyVolume<T>::setExtent(int axis, T extent) {
    const T size = KyScalar::absolute(extent), half = size / T{2};
    const T center = std::midpoint(mMin[axis], mMax[axis]);
    mMin[axis] = KyScalar::subtract(center, half);
    mMax[axis] = KyScalar::add(center, KyScalar::subtract(size, half));
    setFinite();
}

template <class T>
void KyVolume<T>::setMinMax(const KyVec3<T>& first, const KyVec3<T>& second) {
    mMin = getLower(first, second);
    mMax = getUpper(first, second);
    setFinite();
}

template <class T>
void KyVolume<T>::translate(const KyVec3<T>& offset) {
    if (!isFinite())
        return;
    mMin += offset;
    mMax += offset;
}

template <class T>
void KyVolume<T>::scale(T factor) {
    if (isFinite())
        setSize(getSize() * factor);
}

template <class T>
void KyVolume<T>::merge(const KyVolume& other) {
    if (other.isNull() || isInfinite())
        return;
    if (isNull() || other.isInfinite())
        *this = other;
    else
        setMinMax(getLower(mMin, other.mMin), getUpper(mMax, other.mMax));
}

template <class T>
std::string KyVolume<T>::toString(int precision) const {
    if (!isFinite())
        return isNull() ? "null" : "infinite";
    return KyNumberText::format(std::array<T, 6>{mMin.x, mMin.y, mMin.z, mMax.x, mMax.y, mMax.z}, precision);
}
