// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyWindowTesting.h"

#include "KyQEventCanvasProvider.h"
#include "KyQOpenGLWindow.h"

#include "KyType.h"
#include "KyURL.h"

#include <QApplication>
#include <QOpenGLContext>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr const char* cWithoutApplication = "KY_TEST_WITHOUT_APPLICATION";

int toDevice(int position, double ratio) {
    return static_cast<int>(std::lround(position * ratio));
}

class KyWindowTest : public testing::TestWithParam<KyWindowKind> {
protected:
    std::unique_ptr<KyShownWindow> show() { return show(mBall.canvas.get()); }
    std::unique_ptr<KyShownWindow> show(KyCanvas* canvas) {
        auto shown = GetParam().show(canvas);
        EXPECT_TRUE(kyRunUntil([&] { return shown->nbDrawn > 0 && !shown->get()->needsRedraw(); }));
        // What the system still has to say about a new window.
        kyRunFrames();
        return shown;
    }
    KyEventLog& listen(KyShownWindow& window) {
        mBall.canvas->setEventHandler(mBall.log.get());
        window->setMouseFocusPolicy(eFocusCanvas);
        mBall.log->events.clear();
        return *mBall.log;
    }

    KyBallCanvas mBall;
};

TEST_P(KyWindowTest, ShowsTheCanvasAtAnySize) {
    const auto window = show();
    const double ratio = qEnvironmentVariableIsSet("QT_SCALE_FACTOR") ? qgetenv("QT_SCALE_FACTOR").toDouble() : 1.0;
    EXPECT_DOUBLE_EQ((*window)->getPixelRatio(), ratio);
    EXPECT_DOUBLE_EQ((*window)->editEventProvider().getPixelRatio(), ratio);
    EXPECT_EQ((*window)->getWidth(), toDevice(200, ratio));
    const KyHolder<KyImage> picture((*window)->grabPicture());
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->getHeight(), toDevice(150, ratio));
    for (const QImage& image : {kyToImage(picture.get()), window->getFrame()}) {
        EXPECT_EQ(image.width(), toDevice(200, ratio));
        EXPECT_TRUE(kyShowsBall(image));
    }
    const unsigned before = window->nbDrawn;
    (*window)->setSize(330, 180);
    EXPECT_TRUE(kyRunUntil([&] { return window->nbDrawn > before && !(*window)->needsRedraw(); }));
    EXPECT_NEAR((*window)->getWidth(), 330, 1);
    EXPECT_NEAR((*window)->getHeight(), 180, 1);
    EXPECT_EQ(mBall.canvas->getWidth(), (*window)->getWidth());
    EXPECT_EQ(window->getFrame().height(), (*window)->getHeight());
    EXPECT_TRUE(kyShowsBall(window->getFrame()));
}

TEST_P(KyWindowTest, RedrawsOnceAfterAChange) {
    const auto window = show();
    const unsigned before = window->nbDrawn;
    kyRunFrames();
    EXPECT_EQ(window->nbDrawn, before) << "nothing changed";
    mBall.moveCamera();
    EXPECT_TRUE((*window)->needsRedraw());
    kyRunFrames();
    EXPECT_EQ(window->nbDrawn, before + 1);
    EXPECT_FALSE((*window)->needsRedraw());
    (*window)->requestRedraw();
    kyRunFrames();
    EXPECT_EQ(window->nbDrawn, before + 2) << "asked for";
    (*window)->setAutoRedraw(false);
    mBall.moveCamera();
    kyRunFrames();
    EXPECT_EQ(window->nbDrawn, before + 2) << "left to the host";
    EXPECT_TRUE((*window)->needsRedraw());
}

TEST_P(KyWindowTest, APictureTakenInBetweenDoesNotReplaceTheFrame) {
    const auto window = show();
    (*window)->setAutoRedraw(false);
    mBall.moveCamera();
    const QTemporaryDir folder;
    const KyURL url(folder.filePath("picture.png").toStdString(), KyURL::eLocalPath);
    EXPECT_TRUE((*window)->savePicture(url));
    EXPECT_TRUE((*window)->needsRedraw());
    const KyHolder<KyImage> picture(KyImage::create(url));
    ASSERT_TRUE(picture);
    EXPECT_TRUE(kyShowsBall(kyToImage(picture.get())));
}

TEST_P(KyWindowTest, DeliversEventsAtThePixelOfTheCanvas) {
    const auto window = show();
    KyEventLog& log = listen(*window);
    // Another size, as another window of the canvas may have given it.
    mBall.canvas->setSize(10, 10);
    const double ratio = (*window)->getPixelRatio();
    for (const QPoint position : {QPoint(0, 0), QPoint(101, 37), QPoint(199, 149)}) {
        log.events.clear();
        window->send(QEvent::MouseButtonPress, position);
        window->send(QEvent::MouseButtonRelease, position);
        // A scene tells of the pointer's arrival first.
        std::erase_if(log.events, [](const auto& event) { return event.getType() == KyInputEvent::eMouseMoved; });
        ASSERT_EQ(log.events.size(), 2u);
        EXPECT_EQ(log.events[0].getType(), KyInputEvent::eMousePressed);
        EXPECT_EQ(log.events[1].getType(), KyInputEvent::eMouseReleased);
        for (const KyInputEvent& event : log.events)
            EXPECT_EQ(QPoint(event.getX(), event.getY()),
                      QPoint(toDevice(position.x(), ratio), toDevice(position.y(), ratio)));
        EXPECT_EQ(mBall.canvas->getWidth(), (*window)->getWidth());
    }
}

TEST_P(KyWindowTest, MayEndAnyTime) {
    enum Way { eInEvent, eWhileDrawing, eWithPendingEvents, eByQt };
    for (const Way way : {eInEvent, eWhileDrawing, eWithPendingEvents, eByQt}) {
        auto window = show();
        const KyObjectReference weak(window->get());
        KyEventLog& log = listen(*window);
        log.action = [&] { (*window)->destroy(); };
        (*window)->drawnSignal().connect([](KyWindow* drawn) { drawn->destroy(); });
        if (way == eInEvent) {
            window->send(QEvent::MouseButtonPress, {50, 50});
        } else {
            mBall.moveCamera();
            (*window)->requestRedraw();
        }
        if (way >= eWithPendingEvents) {
            window->post(QEvent::MouseMove, {20, 20});
            way == eByQt ? window.reset() : (*window)->destroy();
            EXPECT_FALSE(weak) << "at once";
        }
        EXPECT_TRUE(kyRunUntil([&] { return !weak; })) << way;
        kyRunFrames();
        EXPECT_EQ(log.events.size(), way == eInEvent ? 1u : 0u) << way;
        EXPECT_EQ(KyWindow::getNbWindows(), 0u);
        EXPECT_EQ(mBall.canvas->getNbReferences(), 1u);
    }
}

TEST_P(KyWindowTest, SharesItsCanvasWithAnother) {
    const auto next = std::ranges::find(gWindowKinds, std::string(GetParam().name), &KyWindowKind::name) + 1;
    const KyWindowKind& otherKind = next == gWindowKinds.end() ? gWindowKinds.front() : *next;
    const auto window = show();
    auto other = otherKind.show(mBall.canvas.get());
    (*other)->setSize(120, 240);
    EXPECT_TRUE(
        kyRunUntil([&] { return other->nbDrawn > 0 && !(*window)->needsRedraw() && !(*other)->needsRedraw(); }));
    kyRunFrames();
    EXPECT_TRUE(QOpenGLContext::areSharing((*window)->editGraphicsDevice().getContext(),
                                           (*other)->editGraphicsDevice().getContext()));
    const std::array before{window->nbDrawn, other->nbDrawn};
    kyRunFrames();
    EXPECT_EQ(before, (std::array{window->nbDrawn, other->nbDrawn})) << "their sizes differ, the canvas does not";
    mBall.moveCamera();
    kyRunFrames();
    EXPECT_EQ(window->nbDrawn, before[0] + 1);
    EXPECT_EQ(other->nbDrawn, before[1] + 1);
    EXPECT_TRUE(kyShowsBall(other->getFrame()));
    other.reset();
    // It may have lain above.
    kyRunFrames();
    const unsigned alone = window->nbDrawn;
    mBall.moveCamera();
    kyRunFrames();
    EXPECT_EQ(window->nbDrawn, alone + 1);
    EXPECT_TRUE(kyShowsBall(window->getFrame()));
}

TEST_P(KyWindowTest, IsWorkedByItsAttributes) {
    const auto window = show(nullptr);
    KyWindow& object = *window->get();
    EXPECT_EQ(object.getObjectType()->getName(), GetParam().name);
    KyField width;
    EXPECT_TRUE(object.getAttribute("Width")->getValue(object, width));
    EXPECT_EQ(width, KyField(object.getWidth()));
    EXPECT_TRUE(object.getAttribute("Canvas")->setValue(object, KyField(mBall.canvas.get())));
    kyRunFrames();
    EXPECT_TRUE(kyShowsBall(window->getFrame())) << "the new canvas is drawn";
    for (const int policy : {1, 7})
        object.getAttribute("MouseFocusPolicy")->setValue(object, KyField(policy));
    EXPECT_EQ(object.editEventProvider().getMouseFocusPolicy(), eFocusUnderPointer);
    object.getAttribute("Visible")->setValue(object, KyField(false));
    kyRunFrames();
    const unsigned before = window->nbDrawn;
    mBall.moveCamera();
    kyRunFrames();
    EXPECT_EQ(window->nbDrawn, before) << "hidden";
}

INSTANTIATE_TEST_SUITE_P(Kinds, KyWindowTest, testing::ValuesIn(gWindowKinds),
                         [](const auto& kind) { return std::string(kind.param.name); });

TEST(KyWindowEnvironmentTest, AllWindowsWorkAtOtherScaleFactors) {
    for (const char* factor : {"1.5", "2"})
        EXPECT_EQ(kyRunProcess("Kinds/*", "QT_SCALE_FACTOR", factor), 0) << factor;
}

TEST(KyWindowEnvironmentTest, WithoutAnApplicationThereAreNoWindows) {
    if (QCoreApplication::instance()) {
        EXPECT_EQ(kyRunProcess("*.WithoutAnApplication*", cWithoutApplication, "1"), 0);
        return;
    }
    for (const KyWindowKind& kind : gWindowKinds) {
        const Reports reports;
        EXPECT_FALSE(KyObject::create(kind.name));
        ASSERT_EQ(Reports::texts.size(), 1u);
        EXPECT_EQ(Reports::texts[0].find(std::string(kind.name) + "::create(): there is no Q"), 0u)
            << Reports::texts[0];
    }
    std::string error;
    EXPECT_FALSE(KyWindow::isSupported(error));
    EXPECT_FALSE(KyQGraphicsDevice::createOffscreen(error));
    EXPECT_EQ(error, "there is no QGuiApplication");
}

TEST(KyWindowEnvironmentTest, WithoutGLWindowsShowNothingAndSaySoOnce) {
    std::string error;
    if (KyWindow::isSupported(error)) {
        const bool needsDisplay = QGuiApplication::platformName() == "offscreen";
        EXPECT_EQ(needsDisplay ? kyRunProcess("*.WithoutGL*", "DISPLAY", nullptr) : 0, 0);
        return;
    }
    EXPECT_EQ(error, "this display offers no OpenGL 3.3");
    for (const KyWindowKind& kind : gWindowKinds) {
        const Reports reports;
        const KyBallCanvas ball;
        const auto window = kind.show(ball.canvas.get());
        kyRunFrames();
        (*window)->setSize(300, 100);
        window->send(QEvent::MouseButtonPress, {50, 50});
        kyRunFrames();
        EXPECT_EQ(Reports::texts.size(), 1u) << kind.name;
        EXPECT_EQ(window->nbDrawn, 0u);
        EXPECT_FALSE((*window)->grabPicture());
    }
}

} // namespace
