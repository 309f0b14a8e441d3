// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFontFormat.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(KyFontFormatTest, SettersLimitOrIgnoreWhatNoFontHas) {
    KyFontFormat format;
    format.setWeight(150);
    EXPECT_EQ(format.getWeight(), 99);
    format.setWeight(-3);
    EXPECT_EQ(format.getWeight(), 0);
    format.setSize(14.5);
    for (const double size : {0.0, -2.0, std::numeric_limits<double>::quiet_NaN()})
        format.setSize(size);
    EXPECT_EQ(format.getSize(), 14.5);
    format.setStyle(KyFontFormat::eOblique);
    format.setStyle(7);
    EXPECT_EQ(format.getStyle(), KyFontFormat::eOblique);
}

} // namespace
