// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyColor.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <tuple>

namespace {

void expectNear(const KyColor& actual, const KyColor& expected) {
    for (int i = 0; i < 4; ++i)
        EXPECT_NEAR(actual[i], expected[i], 1e-6f) << actual << " is not " << expected;
}

} // namespace

TEST(KyColorTest, NamesAndTextsAreThoseOfHtml) {
    constexpr std::tuple<KyColor::Name, const char*, const char*> cRows[] = {{KyColor::eAqua, "aqua", "#00ffff"},
                                                                             {KyColor::eGreen, "green", "#008000"},
                                                                             {KyColor::eOrange, "OrAnGe", "#ffa500"},
                                                                             {KyColor::eYellow, "yellow", "#ffff00"}};
    for (const auto& [name, text, html] : cRows) {
        EXPECT_EQ(KyColor(name).getHtmlName(), html);
        EXPECT_EQ(KyColor(text), KyColor(name));
        EXPECT_EQ(KyColor(html), KyColor(name));
    }
    EXPECT_EQ(KyColor(static_cast<KyColor::Name>(99)), KyColor());
    EXPECT_EQ(KyColor("#F80"), KyColor("#ff8800"));
    EXPECT_EQ(KyColor("#11223380").toR8G8B8A8(), 0x11223380u);
    EXPECT_EQ(KyColor(2, -1, std::nanf(""), 0.5f).toR8G8B8A8(), 0xff000080u);
}

TEST(KyColorTest, AlphaIsAddedButMayBeMissingInAText) {
    KyColor color;
    EXPECT_TRUE(fromString("1 0.5 0.25", color));
    EXPECT_EQ(color, KyColor(1, 0.5f, 0.25f, 1));
    EXPECT_EQ((color - KyColor(0.5f, 0.5f, 0, 0.5f)) * 2.0f, KyColor(1, 0, 0.5f, 1));
}

TEST(KyColorTest, UnknownHtmlTextIsRefused) {
    for (const char* text : {"", "#", "#12", "#12345", "#1234567", "#123456789", "#gggggg", "#-12345", "redd", "re"}) {
        KyColor color(0.25f, 0.5f, 0.75f, 0.1f);
        EXPECT_FALSE(KyColor::fromHtml(text, color)) << text;
        EXPECT_EQ(color, KyColor(0.25f, 0.5f, 0.75f, 0.1f));
        EXPECT_EQ(KyColor(text), KyColor());
    }
}

TEST(KyColorTest, HueSaturationAndValueGoThereAndBack) {
    expectNear(KyColor(KyColor::eBlue).RGB2HSV(), KyColor(2.0f / 3.0f, 1, 1));
    for (int i = 0; i < 27; ++i) {
        const KyColor color(static_cast<float>(i % 3) / 2, static_cast<float>(i / 3 % 3) / 2,
                            static_cast<float>(i / 9) / 2, 0.5f);
        expectNear(color.RGB2HSV().HSV2RGB(), color);
    }
    KyColor turned(0, 0, 0, 0.25f);
    turned.setHSV(-1.0f / 3.0f, 0.5f, 1.0f);
    expectNear(turned, KyColor(0.5f, 0.5f, 1, 0.25f));
    turned.setHSV(std::numeric_limits<float>::infinity(), 1.0f, 1.0f);
    expectNear(turned, KyColor(1, 0, 0, 0.25f));
}

TEST(KyColorTest, GammaAboveOneBrightensAndWhatMakesNoSenseChangesNothing) {
    KyColor color(0.25f, -0.5f, 1.0f, 0.25f);
    for (const float gamma : {0.0f, -1.0f, std::nanf(""), std::numeric_limits<float>::infinity(), 2.0f})
        color.setGamma(gamma);
    expectNear(color, KyColor(0.5f, -0.5f, 1, 0.25f));
}
