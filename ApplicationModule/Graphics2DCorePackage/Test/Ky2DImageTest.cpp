// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DScene.h"
#include "Ky2DSvgImage.h"
#include "Ky2DTestNodes.h"
#include "Ky2DUtil.h"

#include "KyImage.h"

#include "KyResource.h"

#include <QFile>
#include <QGraphicsPixmapItem>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>

namespace {

constexpr double cNaN = std::numeric_limits<double>::quiet_NaN();

/// A folder with pictures of 4 x 2 pixels, whole and broken.
class Ky2DImageTest : public testing::Test {
protected:
    Ky2DImageTest() {
        QImage picture(4, 2, QImage::Format_ARGB32);
        picture.fill(qRgba(255, 0, 0, 128));
        picture.setPixel(0, 0, qRgb(0, 0, 255));
        picture.save(getQPath("whole.png"));
        QFile whole(getQPath("whole.png"));
        EXPECT_TRUE(whole.open(QIODevice::ReadOnly));
        write("half.png", whole.readAll().left(40));
        write("noise.png", QByteArray(500, 'x'));
        write("huge.bmp", QByteArray::fromHex("424d360000000000000036000000280000007fffffff7fffffff01001800"));
        write("half.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='4'>"
                          "<rect width='4' height='4' fill='#c86432' fill-opacity='0.5'/></svg>");
        write("broken.svg", "<svg><rect");
        for (const char* name : {"pipe.png", "pipe.svg"})
            QProcess::execute("mkfifo", {getQPath(name)});
        const QByteArray link = "<image width='9' height='9' xlink:href='";
        write("self.svg", "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
                          "width='8' height='4'>" +
                              link + "self.svg'/>" + link + getQPath("whole.png").toUtf8() + "'/>" + link +
                              "data:image/svg+xml;base64,PHN2Zy8+'/></svg>");
        write("huge.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='1000000' height='1000000'/>");
    }

    QString getQPath(const char* name) const { return mFolder.filePath(name); }
    std::string getPath(const char* name) const { return getQPath(name).toStdString(); }

    void write(const char* name, const QByteArray& bytes) const {
        QFile file(getQPath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    static QImage getPicture(const Ky2DImage& node) {
        Ky2DNode::applyModification();
        const auto& item = dynamic_cast<const QGraphicsPixmapItem&>(*node.getQGraphicsItem());
        return item.pixmap().toImage().convertToFormat(QImage::Format_ARGB32);
    }

    QTemporaryDir mFolder;
};

} // namespace

TEST_F(Ky2DImageTest, EveryDepthIsConvertedAndAnUnknownLayoutReported) {
    const std::tuple<int, std::vector<unsigned char>, QRgb, QRgb> rows[] = {
        {1, {0x40}, 0xff000000u, 0xffffffffu},
        {8, {0x10, 0xfe}, 0xff101010u, 0xfffefefeu},
        {16, {0x00, 0xf8, 0xe0, 0x07}, 0xffff0000u, 0xff00ff00u},
        {24, {1, 2, 3, 4, 5, 6}, 0xff010203u, 0xff040506u},
        {32, {1, 2, 3, 4, 5, 6, 7, 0}, 0x04010203u, 0x00050607u},
    };
    for (const auto& [depth, bytes, first, second] : rows) {
        KyImage image(2, 1, depth);
        std::memcpy(image.editData(), bytes.data(), bytes.size());
        const QImage result = Ky2DUtil::KyImageToQImage(&image);
        ASSERT_EQ(QSize(2, 1), result.size()) << depth;
        EXPECT_EQ(first, result.pixel(0, 0)) << depth;
        EXPECT_EQ(second, result.pixel(1, 0)) << depth;
    }
    KyImage words(64, 1, 16);
    for (int x = 0; x < 64; ++x) {
        const auto word = static_cast<std::uint16_t>(x / 2 << 11 | x << 5 | x / 2);
        std::memcpy(words.editData() + sizeof word * static_cast<std::size_t>(x), &word, sizeof word);
    }
    const QImage converted = Ky2DUtil::KyImageToQImage(&words);
    for (int x = 0; x < 64; ++x)
        EXPECT_EQ(Ky2DUtil::KyColorToQColor(words.getPixel(x, 0)).rgba(), converted.pixel(x, 0)) << x;
    EXPECT_TRUE(Ky2DUtil::KyImageToQImage(nullptr).isNull());
    KyImage image(3, 2, 16);
    image.setLayoutName("R4G4B4A4");
    testing::internal::CaptureStderr();
    const QImage result = Ky2DUtil::KyImageToQImage(&image);
    EXPECT_EQ("Unknown 16 bits format.\n", testing::internal::GetCapturedStderr());
    ASSERT_EQ(QSize(3, 2), result.size());
    EXPECT_EQ(0u, result.pixel(2, 1));
}

TEST_F(Ky2DImageTest, APictureIsLoadedAtTheUpdateAndCoversItsRectangle) {
    const std::unique_ptr<Ky2DImage> node(Ky2DImage::create());
    node->setFileLocalPath(getPath("whole.png"));
    node->setQtOffset(KyVec2d(1, 2));
    node->setX(10);
    EXPECT_TRUE(node->isImageModified());
    const auto& list = Ky2DNode::getModifiedNodes();
    EXPECT_EQ(1, std::count(list.begin(), list.end(), node.get()));
    EXPECT_EQ(QSize(4, 2), getPicture(*node).size());
    EXPECT_FALSE(node->isImageModified() || node->isModified());
    EXPECT_EQ(KyRectd(11, 2, 4, 2), node->getBound());
    node->setWidth(40);
    node->setHeight(40);
    EXPECT_EQ(KyRectd(11, 2, 40, 40), node->getBound());
    node->setWidth(cNaN);
    EXPECT_EQ(KyRectd(11, 2, 4, 2), node->getBound());
    node->setX(std::numeric_limits<double>::infinity());
    EXPECT_EQ(KyRectd(11, 2, 4, 2), node->getBound());
    for (const auto& [opacity, expected] : {std::pair(0.25, 0.25), {7.0, 1.0}, {-1.0, 0.0}, {cNaN, 0.0}}) {
        node->setOpacity(opacity);
        node->update();
        EXPECT_EQ(expected, node->getQGraphicsItem()->opacity());
    }
}

TEST_F(Ky2DImageTest, TheWholePictureIsCentredOrStretched) {
    Ky2DScene scene;
    auto* node = Ky2DImage::create();
    scene.insertChild(node, Ky2DNode::cAppend);
    QImage green(4, 2, QImage::Format_RGB32);
    green.fill(Qt::green);
    node->setImage(green);
    node->setWidth(40);
    node->setHeight(40);
    for (const bool isPreserved : {true, false}) {
        node->setPreserveAspectRatio(isPreserved);
        Ky2DNode::applyModification();
        QImage image(40, 40, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        scene.getQGraphicsScene()->render(&painter, QRectF(0, 0, 40, 40), QRectF(0, 0, 40, 40));
        EXPECT_EQ(QColor(Qt::green), image.pixelColor(20, 20));
        EXPECT_EQ(QColor(isPreserved ? Qt::white : Qt::green), image.pixelColor(20, 4));
        EXPECT_EQ(QRectF(0, 0, 40, 40), node->getQGraphicsItem()->shape().boundingRect());
    }
}

TEST_F(Ky2DImageTest, AGivenPictureIsCopiedToldAndDroppedForAFile) {
    const std::unique_ptr<Ky2DImage> node(Ky2DImage::create());
    node->setFileLocalPath(getPath("whole.png"));
    const Listener listener(*node);
    node->setImage(QImage(7, 3, QImage::Format_RGB32));
    EXPECT_EQ((std::vector<std::string>{"ImageURL 2 -1", "FileLocalPath 2 -1"}), listener.entries);
    EXPECT_EQ("", node->getFileLocalPath());
    const std::unique_ptr<Ky2DImage> copy(node->clone());
    EXPECT_EQ(QSize(7, 3), getPicture(*copy).size());
    copy->setFileLocalPath(getPath("whole.png"));
    EXPECT_EQ(QSize(4, 2), getPicture(*copy).size());
    EXPECT_EQ(QSize(7, 3), getPicture(*node).size());
}

TEST_F(Ky2DImageTest, WhatIsNoPictureShowsNothingAndIsNotTriedAgain) {
    for (const char* name : {"missing.png", "half.png", "noise.png", "huge.bmp", "pipe.png", "", "."}) {
        const std::unique_ptr<Ky2DImage> node(Ky2DImage::create());
        node->setFileLocalPath(getPath("whole.png"));
        EXPECT_FALSE(getPicture(*node).isNull());
        node->setFileLocalPath(*name ? getPath(name) : std::string());
        EXPECT_TRUE(getPicture(*node).isNull() && node->getBound().isNull()) << name;
    }
    const std::unique_ptr<Ky2DImage> node(Ky2DImage::create());
    node->setFileLocalPath(getPath("late.png"));
    EXPECT_TRUE(getPicture(*node).isNull());
    QFile::copy(getQPath("whole.png"), getQPath("late.png"));
    node->setX(1);
    EXPECT_TRUE(getPicture(*node).isNull());
    node->imageModified();
    EXPECT_FALSE(getPicture(*node).isNull());
}

TEST_F(Ky2DImageTest, ARelativeNameIsSoughtWhereItWasSet) {
    const std::unique_ptr<Ky2DImage> node(Ky2DImage::create());
    ASSERT_TRUE(KyResource::pushThreadDirectory(KyURL(mFolder.path().toStdString() + "/", KyURL::eLocalPath)));
    node->setImageURL(KyURL("whole.png"));
    ASSERT_TRUE(KyResource::popThreadDirectory());
    const std::unique_ptr<Ky2DImage> copy(node->clone());
    EXPECT_FALSE(getPicture(*node).isNull() || getPicture(*copy).isNull());
    EXPECT_EQ("whole.png", copy->getFileLocalPath());
}

TEST_F(Ky2DImageTest, AnSvgTakesTheColourAndKeepsItsTransparency) {
    const std::unique_ptr<Ky2DSvgImage> node(Ky2DSvgImage::create());
    node->setFileLocalPath(getPath("half.svg"));
    const QImage own = getPicture(*node);
    ASSERT_EQ(QSize(8, 4), own.size());
    EXPECT_NEAR(200, qRed(own.pixel(1, 1)), 2);
    EXPECT_NEAR(128, qAlpha(own.pixel(1, 1)), 1);
    node->setColor(KyColor(0, 5, 0, 0.1f));
    const std::unique_ptr<Ky2DSvgImage> copy(node->clone());
    for (const Ky2DSvgImage* each : {node.get(), copy.get()}) {
        const QImage colored = getPicture(*each);
        EXPECT_EQ(qRgba(0, 255, 0, qAlpha(own.pixel(1, 1))), colored.pixel(1, 1));
        EXPECT_EQ(0, qAlpha(colored.pixel(6, 1)));
    }
    for (const char* name : {"broken.svg", "huge.svg", "missing.svg", "whole.png", "pipe.svg"}) {
        node->setFileLocalPath(getPath(name));
        EXPECT_TRUE(getPicture(*node).isNull()) << name;
    }
}

TEST_F(Ky2DImageTest, AnSvgLeadsToNoOtherPicture) {
    const std::unique_ptr<Ky2DSvgImage> node(Ky2DSvgImage::create());
    node->setFileLocalPath(getPath("self.svg"));
    const QImage own = getPicture(*node);
    ASSERT_EQ(QSize(8, 4), own.size());
    EXPECT_EQ(0, qAlpha(own.pixel(2, 2)));
}
