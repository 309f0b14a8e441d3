// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQMouseEventProvider.h"
#include "KyTouchTesting.h"

#include "KyManipulator.h"

#include <gtest/gtest.h>

#include <QWheelEvent>
#include <QWidget>

#include <memory>

namespace {

using Event = KyInputEvent;
using Types = std::vector<int>;

struct Recorder : KyManipulator {
    bool handleEvents() override {
        types.push_back(getInputEvent().getType());
        delete std::exchange(doomed, nullptr);
        return true;
    }
    Types types;
    QObject* doomed = nullptr;
};

class KyQMouseEventProviderTest : public testing::Test {
protected:
    KyQMouseEventProviderTest() {
        mWidget->installEventFilter(mProvider);
        mProvider->setManipulator(&mRecorder);
    }
    Types mouse(QEvent::Type type, Qt::MouseEventSource source = Qt::MouseEventNotSynthesized) {
        QMouseEvent event(type, {3, 4}, {}, {}, Qt::LeftButton, Qt::LeftButton, {}, source);
        EXPECT_FALSE(mProvider->eventFilter(mWidget.get(), &event)) << "it is not consumed";
        return std::exchange(mRecorder.types, {});
    }
    Types touch(QEvent::Type type) {
        QTouchEvent event = kyMakeTouch(type, {{1, {5, 6}}});
        mProvider->eventFilter(mWidget.get(), &event);
        return std::exchange(mRecorder.types, {});
    }

    Recorder mRecorder;
    std::unique_ptr<QWidget> mWidget = std::make_unique<QWidget>();
    KyQMouseEventProvider* mProvider = new KyQMouseEventProvider(mWidget.get());
    QWheelEvent mWheel{{8, 9}, {}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false};
};

TEST_F(KyQMouseEventProviderTest, MouseAndWheelReachTheManipulatorAndAreNotConsumed) {
    EXPECT_EQ(mouse(QEvent::MouseButtonPress), Types{Event::eMousePressed});
    EXPECT_EQ(mouse(QEvent::MouseButtonRelease), Types{Event::eMouseReleased});
    EXPECT_EQ(mouse(QEvent::MouseButtonDblClick), Types{Event::eMouseDoubleClicked});
    EXPECT_EQ(mouse(QEvent::MouseMove), Types{Event::eMouseMoved});
    EXPECT_EQ(mRecorder.getInputEvent().getX(), 3);
    EXPECT_FALSE(mProvider->eventFilter(mWidget.get(), &mWheel));
    EXPECT_EQ(mRecorder.types, Types{Event::eWheel});
    EXPECT_EQ(mRecorder.getInputEvent().getWheelDelta(), 120);
}

TEST_F(KyQMouseEventProviderTest, MouseEventsAreDroppedFromTheFirstTouchUpdateToTheEnd) {
    for (const auto ending : {QEvent::TouchEnd, QEvent::TouchCancel}) {
        EXPECT_EQ(touch(QEvent::TouchBegin), Types{Event::eTouchBegan});
        EXPECT_EQ(mouse(QEvent::MouseButtonPress, Qt::MouseEventSynthesizedByQt), Types{Event::eMousePressed});
        EXPECT_TRUE(mRecorder.getInputEvent().repeatsTouch());
        EXPECT_EQ(touch(QEvent::TouchUpdate), Types{Event::eTouchUpdated});
        EXPECT_EQ(mouse(QEvent::MouseMove), Types{});
        EXPECT_EQ(touch(ending), ending == QEvent::TouchEnd ? Types{Event::eTouchEnded} : Types{});
        EXPECT_EQ(mouse(QEvent::MouseMove, Qt::MouseEventSynthesizedByQt), Types{Event::eMouseMoved});
        EXPECT_FALSE(mRecorder.getInputEvent().repeatsTouch());
    }
}

TEST_F(KyQMouseEventProviderTest, TheManipulatorMayDeleteTheWidget) {
    mRecorder.doomed = mWidget.get();
    mWheel.ignore();
    EXPECT_TRUE(QCoreApplication::sendEvent(mWidget.release(), &mWheel));
    EXPECT_TRUE(mWheel.isAccepted());
    EXPECT_EQ(mRecorder.doomed, nullptr);
}

} // namespace
