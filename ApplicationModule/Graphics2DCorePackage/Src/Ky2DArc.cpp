// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DArc_p.h"

#include <algorithm>
#include <cmath>

namespace {

struct Vector {
    double x;
    double y;
};

/// From the space of the unit circle to the path's.
struct Axes {
    Vector first;
    Vector second;

    QPointF map(const Vector& vector) const {
        return {first.x * vector.x + second.x * vector.y, first.y * vector.x + second.y * vector.y};
    }
};

/// Sine and cosine of half the turn of one curve, and how many of them make the arc.
struct Step {
    double sine;
    double cosine;
    unsigned count;
};

Step halve(double sine, double cosine, unsigned count) {
    // Whichever of the two is large enough to divide by.
    if (cosine >= 0) {
        const double half = std::sqrt((1 + cosine) / 2);
        return {sine / (2 * half), half, 2 * count};
    }
    const double half = std::sqrt((1 - cosine) / 2);
    return {half, sine / (2 * half), 2 * count};
}

/// `square` is that of the sine of half the arc's turn.
Step divide(double square, bool isLarge) {
    const double sine = std::sqrt(square);
    const double cosine = std::sqrt(1 - square);
    if (isLarge) {
        const Step step = halve(sine, -cosine, 1);
        return halve(step.sine, step.cosine, step.count);
    }
    // A quarter turn that rounding made a little longer stays one curve.
    constexpr double cQuarter = 0.5 + 1e-9;
    return square <= cQuarter ? Step{sine, cosine, 1} : halve(sine, cosine, 1);
}

Axes makeAxes(const Ky2DArc::Shape& shape) {
    if (shape.rotation == 0)
        return {{1, 0}, {0, 1}};
    constexpr double cRadians = 0.017453292519943295;
    const double angle = std::fmod(shape.rotation, 360) * cRadians;
    const double sine = std::sin(angle), cosine = std::cos(angle);
    return {{cosine, sine}, {-sine, cosine}};
}

} // namespace

unsigned Ky2DArc::compute(const QPointF& from, const QPointF& to, const Shape& shape, Curves& curves) {
    double radiusX = std::abs(shape.radiusX), radiusY = std::abs(shape.radiusY);
    if (radiusX == 0 || radiusY == 0)
        return 0;
    Axes axes = makeAxes(shape);
    // Half the chord towards the start, in the circle's space.
    const double x = (from.x() - to.x()) / 2, y = (from.y() - to.y()) / 2;
    Vector chord{(axes.first.x * x + axes.first.y * y) / radiusX, (axes.second.x * x + axes.second.y * y) / radiusY};
    double square = chord.x * chord.x + chord.y * chord.y;
    if (square > 1) {
        double factor = std::hypot(chord.x, chord.y);
        if (!std::isfinite(factor)) {
            // They are enlarged anyway: only how they relate counts.
            const double larger = std::max(radiusX, radiusY);
            radiusX /= larger;
            radiusY /= larger;
            chord = {(axes.first.x * x + axes.first.y * y) / radiusX,
                     (axes.second.x * x + axes.second.y * y) / radiusY};
            factor = std::hypot(chord.x, chord.y);
        }
        radiusX *= factor;
        radiusY *= factor;
        chord = {chord.x / factor, chord.y / factor};
        square = 1;
    }
    if (!(square > 0 && std::isfinite(radiusX) && std::isfinite(radiusY)))
        return 0;
    axes = {{axes.first.x * radiusX, axes.first.y * radiusX}, {axes.second.x * radiusY, axes.second.y * radiusY}};

    const double direction = shape.isPositive ? 1 : -1;
    const double aside = std::sqrt((1 - square) / square) * (shape.isLarge == shape.isPositive ? -1 : 1);
    Vector radius{chord.x - aside * chord.y, chord.y + aside * chord.x};

    const Step step = divide(square, shape.isLarge && square < 1);
    const double handle = direction * (4.0 / 3.0) * step.sine / (1 + step.cosine);
    const double sine = direction * 2 * step.sine * step.cosine;
    const double lessOne = -2 * step.sine * step.sine;
    QPointF start = from;
    for (unsigned i = 0; i < step.count; ++i) {
        const Vector way{lessOne * radius.x - sine * radius.y, sine * radius.x + lessOne * radius.y};
        const Vector next{radius.x + way.x, radius.y + way.y};
        const QPointF end = i + 1 == step.count ? to : start + axes.map(way);
        curves[i] = {start + axes.map({-handle * radius.y, handle * radius.x}),
                     end - axes.map({-handle * next.y, handle * next.x}), end};
        start = end;
        radius = next;
    }
    return step.count;
}
