// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQEventManipulatorProvider.h"
#include "KyQEventProvider.h"
#include "KyTouchTesting.h"

#include "KyException.h"
#include "KyManipulator.h"

#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QHelpEvent>
#include <QInputMethodQueryEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include <functional>
#include <limits>

namespace {

using Event = KyInputEvent;
/// Type, button and state.
using Seen = std::tuple<Event::Type, std::uint32_t, std::uint32_t>;

struct Log : KyEventHandler {
    bool handleEvent(const KyInputEvent& event) override {
        events.push_back(event);
        action();
        return true;
    }
    std::vector<KyInputEvent> events;
    std::function<void()> action = [] {};
};

class KyQEventProviderTest : public testing::Test {
protected:
    KyQEventProviderTest() {
        watch(mProvider);
        mWidget->setMouseTracking(true);
    }
    void watch(KyQEventProvider& provider) {
        provider.setEventHandler(mLog.get());
        mWidget->installEventFilter(&provider);
    }
    bool send(QEvent&& event) { return QCoreApplication::sendEvent(mWidget.get(), &event); }
    bool touch(QEvent::Type type, const QList<KyTestFinger>& fingers) {
        QTouchEvent event = kyMakeTouch(type, fingers);
        event.ignore();
        const bool isConsumed = mProvider.eventFilter(mWidget.get(), &event);
        EXPECT_EQ(event.isAccepted(), isConsumed);
        return isConsumed;
    }
    const Event& last() const { return mLog->events.back(); }
    Seen getLast() const { return {last().getType(), last().getButton(), last().getState()}; }
    QPoint getPlace() const { return {last().getX(), last().getY()}; }
    std::vector<int> getTypes() const {
        std::vector<int> types;
        std::ranges::transform(mLog->events, std::back_inserter(types), &Event::getType);
        return types;
    }

    const KyHolder<Log> mLog{new Log};
    KyQEventProvider mProvider;
    std::unique_ptr<QWidget> mWidget = std::make_unique<QWidget>();
};

TEST_F(KyQEventProviderTest, KeysAreButtons) {
    QList<int> keys{Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_PageUp, Qt::Key_PageDown, 43, 45};
    for (int key = Qt::Key_F1; key <= Qt::Key_F12; ++key)
        keys << key;
    keys << Qt::Key_Enter << Qt::Key_Return << Qt::Key_A;
    for (int i = 0; i < keys.size(); ++i) {
        const std::uint32_t bit = keys[i] == Qt::Key_A ? 0 : 64u << std::min(i, 20);
        send(QKeyEvent(QEvent::KeyPress, keys[i], Qt::AltModifier | Qt::ShiftModifier | Qt::MetaModifier));
        EXPECT_EQ(getLast(), Seen(Event::eKeyPressed, bit, bit | 0xA0000000u));
        send(QKeyEvent(QEvent::KeyRelease, keys[i], Qt::NoModifier));
        EXPECT_EQ(getLast(), Seen(Event::eKeyReleased, bit, 0u));
    }
}

TEST_F(KyQEventProviderTest, MouseEventsCarryButtonsAndModifiers) {
    const struct {
        QMouseEvent event;
        Seen seen;
    } rows[] = {
        {{QEvent::MouseButtonPress, {3, 4}, Qt::LeftButton, Qt::LeftButton, {}}, {Event::eMousePressed, 1, 1}},
        {{QEvent::MouseButtonRelease, {3, 4}, Qt::RightButton, Qt::MiddleButton, {}}, {Event::eMouseReleased, 2, 4}},
        {{QEvent::MouseButtonDblClick, {3, 4}, Qt::XButton1, Qt::XButton1, Qt::ShiftModifier},
         {Event::eMouseDoubleClicked, 8, 0x20000008u}},
        {{QEvent::MouseMove, {3, 4}, {}, Qt::AllButtons, Qt::ControlModifier | Qt::KeypadModifier},
         {Event::eMouseMoved, 0, 0x4000001Fu}}};
    for (const auto& row : rows) {
        QMouseEvent event = row.event;
        EXPECT_FALSE(mProvider.eventFilter(mWidget.get(), &event));
        EXPECT_EQ(getLast(), row.seen);
        EXPECT_EQ(last().getNativeEvent(), static_cast<QEvent*>(&event));
        EXPECT_EQ(getPlace(), QPoint(3, 4));
    }
    mProvider.setEventHandler(new KyEventHandler);
    last().setInternalEventReturn(true);
    mProvider.sendInputEvent(mLog->events.back());
    EXPECT_FALSE(last().getInternalEventReturn()) << "the former handler's return";
}

TEST_F(KyQEventProviderTest, TheWheelTurnsTheWayOfItsGreaterPart) {
    const struct {
        QPoint pixels, angle;
        bool isVertical;
        int delta;
    } rows[] = {{{}, {0, 120}, true, 120},
                {{1, 1}, {-240, 120}, false, -240},
                {{}, {120, -120}, true, -120},
                {{7, -9}, {}, true, -9},
                {{9, 7}, {}, false, 9},
                {{}, {}, true, 0},
                {{}, {std::numeric_limits<int>::min(), 1}, false, std::numeric_limits<int>::min()}};
    for (const auto& row : rows) {
        send(QWheelEvent(QPointF(5.6, 7), QPointF(), row.pixels, row.angle, Qt::LeftButton, Qt::AltModifier,
                         Qt::NoScrollPhase, false));
        EXPECT_EQ(getLast(), Seen(Event::eWheel, last().getButton(), 0x80000021u));
        EXPECT_EQ(std::pair(last().isWheelVertical(), last().getWheelDelta()), std::pair(row.isVertical, row.delta));
        EXPECT_EQ(getPlace(), QPoint(6, 7));
    }
}

TEST_F(KyQEventProviderTest, PositionsAreScaledAndSaturate) {
    constexpr int cMin = std::numeric_limits<int>::min(), cMax = std::numeric_limits<int>::max();
    const struct {
        unsigned scale;
        double ratio, position;
        int expected;
    } rows[] = {{1, 1, 3.4, 3},
                {2, 1, -5, -10},
                {2, 1.5, 3.4, 10},
                {1, std::nan(""), 3.4, 3},
                {1, -2, 3.4, 3},
                {1, 1, 1e300, cMax},
                {1, 0.5, -1e300, cMin},
                {~0u, 1, -2e9, cMin},
                {1, 1, cMin, cMin},
                {1, 3, std::nan(""), 0},
                {1, 1, cMax - 0.6, cMax - 1},
                {1, 1, 1.5 - cMax, 2 - cMax}};
    for (const auto& row : rows) {
        KyQEventProvider provider(row.scale);
        provider.setPixelRatio(row.ratio);
        watch(provider);
        QMouseEvent move(QEvent::MouseMove, {0, row.position}, {}, {}, {});
        QTouchEvent touched = kyMakeTouch(QEvent::TouchUpdate, {{1, {0, row.position}}});
        for (QEvent* event : std::initializer_list<QEvent*>{&move, &touched}) {
            provider.eventFilter(mWidget.get(), event);
            EXPECT_EQ(last().getY(), row.expected) << row.scale << ' ' << row.ratio << ' ' << row.position;
        }
    }
}

TEST_F(KyQEventProviderTest, OtherEventsOfTheTableArriveAndTheRestDoesNot) {
    send(QContextMenuEvent(QContextMenuEvent::Mouse, {3, 4}));
    send(QHelpEvent(QEvent::ToolTip, {5, 6}, {}));
    EXPECT_EQ(last().getX(), 5);
    send(QInputMethodQueryEvent(Qt::ImEnabled));
    for (const auto type : {QEvent::Enter, QEvent::HoverMove, QEvent::User, QEvent::MaxUser, QEvent::None})
        send(QEvent(type));
    mProvider.avoidMouseTraking(true);
    for (const auto buttons : {Qt::NoButton, Qt::RightButton})
        send(QMouseEvent(QEvent::MouseMove, {}, Qt::NoButton, buttons, {}));
    EXPECT_EQ(getTypes(),
              (std::vector<int>{Event::eContextMenu, Event::eToolTip, Event::eInputMethodQuery, Event::eMouseMoved}));
}

TEST_F(KyQEventProviderTest, TouchesAreSortedAndConsumedUnlessLeftToQt) {
    for (int count = 0; count <= 100; ++count) {
        QList<KyTestFinger> fingers;
        for (int i = 0; i < count; ++i)
            fingers.append({i * 37 % 101, QPointF(70 + i, std::nan("")), Qt::TouchPointPressed});
        EXPECT_TRUE(touch(QEvent::TouchUpdate, fingers));
        EXPECT_EQ(last().getTouchPoints().size(), static_cast<std::size_t>(count));
        EXPECT_TRUE(std::ranges::is_sorted(last().getTouchPoints(), {}, &KyTouchPoint::id));
    }
    EXPECT_EQ(last().getTouchPoints()[37].x, 71);
    EXPECT_EQ(last().getTouchPoints()[37].state, KyTouchPoint::ePressed);
    touch(QEvent::TouchUpdate, {{7, {70, 1}}, {2, {20, 2}}});
    EXPECT_EQ(last().getX(), 20) << "the first finger's";
    mLog->events.clear();
    mProvider.setAcceptTouchEvent(false);
    EXPECT_FALSE(touch(QEvent::TouchUpdate, {{2, {20, 2}}}));
    EXPECT_TRUE(mLog->events.empty());
}

TEST_F(KyQEventProviderTest, MouseEventsMadeOfATouchSaySoWhileItLasts) {
    const auto pressSynthesized = [this](Qt::MouseEventSource source) {
        send(QMouseEvent(QEvent::MouseButtonPress, {}, {}, {}, Qt::LeftButton, Qt::LeftButton, {}, source));
        return last().repeatsTouch();
    };
    EXPECT_FALSE(pressSynthesized(Qt::MouseEventSynthesizedByQt));
    touch(QEvent::TouchBegin, {{1, {}}});
    EXPECT_TRUE(pressSynthesized(Qt::MouseEventSynthesizedBySystem));
    EXPECT_FALSE(pressSynthesized(Qt::MouseEventNotSynthesized));
    QTouchEvent cancel = kyMakeTouch(QEvent::TouchCancel, {});
    mProvider.touch(&cancel);
    EXPECT_FALSE(pressSynthesized(Qt::MouseEventSynthesizedByQt));
    EXPECT_EQ(mLog->events.size(), 5u) << "a cancel sends nothing";
}

TEST_F(KyQEventProviderTest, TheFirstFingerPlaysTheMouseWhenTouchesAreConverted) {
    static int nbReports = 0;
    const auto former = KyException::setReportHandler([](const std::string&) { ++nbReports; });
    for (const bool convert : {true, false, true})
        mProvider.setTouchToMouseConversion(convert);
    KyException::setReportHandler(former);
    EXPECT_EQ(nbReports, 2);

    touch(QEvent::TouchBegin, {{4, {10, 20}, Qt::TouchPointPressed}});
    touch(QEvent::TouchUpdate, {{1, {90, 90}, Qt::TouchPointPressed}, {4, {11, 20}}});
    mProvider.setTouchToMouseConversion(false);
    touch(QEvent::TouchUpdate, {{4, {12, 20}, Qt::TouchPointReleased}, {1, {91, 90}}});
    touch(QEvent::TouchUpdate, {{1, {95, 90}}});
    touch(QEvent::TouchEnd, {{1, {95, 90}, Qt::TouchPointReleased}});
    ASSERT_EQ(getTypes(), (std::vector<int>{Event::eMousePressed, Event::eMouseMoved, Event::eMouseReleased}));
    const std::array<std::uint32_t, 3> expected[] = {{10, 1, 1}, {11, 1, 0}, {12, 0, 1}};
    for (std::size_t i = 0; i < 3; ++i) {
        const Event& event = mLog->events[i];
        EXPECT_EQ((std::array{static_cast<std::uint32_t>(event.getX()), event.getState(), event.getButton()}),
                  expected[i]);
        EXPECT_TRUE(event.getTouchPoints().empty());
    }
}

TEST_F(KyQEventProviderTest, SceneEventsArePlacedInTheirViewport) {
    QGraphicsScene scene(0, 0, 2000, 2000);
    QGraphicsView view(&scene);
    view.resize(200, 200);
    view.show();
    view.verticalScrollBar()->setValue(374);
    scene.installEventFilter(&mProvider);
    mProvider.setEventHandler(mLog.get());
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, {31, 42});
    EXPECT_EQ(getPlace(), QPoint(31, 42));
    QGraphicsSceneMouseEvent event(QEvent::GraphicsSceneMouseRelease);
    event.setScreenPos({7, 8});
    auto widget = std::make_unique<QWidget>();
    event.setWidget(widget.get());
    widget.reset();
    QCoreApplication::sendEvent(&scene, &event);
    EXPECT_EQ(last().getType(), Event::eMouseReleased);
    EXPECT_EQ(getPlace(), QPoint(7, 8));
}

TEST_F(KyQEventProviderTest, AHandlerMayDeleteWidgetAndProvider) {
    // The provider is the widget's child.
    mLog->action = [this] { delete mWidget.release(); };
    QWidget parent;
    QTouchEvent touched = kyMakeTouch(QEvent::TouchBegin, {{1, {}}});
    QMouseEvent move(QEvent::MouseMove, {}, Qt::LeftButton, Qt::LeftButton, {});
    QWheelEvent wheel({}, {}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
    for (QEvent* sent : std::initializer_list<QEvent*>{&touched, &move, &wheel}) {
        mWidget = std::make_unique<QWidget>(&parent);
        mWidget->setAttribute(Qt::WA_AcceptTouchEvents);
        watch(*new KyQEventProvider(1, mWidget.get()));
        sent->ignore();
        EXPECT_TRUE(QCoreApplication::sendEvent(mWidget.get(), sent));
        EXPECT_FALSE(mWidget);
        EXPECT_TRUE(sent->isAccepted()) << "Qt looks for the parent of what is gone";
    }
    EXPECT_EQ(mLog->events.size(), 3u);
}

TEST_F(KyQEventProviderTest, AManipulatorGetsEventsUntilItIsGone) {
    struct Taker : KyManipulator {
        bool handleEvents() override { return getInputEvent().getX() == 5; }
    };
    KyQEventManipulatorProvider provider;
    provider.setManipulator(new Taker);
    for (const int x : {5, 6, 5}) {
        Event event;
        event.setType(Event::eMouseMoved);
        event.setPosition(x, 0);
        provider.setInputEvent(event);
        EXPECT_EQ(event.getInternalEventReturn(), x == 5 && provider.getManipulator());
        if (x == 6)
            provider.getManipulator()->destroy();
    }
    EXPECT_EQ(provider.getManipulator(), nullptr);
}

} // namespace
