// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyRadialDeadZone.h"

#include <algorithm>
#include <cmath>

namespace {

float makeRadius(float radius) {
    return std::isfinite(radius) ? std::max(radius, 0.0F) : 0.0F;
}

} // namespace

KyRadialDeadZone::KyRadialDeadZone(float innerRadius, float outerRadius)
    : mInnerRadius(makeRadius(innerRadius))
    , mOuterRadius(std::max(makeRadius(outerRadius), mInnerRadius)) {}

KyVec2<float> KyRadialDeadZone::apply(float x, float y) const {
    // The length of two finite floats may be none.
    const double length = std::hypot(double{x}, double{y});
    if (!std::isfinite(length) || length <= mInnerRadius)
        return {};
    const double stretched = length < mOuterRadius ? (length - mInnerRadius) / (mOuterRadius - mInnerRadius) : 1.0;
    return {static_cast<float>(x / length * stretched), static_cast<float>(y / length * stretched)};
}

KyVec2<float> KyRadialDeadZone::apply(const KyDeviceAxisChannel& x, const KyDeviceAxisChannel& y) const {
    return apply(x.getValue(), y.getValue());
}
