// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>

#include <array>

/// An elliptical arc from point to point as cubic curves, each of at most a quarter of a turn.
///
/// Works without angles: in the space where the ellipse is the unit circle the chord gives sine and cosine of half the
/// turn, and square roots halve it. Everything is reckoned from the start point and not from the centre, so that an arc
/// of huge radius loses no digits.
class Ky2DArc {
public:
    static constexpr unsigned cNbMaximumCurves = 4;
    using Curves = std::array<std::array<QPointF, 3>, cNbMaximumCurves>;

    struct Shape {
        double radiusX;
        double radiusY;
        /// Of the ellipse's x axis; degrees.
        double rotation;
        bool isLarge;
        /// Towards growing angles, clockwise on screen.
        bool isPositive;
    };

    /// How many curves were written: control 1, control 2, end. 0 where the arc is a straight line: a radius is 0, or
    /// so large that nothing is left of the bow. Too small radii are enlarged. All numbers are finite; `from` and `to`
    /// differ.
    static unsigned compute(const QPointF& from, const QPointF& to, const Shape& shape, Curves& curves);
};
