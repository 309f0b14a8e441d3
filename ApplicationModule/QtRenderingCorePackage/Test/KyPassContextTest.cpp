// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlPassTesting.h"
#include "KyQtPassTesting.h"

#include <QQuickRenderControl>
#include <QSGRendererInterface>

namespace {

using Texts = std::vector<std::string>;

/// New contexts are asked for with what no display offers, while it lives.
struct ImpossibleFormat {
    ImpossibleFormat() {
        QSurfaceFormat format = mBefore;
        format.setRenderableType(QSurfaceFormat::OpenVG);
        format.setVersion(9, 9);
        QSurfaceFormat::setDefaultFormat(format);
    }
    ~ImpossibleFormat() { QSurfaceFormat::setDefaultFormat(mBefore); }

private:
    const QSurfaceFormat mBefore = QSurfaceFormat::defaultFormat();
};

/// Paints again for every frame.
void expectRed(QtPassOverlay& overlay, int nbFrames, bool isPaintedByFrameBuffer) {
    for (int i = 0; i < nbFrames; ++i) {
        const std::uint64_t nbPaintings = overlay.pass->getNbPaintings();
        overlay.pass->setViewPosition({static_cast<float>(i + 1), 0.0f});
        EXPECT_EQ(overlay.draw().pixelColor(80, 60), QColor(Qt::red));
        EXPECT_GT(overlay.pass->getNbPaintings(), nbPaintings);
        EXPECT_EQ(overlay.pass->isPaintedByFrameBuffer(), isPaintedByFrameBuffer);
    }
}

TEST(KyPassContextTest, AQtPassWithoutItsContextPaintsOnImagesAndThatIsSaidOnce) {
    // Qt's platform without a screen ends the process with a context that fails.
    if (QGuiApplication::platformName() != "xcb") {
        const bool hasScreen = qEnvironmentVariableIsSet("DISPLAY");
        EXPECT_EQ(hasScreen ? kyRunProcess("*.AQtPassWithoutItsContext*", "QT_QPA_PLATFORM", "xcb") : 0, 0);
        return;
    }
    const Reports reports;
    std::string error;
    const auto device = KyQGraphicsDevice::createOffscreen(error, KyWindow::getDefaultFormat());
    ASSERT_TRUE(device) << error;
    const auto show = [&device] {
        auto overlay = std::make_unique<QtPassOverlay>(*device, KyQtPass::eFrameBuffer);
        addRect(*overlay->pass->edit2DScene(), -300, -300, 600, Qt::red);
        return overlay;
    };
    {
        const ImpossibleFormat format;
        const auto first = show(), second = show();
        expectRed(*first, 5, false);
        expectRed(*second, 5, false);
    }
    EXPECT_EQ(Reports::texts, Texts{"KyQtPass: painting without GL: this display offers no OpenGL."});
    expectRed(*show(), 2, true);
    EXPECT_EQ(Reports::texts.size(), 1U);
}

/// Qt Quick draws with GL for good once the program has a quick window, even where no context can be made.
bool hasChosenGl() {
    QQuickRenderControl control;
    const QQuickWindow window(&control);
    return window.rendererInterface()->graphicsApi() == QSGRendererInterface::OpenGL;
}

TEST(KyPassContextTest, AQmlPassWithoutItsContextShowsNothingAndSaysSoOnce) {
    constexpr const char* cWithoutApplication = "KY_TEST_WITHOUT_APPLICATION";
    const bool hasApplication = QCoreApplication::instance() != nullptr;
    if (hasApplication && QGuiApplication::platformName() != "offscreen")
        GTEST_SKIP() << "a screen has its context";
    if (hasApplication && qEnvironmentVariableIsSet("DISPLAY")) {
        for (const auto& [variable, value] :
             {std::pair<const char*, const char*>("DISPLAY", nullptr), {cWithoutApplication, "1"}})
            EXPECT_EQ(kyRunProcess("*.AQmlPassWithoutItsContext*", variable, value), 0) << variable;
        return;
    }
    if (hasApplication && !hasChosenGl())
        GTEST_SKIP() << "where images serve no context is made";
    const Reports reports;
    KyQmlOverlay overlay;
    overlay.mPass->setFboSize({cWidth, cHeight});
    overlay.mPass->setQml("red.qml");
    KyRendererContext context(nullptr);
    for (int i = 0; i < 3; ++i) {
        overlay.mPass->requestUpdate();
        overlay.mPass->preRender(context);
        overlay.mPass->postRender(context);
    }
    const std::string cannot = "QML cannot be shown in the view: ";
    const std::string reason = hasApplication ? "this display offers no OpenGL." : "there is no QGuiApplication.";
    EXPECT_EQ(Reports::texts, Texts{cannot + reason});

    overlay.mPass->cleanupGraphicsRessources();
    std::string error;
    const auto foreign = KyOffscreenContext::create(error);
    ASSERT_TRUE(foreign && foreign->makeCurrent()) << error;
    for (int i = 0; i < 3; ++i) {
        overlay.mPass->requestUpdate();
        KyRendererContext shown(foreign.get());
        shown.setTarget(overlay.mTarget.get());
        ASSERT_TRUE(overlay.mCanvas->render(shown));
        EXPECT_EQ(overlay.getColor(), QColor(Qt::blue));
    }
    EXPECT_FALSE(overlay.mCanvas->needsRedraw());
    const std::string next = hasApplication ? "the view's OpenGL is not Qt's." : "there is no QGuiApplication.";
    EXPECT_EQ(Reports::texts, (Texts{cannot + reason, cannot + next}));
}

} // namespace
