// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlPassTesting.h"

#include <QOpenGLContext>
#include <QPainter>

#include <cmath>

namespace {

constexpr const char* cFlags = R"(import QtQuick 2.15
Item {
    Rectangle { x: 10; y: 5; width: 40; height: 20; color: "red" }
    Rectangle { x: parent.width - 30; y: parent.height - 20; width: 30; height: 20; color: "#8000ff00" }
})";

TEST_F(KyQmlPassTest, TheViewShowsWhatAPainterWouldPaintOverIt) {
    show(cFlags);
    QImage expected(cWidth, cHeight, QImage::Format_RGB32);
    expected.fill(Qt::blue);
    QPainter painter(&expected);
    painter.fillRect(10, 5, 40, 20, Qt::red);
    painter.fillRect(cWidth - 30, cHeight - 20, 30, 20, QColor(0, 255, 0, 128));
    const QImage picture = kyToImage(KyHolder<KyImage>(mTarget->readPixels()).get());
    int worst = 0;
    for (int y = 0; y < cHeight; ++y)
        for (int x = 0; x < cWidth; ++x) {
            const QColor a = picture.pixelColor(x, y), b = expected.pixelColor(x, y);
            worst = std::max(
                {worst, std::abs(a.red() - b.red()), std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
        }
    EXPECT_LE(worst, 2);
    EXPECT_EQ(mPass->getQuickItem()->size(), QSizeF(cWidth, cHeight));
    EXPECT_EQ(mPass->getTexture()->getByteSize(), cWidth * cHeight * 4U);
}

TEST_F(KyQmlPassTest, PixelColoursAreStraightAndFollowTheScreensRows) {
    struct Place {
        KyVec2f position;
        KyColor color;
    };
    const KyColor none(0.0f, 0.0f, 0.0f, 0.0f), red(1.0f, 0.0f, 0.0f), green(0.0f, 1.0f, 0.0f, 0.5f);
    EXPECT_EQ(mPass->getPixelColor({20.0f, 10.0f}, mOverlay.get()), none);
    show(cFlags);
    for (const auto& [position, color] :
         {Place{{20.0f, 10.0f}, red}, Place{{49.9f, 24.9f}, red}, Place{{50.1f, 10.0f}, none},
          Place{{20.0f, 70.0f}, none}, Place{{110.0f, 70.0f}, green}, Place{{-1.0f, 10.0f}, none},
          Place{{20.0f, 80.0f}, none}, Place{{NAN, 10.0f}, none}}) {
        const KyColor found = mPass->getPixelColor(position, mOverlay.get());
        EXPECT_NEAR(found.red, color.red, 0.01f) << position.x << ' ' << position.y;
        EXPECT_NEAR(found.green, color.green, 0.01f) << position.x << ' ' << position.y;
        EXPECT_NEAR(found.alpha, color.alpha, 0.01f) << position.x << ' ' << position.y;
    }
}

TEST_F(KyQmlPassTest, AFixedSizeIsStretchedOverTheView) {
    mPass->setFboSize({40, 40});
    show(cFlags);
    EXPECT_EQ(mPass->getQuickItem()->size(), QSizeF(40, 40));
    EXPECT_NEAR(mPass->getPixelColor({90.0f, 30.0f}, mOverlay.get()).red, 1.0f, 0.01f);
    EXPECT_EQ(mPass->getScenePosition({90.0f, 30.0f}, mOverlay.get()), KyVec2f(90.0f, 30.0f));
    mPass->setFboSize({});
    render();
    EXPECT_EQ(mPass->getQuickItem()->size(), QSizeF(cWidth, cHeight));
}

TEST_F(KyQmlPassTest, NothingIsRenderedWhileNothingChanges) {
    show(cFlags);
    const auto render = [this] {
        kyRunFrames(3);
        KyQmlPassTest::render();
        return mPass->getTexture()->getVersion();
    };
    render();
    const auto version = render();
    EXPECT_EQ(render(), version);
    EXPECT_FALSE(mCanvas->needsRedraw());
    unsigned count = 0;
    mPass->needUpdateSignal().connect([&count](KyQmlPass*) { ++count; });
    mPass->getQuickItem()->childItems().first()->setX(0.0);
    EXPECT_TRUE(kyRunUntil([&] { return mCanvas->needsRedraw(); }));
    EXPECT_EQ(count, 1U);
    EXPECT_GT(render(), version);
}

TEST_F(KyQmlPassTest, WhatAsksForItsNextPictureWhilePaintingGetsIt) {
    show("import QtQuick 2.15\nItem { property int n: 0; NumberAnimation on n { to: 1000; duration: 100000 } }");
    unsigned count = 0;
    mPass->needUpdateSignal().connect([&count](KyQmlPass*) { ++count; });
    QObject::connect(mPass->getQuickWindow(), &QQuickWindow::afterRendering, mPass.get(), &KyQmlPass::requestUpdate);
    mPass->requestUpdate();
    for (int i = 0; i < 5; ++i)
        render();
    EXPECT_GE(count, 5U);
}

TEST_F(KyQmlPassTest, ContextObjectsAreSeenByName) {
    KyHolder<KyQmlPass> lamp(KyQmlPass::create());
    lamp->setName("red");
    mPass->setContextObject("lamp", lamp.get());
    show("import QtQuick 2.15\nRectangle { color: lamp ? lamp.Name : 'black' }");
    EXPECT_EQ(getColor(), QColor(Qt::red));
    lamp->setName("lime");
    EXPECT_TRUE(showsSoon(Qt::green));
    mPass->setContextObject("lamp", nullptr);
    EXPECT_TRUE(showsSoon(Qt::black));
}

TEST_F(KyQmlPassTest, TextsArePathsOrUrls) {
    const std::string relative = QDir::current().relativeFilePath(write(makeFill("red"))).toStdString();
    for (const auto& [text, url] : {std::pair(path.toStdString(), QUrl::fromLocalFile(path)),
                                    {"file://" + path.toStdString(), QUrl::fromLocalFile(path)},
                                    {"qrc:///a/b.qml", QUrl("qrc:/a/b.qml")},
                                    {"", QUrl()}}) {
        mPass->setQmlText(text);
        EXPECT_EQ(mPass->getQml(), url) << text << ": " << mPass->getQmlText();
    }
    mPass->setQmlText(relative);
    render();
    EXPECT_TRUE(mPass->isLoaded()) << mPass->getErrorText();
    EXPECT_EQ(getColor(), QColor(Qt::red));
}

TEST_F(KyQmlPassTest, AnyViewSizeIsPossibleAndOneBeyondTheDeviceIsReportedOnce) {
    const Reports reports;
    show(makeFill("red"));
    for (const QSize& size : {QSize(0, 0), QSize(16384, 1), QSize(1, 16384), QSize(1000000, 1)}) {
        mPass->setFboSize(size);
        for (int i = 0; i < 3; ++i)
            render();
        EXPECT_EQ(Reports::texts.size(), size.width() == 1000000 ? 1U : 0U);
    }
    mCanvas->setSize(0, 0);
    KyRendererContext context(mDevice.get());
    EXPECT_FALSE(mCanvas->render(context));
    mCanvas->setSize(cWidth, cHeight);
    mPass->setFboSize({});
    render();
    EXPECT_EQ(getColor(), QColor(Qt::red));
}

TEST_F(KyQmlPassTest, AViewThatCannotShareIsReportedOnceAndForgottenWithTheGraphics) {
    if (qEnvironmentVariableIsSet(cForeignVariable) || qEnvironmentVariableIsSet("QT_QUICK_BACKEND"))
        GTEST_SKIP() << "where images serve nothing needs to be shared";
    const Reports reports;
    show(makeFill("red"));
    mPass->cleanupGraphicsRessources();
    QOpenGLContext::currentContext()->doneCurrent();
    std::string error;
    auto foreign = KyOffscreenContext::create(error);
    ASSERT_TRUE(foreign && foreign->makeCurrent()) << error;
    KyRendererContext context(foreign.get());
    for (int i = 0; i < 2; ++i) {
        mPass->requestUpdate();
        mPass->preRender(context);
        mPass->postRender(context);
    }
    EXPECT_EQ(Reports::texts,
              std::vector<std::string>{"QML cannot be shown in the view: the view's OpenGL is not Qt's."});
    foreign.reset();
    ASSERT_TRUE(mDevice->makeCurrent());
    mPass->cleanupGraphicsRessources();
    render();
    EXPECT_EQ(getColor(), QColor(Qt::red));
}

TEST_F(KyQmlPassTest, TheViewsContextIsAsBefore) {
    show(makeFill("red"));
    QOpenGLContext* const context = QOpenGLContext::currentContext();
    ASSERT_TRUE(qEnvironmentVariableIsSet(cForeignVariable) || context);
    EXPECT_TRUE(KyGraphicsDevice::hasCurrentContext());
    mPass->createFbo();
    mPass->getPixelColor({1.0f, 1.0f}, mOverlay.get());
    mPass->cleanupGraphicsRessources();
    EXPECT_EQ(QOpenGLContext::currentContext(), context);
    EXPECT_TRUE(KyGraphicsDevice::hasCurrentContext());
    render();
    EXPECT_EQ(getColor(), QColor(Qt::red));
}

class KyQmlPassWindowTest : public testing::TestWithParam<KyWindowKind> {};

TEST_P(KyQmlPassWindowTest, ShowsTheQmlAboveTheSceneAndThenRests) {
    const QTemporaryDir directory;
    writeFile(directory.filePath("mark.qml"),
              "import QtQuick 2.15\nItem { Rectangle { width: 9; height: 9; y: parent.height - 9; color: 'lime' } }");
    const KyBallCanvas ball;
    auto* const overlay = KyQmlPass::createQmlPassOverlayView(ball.canvas->getView(0), true, false);
    KyQmlPass::cast(overlay->getMainPass())->setQml(directory.filePath("mark.qml"));
    const auto shown = GetParam().show(ball.canvas.get());
    EXPECT_TRUE(kyRunUntil([&] {
        const QImage frame = shown->getFrame();
        return !frame.isNull() && frame.pixelColor(3, frame.height() - 4) == QColor(Qt::green) &&
               frame.pixelColor(frame.rect().center()).red() > 90;
    }));
    kyRunFrames();
    const unsigned nbDrawn = shown->nbDrawn;
    kyRunFrames();
    EXPECT_EQ(shown->nbDrawn, nbDrawn);
}

INSTANTIATE_TEST_SUITE_P(, KyQmlPassWindowTest, testing::ValuesIn(gWindowKinds),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(KyQmlPassProcessTest, WorksWithoutSharedContextsAndAtAnyScale) {
    constexpr const char* cCases =
        "KyQmlPassTest.*:KyQmlPassFailureTest.*syntax:KyQmlPassEndTest.*:KyQmlPassWindowTest.*GLWindow";
    for (const auto& [variable, value] : {std::pair("QT_QUICK_BACKEND", "software"),
                                          {cForeignVariable, "1"},
                                          {"QT_SCALE_FACTOR", "1.5"},
                                          {"QT_SCALE_FACTOR", "2"}})
        EXPECT_EQ(kyRunProcess(cCases, variable, value), 0) << variable << '=' << value;
}

} // namespace
