// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDeviceAxisChannel.h"

#include "KyVec2.h"

/// A round dead zone for a stick of two axes. The dead zones of two single axes form a cross: a stick pushed aslant
/// snaps to the nearer axis. Here only the length counts: within the inner radius the result is 0, from there to the
/// outer one it grows from 0 to 1, and the direction stays. Give the two axes no dead zone of their own.
///
///     const KyRadialDeadZone zone(0.15f);
///     const KyVec2f stick = zone.apply(pad.getAxis(0), pad.getAxis(1));
class KYAPPLICATION_EXPORT KyRadialDeadZone {
public:
    /// Radii below 0, and not finite ones, count as 0; an outer one that is not beyond the inner one makes the result 0
    /// or of length 1.
    explicit KyRadialDeadZone(float innerRadius = 0.15F, float outerRadius = 1.0F);

    /// @{
    /// As given, made sound by the constructor.
    float getInnerRadius() const { return mInnerRadius; }
    float getOuterRadius() const { return mOuterRadius; }
    /// @}

    /// Of length 0 to 1; 0 for numbers that are not finite.
    KyVec2<float> apply(float x, float y) const;
    /// From the values that the two axes have now.
    KyVec2<float> apply(const KyDeviceAxisChannel& x, const KyDeviceAxisChannel& y) const;

private:
    float mInnerRadius;
    float mOuterRadius;
};
