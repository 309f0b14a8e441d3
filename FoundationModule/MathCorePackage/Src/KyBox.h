// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyVolume.h"

/// An oriented box of space: a centre, an orientation and a size along its own axes; T is float or double. The
/// default is null: it contains nothing and is neutral when merged. Width, height and length lie along the box's own
/// x, y and z axes. A point in the box's local frame is measured from the centre along these axes.
///
///     const KyBoxd box(KyVec3d(0, 0, 5), KyQuatd(KyVec3d(0, 1, 0), 0.5), KyVec3d(2, 2, 2));
///     box.worldToLocal(KyVec3d(0, 0, 5));   // (0, 0, 0)
template <class T>
class KyBox {
public:
    /// The box's own axes.
    enum Axis : int { eX, eY, eZ, eNbAxes };

    /// A number of KyBoundState.
    int state = KyBoundState::eNull;

    /// Null.
    KyBox() = default;
    /// As `setMinMax`.
    KyBox(const KyVec3<T>& min, const KyVec3<T>& max) { setMinMax(min, max); }
    KyBox(const KyVec3<T>& center, const KyQuat<T>& orientation, const KyVec3<T>& size);
    template <class U>
    explicit KyBox(const KyBox<U>& other);

    /// The state's number, one of KyBoundState; a number outside counts as finite.
    int getType() const { return isNull() || isInfinite() ? state : static_cast<int>(KyBoundState::eFinite); }
    /// @{
    /// The state; a null box holds nothing, an infinite one everything.
    bool isNull() const { return state == KyBoundState::eNull; }
    bool isEmpty() const { return isNull(); }
    bool isFinite() const { return !isNull() && !isInfinite(); }
    bool isInfinite() const { return state == KyBoundState::eInfinite; }
    /// @}
    /// Finite, without any extent.
    bool isPoint() const { return isFinite() && mSize.isNull(); }

    /// The middle; (0, 0, 0) when null or infinite.
    KyVec3<T> getCenter() const { return mCenter; }
    /// From the box's local frame to the world.
    KyQuat<T> getOrientation() const { return mOrientation; }
    /// Direction of one of the box's own axes, in the world.
    KyVec3<T> getAxis(Axis axis) const;
    /// Infinity along every axis when infinite.
    KyVec3<T> getSize() const;
    /// Along the own x axis.
    T getWidth() const { return getSize().x; }
    /// Along the own y axis.
    T getHeight() const { return getSize().y; }
    /// Along the own z axis.
    T getLength() const { return getSize().z; }
    /// Half the diagonal; 0 when null, infinity when infinite.
    double getRadius() const { return KyVec3<double>(getSize()).length() / 2.0; }
    /// Of the whole surface.
    T getArea() const { return getLocalVolume().getArea(); }
    /// Product of the three sizes.
    T getVolume() const { return getLocalVolume().getVolume(); }
    /// The outline of the axis-aligned bound seen along z, in the same state.
    KyRect<T> getRect() const { return getBoundingVolume().getRect(); }
    /// The axis-aligned bound, in the same state.
    KyVolume<T> getBoundingVolume() const;
    /// Corner i lies on the positive side of x, y, z for the bits 1, 2, 4 of i.
    std::array<KyVec3<T>, 8> getCorners() const;

    /// Points of the surface are inside.
    bool contains(const KyVec3<T>& point) const;
    /// Every point of `other`; true for a null one.
    bool contains(const KyBox& other) const;
    /// Whether there is a common point.
    bool intersects(const KyBox& other) const;
    /// Stores a box in this orientation that encloses the common part (exact for equal orientations); false, leaving
    /// `common`, when there is none.
    bool getIntersects(const KyBox& other, KyBox& common) const;

    /// From the world to the box's local frame.
    KyVec3<T> worldToLocal(const KyVec3<T>& point) const { return mOrientation.getInverse().rotate(point - mCenter); }
    /// From the box's local frame to the world.
    KyVec3<T> localToWorld(const KyVec3<T>& point) const { return mOrientation.rotate(point) + mCenter; }
    /// From this box's local frame to that of `other`.
    KyVec3<T> frameToFrame(const KyBox& other, const KyVec3<T>& point) const {
        return other.worldToLocal(localToWorld(point));
    }

    /// Makes the box hold nothing.
    void setNull() { *this = KyBox(); }
    /// Keeps centre, orientation and size; those of a box that was null or infinite are 0.
    void setFinite() { state = KyBoundState::eFinite; }
    /// Makes the box hold everything.
    void setInfinite();
    /// Axis-aligned, without extent.
    void setPoint(const KyVec3<T>& point) { setMinMax(point, point); }
    /// Null and infinite become a point.
    void setCenter(const KyVec3<T>& center);
    /// Null and infinite become a point. A null quaternion counts as the identity.
    void setOrientation(const KyQuat<T>& orientation);
    /// Sizes are taken without sign; null and infinite become finite around (0, 0, 0).
    void setSize(const KyVec3<T>& size);
    /// @{
    /// As setSize, along one of the own axes.
    void setWidth(T width) { setSize(KyVec3<T>(width, mSize.y, mSize.z)); }
    void setHeight(T height) { setSize(KyVec3<T>(mSize.x, height, mSize.z)); }
    void setLength(T length) { setSize(KyVec3<T>(mSize.x, mSize.y, length)); }
    /// @}
    /// Axis-aligned, from two opposite corners in any order.
    void setMinMax(const KyVec3<T>& first, const KyVec3<T>& second);

    /// Null and infinite stay as they are.
    void translate(const KyVec3<T>& offset);
    /// Multiplies the size; the centre stays.
    void scale(T factor);
    /// Grows, in its own orientation, until it contains both; null is neutral, infinite wins.
    void merge(const KyBox& other);

    /// The same state, and when finite the same centre, orientation and size.
    bool operator==(const KyBox& other) const {
        return getType() == other.getType() && mCenter == other.mCenter && mOrientation == other.mOrientation &&
               mSize == other.mSize;
    }

    /// Centre, orientation (x y z w) and size, "null" or "infinite".
    std::string toString(int precision = KyNumberText::cDefaultPrecision) const;
    friend std::ostream& operator<<(std::ostream& stream, const KyBox& box) { return stream << box.toString(); }

private:
    /// The box in its own local frame.
    KyVolume<T> getLocalVolume() const;
    /// The bound of `other` in this box's local frame.
    KyVolume<T> getBoundInFrame(const KyBox& other) const;
    void setFromLocal(const KyVolume<T>& volume);
    /// Half the width of the box's shadow on `direction`.
    double getReach(const KyVec3<double>& direction) const;
    bool isSeparatedAlong(const KyVec3<double>& direction, const KyBox& other) const;

    KyVec3<T> mCenter;
    KyQuat<T> mOrientation;
    KyVec3<T> mSize;
};

/// Reads what `toString` writes; false leaves `box` unchanged.
template <class T>
bool fromString(std::string_view text, KyBox<T>& box) {
    std::array<T, 10> n;
    if (text == "null")
        box.setNull();
    else if (text == "infinite")
        box.setInfinite();
    else if (KyNumberText::parse(text, n))
        box = KyBox<T>(KyVec3<T>(n[0], n[1], n[2]), KyQuat<T>(n[3], n[4], n[5], n[6]), KyVec3<T>(n[7], n[8], n[9]));
    else
        return false;
    return true;
}

template <class T>
KyBox<T>::KyBox(const KyVec3<T>& center, const KyQuat<T>& orientation, const KyVec3<T>& size) {
    setCenter(center);
    setOrientation(orientation);
    setSize(size);
}

template <class T>
template <class U>
KyBox<T>::KyBox(const KyBox<U>& other)
    : KyBox(KyVec3<T>(other.getCenter()), KyQuat<T>(other.getOrientation()), KyVec3<T>()) {
    if (other.isFinite())
        setSize(KyVec3<T>(other.getSize()));
    state = other.state;
}

template <class T>
KyVec3<T> KyBox<T>::getAxis(Axis axis) const {
    KyVec3<T> unit;
    unit[axis] = T{1};
    return mOrientation.rotate(unit);
}

template <class T>
KyVec3<T> KyBox<T>::getSize() const {
    constexpr T cLimit = KyScalar::limit<T>();
    return isInfinite() ? KyVec3<T>(cLimit, cLimit, cLimit) : mSize;
}

template <class T>
KyVolume<T> KyBox<T>::getBoundingVolume() const {
    return getLocalVolume().getTransformed(KyMat4<T>(mOrientation, mCenter));
}

template <class T>
std::array<KyVec3<T>, 8> KyBox<T>::getCorners() const {
    std::array<KyVec3<T>, 8> result = getLocalVolume().getCorners();
    if (isFinite())
        std::transform(result.begin(), result.end(), result.begin(),
                       [this](const KyVec3<T>& corner) { return localToWorld(corner); });
    return result;
}

template <class T>
bool KyBox<T>::contains(const KyVec3<T>& point) const {
    return getLocalVolume().contains(worldToLocal(point));
}

template <class T>
bool KyBox<T>::contains(const KyBox& other) const {
    return getLocalVolume().contains(getBoundInFrame(other));
}

template <class T>
bool KyBox<T>::intersects(const KyBox& other) const {
    if (!isFinite() || !other.isFinite())
        return !isNull() && !other.isNull();
    // Two convex bodies are apart exactly when their shadows on one of these fifteen axes are.
    for (int i = 0; i < eNbAxes; ++i) {
        const KyVec3<double> mine(getAxis(static_cast<Axis>(i)));
        if (isSeparatedAlong(mine, other) ||
            isSeparatedAlong(KyVec3<double>(other.getAxis(static_cast<Axis>(i))), other))
            return false;
        for (int j = 0; j < eNbAxes; ++j)
            if (isSeparatedAlong(mine.cross(KyVec3<double>(other.getAxis(static_cast<Axis>(j)))), other))
                return false;
    }
    return true;
}

template <class T>
bool KyBox<T>::getIntersects(const KyBox& other, KyBox& common) const {
    if (!intersects(other))
        return false;
    KyBox result = isInfinite() ? other : *this;
    KyVolume<T> part;
    if (isFinite() && other.isFinite() && getLocalVolume().getIntersects(getBoundInFrame(other), part))
        result.setFromLocal(part);
    common = result;
    return true;
}

template <class T>
void KyBox<T>::setInfinite() {
    setNull();
    state = KyBoundState::eInfinite;
}

template <class T>
void KyBox<T>::setCenter(const KyVec3<T>& center) {
    mCenter = center;
    setFinite();
}

template <class T>
void KyBox<T>::setOrientation(const KyQuat<T>& orientation) {
    mOrientation = orientation == KyQuat<T>(T{0}, T{0}, T{0}, T{0}) ? KyQuat<T>() : orientation;
    setFinite();
}

template <class T>
void KyBox<T>::setSize(const KyVec3<T>& size) {
    mSize = KyVec3<T>(std::abs(size.x), std::abs(size.y), std::abs(size.z));
    setFinite();
}

template <class T>
void KyBox<T>::setMinMax(const KyVec3<T>& first, const KyVec3<T>& second) {
    mOrientation.setNull();
    mCenter = KyVec3<T>();
    setFromLocal(KyVolume<T>(first, second));
}

template <class T>
void KyBox<T>::translate(const KyVec3<T>& offset) {
    if (isFinite())
        mCenter += offset;
}

template <class T>
void KyBox<T>::scale(T factor) {
    if (isFinite())
        setSize(mSize * factor);
}

template <class T>
void KyBox<T>::merge(const KyBox& other) {
    if (other.isNull() || isInfinite())
        return;
    if (isNull() || other.isInfinite()) {
        *this = other;
        return;
    }
    KyVolume<T> whole = getLocalVolume();
    whole.merge(getBoundInFrame(other));
    setFromLocal(whole);
}

template <class T>
std::string KyBox<T>::toString(int precision) const {
    if (!isFinite())
        return isNull() ? "null" : "infinite";
    const std::array<T, 10> numbers{mCenter.x,      mCenter.y,      mCenter.z, mOrientation.x, mOrientation.y,
                                    mOrientation.z, mOrientation.w, mSize.x,   mSize.y,        mSize.z};
    return KyNumberText::format(numbers, precision);
}

template <class T>
KyVolume<T> KyBox<T>::getLocalVolume() const {
    KyVolume<T> result(mSize / T{-2}, mSize / T{2});
    result.state = getType();
    return result;
}

template <class T>
KyVolume<T> KyBox<T>::getBoundInFrame(const KyBox& other) const {
    KyVolume<T> result;
    if (!other.isFinite())
        result.state = other.getType();
    else
        for (const KyVec3<T>& corner : other.getCorners())
            result.mergePoint(worldToLocal(corner));
    return result;
}

template <class T>
void KyBox<T>::setFromLocal(const KyVolume<T>& volume) {
    mCenter = localToWorld(volume.getCenter());
    setSize(volume.getSize());
}

template <class T>
double KyBox<T>::getReach(const KyVec3<double>& direction) const {
    double result = 0.0;
    for (int i = 0; i < eNbAxes; ++i)
        result +=
            std::abs(KyVec3<double>(getAxis(static_cast<Axis>(i))).dot(direction)) * static_cast<double>(mSize[i]);
    return result / 2.0;
}

template <class T>
bool KyBox<T>::isSeparatedAlong(const KyVec3<double>& direction, const KyBox& other) const {
    // The cross product of parallel axes is rounding noise.
    if (direction.dot(direction) < 1e-12)
        return false;
    const double distance = std::abs((KyVec3<double>(other.mCenter) - KyVec3<double>(mCenter)).dot(direction));
    return distance > getReach(direction) + other.getReach(direction);
}
