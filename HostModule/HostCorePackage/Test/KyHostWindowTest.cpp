// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostSession.h"

#include "KyHostLoop.h"
#include "KyHostWindow.h"

#include "KyMeshNode.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <numbers>
#include <vector>

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

/// Pixels of the window, from where to where.
struct Finger {
    QPoint from, to;
};

/// A stage with a red box in this process.
class KyHostWindowTest : public KyHostSession<QApplication> {
protected:
    KyHostWindowTest() {
        auto* const box = new KyMeshNode;
        box->makeBox(2.0, 2.0, 2.0);
        box->setColor(KyColor(1.0f, 0.0f, 0.0f));
        mStage.getScene().addChild(box);
        mStage.getCamera().lookAt(KyVec3d(0, 0, 5), KyVec3d());
    }

    /// They come down, move and go up one after the other.
    static void touch(QWindow& window, const std::vector<Finger>& fingers) {
        static QTouchDevice* const device = QTest::createTouchDevice();
        QTest::QTouchEventSequence sequence = QTest::touchEvent(&window, device, false);
        const int count = static_cast<int>(fingers.size());
        const auto keepOthers = [&](int first, int end, int finger) -> auto& {
            for (int i = first; i < end; ++i)
                if (i != finger)
                    sequence.stationary(i);
            return sequence;
        };
        for (int i = 0; i < count; ++i)
            keepOthers(0, i, i).press(i, fingers[static_cast<std::size_t>(i)].from, &window).commit();
        for (int i = 0; i < count; ++i)
            keepOthers(0, count, i).move(i, fingers[static_cast<std::size_t>(i)].to, &window).commit();
        for (int i = 0; i < count; ++i)
            keepOthers(i, count, i).release(i, fingers[static_cast<std::size_t>(i)].to, &window).commit();
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

TEST_F(KyHostWindowTest, FingersShiftZoomTwistAndTurn) {
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        GTEST_SKIP() << "no display";
    std::string error;
    const auto window = KyHostWindow::create(mStage, 200, 150, error);
    ASSERT_TRUE(window) << error;
    window->open();
    runFrames(*window, 5);
    // From the eye to the near side of the box, which is where the fingers touch it.
    constexpr double cDepth = 4.0;
    const double pixel = 2.0 * cDepth * std::tan(std::numbers::pi / 8.0) / 150;
    const KyVec3d x(1, 0, 0), y(0, 1, 0), z(0, 0, 1), center = z + x * (15 * pixel);
    const KyQuatd twist(y, std::numbers::pi / 4.0), orbit(y, -4.0 * 15 / 200);
    const struct {
        const char* name;
        std::vector<Finger> fingers;
        KyVec3d start, eye, forward, right;
    } rows[] = {{"one", {{{100, 75}, {75, 85}}}, z * 5, z * 5 + KyVec3d(25, 10, 0) * pixel, -z, x},
                {"two apart", {{{75, 75}, {65, 75}}, {{125, 75}, {135, 75}}}, z * 5, z * (1 + cDepth / 1.4), -z, x},
                {"two turning, from above",
                 {{{75, 75}, {75, 50}}, {{125, 75}, {125, 100}}},
                 y * 5,
                 y * (1 + cDepth / std::numbers::sqrt2),
                 -y,
                 twist.rotate(x)},
                {"three, one moves",
                 {{{50, 25}, {50, 25}}, {{100, 75}, {115, 75}}, {{150, 25}, {150, 25}}},
                 z * 5,
                 center + orbit.rotate(z * 5 - center),
                 orbit.rotate(-z),
                 orbit.rotate(x)}};
    KyCamera& camera = mStage.getCamera();
    for (const auto& row : rows) {
        camera.lookAt(row.start, KyVec3d(), row.start == y * 5 ? -z : y);
        runFrames(*window, 2);
        touch(*window, row.fingers);
        EXPECT_LT((camera.getWorldPosition() - row.eye).length(), 0.04) << row.name << camera.getWorldPosition();
        EXPECT_LT((camera.getForward() - row.forward).length(), 0.01) << row.name << camera.getForward();
        EXPECT_LT((camera.getRight() - row.right).length(), 0.01) << row.name << camera.getRight();
    }
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
