// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyWindowTesting.h"

#include "KyQmlPass.h"

#include "KyFrameBuffer.h"
#include "KyGraphicsViewMultiPass.h"
#include "KyOffscreenContext.h"
#include "KyRendererContext.h"

#include "KyException.h"
#include "KyField.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QPainter>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSaveFile>
#include <QTemporaryDir>

#include <cmath>

namespace {

constexpr int cWidth = 120, cHeight = 80;
constexpr const char* cForeignVariable = "KY_TEST_FOREIGN_GL";

constexpr const char* cFlags = R"(import QtQuick 2.15
Item {
    Rectangle { x: 10; y: 5; width: 40; height: 20; color: "red" }
    Rectangle { x: parent.width - 30; y: parent.height - 20; width: 30; height: 20; color: "#8000ff00" }
})";

std::string makeFill(const char* color, const char* more = "") {
    return std::string("import QtQuick 2.15\nRectangle { color: \"") + color + "\"\n" + more + "}\n";
}

struct Reports {
    Reports() { texts.clear(); }
    ~Reports() { KyException::setReportHandler(mBefore); }

    static inline std::vector<std::string> texts;

private:
    KyException::ReportHandler mBefore =
        KyException::setReportHandler([](const std::string& text) { texts.push_back(text); });
};

class KyQmlPassTest : public testing::Test {
protected:
    void SetUp() override {
        std::string error;
        if (qEnvironmentVariableIsSet(cForeignVariable))
            mDevice = KyOffscreenContext::create(error);
        else
            mDevice = KyQGraphicsDevice::createOffscreen(error);
        ASSERT_TRUE(mDevice && mDevice->makeCurrent()) << error;
        mCanvas->setSize(cWidth, cHeight);
        mTarget->setSize(cWidth, cHeight);
        mBack->setClearColor(KyColor(0.0f, 0.0f, 1.0f));
        mCanvas->insertView(mBack.get());
        mOverlay.reset(KyQmlPass::createQmlPassOverlayView(mBack.get(), true, true));
        mPass.reset(KyQmlPass::cast(mOverlay->getMainPass()));
    }

    QString write(const std::string& text) const {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.data(), static_cast<qint64>(text.size()));
        return path;
    }
    void render() {
        KyRendererContext context(mDevice.get());
        context.setTarget(mTarget.get());
        ASSERT_TRUE(mCanvas->render(context));
    }
    void show(const std::string& text) {
        mPass->setQml(write(text));
        render();
    }
    QImage getPicture() { return kyToImage(KyHolder<KyImage>(mTarget->readPixels()).get()); }
    QColor getColor() { return getPicture().pixelColor(cWidth / 2, cHeight / 2); }
    bool showsSoon(Qt::GlobalColor color) {
        return kyRunUntil([&] {
            render();
            return getColor() == QColor(color);
        });
    }
    QVariantList getErrors() const { return mPass->getQmlContext()->contextProperty("qmlError").toList(); }
    void click(const char* name) {
        auto* button = mPass->getQuickItem()->findChild<QQuickItem*>(name);
        ASSERT_TRUE(button);
        const QPointF place = button->mapToScene(QPointF(button->width() / 2, button->height() / 2));
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
            QMouseEvent event(type, place, place, Qt::LeftButton, held, Qt::NoModifier);
            QCoreApplication::sendEvent(mPass->getQuickWindow(), &event);
        }
    }

    QTemporaryDir mDirectory;
    const QString path = mDirectory.filePath("panel.qml");
    std::unique_ptr<KyGraphicsDevice> mDevice;
    KyHolder<KyCanvas> mCanvas{new KyCanvas};
    KyHolder<KyFrameBuffer> mTarget{KyFrameBuffer::create()};
    KyHolder<KyGraphicsViewMultiPass> mBack{KyGraphicsViewMultiPass::create()};
    KyHolder<KyGraphicsViewMultiPass> mOverlay;
    KyHolder<KyQmlPass> mPass;
};

TEST_F(KyQmlPassTest, TheViewShowsWhatAPainterWouldPaintOverIt) {
    show(cFlags);
    QImage expected(cWidth, cHeight, QImage::Format_RGB32);
    expected.fill(Qt::blue);
    QPainter painter(&expected);
    painter.fillRect(10, 5, 40, 20, Qt::red);
    painter.fillRect(cWidth - 30, cHeight - 20, 30, 20, QColor(0, 255, 0, 128));
    const QImage picture = getPicture();
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

struct Failure {
    const char* name;
    const char* text;
    int line;
    const char* words;

    friend void PrintTo(const Failure& failure, std::ostream* stream) { *stream << failure.name; }
};

class KyQmlPassFailureTest : public KyQmlPassTest, public testing::WithParamInterface<Failure> {};

TEST_P(KyQmlPassFailureTest, IsReportedAndRepairedOnDisk) {
    show(GetParam().text);
    EXPECT_FALSE(mPass->isLoaded());
    EXPECT_EQ(mPass->getQmlText(), path.toStdString());
    EXPECT_NE(mPass->getErrorText().find(GetParam().words), std::string::npos) << mPass->getErrorText();
    EXPECT_EQ(mPass->getQmlContext()->contextProperty("qmlPathErrors").toString(), "panel.qml");
    ASSERT_EQ(getErrors().size(), 1);
    const QVariantMap error = getErrors().first().toMap();
    EXPECT_EQ(error["line"].toInt(), GetParam().line);
    EXPECT_TRUE(error["description"].toString().contains(GetParam().words));
    EXPECT_EQ(mPass->getQml(), QUrl(KyQmlPass::cErrorsReport));
    ASSERT_TRUE(mPass->getQuickItem());
    write(makeFill("lime"));
    EXPECT_TRUE(showsSoon(Qt::green));
    EXPECT_TRUE(mPass->isLoaded() && mPass->getErrorText().empty());
}

INSTANTIATE_TEST_SUITE_P(, KyQmlPassFailureTest,
                         testing::Values(Failure{"syntax", "import QtQuick 2.15\nItem { x: }", 2, "Expected token"},
                                         Failure{"type", "import QtQuick 2.15\n\nRectangel {}", 3, "not a type"},
                                         Failure{"import", "import Nowhere 1.0\nItem {}", 1, "not installed"},
                                         Failure{"root", "import QtQml 2.15\nQtObject {}", -1, "no Item"},
                                         Failure{"empty", "", -1, "File is empty"}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(KyQmlPassTest, TheReportOpensAndReloadsTheFailingFile) {
    // Stands for the desktop: it only takes the URL.
    QQmlComponent desktop(KyQmlPass::getQmlEngine());
    QDesktopServices::setUrlHandler("file", &desktop, "loadUrl");
    mPass->setFboSize({800, 500});
    write("Rectangel {}");
    mPass->setQml(QUrl::fromLocalFile(path), false);
    render();
    ASSERT_TRUE(mPass->getQuickItem());
    click("open");
    EXPECT_EQ(desktop.url(), QUrl::fromLocalFile(path));
    QDesktopServices::unsetUrlHandler("file");
    write(makeFill("red"));
    click("reload");
    render();
    EXPECT_EQ(getColor(), QColor(Qt::red));
    EXPECT_TRUE(mPass->getWatchedQml().isEmpty());
}

TEST_F(KyQmlPassTest, ABrokenReportIsOnlyLogged) {
    mPass->setErrorsReport(QUrl("qrc:///qml/Nowhere"));
    show("Rectangel {}");
    const std::string text = mPass->getErrorText();
    for (int i = 0; i < 3; ++i)
        render();
    EXPECT_EQ(mPass->getErrorText(), text);
    EXPECT_FALSE(mPass->getQuickItem());
    EXPECT_EQ(getColor(), QColor(Qt::blue));
    mPass->setEnableErrorsReport(false);
    mPass->setQml(QUrl("file:///nowhere.qml"), false);
    render();
    EXPECT_EQ(mPass->getQml(), QUrl("file:///nowhere.qml"));
}

struct Writing {
    const char* name;
    void (*write)(const QString& path, const QByteArray& text);

    friend void PrintTo(const Writing& writing, std::ostream* stream) { *stream << writing.name; }
};

template <class File>
void writeFile(const QString& path, const QByteArray& text) {
    File file(path);
    file.open(QIODevice::WriteOnly);
    file.write(text);
    if constexpr (std::is_same_v<File, QSaveFile>)
        file.commit();
}

class KyQmlPassWritingTest : public KyQmlPassTest, public testing::WithParamInterface<Writing> {};

TEST_P(KyQmlPassWritingTest, ChangesAreFollowedAgainAndAgain) {
    show(makeFill("red"));
    EXPECT_EQ(getColor(), QColor(Qt::red));
    for (const auto& [name, color] : {std::pair("lime", Qt::green), {"white", Qt::white}, {"yellow", Qt::yellow}}) {
        GetParam().write(path, QByteArray::fromStdString(makeFill(name)));
        EXPECT_TRUE(showsSoon(color)) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(, KyQmlPassWritingTest,
                         testing::Values(Writing{"inPlace", &writeFile<QFile>},
                                         Writing{"safely", &writeFile<QSaveFile>},
                                         Writing{"byRename",
                                                 [](const QString& path, const QByteArray& text) {
                                                     writeFile<QFile>(path + "~", text);
                                                     std::rename(qPrintable(path + "~"), qPrintable(path));
                                                 }},
                                         Writing{"afterRemoval",
                                                 [](const QString& path, const QByteArray& text) {
                                                     QFile::remove(path);
                                                     kyRunFrames(30);
                                                     writeFile<QFile>(path, text);
                                                 }}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(KyQmlPassTest, AFileThatChangedWhileAnotherWasShownIsReadAnew) {
    const QString other = mDirectory.filePath("other.qml");
    writeFile<QFile>(other, "import QtQuick 2.15\nItem {}");
    show(makeFill("red"));
    mPass->setQml(other);
    render();
    show(makeFill("lime"));
    EXPECT_EQ(getColor(), QColor(Qt::green));
}

TEST_F(KyQmlPassTest, QmlThatMisbehavesHarmsNothing) {
    for (const char* more :
         {"Component.onCompleted: { throw new Error('no') }", "Component.onCompleted: { nothing.at.all() }",
          "Component.onCompleted: { parent.destroy() }", "width: height + 1; height: width + 1",
          "property int a: b + 1; property int b: a + 1"}) {
        show(makeFill("red", more));
        EXPECT_TRUE(mPass->isLoaded()) << more;
    }
    delete mPass->getQuickItem();
    render();
    EXPECT_FALSE(mPass->getQuickItem());
    EXPECT_EQ(getColor(), QColor(Qt::blue));
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

TEST_F(KyQmlPassTest, AFinalisedLibraryLeavesItEmptyButAlive) {
    show(makeFill("red"));
    const KyHolder<KyQmlPass> copy(mPass->clone());
    EXPECT_EQ(copy->getQmlText(), path.toStdString());
    EXPECT_NE(copy->getFrameBuffer(), mPass->getFrameBuffer());
    KyQmlPass::finalizeClass();
    render();
    EXPECT_EQ(getColor(), QColor(Qt::blue));
    EXPECT_FALSE(mPass->getQmlContext() || mPass->isLoaded());
    KyQmlPass::initializeClass();
    KyObject* const object = mPass.get();
    object->getAttribute("Qml")->setValue(*object, KyField(path.toStdString()));
    render();
    EXPECT_EQ(getColor(), QColor(Qt::red));
    KyField isLoaded;
    EXPECT_TRUE(object->getAttribute("Loaded")->getValue(*object, isLoaded) && isLoaded.toBool());
}

class KyQmlPassWindowTest : public testing::TestWithParam<KyWindowKind> {};

TEST_P(KyQmlPassWindowTest, ShowsTheQmlAboveTheSceneAndThenRests) {
    const QTemporaryDir directory;
    writeFile<QFile>(
        directory.filePath("mark.qml"),
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
    constexpr const char* cCases = "KyQmlPassTest.*:KyQmlPassFailureTest.*syntax:KyQmlPassWindowTest.*GLWindow";
    for (const auto& [variable, value] : {std::pair("QT_QUICK_BACKEND", "software"),
                                          {cForeignVariable, "1"},
                                          {"QT_SCALE_FACTOR", "1.5"},
                                          {"QT_SCALE_FACTOR", "2"}})
        EXPECT_EQ(kyRunProcess(cCases, variable, value), 0) << variable << '=' << value;
}

} // namespace
