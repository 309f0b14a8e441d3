// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtFont.h"

#include "KyFontFormat.h"

#include <gtest/gtest.h>

#include <QFontInfo>

#include <memory>

using namespace KyApplication;

namespace {

std::unique_ptr<KyFontFormat> convert(const QFont& font) {
    return std::unique_ptr<KyFontFormat>(toKyFontFormat(font));
}

} // namespace

TEST(KyQtFontTest, EveryPropertyCrossesBothWaysAndAFamilyIsNoDescription) {
    QFont font;
    font.setFamily("Mono,40,-1,5,99,1,0,0,0,0");
    font.setStyleHint(QFont::Monospace);
    font.setPointSizeF(17.5);
    font.setWeight(63);
    font.setStyle(QFont::StyleOblique);
    font.setUnderline(true);
    font.setStrikeOut(true);
    EXPECT_EQ(convert(font)->getSize(), 17.5);
    EXPECT_EQ(toQFont(*convert(font)), font);
}

TEST(KyQtFontTest, WhatAFormatDoesNotSayIsTheApplicationsOwn) {
    KyFontFormat format;
    format.setStyleHint(1000);
    EXPECT_EQ(toQFont(format).family(), QFont().family());
    EXPECT_EQ(toQFont(format).styleHint(), QFont::AnyStyle);
}

TEST(KyQtFontTest, AFontInPixelsHasTheSizeThatTheScreenGivesIt) {
    QFont font;
    font.setPixelSize(48);
    EXPECT_EQ(convert(font)->getSize(), QFontInfo(font).pointSizeF());
    EXPECT_GT(convert(font)->getSize(), 0);
}
