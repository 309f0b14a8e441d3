// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyColor.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

void expectNear(const KyColor& actual, const KyColor& expected) {
    for (int i = 0; i < 4; ++i)
        EXPECT_NEAR(actual[i], expected[i], 1e-6f) << actual << " is not " << expected;
}

} // namespace

TEST(KyColorTest, TheDefaultIsOpaqueBlack) {
    EXPECT_EQ(KyColor(), KyColor(0, 0, 0, 1));
    EXPECT_EQ(KyColor(1, 0.5f, 0), KyColor(1, 0.5f, 0, 1));
}

TEST(KyColorTest, NamesHaveTheValuesAndNumbersOfHtml) {
    struct Row {
        KyColor::Name mName;
        int mNumber;
        const char* mText;
        const char* mHtml;
    };
    constexpr Row cRows[] = {{KyColor::eAqua, 0, "aqua", "#00ffff"},      {KyColor::eBlack, 1, "black", "#000000"},
                             {KyColor::eBlue, 2, "blue", "#0000ff"},      {KyColor::eFuchsia, 3, "fuchsia", "#ff00ff"},
                             {KyColor::eGray, 4, "gray", "#808080"},      {KyColor::eGreen, 5, "green", "#008000"},
                             {KyColor::eLime, 6, "lime", "#00ff00"},      {KyColor::eMaroon, 7, "maroon", "#800000"},
                             {KyColor::eNavy, 8, "navy", "#000080"},      {KyColor::eOlive, 9, "olive", "#808000"},
                             {KyColor::eOrange, 10, "orange", "#ffa500"}, {KyColor::ePurple, 11, "purple", "#800080"},
                             {KyColor::eRed, 12, "red", "#ff0000"},       {KyColor::eSilver, 13, "silver", "#c0c0c0"},
                             {KyColor::eTeal, 14, "teal", "#008080"},     {KyColor::eWhite, 15, "white", "#ffffff"},
                             {KyColor::eYellow, 16, "yellow", "#ffff00"}};
    static_assert(std::size(cRows) == KyColor::eNbNames);
    for (const Row& row : cRows) {
        EXPECT_EQ(row.mName, row.mNumber);
        EXPECT_EQ(KyColor(row.mName).getHtmlName(), row.mHtml);
        EXPECT_EQ(KyColor(row.mText), KyColor(row.mName));
        EXPECT_EQ(KyColor(row.mHtml), KyColor(row.mName));
    }
    EXPECT_EQ(KyColor(static_cast<KyColor::Name>(99)), KyColor());
}

TEST(KyColorTest, HtmlTextHasThreeFormsInAnyCase) {
    EXPECT_EQ(KyColor("#F80"), KyColor("#ff8800"));
    EXPECT_EQ(KyColor("#11223380").toR8G8B8A8(), 0x11223380u);
    EXPECT_EQ(KyColor("OrAnGe"), KyColor(KyColor::eOrange));
}

TEST(KyColorTest, UnknownHtmlTextIsRefused) {
    for (const char* text : {"", "#", "#12", "#12345", "#1234567", "#123456789", "#gggggg", "#-12345", "redd", "re"}) {
        KyColor color(0.25f, 0.5f, 0.75f, 0.1f);
        EXPECT_FALSE(KyColor::fromHtml(text, color)) << text;
        EXPECT_EQ(color, KyColor(0.25f, 0.5f, 0.75f, 0.1f));
        EXPECT_EQ(KyColor(text), KyColor());
    }
}

TEST(KyColorTest, PackedBytesAreRoundedAndLimited) {
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(KyColor(1, 0, 0.5f, 1).toR8G8B8A8(), 0xff0080ffu);
    EXPECT_EQ(KyColor(2, -1, notANumber, 0).toR8G8B8A8(), 0xff000000u);
    EXPECT_EQ(KyColor(2, -1, 0.999f, 0).getHtmlName(), "#ff00ff");
}

TEST(KyColorTest, HueSaturationAndValueGoThereAndBack) {
    expectNear(KyColor(KyColor::eRed).RGB2HSV(), KyColor(0, 1, 1));
    expectNear(KyColor(KyColor::eLime).RGB2HSV(), KyColor(1.0f / 3.0f, 1, 1));
    expectNear(KyColor(KyColor::eBlue).RGB2HSV(), KyColor(2.0f / 3.0f, 1, 1));
    expectNear(KyColor(0.5f, 0.5f, 0.5f, 0.25f).RGB2HSV(), KyColor(0, 0, 0.5f, 0.25f));
    for (int i = 0; i < 27; ++i) {
        const KyColor color(static_cast<float>(i % 3) / 2, static_cast<float>(i / 3 % 3) / 2,
                            static_cast<float>(i / 9) / 2, 0.5f);
        expectNear(color.RGB2HSV().HSV2RGB(), color);
    }
}

TEST(KyColorTest, HueTurnsAndAlphaStays) {
    KyColor color(0, 0, 0, 0.25f);
    color.setHSV(1.0f + 1.0f / 3.0f, 1.0f, 0.5f);
    expectNear(color, KyColor(0, 0.5f, 0, 0.25f));
    color.setHSV(-1.0f / 3.0f, 0.5f, 1.0f);
    expectNear(color, KyColor(0.5f, 0.5f, 1, 0.25f));
    color.setHSV(std::numeric_limits<float>::infinity(), 1.0f, 1.0f);
    expectNear(color, KyColor(1, 0, 0, 0.25f));
}

TEST(KyColorTest, GammaAboveOneBrightens) {
    KyColor color(0.25f, 1.0f, 0.0f, 0.25f);
    color.setGamma(2.0f);
    expectNear(color, KyColor(0.5f, 1, 0, 0.25f));
}

TEST(KyColorTest, AGammaThatMakesNoSenseChangesNothing) {
    for (const float gamma :
         {0.0f, -1.0f, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        KyColor color(0.25f, -0.5f, 0.75f);
        color.setGamma(gamma);
        EXPECT_EQ(color, KyColor(0.25f, -0.5f, 0.75f));
    }
    KyColor negative(-0.5f, 0, 0);
    negative.setGamma(2.0f);
    EXPECT_EQ(negative, KyColor(-0.5f, 0, 0));
}

TEST(KyColorTest, ArithmeticIncludesAlpha) {
    const KyColor a(0.5f, 0.25f, 1, 0.5f), b(0.25f, 0.5f, 0.5f, 0.25f);
    EXPECT_EQ(a + b, KyColor(0.75f, 0.75f, 1.5f, 0.75f));
    EXPECT_EQ(a - b, KyColor(0.25f, -0.25f, 0.5f, 0.25f));
    EXPECT_EQ(a * b, KyColor(0.125f, 0.125f, 0.5f, 0.125f));
    EXPECT_EQ(a * 2.0f, KyColor(1, 0.5f, 2, 1));
    EXPECT_EQ(2.0f * a, a * 2.0f);
}

TEST(KyColorTest, IndicesReachTheComponents) {
    KyColor color(0.1f, 0.2f, 0.3f, 0.4f);
    for (int i = 0; i < 4; ++i)
        color[i] *= 2.0f;
    EXPECT_EQ(color, KyColor(0.2f, 0.4f, 0.6f, 0.8f));
    EXPECT_EQ(color[99], 0.8f);
}

TEST(KyColorTest, TextHasFourComponentsAndAlphaMayBeMissing) {
    KyColor color;
    EXPECT_EQ(KyColor(1, 0.5f, 0.1f, 0.25f).toString(), "1 0.5 0.1 0.25");
    EXPECT_TRUE(fromString("1 0.5 0.25", color));
    EXPECT_EQ(color, KyColor(1, 0.5f, 0.25f, 1));
}
