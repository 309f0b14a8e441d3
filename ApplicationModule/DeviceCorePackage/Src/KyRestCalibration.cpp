// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyRestCalibration.h"

#include <algorithm>
#include <cmath>

KyRestCalibration::KyRestCalibration(unsigned nbAxes)
    : KyRestCalibration(nbAxes, Settings()) {}

KyRestCalibration::KyRestCalibration(unsigned nbAxes, const Settings& settings)
    : mSettings(settings)
    , mAxes(nbAxes) {}

float KyRestCalibration::apply(unsigned axis, float reading) {
    if (axis >= mAxes.size() || !std::isfinite(reading))
        return reading;
    Axis& state = mAxes[axis];
    if (!state.isCalibrated)
        learn(state, reading);
    return reading - state.offset;
}

bool KyRestCalibration::isCalibrated(unsigned axis) const {
    return axis < mAxes.size() && mAxes[axis].isCalibrated;
}

float KyRestCalibration::getOffset(unsigned axis) const {
    return axis < mAxes.size() ? mAxes[axis].offset : 0.0F;
}

void KyRestCalibration::restart() {
    std::ranges::fill(mAxes, Axis());
}

void KyRestCalibration::learn(Axis& axis, float reading) const {
    const bool isFirst = axis.nbReadings == 0;
    const float least = isFirst ? reading : std::min(axis.least, reading);
    const float greatest = isFirst ? reading : std::max(axis.greatest, reading);
    if (std::abs(reading) > mSettings.largestOffset) {
        axis = Axis();
        return;
    }
    if (greatest - least > mSettings.largestSpread) {
        axis = Axis{.nbReadings = 1, .least = reading, .greatest = reading, .sum = static_cast<double>(reading)};
    } else {
        axis.least = least;
        axis.greatest = greatest;
        axis.sum += static_cast<double>(reading);
        ++axis.nbReadings;
    }
    if (axis.nbReadings < mSettings.nbReadings)
        return;
    axis.offset = static_cast<float>(axis.sum / axis.nbReadings);
    axis.isCalibrated = true;
}
