// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQEventCanvasProvider.h"
#include "KyTouchTesting.h"

#include "KyCanvas.h"
#include "KyGraphicsViewMultiPass.h"

#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>

#include <functional>
#include <numeric>
#include <string>

namespace {

using Event = KyInputEvent;

/// Writes its name into a common text with each event.
struct View : KyGraphicsViewMultiPass {
    View(char letter, std::string& text)
        : name(letter)
        , log(text) {}
    bool handleEvent(const KyInputEvent& event) override {
        log += name;
        x = event.getX();
        const bool result = isUsing;
        if (action)
            std::exchange(action, nullptr)();
        return result;
    }
    char name;
    std::string& log;
    bool isUsing = true;
    int x = -1;
    std::function<void()> action;
};

/// 100 pixels wide: view a covers all of it, b in front of it the right half.
class KyQEventCanvasProviderTest : public testing::Test {
protected:
    KyQEventCanvasProviderTest() { place(); }
    void place() {
        mCanvas->setSize(100, 100);
        mCanvas->insertView(mA.get());
        mCanvas->insertView(mB.get());
        mB->setArea(KyRectd(0.5, 0, 0.5, 1));
        mProvider->setCanvas(mCanvas.get());
    }
    static std::string join(std::initializer_list<std::string> answers) {
        return std::accumulate(answers.begin(), answers.end(), std::string());
    }
    /// Who got it: letters in the order of asking.
    std::string send(Event::Type type, int x, std::uint32_t state = 0, std::uint32_t button = 0) {
        mLog.clear();
        Event event;
        event.setType(type);
        event.setPosition(x, 10);
        event.setState(state);
        event.setButton(button);
        mProvider->setInputEvent(event);
        mIsUsed = event.getInternalEventReturn();
        return mLog;
    }
    std::string press(int x) { return send(Event::eMousePressed, x, 1, 1); }
    std::string move(int x, std::uint32_t state = 1) { return send(Event::eMouseMoved, x, state); }
    std::string release(int x, std::uint32_t state = 0) { return send(Event::eMouseReleased, x, state, 1); }
    std::string key() { return send(Event::eKeyPressed, 0); }

    std::string mLog;
    bool mIsUsed = false;
    KyHolder<KyCanvas> mCanvas{new KyCanvas};
    KyHolder<View> mA{new View('a', mLog)}, mB{new View('b', mLog)};
    QPointer<KyQEventCanvasProvider> mProvider = new KyQEventCanvasProvider;
    std::unique_ptr<QObject> mOwner{mProvider};
};

TEST_F(KyQEventCanvasProviderTest, TheFirstEnabledViewThatUsesAnEventWins) {
    EXPECT_EQ(move(80, 0), "b");
    mB->isUsing = false;
    EXPECT_EQ(move(80, 0), "ba");
    EXPECT_TRUE(mIsUsed);
    mB->setEnabled(false);
    EXPECT_EQ(move(80, 0), "a");
    const KyHolder<View> child(new View('c', mLog));
    mB->insert(child.get(), -1);
    EXPECT_EQ(move(80, 0), "a") << "a view in one that is not enabled";
    EXPECT_EQ(move(-1, 0), "");
}

TEST_F(KyQEventCanvasProviderTest, APressGrabsUntilNoButtonIsDown) {
    EXPECT_EQ(join({press(80), move(10), move(-2147483647 - 1), send(Event::eContextMenu, 10)}), "bbbb");
    EXPECT_EQ(join({send(Event::eMousePressed, 10, 2 | 1, 2), release(10, 2), send(Event::eWheel, 10, 34)}), "bbb");
    mB->isUsing = false;
    EXPECT_EQ(join({move(10, 2), release(10)}), "bb");
    EXPECT_EQ(mProvider->getGrabbingView(), nullptr);
    EXPECT_EQ(move(10, 0), "a");
    EXPECT_EQ(join({press(80), " ", move(80)}), "ba a") << "the view behind used the press";
    EXPECT_EQ(press(80), "ba") << "the release was lost";
}

TEST_F(KyQEventCanvasProviderTest, ThePolicySaysWhereEventsGo) {
    struct Handler : KyEventHandler {
        bool handleEvent(const KyInputEvent&) override { return true; }
    };
    const KyHolder<Handler> handler(new Handler);
    mCanvas->setEventHandler(handler.get());
    press(80);
    mProvider->setMouseFocusPolicy(eFocusUnderPointer);
    EXPECT_EQ(mProvider->getGrabbingView(), nullptr);
    EXPECT_EQ(join({press(80), move(10), key()}), "baa");
    for (const int number : {int{eFocusCanvas}, int{eNbMouseFocusPolicies}, -1})
        mProvider->setMouseFocusPolicy(static_cast<KyMouseFocusPolicy>(number));
    EXPECT_EQ(mProvider->getMouseFocusPolicy(), eFocusCanvas);
    EXPECT_EQ(press(80), "");
    EXPECT_TRUE(mIsUsed) << "by the canvas's own handler";
}

TEST_F(KyQEventCanvasProviderTest, KeysGoWhereThePressWentWithThePointersPosition) {
    move(80, 0);
    EXPECT_EQ(key(), "b") << "no press yet: under the pointer";
    press(10), release(10), move(80, 0);
    EXPECT_EQ(key(), "a");
    EXPECT_EQ(mA->x, 80);
    QObject receiver;
    receiver.installEventFilter(mProvider);
    for (const auto reason : {QContextMenuEvent::Keyboard, QContextMenuEvent::Mouse}) {
        QContextMenuEvent menu(reason, QPoint(90, 10));
        mLog.clear();
        QCoreApplication::sendEvent(&receiver, &menu);
        EXPECT_EQ(mLog, reason == QContextMenuEvent::Keyboard ? "a" : "b");
    }
    EXPECT_EQ(send(Event::eToolTip, 90), "b");
    mCanvas->removeView(mA.get());
    EXPECT_EQ(key(), "b");
}

TEST_F(KyQEventCanvasProviderTest, TheCanvasTellsWhatViewsAreNotAskedAbout) {
    QObject receiver;
    receiver.installEventFilter(mProvider);
    std::string told;
    mCanvas->eventSentSignal().connect([&](const Event* event) { told += 's' + std::to_string(event->getType()); });
    mCanvas->touchCanceledSignal().connect([&](bool asMouse) { told += asMouse ? 'm' : 'c'; });
    mCanvas->keyboardFocusSignal().connect([&](bool isGained) { told += isGained ? '+' : '-'; });
    press(80), move(-1, 0);
    mProvider->setMouseFocusPolicy(eFocusCanvas);
    move(10, 0);
    EXPECT_EQ(std::exchange(told, {}), "s3s7s7");
    kySendTouch(receiver, QEvent::TouchBegin, {{1, {80, 10}}});
    kySendTouch(receiver, QEvent::TouchCancel, {});
    for (const auto& [type, reason] :
         {std::pair(QEvent::FocusOut, Qt::PopupFocusReason), std::pair(QEvent::FocusOut, Qt::TabFocusReason),
          std::pair(QEvent::FocusIn, Qt::TabFocusReason)}) {
        QFocusEvent focus(type, reason);
        QCoreApplication::sendEvent(&receiver, &focus);
    }
    EXPECT_EQ(told, "s8c-+");
}

TEST_F(KyQEventCanvasProviderTest, ATouchSequenceGrabs) {
    QObject receiver;
    receiver.installEventFilter(mProvider);
    const auto touch = [&](QEvent::Type type, double x) {
        mLog.clear();
        kySendTouch(receiver, type, {{1, {x, 10}}});
        return mLog;
    };
    for (const auto ending : {QEvent::TouchEnd, QEvent::TouchCancel}) {
        EXPECT_EQ(join({touch(QEvent::TouchBegin, 80), touch(QEvent::TouchUpdate, 10)}), "bb");
        EXPECT_EQ(join({press(10), release(10), move(10, 0)}), "bbb") << "the touch still holds it";
        touch(ending, 10);
        EXPECT_EQ(move(10, 0), "a");
    }
    touch(QEvent::TouchBegin, 80);
    EXPECT_EQ(touch(QEvent::TouchBegin, 10), "a") << "the end was lost";
    touch(QEvent::TouchEnd, 30);
    kySendTouch(receiver, QEvent::TouchBegin, {});
    EXPECT_EQ(mA->x, 30) << "no finger, no position";
    EXPECT_EQ(mProvider->getGrabbingView(), nullptr);
    mProvider->setTouchToMouseConversion(true);
    for (const auto ending : {QEvent::TouchEnd, QEvent::TouchCancel}) {
        press(80);
        touch(QEvent::TouchBegin, 10);
        touch(ending, 10);
        EXPECT_EQ(move(10), "b") << "the button still holds it";
        release(80);
        EXPECT_EQ(mProvider->getGrabbingView(), nullptr);
    }
}

TEST_F(KyQEventCanvasProviderTest, StereoPositionsAreThoseOfOneEye) {
    struct SideBySide : KyCanvas {
        void transformStereoPoint(int& x, int&) const override { x = x * 2 % 200; }
    };
    const KyHolder<KyCanvas> stereo(new SideBySide);
    stereo->setSize(200, 100);
    stereo->insertView(mA.get());
    KySignal<> other("other");
    other.connect(*mProvider, [] {});
    mProvider->setCanvas(stereo.get());
    EXPECT_EQ(std::pair(other.getNbConnections(), mCanvas->viewRemovedSignal().getNbConnections()), std::pair(1u, 0u));
    EXPECT_EQ(join({move(130), key()}), "aa");
    EXPECT_EQ(mA->x, 60) << "of the key";
}

TEST_F(KyQEventCanvasProviderTest, ViewsMayGoWhileTheyHaveTheGrab) {
    press(80);
    mB->action = [this] { mCanvas->removeView(mB.get()), mB.reset(); };
    EXPECT_EQ(move(10), "b");
    EXPECT_EQ(mProvider->getGrabbingView(), nullptr);
    EXPECT_EQ(move(80), "a");
    mA->action = [this] { mCanvas->removeView(mA.get()); };
    EXPECT_EQ(press(80), "a");
    EXPECT_EQ(mProvider->getGrabbingView(), nullptr) << "it used the press that removed it";
    EXPECT_EQ(key(), "");
    mCanvas->insertView(mA.get());
    mA->action = [this] { release(80); };
    press(80);
    EXPECT_EQ(mProvider->getGrabbingView(), nullptr) << "the release came inside the press";
}

TEST_F(KyQEventCanvasProviderTest, CanvasAndProviderMayGoInAHandler) {
    mB->isUsing = false;
    mB->action = [this] { mCanvas.reset(); };
    EXPECT_EQ(press(80), "ba") << "the canvas lives until the event is through";
    EXPECT_EQ(mProvider->getCanvas(), nullptr);
    EXPECT_EQ(move(80), "");
    mCanvas = KyHolder<KyCanvas>(new KyCanvas);
    place();
    mB->action = [this] { mOwner.reset(); };
    EXPECT_EQ(press(80), "b");
    EXPECT_FALSE(mProvider);
}

} // namespace
