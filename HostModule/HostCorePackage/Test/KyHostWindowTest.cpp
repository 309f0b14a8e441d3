// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostSession.h"

#include "KyHostLoop.h"
#include "KyHostWindow.h"

#include "KyMeshNode.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTimer>

namespace {

/// Counts what it is asked to draw; a display that never takes a frame.
class CountingSurface : public KyHostSurface {
public:
    void draw() override { ++nbDrawn; }
    bool needsDrawing() const override { return false; }
    int getFrameInterval() const override { return 1000; }
    bool makeCurrent() override { return true; }
    bool savePicture(const std::string&, std::string&) override { return true; }
    void close() { mListeners.closed(); }

    int nbDrawn = 0;
};

/// A stage with a red ball in this process.
class KyHostWindowTest : public KyHostSession<QApplication> {
protected:
    KyHostWindowTest() {
        auto* const ball = new KyMeshNode;
        ball->makeSphere(1.0);
        ball->setColor(KyColor(1.0f, 0.0f, 0.0f));
        mStage.getScene().addChild(ball);
        mStage.getCamera().lookAt(KyVec3d(0, 0, 5), KyVec3d());
    }

    void runFrames(KyHostSurface& surface, int count) {
        KyHostLoop::Limits limits;
        limits.nbFrames = static_cast<int>(mHost.getFrameCount()) + count;
        limits.isOpenEnded = true;
        KyHostLoop(mHost, mStage, &surface, limits).run();
    }
};

bool isRed(const QImage& image, int x, int y) {
    const QColor color = image.pixelColor(x, y);
    return color.red() > 60 && color.red() > 2 * color.green() && color.red() > 2 * color.blue();
}

} // namespace

TEST_F(KyHostWindowTest, AWindowShowsTheSceneFollowsItsSizeAndClosesOnEscape) {
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        GTEST_SKIP() << "no display";
    std::string error;
    const auto window = KyHostWindow::create(mStage, 200, 150, error);
    ASSERT_TRUE(window) << error;
    EXPECT_FALSE(window->isVisible());
    window->open();
    runFrames(*window, 5);
    EXPECT_FALSE(window->needsDrawing());
    const QImage image = window->grabFramebuffer();
    EXPECT_EQ(QSize(200, 150), image.size());
    EXPECT_TRUE(isRed(image, 100, 75));
    EXPECT_FALSE(isRed(image, 5, 75));

    window->resize(300, 100);
    // The window system resizes when it pleases.
    const auto getWidth = [this] { return mStage.getView().getAreaPixels().getWidth(); };
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 5000 && getWidth() != 300)
        runFrames(*window, 1);
    EXPECT_EQ(300, getWidth());
    QTimer::singleShot(50, [&window] {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &press);
    });
    runFrames(*window, 100000);
    EXPECT_TRUE(mHost.isQuitting());
    EXPECT_FALSE(window->isVisible());
}

TEST_F(KyHostWindowTest, FramesGoOnWhereTheDisplayTakesNoneUntilTheSurfaceCloses) {
    CountingSurface surface;
    runFrames(surface, 3);
    EXPECT_EQ(3u, mHost.getFrameCount());
    EXPECT_EQ(3, surface.nbDrawn);
    QTimer::singleShot(20, [&surface] { surface.close(); });
    runFrames(surface, 100000);
    EXPECT_TRUE(mHost.isQuitting());
}
