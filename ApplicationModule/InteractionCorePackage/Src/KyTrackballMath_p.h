// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyMat4.h"
#include "KyVec3.h"

#include <algorithm>
#include <array>
#include <cmath>

/// Of an orthographic view that can be zoomed.
inline constexpr double cSmallestExtent = 1e-12;

/// The rotation of a quaternion of any length, prepared for several vectors.
class KyTurn {
public:
    explicit KyTurn(const KyQuatd& rotation)
        : mAxis(rotation.x, rotation.y, rotation.z)
        , mCosine(rotation.w)
        , mFactor(2.0 / std::max(mAxis.dot(mAxis) + mCosine * mCosine, cSmallest)) {}

    KyVec3d apply(const KyVec3d& vector) const {
        const KyVec3d across = mAxis.cross(vector) * mFactor;
        return vector + across * mCosine + mAxis.cross(across);
    }

private:
    static constexpr double cSmallest = 1e-300;

    KyVec3d mAxis;
    double mCosine;
    double mFactor;
};

/// The rotation about a unit axis, radians. The steps of a drag are small: the first terms of the series have all
/// digits of them, at a fraction of what the functions for all angles take.
inline KyQuatd kyTurnAbout(const KyVec3d& unit, double angle) {
    constexpr double cSmallSquare = 0.01;
    const double half = 0.5 * angle, s = half * half;
    if (!(s < cSmallSquare)) {
        const double sine = std::sin(half);
        return KyQuatd(unit.x * sine, unit.y * sine, unit.z * sine, std::cos(half));
    }
    const double sine = half * (1.0 + s * (-1.0 / 6 + s * (1.0 / 120 + s * (-1.0 / 5040 + s * (1.0 / 362880)))));
    const double cosine = 1.0 + s * (-1.0 / 2 + s * (1.0 / 24 + s * (-1.0 / 720 + s * (1.0 / 40320))));
    return KyQuatd(unit.x * sine, unit.y * sine, unit.z * sine, cosine);
}

/// Whether both have length 1 but for rounding; false for what is not finite.
inline bool kyAreUnits(const KyVec3d& a, const KyVec3d& b) {
    constexpr double cRounding = 1e-8;
    return std::abs(a.dot(a) - 1.0) < cRounding && std::abs(b.dot(b) - 1.0) < cRounding;
}

/// Takes away the last errors of axes that are orthonormal but for rounding: one step of Newton's method, which squares
/// the error. False for others.
inline bool kyPolishFrame(KyVec3d& right, KyVec3d& up, KyVec3d& forward) {
    constexpr double cRounding = 1e-8;
    const double cosine = forward.dot(up), forwardError = forward.dot(forward) - 1.0, upError = up.dot(up) - 1.0;
    if (!(std::abs(cosine) < cRounding && std::abs(forwardError) < cRounding && std::abs(upError) < cRounding))
        return false;
    forward *= 1.0 - 0.5 * forwardError;
    up = (up - forward * cosine) * (1.0 - 0.5 * upError);
    right = forward.cross(up);
    return true;
}

/// Makes a right-handed orthonormal frame of what comes close to one: the direction of `forward` is kept, then the
/// plane of `forward` and `up`. False, and the axes undefined, when these do not span a plane.
inline bool kyMakeOrthonormal(KyVec3d& right, KyVec3d& up, KyVec3d& forward) {
    if (kyPolishFrame(right, up, forward))
        return true;
    if (!forward.normalize() || !up.normalize())
        return false;
    double cosine = forward.dot(up);
    up -= forward * cosine;
    if (std::abs(cosine) > 0.5) {
        // What cancellation leaves is too inaccurate for once, and has no direction near zero.
        if (up.length() < 1e-9)
            return false;
        up.normalize();
        up -= forward * forward.dot(up);
    }
    up.normalize();
    right = forward.cross(up);
    return true;
}

/// Any direction across a unit vector.
inline KyVec3d kyGetAcross(const KyVec3d& unit) {
    KyVec3d across = unit.cross(std::abs(unit.y) < 0.9 ? KyVec3d(0, 1, 0) : KyVec3d(1, 0, 0));
    across.normalize();
    return across;
}

/// The first that is neither null nor not finite, of length 1; `otherwise` when there is none.
template <std::size_t Count>
KyVec3d kyGetFirstDirection(std::array<KyVec3d, Count> candidates, const KyVec3d& otherwise) {
    const auto found = std::ranges::find_if(candidates, [](KyVec3d& vector) { return vector.normalize(); });
    return found == candidates.end() ? otherwise : *found;
}

/// As kyMakeOrthonormal, for any vectors: axes that are null, not finite or parallel follow from the others.
inline void kyRepairFrame(KyVec3d& right, KyVec3d& up, KyVec3d& forward) {
    const std::array<KyVec3d, 2> forwards{forward, up.cross(right)};
    forward = kyGetFirstDirection(forwards, KyVec3d(0, 0, -1));
    std::array<KyVec3d, 3> ups{up, right.cross(forward), kyGetAcross(forward)};
    for (KyVec3d& candidate : ups) {
        up = candidate;
        if (kyMakeOrthonormal(right, up, forward))
            return;
    }
}

inline void kyForceOrthonormal(KyVec3d& right, KyVec3d& up, KyVec3d& forward) {
    if (kyPolishFrame(right, up, forward))
        return;
    const KyVec3d oldRight = right, oldUp = up, oldForward = forward;
    if (kyMakeOrthonormal(right, up, forward))
        return;
    right = oldRight;
    up = oldUp;
    forward = oldForward;
    kyRepairFrame(right, up, forward);
}

/// No coordinate farther from 0 than `limit`; false for NaN.
inline bool kyIsWithin(const KyVec3d& point, double limit) {
    return std::abs(point.x) <= limit && std::abs(point.y) <= limit && std::abs(point.z) <= limit;
}
