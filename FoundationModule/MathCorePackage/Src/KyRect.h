// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyBoundState.h"
#include "KyVec2.h"

#include <algorithm>

/// An axis-aligned rectangle of the plane; T is int, float or double. A negative width or height spans the area to
/// the left or below the origin. (0, 0, 0, 0) is the null rectangle, which contains nothing; every other rectangle
/// without area is a line or a point and counts when merged. Edges belong to the rectangle. Integers are limited to
/// their range: an end beyond it lies at the limit, and so does a width between ends that are further apart.
///
///     KyRectd bound;                              // null
///     bound.merge(KyRectd(1.0, 1.0, 2.0, 0.0));   // the line alone, not stretched to (0, 0)
template <class T>
class KyRect {
public:
    /// One corner: that of the least x and y when width and height are not negative.
    KyVec2<T> origin;
    /// Along x.
    T width = T{};
    /// Along y.
    T height = T{};
    /// A number of KyBoundState; a null one with any number other than 0 is finite.
    int state = KyBoundState::eNull;

    /// Null.
    KyRect() = default;
    constexpr KyRect(T x, T y, T widthValue, T heightValue)
        : origin(x, y)
        , width(widthValue)
        , height(heightValue) {
        state = getType();
    }
    constexpr KyRect(const KyVec2<T>& originValue, const KyVec2<T>& size)
        : KyRect(originValue.x, originValue.y, size.x, size.y) {}
    template <class U>
    constexpr explicit KyRect(const KyRect<U>& other)
        : origin(other.origin)
        , width(KyScalar::convert<T>(other.width))
        , height(KyScalar::convert<T>(other.height))
        , state(other.state) {}

    /// The state's number, one of KyBoundState.
    constexpr int getType() const {
        const bool isZero = origin == KyVec2<T>() && width == T{} && height == T{};
        if (state == KyBoundState::eInfinite || (state == KyBoundState::eNull && isZero))
            return state;
        return KyBoundState::eFinite;
    }
    /// @{
    /// The state; a null rectangle holds nothing, an infinite one everything.
    bool isNull() const { return getType() == KyBoundState::eNull; }
    bool isFinite() const { return getType() == KyBoundState::eFinite; }
    bool isInfinite() const { return getType() == KyBoundState::eInfinite; }
    /// @}
    /// Finite, without width and height.
    bool isPoint() const { return isFinite() && width == T{} && height == T{}; }

    /// Width and height, as getWidth and getHeight give them.
    KyVec2<T> getSize() const { return KyVec2<T>(getWidth(), getHeight()); }
    /// The limit of T when infinite.
    T getWidth() const { return isInfinite() ? KyScalar::limit<T>() : width; }
    /// See getWidth.
    T getHeight() const { return isInfinite() ? KyScalar::limit<T>() : height; }
    /// The smaller of both ends on each axis.
    KyVec2<T> getMin() const;
    /// The larger of both ends on each axis.
    KyVec2<T> getMax() const;
    /// The middle of origin and size, whatever the state.
    KyVec2<T> getCenter() const { return origin + KyVec2<T>(width, height) / T{2}; }
    /// Half the diagonal; 0 when null, infinity when infinite.
    double getRadius() const;
    /// Without sign; the limit of T when infinite or too large.
    T getArea() const;
    /// Points of the border are inside.
    bool contains(const KyVec2<T>& point) const;
    /// Whether there is a common point.
    bool intersects(const KyRect& other) const;
    /// Stores the common part, which may be a line or a point; false, leaving `common`, when there is none.
    bool getIntersects(const KyRect& other, KyRect& common) const;

    /// Makes the rectangle hold nothing.
    void setNull() { *this = KyRect(); }
    /// Keeps the numbers; (0, 0, 0, 0) becomes the point (0, 0).
    void setFinite() { state = KyBoundState::eFinite; }
    /// Makes the rectangle hold everything.
    void setInfinite();
    /// Without width and height.
    void setPoint(const KyVec2<T>& point);
    /// Makes an infinite rectangle finite, as every setter of a size or position does.
    void setOrigin(const KyVec2<T>& value);
    /// @{
    /// The origin stays.
    void setSize(const KyVec2<T>& size);
    void setWidth(T value) { setSize(KyVec2<T>(value, height)); }
    void setHeight(T value) { setSize(KyVec2<T>(width, value)); }
    /// @}
    /// From two opposite corners, in any order.
    void setMinMax(const KyVec2<T>& first, const KyVec2<T>& second);

    /// A null or infinite rectangle stays as it is.
    void translate(const KyVec2<T>& offset);
    /// Multiplies width and height; the centre stays.
    void scale(T factor);
    /// Grows to the smallest rectangle that contains both; null is neutral, infinite wins.
    void merge(const KyRect& other);

    /// The same state and the same numbers.
    bool operator==(const KyRect& other) const {
        return getType() == other.getType() && origin == other.origin && width == other.width && height == other.height;
    }

    /// "x y width height", or "infinite".
    std::string toString(int precision = KyNumberText::cDefaultPrecision) const {
        return isInfinite() ? "infinite"
                            : KyNumberText::format(std::array<T, 4>{origin.x, origin.y, width, height}, precision);
    }
    friend std::ostream& operator<<(std::ostream& stream, const KyRect& rect) { return stream << rect.toString(); }
};

/// Reads what `toString` writes; "0 0 0 0" is null. False leaves `rect` unchanged.
template <class T>
bool fromString(std::string_view text, KyRect<T>& rect) {
    std::array<T, 4> numbers;
    const bool isInfinite = text == "infinite";
    if (!isInfinite && !KyNumberText::parse(text, numbers))
        return false;
    if (isInfinite)
        rect.setInfinite();
    else
        rect = KyRect<T>(numbers[0], numbers[1], numbers[2], numbers[3]);
    return true;
}

template <class T>
KyVec2<T> KyRect<T>::getMin() const {
    if (isInfinite())
        return KyVec2<T>(KyScalar::lowest<T>(), KyScalar::lowest<T>());
    const KyVec2<T> end = origin + KyVec2<T>(width, height);
    return KyVec2<T>(std::min(origin.x, end.x), std::min(origin.y, end.y));
}

template <class T>
KyVec2<T> KyRect<T>::getMax() const {
    if (isInfinite())
        return KyVec2<T>(KyScalar::limit<T>(), KyScalar::limit<T>());
    const KyVec2<T> end = origin + KyVec2<T>(width, height);
    return KyVec2<T>(std::max(origin.x, end.x), std::max(origin.y, end.y));
}

template <class T>
double KyRect<T>::getRadius() const {
    return isInfinite() ? KyScalar::limit<double>() : KyVec2<T>(width, height).length() / 2.0;
}

template <class T>
T KyRect<T>::getArea() const {
    if (isInfinite())
        return KyScalar::limit<T>();
    return KyScalar::round<T>(std::abs(static_cast<double>(width) * static_cast<double>(height)));
}

template <class T>
bool KyRect<T>::contains(const KyVec2<T>& point) const {
    const KyVec2<T> low = getMin(), high = getMax();
    const bool isInside = low.x <= point.x && point.x <= high.x && low.y <= point.y && point.y <= high.y;
    return isInside && !isNull();
}

template <class T>
bool KyRect<T>::intersects(const KyRect& other) const {
    KyRect ignored;
    return getIntersects(other, ignored);
}

template <class T>
bool KyRect<T>::getIntersects(const KyRect& other, KyRect& common) const {
    if (isNull() || other.isNull())
        return false;
    if (isInfinite() || other.isInfinite()) {
        common = isInfinite() ? other : *this;
        return true;
    }
    const KyVec2<T> low = getMin(), high = getMax(), otherLow = other.getMin(), otherHigh = other.getMax();
    const KyVec2<T> from(std::max(low.x, otherLow.x), std::max(low.y, otherLow.y));
    const KyVec2<T> to(std::min(high.x, otherHigh.x), std::min(high.y, otherHigh.y));
    if (!(from.x <= to.x && from.y <= to.y))
        return false;
    common.setMinMax(from, to);
    return true;
}

template <class T>
void KyRect<T>::setInfinite() {
    *this = KyRect();
    state = KyBoundState::eInfinite;
}

template <class T>
void KyRect<T>::setPoint(const KyVec2<T>& point) {
    setMinMax(point, point);
}

template <class T>
void KyRect<T>::setOrigin(const KyVec2<T>& value) {
    origin = value;
    if (state == KyBoundState::eInfinite)
        state = KyBoundState::eFinite;
}

template <class T>
void KyRect<T>::setSize(const KyVec2<T>& size) {
    width = size.x;
    height = size.y;
    if (state == KyBoundState::eInfinite)
        state = KyBoundState::eFinite;
}

template <class T>
void KyRect<T>::setMinMax(const KyVec2<T>& first, const KyVec2<T>& second) {
    origin = KyVec2<T>(std::min(first.x, second.x), std::min(first.y, second.y));
    width = KyScalar::subtract(std::max(first.x, second.x), origin.x);
    height = KyScalar::subtract(std::max(first.y, second.y), origin.y);
    state = KyBoundState::eFinite;
}

template <class T>
void KyRect<T>::translate(const KyVec2<T>& offset) {
    if (!isFinite())
        return;
    origin += offset;
    state = KyBoundState::eFinite;
}

template <class T>
void KyRect<T>::scale(T factor) {
    if (!isFinite())
        return;
    const KyVec2<T> size = KyVec2<T>(width, height) * factor;
    origin = getCenter() - size / T{2};
    setSize(size);
    state = KyBoundState::eFinite;
}

template <class T>
void KyRect<T>::merge(const KyRect& other) {
    if (other.isNull() || isInfinite())
        return;
    if (isNull() || other.isInfinite()) {
        *this = other;
        return;
    }
    const KyVec2<T> low = getMin(), high = getMax(), otherLow = other.getMin(), otherHigh = other.getMax();
    setMinMax(KyVec2<T>(std::min(low.x, otherLow.x), std::min(low.y, otherLow.y)),
              KyVec2<T>(std::max(high.x, otherHigh.x), std::max(high.y, otherHigh.y)));
}
