// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHolder.h"
#include "KyImage.h"

#include "KyURL.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

class KyImageTest : public testing::Test {
protected:
    KyImageTest()
        : mDirectory(std::filesystem::path(testing::TempDir()) / "KyImageTest") {
        std::filesystem::create_directories(mDirectory);
    }
    ~KyImageTest() override { std::filesystem::remove_all(mDirectory); }

    KyURL getURL(const std::string& name) const { return KyURL((mDirectory / name).string(), KyURL::eLocalPath); }
    KyURL write(const std::string& name, const std::string& bytes) const {
        std::ofstream(mDirectory / name, std::ios::binary) << bytes;
        return getURL(name);
    }
    std::string read(const std::string& name) const {
        std::ifstream stream(mDirectory / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), {});
    }

    std::filesystem::path mDirectory;
};

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

TEST_F(KyImageTest, RowsHaveNoPaddingBeyondAWholeByte) {
    EXPECT_EQ(KyImage(11, 2, 1).getBytesPerRow(), 2u);
    EXPECT_EQ(KyImage(11, 2, 16).getBytesPerRow(), 22u);
    EXPECT_EQ(KyImage(11, 2, 24).getBytesPerRow(), 33u);
}

TEST_F(KyImageTest, BytesStandTopRowFirstInTheOrderRedGreenBlueAlpha) {
    KyImage image(2, 2, 32);
    image.setPixel(1, 0, KyColor(1, 0, 0.2f, 0.4f));
    const unsigned char* pixel = image.getData() + 4;
    EXPECT_EQ(pixel[0], 255);
    EXPECT_EQ(pixel[1], 0);
    EXPECT_EQ(pixel[2], 51);
    EXPECT_EQ(pixel[3], 102);
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
    for (const int bits : {8, 24, 32}) {
        KyImage image(5, 4, bits);
        image.setPixel(0, 0, KyColor(1, 1, 1, 1));
        image.setPixel(4, 3, KyColor(0.6f, 0.6f, 0.6f, 0.2f));
        ASSERT_TRUE(image.savePNG(getURL("saved.png")));
        const KyHolder<KyImage> loaded(KyImage::create(getURL("saved.png")));
        ASSERT_TRUE(loaded);
        EXPECT_EQ(loaded->getBitsPerPixel(), bits);
        EXPECT_EQ(loaded->getDifference(image), 0.0) << bits;
    }
}

TEST_F(KyImageTest, A16BitImageIsSavedAs24Bits) {
    KyImage image(2, 1, 16);
    image.setPixel(1, 0, KyColor(1, 0, 0));
    ASSERT_TRUE(image.savePNG(getURL("saved.png")));
    const KyHolder<KyImage> loaded(KyImage::create(getURL("saved.png")));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->getBitsPerPixel(), 24);
    EXPECT_EQ(loaded->getPixel(1, 0), KyColor(1, 0, 0));
}

TEST_F(KyImageTest, WhatIsNoPictureGivesNull) {
    ASSERT_TRUE(KyImage(64, 64, 24).savePNG(getURL("whole.png")));
    const std::string png = read("whole.png");
    std::string hugeHeader = png;
    hugeHeader.replace(16, 8, std::string("\x7f\xff\xff\xff\x7f\xff\xff\xff", 8));
    const std::pair<const char*, std::string> cases[] = {
        {"empty.png", ""},
        {"garbage.png", "\x89PNG\r\n\x1a\nthis is no picture at all"},
        {"text.jpg", "hello"},
        {"truncated.png", png.substr(0, 40)},
        {"header.png", png.substr(0, 10)},
        {"huge.png", hugeHeader},
        {"jpeg.jpg", std::string("\xff\xd8\xff\xe0", 4) + std::string(40, 'x')},
    };
    for (const auto& [name, bytes] : cases)
        EXPECT_EQ(KyImage::create(write(name, bytes)), nullptr) << name;
}

TEST_F(KyImageTest, WhatIsNoLocalFileGivesNull) {
    EXPECT_EQ(KyImage::create(getURL("missing.png")), nullptr);
    EXPECT_EQ(KyImage::create(KyURL(mDirectory.string(), KyURL::eLocalPath)), nullptr);
    EXPECT_EQ(KyImage::create(KyURL("http://host/picture.png")), nullptr);
    EXPECT_EQ(KyImage::create(KyURL()), nullptr);
}

TEST_F(KyImageTest, SavingReportsWhatCannotBeWritten) {
    EXPECT_FALSE(KyImage(2, 2, 24).savePNG(getURL("missing/folder.png")));
    EXPECT_FALSE(KyImage().savePNG(getURL("empty.png")));
    EXPECT_FALSE(KyImage(2, 2, 24).savePNG(KyURL("http://host/picture.png")));
}

TEST_F(KyImageTest, FlippingExchangesTopAndBottom) {
    KyImage image(2, 3, 8);
    image.setPixel(0, 0, KyColor(1, 1, 1));
    image.flipVertically();
    EXPECT_EQ(image.getPixel(0, 0).red, 0.0f);
    EXPECT_EQ(image.getPixel(0, 2).red, 1.0f);
}

TEST_F(KyImageTest, ACloneHasPixelsAndCountOfItsOwn) {
    KyImage image(2, 2, 24);
    image.addReference();
    const KyHolder<KyImage> copy(image.clone());
    image.setPixel(0, 0, KyColor(1, 1, 1));
    EXPECT_EQ(copy->getPixel(0, 0), KyColor(0, 0, 0));
    EXPECT_EQ(copy->getNbReferences(), 1u);
}

TEST_F(KyImageTest, AttributesTellSizeAndLayout) {
    const KyImage image(7, 5, 16);
    KyField value;
    ASSERT_TRUE(image.getAttribute("Width")->getValue(image, value));
    EXPECT_EQ(value.toInt(), 7);
    ASSERT_TRUE(image.getAttribute("LayoutName")->getValue(image, value));
    EXPECT_EQ(value.toString(), "R5G6B5");
}

} // namespace
