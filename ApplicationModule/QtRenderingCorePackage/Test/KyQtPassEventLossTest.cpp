// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtPassEventTesting.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QQuickItem>

namespace {

/// What ends elsewhere, is lost or hidden, and what handlers end.
class KyQtPassEventLossTest : public KyQtPassEventHandlerTest {
protected:
    KyQtPassEventLossTest() {
        QObject::connect(mPanel->button, &QPushButton::clicked, [this] { ++mNbClicks; });
    }
    template <class Widget>
    Widget* add(Widget* widget) {
        widget->setParent(mPanel);
        widget->setGeometry(150, 10, 100, 30);
        widget->setAutoFillBackground(true);
        widget->setMouseTracking(true);
        widget->show();
        settle();
        return widget;
    }
    bool handle(KyInputEvent::Type type, const QPoint& pixel, std::uint32_t button, std::uint32_t state) {
        KyInputEvent event;
        event.setType(type);
        event.setPosition(pixel.x(), pixel.y());
        event.setButton(button);
        event.setState(state);
        return getHandler().handleEvent(event, mView->getView(0), mPass);
    }
    void sendLost(const QPoint& pixel) {
        QMouseEvent lost(QEvent::MouseMove, toWindow(pixel), Qt::NoButton, Qt::NoButton, {});
        QCoreApplication::sendEvent(mWindow, &lost);
    }
    void askMenu(QContextMenuEvent::Reason reason, const QPoint& pixel) {
        QContextMenuEvent event(reason, toWindow(pixel), mWindow->mapToGlobal(toWindow(pixel)));
        QCoreApplication::sendEvent(mWindow, &event);
    }

    int mNbClicks = 0;
};

TEST_F(KyQtPassEventLossTest, WhatGoesToOtherViewsEndsHoveringPopupsAndFocus) {
    constexpr QPoint cBeside(290, 20);
    mView->getView(0)->setArea({0.0, 0.0, 0.6, 1.0});
    settle();
    EventTypes seen(mPanel->button);
    move(at(mPanel->button));
    move(cBeside);
    EXPECT_EQ(seen.counts[QEvent::Leave], 1);
    click(at(mPanel->combo));
    ASSERT_TRUE(findOpened());
    click(cBeside);
    EXPECT_FALSE(findOpened());
    click(at(mPanel->edit));
    EXPECT_TRUE(getHandler().hasKeyboardFocus(mPass));
    touch(cBeside, cBeside);
    EXPECT_FALSE(getHandler().hasKeyboardFocus(mPass));
}

TEST_F(KyQtPassEventLossTest, ThePopupOfAProgramClosesTooAndAllGoesWithTheWindowsFocus) {
    QMenu menu(mPanel);
    menu.addAction("Only");
    menu.popup(mPanel->mapToGlobal(QPoint(150, 150)));
    settle();
    ASSERT_TRUE(findOpened());
    click(cNowhere);
    EXPECT_FALSE(findOpened());
    click(at(mPanel->edit));
    for (const bool isGained : {false, true}) {
        QFocusEvent event(isGained ? QEvent::FocusIn : QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(mWindow, &event);
        EXPECT_EQ(getHandler().hasKeyboardFocus(mPass), isGained);
    }
}

TEST_F(KyQtPassEventLossTest, SceneAndWidgetMayGoWhileTheyAreTold) {
    struct Mover : QWidget {
        explicit Mover(KyQtPass* shown)
            : pass(shown) {}
        void mouseMoveEvent(QMouseEvent*) override { pass->set2DScene(nullptr, false); }
        KyQtPass* pass;
    };
    QObject::connect(mPanel->slider, &QSlider::valueChanged, [this] {
        auto* const other = new Panel;
        EXPECT_TRUE(mPass->setQWidget(other, true));
        mPanel = other;
    });
    click(at(mPanel->edit));
    const QPointer<QWidget> former = mPanel;
    wheel(at(mPanel->slider), 120);
    settle();
    EXPECT_FALSE(former);
    QWidget* const mover = add(new Mover(mPass));
    move(at(mover));
    EXPECT_FALSE(mPass->editQGraphicsScene());
}

TEST_F(KyQtPassEventLossTest, APressWhoseEndIsLostIsNoClick) {
    const QPoint place = at(mPanel->button);
    const std::function<void()> endings[] = {[&] { sendLost(place); },
                                             [&] {
                                                 mPass->setEnabled(false);
                                                 release(place);
                                                 mPass->setEnabled(true);
                                             }};
    for (const auto& end : endings) {
        press(place);
        EXPECT_TRUE(mPanel->button->isDown());
        end();
        EXPECT_FALSE(mPanel->button->isDown() || getHandler().isGrabbing(mPass)) << &end - endings;
        release(cNowhere);
    }
    mPanel->slider->setValue(40);
    press(at(mPanel->slider, 0.4));
    const int value = mPanel->slider->value();
    sendLost(cNowhere);
    EXPECT_EQ(mPanel->slider->value(), value);
    EXPECT_EQ(mNbClicks, 0);
}

TEST_F(KyQtPassEventLossTest, ACanceledTouchIsNoClick) {
    const auto begin = [this](const QWidget* widget) {
        QTest::touchEvent(mWindow, mDevice).press(7, toWindow(at(widget)), mWindow.data());
        QTouchEvent cancel(QEvent::TouchCancel, mDevice);
        EXPECT_TRUE(getHandler().isGrabbing(mPass));
        QCoreApplication::sendEvent(mWindow, &cancel);
        EXPECT_FALSE(getHandler().isGrabbing(mPass));
    };
    begin(mPanel->button);
    EXPECT_FALSE(mPanel->button->isDown());
    touch(at(mPanel->button), at(mPanel->button));
    EXPECT_EQ(mNbClicks, 1) << "of the second touch";
    mPanel->setAttribute(Qt::WA_AcceptTouchEvents);
    begin(mPanel->label);
    ASSERT_EQ(mPanel->touches.size(), 2u);
    EXPECT_LT(mPanel->touches.back().x(), 0.0);
}

TEST_F(KyQtPassEventLossTest, WhoHasAButtonKeepsItWhenAnotherIsPressed) {
    const QPoint place = at(mPanel->edit);
    EXPECT_FALSE(handle(KyInputEvent::eMousePressed, cNowhere, 1, 1));
    EXPECT_FALSE(handle(KyInputEvent::eMousePressed, place, 2, 3));
    EXPECT_FALSE(handle(KyInputEvent::eMouseReleased, place, 1, 2));
    EXPECT_FALSE(handle(KyInputEvent::eMouseReleased, place, 2, 0));
}

TEST_F(KyQtPassEventLossTest, AContextMenuByKeyComesToTheFocusAndOneThatNobodyHasGoesOn) {
    struct Edit : QLineEdit {
        void contextMenuEvent(QContextMenuEvent* event) override { places.push_back(event->pos()); }
        std::vector<QPoint> places;
    };
    for (const QWidget* widget : std::initializer_list<const QWidget*>{mPanel->label, mPanel->button}) {
        askMenu(QContextMenuEvent::Mouse, at(widget));
        EXPECT_EQ(mCamera->take(), Types{KyInputEvent::eContextMenu});
    }
    auto* const edit = add(new Edit);
    click(at(edit));
    askMenu(QContextMenuEvent::Keyboard, at(mPanel->combo));
    ASSERT_EQ(edit->places.size(), 1u);
    EXPECT_TRUE(edit->rect().contains(edit->places.front()));
    EXPECT_EQ(mCamera->take(), Types());
}

TEST_F(KyQtPassEventLossTest, WhatIsCoveredIsNeitherHoveredNorHasItTips) {
    auto* const cover = new QLabel("Above");
    cover->setMaximumSize(200, 60);
    cover->setAutoFillBackground(true);
    addQtPass()->setQWidget(cover, true);
    settle();
    EventTypes below(mPanel->button), above(cover);
    move({15, 20});
    move({30, 20});
    EXPECT_EQ(below.counts[QEvent::Enter], 0);
    EXPECT_EQ(above.counts[QEvent::Leave], 0);
    askToolTip(at(mPanel->button));
    EXPECT_FALSE(findOpened());
}

TEST_F(KyQtPassEventLossTest, ToolTipsFitEndWithTheirWidgetAndMayBeItsOwn) {
    struct Own : QWidget {
        bool event(QEvent* event) override {
            return event->type() == QEvent::ToolTip ? ++nbAsked > 0 : QWidget::event(event);
        }
        int nbAsked = 0;
    };
    auto* const own = add(new Own);
    askToolTip(at(own));
    EXPECT_EQ(own->nbAsked, 1);
    mPanel->button->setToolTip(QString("A text that no picture of this size holds in one line. ").repeated(3));
    askToolTip(at(mPanel->button));
    const QPointer<QGraphicsProxyWidget> tip = findOpened();
    ASSERT_TRUE(tip);
    EXPECT_LE(tip->sceneBoundingRect().right(), mWindow->getWidth());
    mPass->setQWidget(nullptr, false);
    settle();
    EXPECT_FALSE(findOpened());
}

TEST_F(KyQtPassEventLossTest, ATouchReachesTheCameraThroughQmlThatDoesNotTakeIt) {
    const KyQmlPass* const qml = addQml("import QtQuick 2.15\nRectangle { color: 'red'; property int taps: 0\n"
                                        "MouseArea { width: 60; height: 60; onClicked: ++taps }\n"
                                        "Item { x: 100; width: 60; height: 60; TapHandler { onTapped: ++taps } }\n"
                                        "MultiPointTouchArea { x: 200; width: 60; height: 60; onReleased: ++taps } }");
    int nbTaps = 0;
    for (const int x : {30, 130, 230}) {
        touch({x, 30}, {x, 30});
        EXPECT_EQ(mCamera->take(), Types()) << x;
        EXPECT_EQ(qml->getQuickItem()->property("taps").toInt(), ++nbTaps) << x;
    }
    touch({30, 230}, {30, 230});
    EXPECT_EQ(mCamera->take().size(), 4u);
    EXPECT_EQ(qml->getQuickItem()->property("taps").toInt(), nbTaps);
}

} // namespace
