// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <vector>

/// Learns where the axes of a device rest and takes that off their raw readings. A worn stick rests a little beside 0;
/// an axis whose readings stay close together for a while, and close to 0, is taken to rest. Until then its readings
/// come out as they are. One object a device, fed by its driver:
///
///     KyRestCalibration mRest{getNbAxis()};
///     ...
///     setAxisValue(i, mRest.apply(i, rawReading));
class KYAPPLICATION_EXPORT KyRestCalibration {
public:
    /// When an axis is taken to rest.
    struct Settings {
        /// Readings in a row that must stay together, at least 1.
        unsigned nbReadings = 60;
        /// How far apart the least and the greatest of them may be.
        float largestSpread = 0.02F;
        /// Whoever rests farther from 0 is being held there.
        float largestOffset = 0.2F;
    };

    /// With the settings' own values.
    explicit KyRestCalibration(unsigned nbAxes);
    /// For axes 0 to nbAxes - 1.
    KyRestCalibration(unsigned nbAxes, const Settings& settings);

    /// Takes part in the learning while it goes on; the reading without the offset. A reading that is not finite and
    /// one of an axis that there is not come out as they are.
    float apply(unsigned axis, float reading);
    /// False for an axis that there is not.
    bool isCalibrated(unsigned axis) const;
    /// 0 before it is calibrated.
    float getOffset(unsigned axis) const;
    /// Forgets all offsets and learns anew.
    void restart();

private:
    struct Axis {
        unsigned nbReadings = 0;
        float least = 0.0F;
        float greatest = 0.0F;
        double sum = 0.0;
        float offset = 0.0F;
        bool isCalibrated = false;
    };

    void learn(Axis& axis, float reading) const;

    Settings mSettings;
    std::vector<Axis> mAxes;
};
