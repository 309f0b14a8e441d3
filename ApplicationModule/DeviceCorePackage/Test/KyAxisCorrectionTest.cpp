// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTestChannels.h"

#include "KyRadialDeadZone.h"
#include "KyRestCalibration.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr float cNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float cInfinity = std::numeric_limits<float>::infinity();

TEST(KyRadialDeadZone, StretchesTheLengthAndKeepsTheDirection) {
    const KyRadialDeadZone zone(0.2F, 0.7F);
    struct Row {
        float x, y, length;
    };
    for (const Row& row :
         {Row{0, 0, 0}, Row{0.12F, -0.16F, 0}, Row{0.27F, 0.36F, 0.5F}, Row{-0.6F, 0.8F, 1}, Row{1, 1, 1},
          Row{3e38F, 3e38F, 1}, Row{0.01F, 0.45F, 0.5002F}, Row{cNaN, 0, 0}, Row{0, cInfinity, 0}}) {
        const KyVec2f stick = zone.apply(row.x, row.y);
        EXPECT_NEAR(std::hypot(stick.x, stick.y), row.length, 1e-4F) << row.x << " " << row.y;
        if (row.length > 0) {
            EXPECT_NEAR(std::atan2(stick.y, stick.x), std::atan2(row.y, row.x), 1e-5F);
        }
    }
}

TEST(KyRadialDeadZone, BearsAnyRadii) {
    for (const auto& [inner, outer] : {std::pair(0.5F, 0.5F), {0.5F, 0.1F}, {-1.0F, -1.0F}, {cNaN, cInfinity}}) {
        const KyVec2f stick = KyRadialDeadZone(inner, outer).apply(0.6F, 0.8F);
        EXPECT_NEAR(std::hypot(stick.x, stick.y), 1.0F, 1e-6F) << inner << " " << outer;
    }
    KyTestDevice device(2, 0, 0);
    device.setAxisValue(1, -0.6F);
    EXPECT_NEAR(KyRadialDeadZone(0.2F).apply(device.getAxis(0), device.getAxis(1)).y, -0.5F, 1e-6F);
}

TEST(KyRestCalibration, TakesOffWhereAnAxisRests) {
    KyRestCalibration rest(2, {.nbReadings = 4, .largestSpread = 0.02F, .largestOffset = 0.2F});
    for (const float reading : {0.1F, 0.11F, 0.09F, 0.1F}) {
        EXPECT_FALSE(rest.isCalibrated(0));
        rest.apply(0, reading);
    }
    EXPECT_TRUE(rest.isCalibrated(0));
    EXPECT_FALSE(rest.isCalibrated(1));
    EXPECT_NEAR(rest.getOffset(0), 0.1F, 1e-6F);
    EXPECT_NEAR(rest.apply(0, 0.6F), 0.5F, 1e-6F);
    EXPECT_EQ(rest.apply(1, 0.6F), 0.6F);
    rest.restart();
    EXPECT_EQ(rest.apply(0, 0.6F), 0.6F);
}

TEST(KyRestCalibration, LearnsNothingFromAnAxisThatIsMovedOrHeld) {
    KyRestCalibration rest(3, {.nbReadings = 3, .largestSpread = 0.02F, .largestOffset = 0.2F});
    for (int i = 0; i < 20; ++i) {
        rest.apply(0, 0.03F * static_cast<float>(i % 2));
        rest.apply(1, 0.9F);
        EXPECT_TRUE(std::isnan(rest.apply(2, cNaN)));
        EXPECT_EQ(rest.apply(3, 0.1F), 0.1F);
    }
    for (unsigned axis = 0; axis < 4; ++axis)
        EXPECT_FALSE(rest.isCalibrated(axis)) << axis;
    for (int i = 0; i < 3; ++i)
        rest.apply(0, 0.05F);
    EXPECT_NEAR(rest.getOffset(0), 0.05F, 1e-6F) << "the readings before do not count";
}

} // namespace
