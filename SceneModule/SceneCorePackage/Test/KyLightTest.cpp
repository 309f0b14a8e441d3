// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHolder.h"
#include "KyLight.h"

#include "KyAttributeInterface.h"

#include <gtest/gtest.h>

namespace {

TEST(KyLightTest, ItShinesWhereItLooks) {
    KyLight light;
    light.lookAt(KyVec3d(0, 10, 0), KyVec3d());
    EXPECT_NEAR((light.getWorldDirection() - KyVec3d(0, -1, 0)).length(), 0.0, 1e-12);
}

TEST(KyLightTest, ItsKindTakesTheNamesAndNumbersOfKindsOnly) {
    KyLight light;
    const KyAttributeInterface& kind = *light.getAttribute("Kind");
    EXPECT_TRUE(kind.setValue(light, KyField(1)));
    for (const KyField& value : {KyField(-1), KyField(99), KyField("no kind"), KyField(1e300), KyField()})
        EXPECT_FALSE(kind.setValue(light, value)) << value.toString();
    EXPECT_EQ(static_cast<int>(light.getKind()), 1);
}

} // namespace
