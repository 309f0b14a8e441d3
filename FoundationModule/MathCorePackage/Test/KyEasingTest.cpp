// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyEasing.h"

#include <cmath>
#include <gtest/gtest.h>
#include <tuple>

namespace {

KyEasing::Kind toKind(int number) {
    return static_cast<KyEasing::Kind>(number);
}

} // namespace

TEST(KyEasingTest, KindsHaveNumbersAndNamesAndUnknownOnesAreLinear) {
    EXPECT_STREQ(KyEasing::getName(toKind(8)), "CircInOut");
    EXPECT_STREQ(KyEasing::getName(toKind(32)), "SineInOut");
    for (const int unknown : {33, -1}) {
        EXPECT_STREQ(KyEasing::getName(toKind(unknown)), "");
        EXPECT_EQ(KyEasing::compute(toKind(unknown), 0.3), 0.3);
    }
}

TEST(KyEasingTest, EveryCurveGoesFromZeroToOneWithoutAJump) {
    constexpr int cSteps = 10000;
    for (int i = 0; i < KyEasing::eNbKinds; ++i) {
        EXPECT_EQ(KyEasing::compute(toKind(i), -3.0), 0.0) << i;
        EXPECT_EQ(KyEasing::compute(toKind(i), 3.0), 1.0) << i;
        EXPECT_EQ(KyEasing::compute(toKind(i), std::nan("")), 0.0) << i;
        for (int step = 0; step < cSteps; ++step) {
            const double here = KyEasing::compute(toKind(i), static_cast<double>(step) / cSteps);
            const double next = KyEasing::compute(toKind(i), (step + 1.0) / cSteps);
            // The circle begins vertically: sqrt(2 / 10000) in its first step.
            ASSERT_NEAR(here, next, 0.0145) << KyEasing::getName(toKind(i)) << " at " << step;
        }
    }
}

TEST(KyEasingTest, OutMirrorsInAndInOutMirrorsItself) {
    for (int in = 0; in < KyEasing::eNbKinds; in += 3)
        for (const double t : {0.1, 0.25, 0.4, 0.6, 0.8}) {
            const auto mirror = [t](int kind) { return 1.0 - KyEasing::compute(toKind(kind), 1.0 - t); };
            EXPECT_NEAR(KyEasing::compute(toKind(in), t), mirror(in + 1), 1e-12) << in;
            EXPECT_NEAR(KyEasing::compute(toKind(in + 2), t), mirror(in + 2), 1e-12) << in;
        }
}

TEST(KyEasingTest, CurvesHaveTheirKnownValues) {
    constexpr std::tuple<KyEasing::Kind, double, double> cRows[] = {
        {KyEasing::BackIn, 0.5, -0.0876975},   {KyEasing::BackInOut, 0.25, -0.09968184},
        {KyEasing::BounceOut, 0.5, 0.765625},  {KyEasing::BounceIn, 0.5, 0.234375},
        {KyEasing::CircIn, 0.6, 0.2},          {KyEasing::CubicIn, 0.5, 0.125},
        {KyEasing::CubicInOut, 0.25, 0.0625},  {KyEasing::ElasticIn, 0.5, -0.015625},
        {KyEasing::ElasticOut, 0.5, 1.015625}, {KyEasing::ExpoIn, 0.5, 0.03125},
        {KyEasing::LinearInOut, 0.3, 0.3},     {KyEasing::QuadOut, 0.5, 0.75},
        {KyEasing::QuartIn, 0.5, 0.0625},      {KyEasing::QuintIn, 0.5, 0.03125},
        {KyEasing::SineIn, 2.0 / 3.0, 0.5}};
    for (const auto& [kind, time, value] : cRows)
        EXPECT_NEAR(KyEasing::compute(kind, time), value, 1e-6) << KyEasing::getName(kind);
}
