// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyVec2.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <vector>

/// One command of a path: what to draw and its numbers, in the order of SVG's path data. A plain value.
///
/// A command is 64 bytes, one line of the processor's cache: seven numbers, what the longest command takes, lie inside;
/// only one that is given more keeps its numbers in a vector, and allocates. The numbers are a growing list all the
/// same; point i is the pair of numbers 2i, 2i + 1.
///
/// ```
/// Ky2DPathCommand corner(Ky2DPathCommand::eLineTo, {10, 20});
/// corner.setPoint(0, KyVec2d(15, 20));
/// ```
class KYAPPLICATION_EXPORT Ky2DPathCommand {
public:
    /// The place of the command's letter in "MmLlHhVvCcSsQqTtAaZ"; the relative forms are offsets from the point that
    /// the command starts at.
    enum Type : std::int32_t {
        eMoveTo = 0,
        eRelativeMoveTo = 1,
        eLineTo = 2,
        eRelativeLineTo = 3,
        eHorizontalTo = 4,
        eRelativeHorizontalTo = 5,
        eVerticalTo = 6,
        eRelativeVerticalTo = 7,
        /// Control 1, control 2, end.
        eCubicTo = 8,
        eRelativeCubicTo = 9,
        /// Control 2, end; control 1 mirrors the one before.
        eSmoothCubicTo = 10,
        eRelativeSmoothCubicTo = 11,
        /// Control, end.
        eQuadraticTo = 12,
        eRelativeQuadraticTo = 13,
        /// End; the control point mirrors the one before.
        eSmoothQuadraticTo = 14,
        eRelativeSmoothQuadraticTo = 15,
        /// Radii, rotation of their axes in degrees, large-arc flag, sweep flag, end.
        eArcTo = 16,
        eRelativeArcTo = 17,
        eClose = 18,
        eNbTypes = 19
    };

    /// How many numbers a command holds without allocating.
    static constexpr unsigned cNbInline = 7;

    /// A move without a point, which draws nothing.
    Ky2DPathCommand() noexcept
        : mInline{} {}
    explicit Ky2DPathCommand(std::int32_t type, std::initializer_list<double> coordinates = {});
    Ky2DPathCommand(const Ky2DPathCommand& other)
        : mType(other.mType)
        , mCount(other.mCount) {
        copyNumbers(other);
    }
    Ky2DPathCommand(Ky2DPathCommand&& other) noexcept
        : mType(other.mType)
        , mCount(other.mCount) {
        moveNumbers(other);
    }
    /// @{
    /// Takes over type and numbers.
    Ky2DPathCommand& operator=(const Ky2DPathCommand& other);
    Ky2DPathCommand& operator=(Ky2DPathCommand&& other) noexcept;
    /// @}
    ~Ky2DPathCommand() {
        if (!isInline())
            release();
    }

    /// One of Type; a path reports and skips others.
    std::int32_t getType() const { return mType; }
    void setType(std::int32_t type) { mType = type; }
    /// The letter of a type; 0 when it is none.
    static char getLetter(std::int32_t type);
    /// The type of a letter, -1 when it has none; "z" is "Z".
    static std::int32_t findType(char letter);
    /// How many numbers a command of that type needs; 0 when it is none.
    static unsigned getNbNeeded(std::int32_t type) {
        return isType(type) ? cNbNeeded[static_cast<std::size_t>(type)] : 0;
    }
    /// What an arc's flag says: not finite is unset, else what truncation does not make 0 is set.
    static bool isSet(double flag) { return std::isfinite(flag) && std::abs(flag) >= 1; }
    static bool isType(std::int32_t type) { return static_cast<std::uint32_t>(type) < eNbTypes; }

    /// Numbers, not points.
    unsigned getNbCoordinates() const { return mCount; }
    /// 0 when out of range.
    double getCoordinate(unsigned index) const { return index < mCount ? getNumbers()[index] : 0.0; }
    /// All numbers; until the next change of the command.
    std::span<const double> getCoordinates() const { return {getNumbers(), mCount}; }
    /// Nothing happens out of range.
    void setCoordinate(unsigned index, double value);
    /// Appends a number.
    void addCoordinate(double value) {
        if (mCount < cNbInline)
            mInline[mCount++] = value;
        else
            appendFar(value);
    }
    /// @{
    /// Appends the numbers in their order.
    void addCoordinates(std::span<const double> values);
    void addCoordinates(std::initializer_list<double> values) { addCoordinates({values.begin(), values.size()}); }
    /// @}

    /// Whole pairs of numbers.
    unsigned getNbPoints() const { return mCount / 2; }
    /// Numbers out of range are 0.
    KyVec2d getPoint(unsigned index) const { return KyVec2d(getCoordinate(2 * index), getCoordinate(2 * index + 1)); }
    /// Nothing happens out of range.
    void setPoint(unsigned index, const KyVec2d& point);
    /// Appends x, then y.
    void addPoint(const KyVec2d& point) {
        addCoordinate(point.x);
        addCoordinate(point.y);
    }

    /// Removes the numbers; the type stays.
    void clear();

    /// The same type and the same numbers.
    bool operator==(const Ky2DPathCommand& other) const;

private:
    static constexpr std::array<std::uint8_t, eNbTypes> cNbNeeded{2, 2, 2, 2, 1, 1, 1, 1, 6, 6,
                                                                  4, 4, 4, 4, 2, 2, 7, 7, 0};

    bool isInline() const { return mCount <= cNbInline; }
    const double* getNumbers() const { return isInline() ? mInline : mFar.data(); }
    void copyNumbers(const Ky2DPathCommand& other) {
        if (other.isInline())
            copyInline(other);
        else
            copyFar(other);
    }
    void moveNumbers(Ky2DPathCommand& other) noexcept {
        if (other.isInline())
            copyInline(other);
        else
            moveFar(other);
    }
    // All seven, used or not: shorter than asking how many there are.
    void copyInline(const Ky2DPathCommand& other) noexcept {
        for (unsigned i = 0; i < cNbInline; ++i)
            mInline[i] = other.mInline[i];
    }
    void copyFar(const Ky2DPathCommand& other);
    void moveFar(Ky2DPathCommand& other) noexcept;
    void appendFar(double value);
    void release() noexcept;

    std::int32_t mType = eMoveTo;
    // Also tells where the numbers are: up to cNbInline inside, else in the vector.
    std::uint32_t mCount = 0;
    union {
        double mInline[cNbInline];
        std::vector<double> mFar;
    };
};
