// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHolder.h"
#include "KyLight.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(KyLightTest, ItShinesWhereItLooks) {
    KyLight light;
    light.lookAt(KyVec3d(0, 10, 0), KyVec3d());
    EXPECT_NEAR((light.getWorldDirection() - KyVec3d(0, -1, 0)).length(), 0.0, 1e-12);
}

TEST(KyLightTest, ImpossibleValuesAreIgnored) {
    KyLight light;
    light.setIntensity(2.0);
    light.setIntensity(-1.0);
    light.setIntensity(std::numeric_limits<double>::infinity());
    EXPECT_EQ(light.getIntensity(), 2.0);
    light.setKind(KyLight::ePoint);
    light.setKind(12);
    EXPECT_EQ(light.getKind(), KyLight::ePoint);
    light.setRange(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(light.getRange(), 0.0);
}

} // namespace
