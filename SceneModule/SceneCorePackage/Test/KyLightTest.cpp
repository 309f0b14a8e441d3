// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHolder.h"
#include "KyLight.h"

#include <gtest/gtest.h>

namespace {

TEST(KyLightTest, ItShinesWhereItLooks) {
    KyLight light;
    light.lookAt(KyVec3d(0, 10, 0), KyVec3d());
    EXPECT_NEAR((light.getWorldDirection() - KyVec3d(0, -1, 0)).length(), 0.0, 1e-12);
}

} // namespace
