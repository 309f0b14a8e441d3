// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "../../SceneCorePackage/Test/KyModelFiles.h"

#include "KyHolder.h"
#include "KyImage.h"

#include <string>
#include <vector>

namespace {

class KyImageTest : public KyModelFiles {};

struct Depth {
    int bits;
    double tolerance;
};

class KyImageDepthTest : public testing::TestWithParam<Depth> {};

TEST_P(KyImageDepthTest, APixelReadsBackAsItWasWrittenAndLeavesItsNeighboursAlone) {
    KyImage image(11, 3, GetParam().bits);
    ASSERT_TRUE(image.isValid());
    const KyColor color = GetParam().bits <= 8 ? KyColor(1, 1, 1) : KyColor(0.8f, 0.4f, 0.2f);
    image.setPixel(9, 1, color);
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(image.getPixel(9, 1)[i], color[i], GetParam().tolerance);
    EXPECT_EQ(image.getPixel(8, 1).red, 0.0f);
    EXPECT_EQ(image.getPixel(10, 1).red, 0.0f);
    EXPECT_EQ(image.getPixel(9, 0).red, 0.0f);
}

INSTANTIATE_TEST_SUITE_P(Depths, KyImageDepthTest,
                         testing::Values(Depth{1, 0.0}, Depth{8, 0.003}, Depth{16, 0.02}, Depth{24, 0.003},
                                         Depth{32, 0.003}),
                         [](const auto& test) { return std::to_string(test.param.bits); });

TEST_F(KyImageTest, BytesStandTopRowFirstInTheOrderRedGreenBlueAlpha) {
    KyImage image(2, 2, 32);
    image.setPixel(1, 0, KyColor(1, 0, 0.2f, 0.4f));
    const unsigned char* pixel = image.getData() + 4;
    EXPECT_EQ(std::vector(pixel, pixel + 4), (std::vector<unsigned char>{255, 0, 51, 102}));
    image.flipVertically();
    EXPECT_EQ(image.getPixel(1, 1).red, 1.0f);
    EXPECT_EQ(KyImage(11, 2, 1).getBytesPerRow(), 2u);
    EXPECT_EQ(KyImage(11, 2, 24).getBytesPerRow(), 33u);
}

TEST_F(KyImageTest, AnImageOfImpossibleSizeOrDepthIsNotValid) {
    for (const KyImage& image :
         {KyImage(0, 4, 32), KyImage(4, -1, 32), KyImage(4, 4, 7), KyImage(1 << 20, 1 << 20, 8)}) {
        EXPECT_FALSE(image.isValid());
        EXPECT_EQ(image.getData(), nullptr);
        EXPECT_EQ(image.getPixel(0, 0), KyColor(0, 0, 0, 0));
    }
}

TEST_F(KyImageTest, APixelOutsideIsTransparentAndWritingItDoesNothing) {
    KyImage image(2, 2, 24);
    for (const auto& [x, y] : {std::pair{-1, 0}, {0, -1}, {2, 0}, {0, 2}}) {
        image.setPixel(x, y, KyColor(1, 1, 1));
        EXPECT_EQ(image.getPixel(x, y), KyColor(0, 0, 0, 0));
    }
    EXPECT_EQ(std::count(image.getData(), image.getData() + 12, 0), 12);
}

TEST_F(KyImageTest, ASavedImageLoadsAsItWas) {
    for (const auto& [bits, saved] : {std::pair{8, 8}, {16, 24}, {24, 24}, {32, 32}}) {
        KyImage image(5, 4, bits);
        image.setPixel(0, 0, KyColor(1, 1, 1, 1));
        image.setPixel(4, 3, KyColor(0, 0, 0, 0.2f));
        ASSERT_TRUE(image.savePNG(getURL("saved.png")));
        const KyHolder<KyImage> loaded(KyImage::create(getURL("saved.png")));
        ASSERT_TRUE(loaded);
        EXPECT_EQ(loaded->getBitsPerPixel(), saved);
        EXPECT_EQ(loaded->getDifference(image), 0.0) << bits;
    }
}

TEST_F(KyImageTest, WhatIsNoPictureIsNeitherLoadedNorSaved) {
    ASSERT_TRUE(KyImage(64, 64, 24).savePNG(getURL("whole.png")));
    std::ifstream stream(mDirectory / "whole.png", std::ios::binary);
    const std::string png(std::istreambuf_iterator<char>(stream), {});
    std::string hugeHeader = png;
    hugeHeader.replace(16, 8, std::string("\x7f\xff\xff\xff\x7f\xff\xff\xff", 8));
    const std::pair<const char*, std::string> cases[] = {
        {"empty.png", ""},
        {"garbage.png", "\x89PNG\r\n\x1a\nthis is no picture at all"},
        {"text.jpg", "hello"},
        {"truncated.png", png.substr(0, 40)},
        {"header.png", png.substr(0, 10)},
        {"huge.png", hugeHeader},
        {"jpeg.jpg", "\xff\xd8\xff\xe0" + std::string(40, 'x')},
    };
    for (const auto& [name, bytes] : cases)
        EXPECT_EQ(KyImage::create(write(name, bytes)), nullptr) << name;
    for (const KyURL& url : {getURL("missing.png"), getURL(""), KyURL("http://host/picture.png"), KyURL()})
        EXPECT_EQ(KyImage::create(url), nullptr);
    EXPECT_FALSE(KyImage(2, 2, 24).savePNG(getURL("missing/folder.png")));
    EXPECT_FALSE(KyImage().savePNG(getURL("empty.png")));
}

TEST_F(KyImageTest, ACloneHasPixelsAndCountOfItsOwn) {
    KyImage image(2, 2, 24);
    image.addReference();
    const KyHolder<KyImage> copy(image.clone());
    image.setPixel(0, 0, KyColor(1, 1, 1));
    EXPECT_EQ(copy->getPixel(0, 0), KyColor(0, 0, 0));
    EXPECT_EQ(copy->getNbReferences(), 1u);
}

} // namespace
