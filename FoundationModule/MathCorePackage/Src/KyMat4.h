// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQuat.h"

#include <utility>

/// A 4 x 4 matrix that acts on column vectors; T is float or double. The default is the identity.
/// Stored column by column, as OpenGL reads it; `a * b` acts with b first. A frame (of a node, of a camera) has the
/// columns right, up, back and position; a camera looks along -z of its frame.
///
///     const KyMat4d frame = KyMat4d::fromTranslation(KyVec3d(0, 0, 5)) * KyMat4d::fromScale(KyVec3d(2, 2, 2));
///     frame.transformPoint(KyVec3d(1, 0, 0));   // (2, 0, 5)
template <class T>
class KyMat4 {
public:
    /// The identity.
    KyMat4() = default;
    /// Rotates, then translates.
    KyMat4(const KyQuat<T>& rotation, const KyVec3<T>& translation);
    template <class U>
    explicit KyMat4(const KyMat4<U>& other);

    /// From 16 numbers as they are read on paper: the first four are the first row.
    static KyMat4 fromRows(const std::array<T, 16>& numbers);
    /// From 16 numbers in the order of `data()`.
    static KyMat4 fromColumns(const std::array<T, 16>& numbers);
    /// Moves by the vector.
    static KyMat4 fromTranslation(const KyVec3<T>& translation);
    /// Turns by the quaternion.
    static KyMat4 fromRotation(const KyQuat<T>& rotation) { return rotation.getMatrix(); }
    /// Multiplies along the axes.
    static KyMat4 fromScale(const KyVec3<T>& scale);
    /// Projection to OpenGL's cube; 0 < aperture < pi (radians, vertical), aspect = width / height > 0,
    /// 0 < near < far distance. The identity for any other values.
    static KyMat4 perspective(T verticalAperture, T aspect, T nearDistance, T farDistance);
    /// Parallel projection of `height` units to OpenGL's cube; height and aspect > 0, near and far differ.
    /// The identity for any other values.
    static KyMat4 orthographic(T height, T aspect, T nearDistance, T farDistance);
    /// The frame of a camera at `eye` that looks at `centre`; no rotation when both are the same point.
    static KyMat4 lookAt(const KyVec3<T>& eye, const KyVec3<T>& centre, const KyVec3<T>& up);

    /// The 16 numbers, column by column.
    const T* data() const { return mData.data(); }
    /// Row and column 0 ... 3; 0 outside.
    T get(int row, int column) const { return isInside(row, column) ? at(row, column) : T{0}; }
    /// The upper three numbers of column 0 ... 3; the null vector outside.
    KyVec3<T> getColumn(int column) const;
    /// Of all 16 numbers; 0 for a singular matrix.
    T determinant() const;
    /// The identity for a singular matrix.
    KyMat4 getInverse() const;
    /// Column 3.
    KyVec3<T> translation() const { return getColumn(3); }
    /// The rotation that `decompose` gives.
    KyQuat<T> rotation() const;
    /// Splits into translation * rotation * scale. The rotation keeps the direction of column 0, then the plane of
    /// columns 0 and 1; a mirror shows as a negative scale y, shear is lost. Scale x 0 gives no rotation.
    void decompose(KyVec3<T>& translation, KyQuat<T>& rotation, KyVec3<T>& scale) const;

    /// Row and column 0 ... 3; nothing happens outside.
    void set(int row, int column, T value);
    /// Sets the upper three numbers of column 0 ... 3; nothing happens outside.
    void setColumn(int column, const KyVec3<T>& vector);

    /// Becomes the matrix that changes nothing.
    void identity() { *this = KyMat4(); }
    /// Swaps rows and columns.
    void transpose();
    /// False, unchanged, for a singular matrix.
    bool invert();

    /// A position: moved by the translation, and divided by the fourth coordinate under a projection.
    KyVec3<T> transformPoint(const KyVec3<T>& point) const;
    /// A direction: rotated and scaled only.
    KyVec3<T> transformVector(const KyVec3<T>& vector) const;

    /// The product acts as `other` first, then as this matrix.
    KyMat4 operator*(const KyMat4& other) const;
    /// As `transformPoint`.
    KyVec3<T> operator*(const KyVec3<T>& point) const { return transformPoint(point); }
    bool operator==(const KyMat4&) const = default;

    /// The 16 numbers row by row.
    std::string toString(int precision = KyNumberText::cDefaultPrecision) const;
    friend std::ostream& operator<<(std::ostream& stream, const KyMat4& matrix) { return stream << matrix.toString(); }

private:
    template <class U>
    friend class KyMat4;

    static constexpr std::size_t index(int row, int column) {
        return static_cast<std::size_t>(column) * 4 + static_cast<std::size_t>(row);
    }
    static constexpr bool isInside(int row, int column) { return row >= 0 && row < 4 && column >= 0 && column < 4; }
    T& at(int row, int column) { return mData[index(row, column)]; }
    T at(int row, int column) const { return mData[index(row, column)]; }
    bool isAffine() const { return at(3, 0) == T{0} && at(3, 1) == T{0} && at(3, 2) == T{0} && at(3, 3) == T{1}; }
    KyVec3<double> getAxis(int column) const { return KyVec3<double>(getColumn(column)); }
    double getCofactor(int row, int column) const;
    double getDeterminant() const;
    bool isSingular(double determinant) const;
    KyMat4 invertAffine(double determinant) const;
    static KyVec3<double> getPartAcross(const KyVec3<double>& vector, const KyVec3<double>& unit);
    static KyVec3<double> getAnyAcross(const KyVec3<double>& unit);

    std::array<T, 16> mData{T{1}, T{0}, T{0}, T{0}, T{0}, T{1}, T{0}, T{0},
                            T{0}, T{0}, T{1}, T{0}, T{0}, T{0}, T{0}, T{1}};
};

/// Reads 16 numbers row by row; false leaves `matrix` unchanged.
template <class T>
bool fromString(std::string_view text, KyMat4<T>& matrix) {
    std::array<T, 16> numbers;
    if (!KyNumberText::parse(text, numbers))
        return false;
    matrix = KyMat4<T>::fromRows(numbers);
    return true;
}

template <class T>
KyMat4<T> KyQuat<T>::getMatrix() const {
    KyMat4<T> result;
    result.setColumn(0, rotate(KyVec3<T>(T{1}, T{0}, T{0})));
    result.setColumn(1, rotate(KyVec3<T>(T{0}, T{1}, T{0})));
    result.setColumn(2, rotate(KyVec3<T>(T{0}, T{0}, T{1})));
    return result;
}

template <class T>
KyMat4<T>::KyMat4(const KyQuat<T>& rotation, const KyVec3<T>& translation) {
    *this = rotation.getMatrix();
    setColumn(3, translation);
}

template <class T>
template <class U>
KyMat4<T>::KyMat4(const KyMat4<U>& other) {
    for (std::size_t i = 0; i < mData.size(); ++i)
        mData[i] = static_cast<T>(other.mData[i]);
}

template <class T>
KyMat4<T> KyMat4<T>::fromRows(const std::array<T, 16>& numbers) {
    KyMat4 result = fromColumns(numbers);
    result.transpose();
    return result;
}

template <class T>
KyMat4<T> KyMat4<T>::fromColumns(const std::array<T, 16>& numbers) {
    KyMat4 result;
    result.mData = numbers;
    return result;
}

template <class T>
KyMat4<T> KyMat4<T>::fromTranslation(const KyVec3<T>& translation) {
    KyMat4 result;
    result.setColumn(3, translation);
    return result;
}

template <class T>
KyMat4<T> KyMat4<T>::fromScale(const KyVec3<T>& scale) {
    KyMat4 result;
    for (int i = 0; i < 3; ++i)
        result.at(i, i) = scale[i];
    return result;
}

template <class T>
KyMat4<T> KyMat4<T>::perspective(T verticalAperture, T aspect, T nearDistance, T farDistance) {
    const bool isValid = verticalAperture > T{0} && static_cast<double>(verticalAperture) < std::numbers::pi &&
                         aspect > T{0} && nearDistance > T{0} && nearDistance < farDistance;
    if (!isValid)
        return KyMat4();
    const T depth = nearDistance - farDistance;
    const T focal = T{1} / std::tan(verticalAperture / T{2});
    KyMat4 result = fromScale(KyVec3<T>(focal / aspect, focal, (farDistance + nearDistance) / depth));
    result.at(2, 3) = T{2} * farDistance * nearDistance / depth;
    result.at(3, 2) = T{-1};
    result.at(3, 3) = T{0};
    return result;
}

template <class T>
KyMat4<T> KyMat4<T>::orthographic(T height, T aspect, T nearDistance, T farDistance) {
    if (!(height > T{0} && aspect > T{0} && nearDistance != farDistance))
        return KyMat4();
    const T depth = nearDistance - farDistance;
    KyMat4 result = fromScale(KyVec3<T>(T{2} / (height * aspect), T{2} / height, T{2} / depth));
    result.at(2, 3) = (farDistance + nearDistance) / depth;
    return result;
}

template <class T>
KyMat4<T> KyMat4<T>::lookAt(const KyVec3<T>& eye, const KyVec3<T>& centre, const KyVec3<T>& up) {
    KyMat4 result = fromTranslation(eye);
    KyVec3<double> back = KyVec3<double>(eye) - KyVec3<double>(centre);
    if (!back.normalize())
        return result;
    KyVec3<double> right = KyVec3<double>(up).cross(back);
    if (!right.normalize())
        right = getAnyAcross(back);
    result.setColumn(0, KyVec3<T>(right));
    result.setColumn(1, KyVec3<T>(back.cross(right)));
    result.setColumn(2, KyVec3<T>(back));
    return result;
}

template <class T>
KyVec3<T> KyMat4<T>::getColumn(int column) const {
    return isInside(0, column) ? KyVec3<T>(at(0, column), at(1, column), at(2, column)) : KyVec3<T>();
}

template <class T>
double KyMat4<T>::getCofactor(int row, int column) const {
    const auto rest = [this, row, column](int i, int j) {
        return static_cast<double>(at((row + 1 + i) % 4, (column + 1 + j) % 4));
    };
    // Three rows taken in cyclic order are an even permutation, so the usual sign applies.
    const double value = rest(0, 0) * (rest(1, 1) * rest(2, 2) - rest(1, 2) * rest(2, 1)) -
                         rest(0, 1) * (rest(1, 0) * rest(2, 2) - rest(1, 2) * rest(2, 0)) +
                         rest(0, 2) * (rest(1, 0) * rest(2, 1) - rest(1, 1) * rest(2, 0));
    return (row + column) % 2 == 0 ? value : -value;
}

template <class T>
double KyMat4<T>::getDeterminant() const {
    if (isAffine())
        return getAxis(0).dot(getAxis(1).cross(getAxis(2)));
    double result = 0.0;
    for (int column = 0; column < 4; ++column)
        result += static_cast<double>(at(3, column)) * getCofactor(3, column);
    return result;
}

template <class T>
T KyMat4<T>::determinant() const {
    return static_cast<T>(getDeterminant());
}

template <class T>
bool KyMat4<T>::isSingular(double determinant) const {
    // Relative to the largest determinant that columns of these lengths can have.
    double bound = 1.0;
    for (int column = 0; column < (isAffine() ? 3 : 4); ++column)
        bound *= KyScalar::length(getAxis(column).length(), static_cast<double>(at(3, column)));
    return !std::isfinite(determinant) || std::abs(determinant) <= 1e-14 * bound;
}

template <class T>
KyMat4<T> KyMat4<T>::invertAffine(double determinant) const {
    const std::array<KyVec3<double>, 3> rows{getAxis(1).cross(getAxis(2)) / determinant,
                                             getAxis(2).cross(getAxis(0)) / determinant,
                                             getAxis(0).cross(getAxis(1)) / determinant};
    KyMat4 result;
    for (int row = 0; row < 3; ++row) {
        const KyVec3<double>& numbers = rows[static_cast<std::size_t>(row)];
        for (int column = 0; column < 3; ++column)
            result.at(row, column) = static_cast<T>(numbers[column]);
        result.at(row, 3) = static_cast<T>(-numbers.dot(getAxis(3)));
    }
    return result;
}

template <class T>
bool KyMat4<T>::invert() {
    const double determinant = getDeterminant();
    if (isSingular(determinant))
        return false;
    if (isAffine()) {
        *this = invertAffine(determinant);
        return true;
    }
    KyMat4 result;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            result.at(row, column) = static_cast<T>(getCofactor(column, row) / determinant);
    *this = result;
    return true;
}

template <class T>
KyMat4<T> KyMat4<T>::getInverse() const {
    KyMat4 result = *this;
    return result.invert() ? result : KyMat4();
}

template <class T>
KyQuat<T> KyMat4<T>::rotation() const {
    KyVec3<T> translation, scale;
    KyQuat<T> result;
    decompose(translation, result, scale);
    return result;
}

template <class T>
KyVec3<double> KyMat4<T>::getPartAcross(const KyVec3<double>& vector, const KyVec3<double>& unit) {
    // What cancellation leaves of a parallel vector has no direction worth keeping.
    const KyVec3<double> part = vector - unit * unit.dot(vector);
    return part.length() > 1e-12 * vector.length() ? part : KyVec3<double>();
}

template <class T>
KyVec3<double> KyMat4<T>::getAnyAcross(const KyVec3<double>& unit) {
    KyVec3<double> result = unit.cross(std::abs(unit.z) < 0.9 ? KyVec3<double>(0, 0, -1) : KyVec3<double>(0, 1, 0));
    result.normalize();
    return result;
}

template <class T>
void KyMat4<T>::decompose(KyVec3<T>& translation, KyQuat<T>& rotation, KyVec3<T>& scale) const {
    KyVec3<double> x = getAxis(0), y = getAxis(1), z = getAxis(2);
    KyVec3<double> sizes(x.length(), y.length(), z.length());
    const bool isMirror = x.dot(y.cross(z)) < 0.0;
    translation = getColumn(3);
    rotation.setNull();
    if (x.normalize()) {
        y = getPartAcross(isMirror ? -y : y, x);
        sizes.y = isMirror ? -y.length() : y.length();
        // A flat y axis follows from z; when that is flat too, any axis across x serves.
        if (!y.normalize()) {
            z = getPartAcross(z, x);
            y = z.normalize() ? z.cross(x) : getAnyAcross(x);
        }
        z = x.cross(y);
        sizes.z = std::abs(z.dot(getAxis(2)));
        rotation = KyQuat<T>::fromAxes(x, y, z);
    }
    scale = KyVec3<T>(sizes);
}

template <class T>
void KyMat4<T>::set(int row, int column, T value) {
    if (isInside(row, column))
        at(row, column) = value;
}

template <class T>
void KyMat4<T>::setColumn(int column, const KyVec3<T>& vector) {
    for (int row = 0; row < 3; ++row)
        set(row, column, vector[row]);
}

template <class T>
void KyMat4<T>::transpose() {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < row; ++column)
            std::swap(at(row, column), at(column, row));
}

template <class T>
KyVec3<T> KyMat4<T>::transformPoint(const KyVec3<T>& point) const {
    const KyVec3<T> moved = transformVector(point) + getColumn(3);
    if (isAffine())
        return moved;
    const T w = at(3, 0) * point.x + at(3, 1) * point.y + at(3, 2) * point.z + at(3, 3);
    return w == T{0} ? moved : moved / w;
}

template <class T>
KyVec3<T> KyMat4<T>::transformVector(const KyVec3<T>& vector) const {
    return getColumn(0) * vector.x + getColumn(1) * vector.y + getColumn(2) * vector.z;
}

template <class T>
KyMat4<T> KyMat4<T>::operator*(const KyMat4& other) const {
    KyMat4 result;
    for (int column = 0; column < 4; ++column)
        for (int row = 0; row < 4; ++row)
            result.at(row, column) = at(row, 0) * other.at(0, column) + at(row, 1) * other.at(1, column) +
                                     at(row, 2) * other.at(2, column) + at(row, 3) * other.at(3, column);
    return result;
}

template <class T>
std::string KyMat4<T>::toString(int precision) const {
    KyMat4 rows = *this;
    rows.transpose();
    return KyNumberText::format(rows.mData, precision);
}
