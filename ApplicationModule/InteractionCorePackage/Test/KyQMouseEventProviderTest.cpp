// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQMouseEventProvider.h"
#include "KyTouchTesting.h"

#include "KyManipulator.h"

#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>

#include <memory>

namespace {

using Event = KyInputEvent;

struct Recorder : KyManipulator {
    bool handleEvents() override {
        types.push_back(getInputEvent().getType());
        repeats = getInputEvent().repeatsTouch();
        if (doomed)
            delete std::exchange(doomed, nullptr);
        return true;
    }
    std::vector<int> types;
    bool repeats = false;
    QObject* doomed = nullptr;
};

/// What a widget that shows a 3D view does about touches.
struct TouchWidget : QWidget {
    TouchWidget() { setAttribute(Qt::WA_AcceptTouchEvents); }
    bool event(QEvent* event) override {
        if (event->type() < QEvent::TouchBegin || event->type() > QEvent::TouchEnd)
            return QWidget::event(event);
        event->accept();
        return true;
    }
};

class KyQMouseEventProviderTest : public testing::Test {
protected:
    KyQMouseEventProviderTest() {
        mWidget->installEventFilter(mProvider);
        mProvider->setManipulator(&mRecorder);
    }
    bool mouse(QEvent::Type type, Qt::MouseEventSource source = Qt::MouseEventNotSynthesized) {
        QMouseEvent event(type, {3, 4}, {}, {}, Qt::LeftButton, Qt::LeftButton, {}, source);
        return mProvider->eventFilter(mWidget.get(), &event);
    }
    std::vector<int> takeTypes() { return std::exchange(mRecorder.types, {}); }

    Recorder mRecorder;
    std::unique_ptr<TouchWidget> mWidget = std::make_unique<TouchWidget>();
    KyQMouseEventProvider* mProvider = new KyQMouseEventProvider(mWidget.get());
};

TEST_F(KyQMouseEventProviderTest, MouseAndWheelReachTheManipulatorAndAreNotConsumed) {
    const std::pair<QEvent::Type, int> rows[] = {{QEvent::MouseButtonPress, Event::eMousePressed},
                                                 {QEvent::MouseButtonRelease, Event::eMouseReleased},
                                                 {QEvent::MouseButtonDblClick, Event::eMouseDoubleClicked},
                                                 {QEvent::MouseMove, Event::eMouseMoved}};
    for (const auto& [qtType, type] : rows) {
        EXPECT_FALSE(mouse(qtType));
        EXPECT_EQ(takeTypes(), std::vector<int>{type});
        EXPECT_EQ(mRecorder.getInputEvent().getX(), 3);
    }
    QWheelEvent wheel({8, 9}, {}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
    EXPECT_FALSE(mProvider->eventFilter(mWidget.get(), &wheel));
    EXPECT_EQ(takeTypes(), std::vector<int>{Event::eWheel});
    EXPECT_EQ(mRecorder.getInputEvent().getWheelDelta(), 120);
}

TEST_F(KyQMouseEventProviderTest, MouseEventsAreDroppedFromTheFirstTouchUpdateToTheEnd) {
    const auto touch = [this](QEvent::Type type) { kySendTouch(*mWidget, type, {{1, {5, 6}}}); };
    for (const auto ending : {QEvent::TouchEnd, QEvent::TouchCancel}) {
        touch(QEvent::TouchBegin);
        mouse(QEvent::MouseButtonPress, Qt::MouseEventSynthesizedByQt);
        EXPECT_TRUE(mRecorder.repeats);
        EXPECT_EQ(takeTypes(), (std::vector<int>{Event::eTouchBegan, Event::eMousePressed}));
        touch(QEvent::TouchUpdate);
        mouse(QEvent::MouseMove);
        EXPECT_EQ(takeTypes(), std::vector<int>{Event::eTouchUpdated});
        touch(ending);
        mouse(QEvent::MouseMove, Qt::MouseEventSynthesizedByQt);
        EXPECT_FALSE(mRecorder.repeats);
        std::vector<int> expected{Event::eTouchEnded, Event::eMouseMoved};
        if (ending == QEvent::TouchCancel)
            expected.erase(expected.begin());
        EXPECT_EQ(takeTypes(), expected);
    }
}

TEST_F(KyQMouseEventProviderTest, AFingerOnAWidgetThatTakesTouchesMakesNoMouseEvents) {
    mWidget->resize(100, 100);
    mWidget->show();
    for (const int id : {1, 2}) {
        QTest::touchEvent(mWidget.get(), kyGetTouchDevice()).press(id, {10, 10}, mWidget.get());
        QTest::touchEvent(mWidget.get(), kyGetTouchDevice()).move(id, {20, 30}, mWidget.get());
        EXPECT_EQ(mRecorder.getInputEvent().getY(), 30);
        QTest::touchEvent(mWidget.get(), kyGetTouchDevice()).release(id, {20, 30}, mWidget.get());
        EXPECT_EQ(takeTypes(), (std::vector<int>{Event::eTouchBegan, Event::eTouchUpdated, Event::eTouchEnded}));
    }
}

TEST_F(KyQMouseEventProviderTest, TheManipulatorMayDeleteTheWidget) {
    QWidget* widget = mWidget.release();
    mRecorder.doomed = widget;
    QWheelEvent event({}, {}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
    event.ignore();
    EXPECT_TRUE(QCoreApplication::sendEvent(widget, &event));
    EXPECT_TRUE(event.isAccepted());
    EXPECT_EQ(mRecorder.doomed, nullptr);
}

} // namespace
