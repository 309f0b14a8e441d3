// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQGLGraphicsView.h"
#include "KyQGLWindow.h"
#include "KyQOpenGLWindow.h"
#include "KyWindowTesting.h"

#include "KyQEventCanvasProvider.h"

#include "KyFrameBuffer.h"
#include "KyGraphicsDeviceManager.h"

#include <QApplication>
#include <QGraphicsRectItem>
#include <QOpenGLContext>
#include <QTest>
#include <QWheelEvent>

namespace {

/// A view of 200 x 150 with an item at the top left.
class KyQGLGraphicsViewTest : public testing::Test {
protected:
    KyQGLGraphicsViewTest() {
        mBall.canvas->setEventHandler(mBall.log.get());
        mView.setSceneRect(0.0, 0.0, 200.0, 150.0);
        mView.resize(200, 150);
        mItem = mView.scene()->addRect(0.0, 0.0, 60.0, 60.0, QPen(), Qt::green);
        mView.show();
        EXPECT_TRUE(kyRunUntil([this] { return !mView.needsRedraw(); }));
        mView.setMouseFocusPolicy(eFocusCanvas);
    }

    /// How many of its three events come to the canvas.
    std::size_t drag(const QPoint& from, const QPoint& to) {
        mBall.log->events.clear();
        QTest::mousePress(mView.viewport(), Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(mView.viewport(), &move);
        QTest::mouseRelease(mView.viewport(), Qt::LeftButton, {}, to);
        return mBall.log->events.size();
    }

    KyBallCanvas mBall;
    KyQGLGraphicsView mView{mBall.canvas.get()};
    QGraphicsRectItem* mItem = nullptr;
};

TEST_F(KyQGLGraphicsViewTest, DrawsItemsAboveTheCanvas) {
    const QImage frame = mView.grab().toImage();
    EXPECT_EQ(frame.pixelColor(frame.width() / 10, frame.height() / 10), QColor(Qt::green));
    EXPECT_TRUE(kyShowsBall(frame));
    QImage paper(200, 150, QImage::Format_RGB32);
    QPainter painter(&paper);
    mView.render(&painter);
    painter.end();
    EXPECT_EQ(paper.pixelColor(20, 15), QColor(Qt::green)) << "without GL as well";
    EXPECT_TRUE(kyShowsBall(paper));
}

TEST_F(KyQGLGraphicsViewTest, WhoeverTookThePressHasTheDrag) {
    mItem->setFlag(QGraphicsItem::ItemIsMovable);
    EXPECT_EQ(drag({150, 100}, {30, 30}), 3u);
    EXPECT_EQ(drag({30, 30}, {150, 100}), 0u);
    EXPECT_EQ(mItem->pos(), QPointF(120.0, 70.0));
    mItem->setAcceptedMouseButtons(Qt::NoButton);
    EXPECT_EQ(drag({150, 100}, {30, 30}), 3u) << "from the item";
}

TEST_F(KyQGLGraphicsViewTest, AnItemWithTheFocusHasTheKeys) {
    QTest::keyClick(&mView, Qt::Key_Up);
    EXPECT_EQ(mBall.log->events.size(), 2u);
    mBall.log->events.clear();
    QApplication::setActiveWindow(&mView);
    mItem->setFlag(QGraphicsItem::ItemIsFocusable);
    mItem->setFocus();
    QTest::keyClick(&mView, Qt::Key_Up);
    EXPECT_TRUE(mBall.log->events.empty());
}

struct CountingWindow : KyQGLWindow {
    using KyQGLWindow::KyQGLWindow;
    void keyPressEvent(QKeyEvent* event) override {
        ++nbKeys;
        KyQGLWindow::keyPressEvent(event);
    }

    int nbKeys = 0;
};

TEST(KyQGLWindowTest, WhatTheCanvasUsedStaysInTheWidget) {
    const KyBallCanvas ball;
    ball.canvas->setEventHandler(ball.log.get());
    CountingWindow window(ball.canvas.get());
    window.setMouseFocusPolicy(eFocusCanvas);
    for (const bool uses : {true, false}) {
        ball.log->uses = uses;
        QWheelEvent wheel(QPointF(9, 9), QPointF(9, 9), {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier);
        for (QEvent* event : std::initializer_list<QEvent*>{&wheel, &key}) {
            QCoreApplication::sendEvent(&window, event);
            EXPECT_EQ(event->isAccepted(), uses);
        }
    }
    EXPECT_EQ(ball.log->events.size(), 4u);
    EXPECT_EQ(window.nbKeys, 2) << "its own functions see all keys";
}

TEST(KyQGLWindowTest, TouchesComeToTheCanvasAndNotAsMouseEvents) {
    const KyBallCanvas ball;
    ball.canvas->setEventHandler(ball.log.get());
    // Qt's own.
    QTouchDevice* const device = QTest::createTouchDevice();
    KyQGLWindow window(ball.canvas.get());
    window.resize(200, 150);
    window.setMouseFocusPolicy(eFocusCanvas);
    window.show();
    ASSERT_TRUE(kyRunUntil([&window] { return !window.needsRedraw(); }));
    QTest::touchEvent(&window, device).press(0, {50, 60}, &window);
    QTest::touchEvent(&window, device).move(0, {70, 60}, &window);
    QTest::touchEvent(&window, device).release(0, {70, 60}, &window);
    ASSERT_EQ(ball.log->events.size(), 3u);
    EXPECT_EQ(ball.log->events[0].getType(), KyInputEvent::eTouchBegan);
    EXPECT_EQ(ball.log->events[2].getType(), KyInputEvent::eTouchEnded);
    EXPECT_EQ(ball.log->events[1].getX(), std::lround(70 * window.getPixelRatio()));
}

TEST(KyQGLWindowTest, SurvivesAMoveToAnotherWindow) {
    KyBallCanvas ball;
    QWidget first, second;
    auto* const window = new KyQGLWindow(ball.canvas.get(), &first);
    for (QWidget* parent : {&first, &second, static_cast<QWidget*>(nullptr), &first}) {
        window->setParent(parent);
        window->resize(200, 150);
        window->show();
        if (parent)
            parent->show();
        EXPECT_TRUE(kyRunUntil([window] { return !window->needsRedraw(); }));
        EXPECT_TRUE(kyShowsBall(window->grabFramebuffer()));
    }
}

TEST(KyQOpenGLWindowTest, TheCanvasHasItsSizeBeforeTheFirstFrameAndClosingIsTold) {
    KyQOpenGLWindow window;
    int nbClosed = 0;
    window.closedSignal().connect([&nbClosed](KyWindow*) { ++nbClosed; });
    window.resize(300, 100);
    window.show();
    EXPECT_EQ(window.getCanvas()->getWidth(), window.getWidth());
    window.setSize(1 << 30, 1);
    EXPECT_LE(window.getWidth(), KyWindow::cLargestSize);
    window.close();
    EXPECT_EQ(nbClosed, 1);
}

TEST(KyQGraphicsDeviceTest, ScopesBringBackWhatWasCurrent) {
    std::string error;
    auto first = KyQGraphicsDevice::createOffscreen(error);
    const auto second = KyQGraphicsDevice::createOffscreen(error, KyWindow::getDefaultFormat());
    ASSERT_TRUE(first && second) << error;
    KyQGraphicsDevice guest(first->getContext(), first->getSurface());
    {
        const KyQGraphicsDevice::Scope outer(guest);
        EXPECT_TRUE(outer.isCurrent() && first->isUsable());
        {
            const KyQGraphicsDevice::Scope inner(*second);
            EXPECT_EQ(QOpenGLContext::currentContext(), second->getContext());
            const KyQGraphicsDevice::Scope same(*second);
        }
        KyQGraphicsDevice none;
        const KyQGraphicsDevice::Scope refused(none);
        EXPECT_FALSE(refused.isCurrent());
        EXPECT_EQ(QOpenGLContext::currentContext(), first->getContext());
    }
    EXPECT_FALSE(QOpenGLContext::currentContext());
    first.reset();
    EXPECT_FALSE(guest.getContext() || guest.getSurface() || guest.makeCurrent()) << "its context has ended";
}

/// A later context may have the address of one that ended, and other names.
TEST(KyQGraphicsDeviceTest, FrameBuffersAreMadeAnewWhenTheirContextHasEnded) {
    std::string error;
    const auto device = KyQGraphicsDevice::createOffscreen(error);
    ASSERT_TRUE(device) << error;
    const KyQGraphicsDevice::Scope current(*device);
    const KyHolder<KyFrameBuffer> buffer(KyFrameBuffer::create());
    buffer->setSize(4, 4);
    ASSERT_TRUE(buffer->bind());
    const unsigned before = buffer->getHandle();
    EXPECT_TRUE(buffer->bind());
    EXPECT_EQ(buffer->getHandle(), before);
    KyGraphicsDeviceManager::get().endContext();
    EXPECT_TRUE(buffer->bind());
    EXPECT_NE(buffer->getHandle(), before);
}

} // namespace
