// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTestChannels.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace {

constexpr float cInfinity = std::numeric_limits<float>::infinity();
constexpr float cNaN = std::numeric_limits<float>::quiet_NaN();
constexpr std::array cNotFinite{cNaN, cInfinity, -cInfinity};

struct AbsoluteRow {
    float minimum, maximum, width, deadZoneValue;
    KyAxisClampMode mode;
    float reading, value, absoluteValue;
};

constexpr AbsoluteRow cAbsoluteRows[] = {
    {-1, 1, 0.2F, 0, eClampAll, 0.1F, 0, 0.1F},
    {-1, 1, 0.2F, 0, eClampAll, -0.19F, 0, -0.19F},
    {-1, 1, 0.2F, 0, eClampAll, 0.2F, 0, 0.2F},
    {-1, 1, 0.2F, 0, eClampAll, 0.6F, 0.5F, 0.6F},
    {-1, 1, 0.2F, 0, eClampAll, -0.6F, -0.5F, -0.6F},
    {-1, 1, 0.2F, 0, eClampAll, 1, 1, 1},
    {-1, 1, 0.2F, 0, eClampAll, -3, -1, -1},
    {-1, 1, 0.2F, 0.3F, eClampAll, 0.1F, 0.3F, 0.1F},
    {-1, 1, 0.2F, 0.3F, eClampAll, 0.2F, 0.3F, 0.2F},
    {-1, 1, 1e-8F, 0.7F, eClampAll, 0, 0, 0},
    {-1, 1, -0.2F, 0.7F, eClampAll, -1, -1, -1},
    // Beyond the range, and on through the stretching.
    {-1, 1, 0, 0, eClampNone, 2, 2, 2},
    {-1, 1, 0.2F, 0, eClampNone, 2, 2.25F, 2},
    {-1, 1, 0, 0, eClampOutput, 2, 1, 2},
    {-1, 1, 0.2F, 0, eClampOutput, -2, -1, -2},
    // A centre beside 0, where the stretching starts at the width.
    {0, 1, 0.1F, 0.5F, eClampAll, 0.45F, 0.5F, 0.45F},
    {0, 1, 0.1F, 0.5F, eClampAll, 0.2F, -1, 0.2F},
    {0, 1, 0.1F, 0.5F, eClampAll, 1, 1, 1},
    // Nothing is left beside the dead zone.
    {-1, 1, 1, 0, eClampAll, 0.9F, 0, 0.9F},
    {-1, 1, 1, 0, eClampAll, 1, 1, 1},
    {-1, 1, 1, 0, eClampAll, -1, -1, -1},
    {1, -1, 0, 0, eClampAll, 0.3F, -1, -1},
};

TEST(KyDeviceAxisChannel, ConditionsPositions) {
    for (const AbsoluteRow& row : cAbsoluteRows) {
        SCOPED_TRACE(testing::Message() << row.minimum << ".." << row.maximum << " width " << row.width << " mode "
                                        << row.mode << " reading " << row.reading);
        KyTestAxis axis;
        axis.setAbsolute(true);
        axis.setMinimum(row.minimum);
        axis.setMaximum(row.maximum);
        axis.setDeadZoneWidth(row.width);
        axis.setDeadZoneValue(row.deadZoneValue);
        axis.setClampMode(row.mode);
        axis.setDeviceValue(row.reading);
        EXPECT_NEAR(axis.getValue(), row.value, 1e-6F);
        EXPECT_FLOAT_EQ(axis.getAbsoluteValue(), row.absoluteValue);
    }
}

TEST(KyDeviceAxisChannel, ReportsTheStepsThatTookPlace) {
    KyTestAxis axis;
    EXPECT_EQ(axis.getValue(), 0.0F);
    axis.setDeviceValue(1);
    EXPECT_FLOAT_EQ(axis.getAbsoluteValue(), 0.1F);
    EXPECT_FLOAT_EQ(axis.getValue(), 1.0F);
    axis.setDeviceValue(20);
    EXPECT_EQ(axis.getAbsoluteValue(), 1.0F);
    EXPECT_NEAR(axis.getValue(), 9.0F, 1e-5F);
    axis.setDeviceValue(1);
    EXPECT_EQ(axis.getValue(), 0.0F);
    axis.setAbsoluteValue(0.5F);
    EXPECT_FLOAT_EQ(axis.getValue(), -5.0F);
}

TEST(KyDeviceAxisChannel, ReportsOnlyWhatTheRangeCutsOffWhenItKeepsTheInput) {
    KyTestAxis axis;
    axis.setClampMode(eClampOutput);
    axis.setAbsoluteValue(1);
    axis.setDeviceValue(-1);
    EXPECT_EQ(axis.getValue(), 0.0F);
    axis.setDeviceValue(2);
    EXPECT_NEAR(axis.getValue(), -1.0F, 1e-5F);
    EXPECT_EQ(axis.getAbsoluteValue(), 1.0F);
}

TEST(KyDeviceAxisChannel, IgnoresReadingsThatAreNotFinite) {
    for (const bool isAbsolute : {false, true})
        for (const float reading : cNotFinite) {
            KyTestAxis axis;
            axis.setAbsolute(isAbsolute);
            axis.setDeviceValue(0.5F);
            const float value = axis.getValue(), absoluteValue = axis.getAbsoluteValue();
            axis.setDeviceValue(reading);
            axis.setDeltaValue(reading);
            axis.setAbsoluteValue(reading);
            EXPECT_EQ(axis.getValue(), value);
            EXPECT_EQ(axis.getAbsoluteValue(), absoluteValue);
        }
}

TEST(KyDeviceAxisChannel, RecoversFromAnyConfiguration) {
    for (const float odd : {cNaN, cInfinity, -cInfinity, 0.0F, 1e-40F})
        for (const auto set : {&KyDeviceAxisChannel::setMinimum, &KyDeviceAxisChannel::setMaximum,
                               &KyDeviceAxisChannel::setStepFactor}) {
            KyTestAxis axis;
            (axis.*set)(odd);
            axis.setDeviceValue(1);
            axis.setDeviceValue(1);
            EXPECT_FALSE(std::isnan(axis.getValue()));
            axis.setMinimum(-1);
            axis.setMaximum(1);
            axis.setStepFactor(0.1F);
            axis.setDeviceValue(-100);
            axis.setDeviceValue(-100);
            axis.setDeviceValue(1);
            EXPECT_FLOAT_EQ(axis.getAbsoluteValue(), -0.9F) << odd;
        }
}

TEST(KyDeviceAxisChannel, WithoutAStepFactorItRests) {
    KyTestAxis axis;
    axis.setStepFactor(0);
    axis.setDeviceValue(1);
    EXPECT_EQ(axis.getValue(), 0.0F);
    axis.setAbsoluteValue(0.5F);
    EXPECT_EQ(axis.getValue(), 0.0F);
    EXPECT_EQ(axis.getAbsoluteValue(), 0.5F);
}

TEST(KyDeviceAxisChannel, IsOpenToOthersByItsAccessMode) {
    KyTestAxis axis;
    axis.setAbsolute(true);
    axis.setValue(0.5F);
    EXPECT_EQ(axis.getValue(), 0.0F);
    for (const KyAccessMode mode : {eAccessWriteOnly, eAccessReadWrite}) {
        axis.setAccessMode(mode);
        axis.setValue(0.25F * static_cast<float>(mode));
        EXPECT_EQ(axis.getValue(), 0.25F * static_cast<float>(mode));
    }
}

} // namespace
