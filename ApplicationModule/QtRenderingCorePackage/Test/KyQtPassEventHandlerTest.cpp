// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtPassEventTesting.h"

#include "KyLanguage.h"

#include "Ky2DScene.h"

#include <QApplication>
#include <QGraphicsSceneMouseEvent>
#include <QInputMethodQueryEvent>
#include <QListView>
#include <QMenu>
#include <QQuickItem>

#include <algorithm>

namespace {

TEST_F(KyQtPassEventHandlerTest, AClickReachesWhatIsUnderItAndElseTheCamera) {
    int nbClicks = 0;
    QObject::connect(mPanel->button, &QPushButton::clicked, [&] { ++nbClicks; });
    click(at(mPanel->button));
    EXPECT_EQ(nbClicks, 1);
    EXPECT_EQ(mCamera->take(), Types());
    for (const QPoint& pixel : {cNowhere, at(mPanel->label), at(mPanel->button) + QPoint(0, 17)}) {
        click(pixel);
        EXPECT_EQ(mCamera->take(), (Types{KyInputEvent::eMousePressed, KyInputEvent::eMouseReleased}));
        EXPECT_FALSE(getHandler().isGrabbing(mPass));
    }
    EXPECT_EQ(nbClicks, 1);
    mPanel->edit->setText("alpha");
    QApplication::setDoubleClickInterval(400);
    QTest::mouseDClick(mWindow, Qt::LeftButton, {}, toWindow(at(mPanel->edit, 0.1)));
    QApplication::setDoubleClickInterval(0);
    EXPECT_EQ(mPanel->edit->selectedText(), "alpha");
}

TEST_F(KyQtPassEventHandlerTest, ADragKeepsItsTargetUntilTheRelease) {
    press(at(mPanel->slider, 0.06));
    EXPECT_TRUE(mPanel->slider->isSliderDown());
    for (const QPoint& pixel : {at(mPanel->slider), at(mPanel->edit), cNowhere, QPoint(290, 5)})
        move(pixel);
    EXPECT_EQ(mPanel->slider->value(), mPanel->slider->maximum());
    EXPECT_TRUE(getHandler().isGrabbing(mPass));
    release(cNowhere);
    EXPECT_FALSE(mPanel->slider->isSliderDown());
    EXPECT_EQ(mCamera->take(), Types());
    // The other way round: what the camera began stays the camera's.
    press(cNowhere);
    move(at(mPanel->slider));
    release(at(mPanel->slider));
    EXPECT_EQ(mCamera->take(),
              (Types{KyInputEvent::eMousePressed, KyInputEvent::eMouseMoved, KyInputEvent::eMouseReleased}));
    // A release that never came.
    press(at(mPanel->slider, 0.94));
    QMouseEvent lost(QEvent::MouseMove, toWindow(cNowhere), Qt::NoButton, Qt::NoButton, {});
    QCoreApplication::sendEvent(mWindow, &lost);
    EXPECT_FALSE(mPanel->slider->isSliderDown());
    release(cNowhere);
}

TEST_F(KyQtPassEventHandlerTest, AWheelTurnsWhatIsUnderIt) {
    mPanel->slider->setValue(50);
    wheel(at(mPanel->slider), 120);
    EXPECT_GT(mPanel->slider->value(), 50);
    EXPECT_EQ(mCamera->take(), Types());
    wheel(cNowhere, 120);
    wheel(at(mPanel->label), 120);
    EXPECT_EQ(mCamera->take(), (Types{KyInputEvent::eWheel, KyInputEvent::eWheel}));
}

TEST_F(KyQtPassEventHandlerTest, KeysReachTheLineEditThatWasClicked) {
    click(at(mPanel->edit));
    type("Hello");
    QTest::keyClick(mWindow.data(), Qt::Key_Backspace);
    EXPECT_EQ(mPanel->edit->text(), "Hell");
    QTest::keyClick(mWindow.data(), Qt::Key_Tab);
    type("x");
    EXPECT_EQ(mPanel->other->text(), "x");
    EXPECT_EQ(std::ranges::count(mCamera->types, KyInputEvent::eKeyPressed), 0);
    mCamera->take();
    click(cNowhere);
    EXPECT_FALSE(getHandler().hasKeyboardFocus(mPass));
    type("y");
    EXPECT_EQ(mPanel->other->text(), "x");
    EXPECT_EQ(mCamera->take().size(), 4u);
}

TEST_F(KyQtPassEventHandlerTest, APassTakesTheKeyboardWithoutAClickWhereItHasAField) {
    KyGraphicsViewMultiPass* const view = mView->getView(0);
    EXPECT_FALSE(KyQtPassEventHandler::dropKeyboardFocus());
    EXPECT_TRUE(getHandler().takeKeyboardFocus(mPass, view));
    EXPECT_EQ(mPanel->focusWidget(), mPanel->button);
    QTest::keyClick(mWindow.data(), Qt::Key_Tab);
    type("x");
    EXPECT_TRUE(KyQtPassEventHandler::dropKeyboardFocus());
    EXPECT_FALSE(KyQtPassEventHandler::dropKeyboardFocus());
    type("y");
    EXPECT_TRUE(getHandler().takeKeyboardFocus(mPass, view));
    type("z");
    EXPECT_EQ(mPanel->edit->text(), "xz") << "to where it was";
    auto* const panel = new Panel;
    panel->combo->view(); // makes the list, a window in a scene that has none
    KyQtPass* const fresh = addQtPass();
    fresh->setQWidget(panel, true);
    settle();
    EXPECT_TRUE(KyQtPassEventHandler::cast(fresh->getEventHandler())->takeKeyboardFocus(fresh, mView->getView(1)));
    EXPECT_TRUE(panel->button->hasFocus());
    mView->getView(1)->setArea({0.0, 0.0, 0.4, 0.4}); // the pointer is elsewhere
    QTest::keyClick(mWindow.data(), Qt::Key_Tab);
    type("a");
    EXPECT_EQ(panel->edit->text(), "a");
    EXPECT_TRUE(getHandler().takeKeyboardFocus(mPass, view));
    KyQtPass* const picture = addQtPass();
    picture->setQWidget(new QLabel("nothing to type into"), true);
    settle();
    auto* handler = KyQtPassEventHandler::cast(picture->getEventHandler());
    EXPECT_FALSE(handler->takeKeyboardFocus(picture, mView->getView(2)));
    type("!");
    EXPECT_EQ(mPanel->edit->text(), "xz!") << "stays with the other";
    KyQmlPass* const qml = addQml("import QtQuick 2.15\nItem { property alias text: input.text\n"
                                  "TextInput { id: input; activeFocusOnTab: true; width: 50; height: 20 } }");
    handler = KyQtPassEventHandler::cast(qml->getEventHandler());
    EXPECT_TRUE(handler->takeKeyboardFocus(qml, mView->getView(3)));
    type("q");
    EXPECT_EQ(qml->getQuickItem()->property("text").toString() + mPanel->edit->text(), "qxz!");
}

TEST_F(KyQtPassEventHandlerTest, AnInputMethodWritesOnlyWhenItMay) {
    click(at(mPanel->edit));
    for (const bool isEnabled : {false, true}) {
        getHandler().setInputMethodEnabled(isEnabled);
        QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImCursorRectangle);
        QCoreApplication::sendEvent(mWindow, &query);
        EXPECT_EQ(query.value(Qt::ImEnabled).toBool(), isEnabled);
        QInputMethodEvent commit;
        commit.setCommitString(QString(QChar(0xe9)));
        QCoreApplication::sendEvent(mWindow, &commit);
        EXPECT_EQ(mPanel->edit->text().size(), isEnabled ? 1 : 0);
        const QPointF cursor = query.value(Qt::ImCursorRectangle).toRectF().center();
        EXPECT_EQ(QRectF(toWindow({10, 40}), toWindow({140, 80})).contains(cursor), isEnabled);
    }
}

TEST_F(KyQtPassEventHandlerTest, AComboListOpensInTheTextureAndStaysClosed) {
    const auto open = [this] {
        click(at(mPanel->combo));
        return findOpened();
    };
    QGraphicsProxyWidget* list = open();
    ASSERT_TRUE(list);
    const auto* view = qobject_cast<QListView*>(mPanel->combo->view());
    const QPoint row = view->viewport()->mapTo(list->widget(), view->visualRect(view->model()->index(2, 0)).center());
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    click(list->mapToScene(row).toPoint());
    EXPECT_EQ(mPanel->combo->currentText(), "three");
    EXPECT_FALSE(findOpened());
    for (const QPoint& outside : {at(mPanel->label), at(mPanel->button), cNowhere}) {
        ASSERT_TRUE(open());
        mCamera->take();
        click(outside);
        kyRunFrames();
        EXPECT_FALSE(findOpened()) << outside.x() << " " << outside.y();
        EXPECT_EQ(mCamera->take().empty(), outside != cNowhere);
    }
}

TEST_F(KyQtPassEventHandlerTest, AContextMenuOpensInTheTexture) {
    int nbTriggered = 0;
    auto* const menu = new QMenu(mPanel->label);
    for (const char* text : {"First", "Second", "Third", "Fourth"})
        menu->addAction(text);
    QAction* const last = menu->addAction("Fifth");
    QObject::connect(last, &QAction::triggered, [&] { ++nbTriggered; });
    mPanel->label->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(mPanel->label, &QWidget::customContextMenuRequested,
                     [&](const QPoint& place) { menu->popup(mPanel->label->mapToGlobal(place)); });
    click(at(mPanel->label), Qt::RightButton);
    QGraphicsProxyWidget* proxy = findOpened();
    ASSERT_TRUE(proxy);
    const QRectF area = proxy->sceneBoundingRect();
    EXPECT_TRUE(QRectF(0, 0, mWindow->getWidth(), mWindow->getHeight()).contains(area)) << "moved into the picture";
    EXPECT_GT(mPass->getPixelColor({float(area.x() + 8), float(area.y() + 8)}, mView).alpha, 0.9f);
    click(proxy->mapToScene(menu->actionGeometry(last).center()).toPoint());
    EXPECT_EQ(nbTriggered, 1);
    EXPECT_FALSE(findOpened());
}

TEST_F(KyQtPassEventHandlerTest, AToolTipIsDrawnInTheTexture) {
    const QPoint place = at(mPanel->button, 0.98);
    const KyVec2f inTip{float(place.x() + 30), float(place.y() + 20)};
    askToolTip(place);
    ASSERT_TRUE(findOpened());
    EXPECT_EQ(mPass->getPixelColor(inTip, mView).alpha, 1.0f);
    move(at(mPanel->edit));
    settle();
    EXPECT_FALSE(findOpened());
    EXPECT_EQ(mPass->getPixelColor(inTip, mView).alpha, 0.0f);
    // By itself, when the pointer rests.
    move(place);
    EXPECT_TRUE(kyRunUntil([this] { return findOpened() != nullptr; }));
    press(place);
    EXPECT_FALSE(findOpened());
    release(place);
}

TEST_F(KyQtPassEventHandlerTest, HoveringEndsWhereverThePointerGoes) {
    EventTypes seen(mPanel->button);
    KyQtPass* const above = addQtPass();
    auto* const cover = new QPushButton("Above");
    cover->setMaximumSize(20, 20);
    above->setQWidget(cover, true);
    settle();
    QEvent outside(QEvent::Leave);
    const std::function<void()> leaving[] = {[&] { move(cNowhere); }, [&] { move(QPoint(15, 12)); },
                                             [&] { QCoreApplication::sendEvent(mWindow, &outside); }};
    int count = 0;
    for (const auto& leave : leaving) {
        move(at(mPanel->button));
        ++count;
        EXPECT_EQ(seen.counts[QEvent::Enter], count);
        EXPECT_EQ(seen.counts[QEvent::Leave], count - 1);
        leave();
        EXPECT_EQ(seen.counts[QEvent::Leave], count);
    }
}

TEST_F(KyQtPassEventHandlerTest, ATouchReachesWidgetsAsTouchOrAsMouse) {
    touch(at(mPanel->slider, 0.06), cNowhere);
    EXPECT_EQ(mPanel->slider->value(), mPanel->slider->maximum());
    EXPECT_FALSE(mPanel->slider->isSliderDown());
    EXPECT_EQ(mCamera->take(), Types());
    touch(cNowhere, at(mPanel->slider));
    EXPECT_EQ(mCamera->take().size(), 4u);
    mPanel->setAttribute(Qt::WA_AcceptTouchEvents);
    const std::vector<QPointF>& places = mPanel->touches;
    touch(at(mPanel->label), cNowhere);
    ASSERT_EQ(places.size(), 4u);
    EXPECT_LE((places.front() - at(mPanel->label)).manhattanLength(), 3.0);
    EXPECT_LE((places.back() - cNowhere).manhattanLength(), 3.0);
    EXPECT_EQ(mCamera->take(), Types());
}

TEST_F(KyQtPassEventHandlerTest, TheUppermostPassThatIsSeenGetsEventsAndKeys) {
    KyQtPass* const above = addQtPass();
    auto* const edit = new QLineEdit;
    edit->setMaximumSize(100, 40);
    above->setQWidget(edit, true);
    settle();
    int nbClicks = 0;
    QObject::connect(mPanel->button, &QPushButton::clicked, [&] { ++nbClicks; });
    click({50, 20});
    type("up");
    click({115, 20});
    EXPECT_EQ(nbClicks, 1);
    click(at(mPanel->other));
    type("down");
    EXPECT_EQ(edit->text(), "up");
    EXPECT_EQ(mPanel->other->text(), "down");
}

TEST_F(KyQtPassEventHandlerTest, InSceneModeItemsGetExactPositions) {
    struct Item : QGraphicsRectItem {
        Item()
            : QGraphicsRectItem(-50, -50, 100, 100) {
            setBrush(Qt::red);
            setFlag(ItemIsFocusable);
        }
        void mousePressEvent(QGraphicsSceneMouseEvent* event) override { pressed = event->scenePos(); }
        void mouseMoveEvent(QGraphicsSceneMouseEvent*) override { log += 'm'; }
        void wheelEvent(QGraphicsSceneWheelEvent*) override { log += 'w'; }
        void keyPressEvent(QKeyEvent*) override { log += 'k'; }
        QPointF pressed;
        std::string log;
    };
    auto* const item = new Item;
    mPass->setQWidget(nullptr, false);
    mPass->edit2DScene()->getQGraphicsScene()->addItem(item);
    for (const auto& [position, scale] : {std::pair(KyVec2f(0.0f, 0.0f), 1.0f), std::pair(KyVec2f(20.5f, -3.0f), 0.01f),
                                          std::pair(KyVec2f(-30.0f, 10.0f), -0.1f)}) {
        mPass->setViewPosition(position);
        mPass->setViewScale({scale, scale});
        settle();
        const QPoint window = toWindow({170, 150});
        const QPoint pixel = (QPointF(window) * mWindow->devicePixelRatio()).toPoint();
        QTest::mouseClick(mWindow, Qt::LeftButton, {}, window);
        const KyVec2f expected = mPass->getScenePosition({float(pixel.x()), float(pixel.y())}, mView);
        EXPECT_NEAR(item->pressed.x(), double(expected.x), 1e-3);
        EXPECT_NEAR(item->pressed.y(), double(expected.y), 1e-3);
        EXPECT_EQ(mCamera->take(), Types());
    }
    type("k");
    wheel({170, 150}, 120);
    press({170, 150});
    item->setBrush(Qt::NoBrush);
    settle();
    move(cNowhere);
    release(cNowhere);
    EXPECT_EQ(item->log, "kwm") << "a drag goes on over transparent pixels";
    EXPECT_EQ(mCamera->take(), Types());
    wheel({170, 150}, 120);
    EXPECT_EQ(mCamera->take(), Types{KyInputEvent::eWheel});
}

TEST_F(KyQtPassEventHandlerTest, WhatHandlesAnEventMayEndAnything) {
    const KyHolder<KyGraphicsViewMultiPass> overlay(mView->getView(0));
    const std::function<void()> endings[] = {
        [&] { mPass->setEventHandler(nullptr); },   [&] { mPass->setQWidget(nullptr, false); },
        [&] { mPass->set2DScene(nullptr, false); }, [&] { overlay->setMainPass(nullptr); },
        [&] { mView->remove(overlay.get()); },      [&] { delete mWindow.data(); }};
    for (const auto& end : endings) {
        const KyHolder<KyQtPass> pass(KyQtPass::create());
        mPass = pass.get();
        mPass->setPriority(-1.0f);
        mPass->setEventHandler(KyQtPassEventHandler::create());
        overlay->setMainPass(mPass);
        if (!overlay->getParent())
            mView->insert(overlay.get());
        auto* const panel = new Panel;
        mPass->setQWidget(panel, true);
        settle();
        bool isDone = false;
        QObject::connect(panel->button, &QPushButton::clicked, [&] {
            isDone = true;
            end();
        });
        click(at(panel->button));
        EXPECT_TRUE(isDone) << &end - endings;
    }
}

TEST_F(KyQtPassEventHandlerTest, QmlItemsGetEventsTheSameWay) {
    mPass->setQWidget(nullptr, false);
    const KyQmlPass* const qml = addQml(
        "import QtQuick 2.15\nItem { id: root; property string log; property alias text: input.text\n"
        "Rectangle { width: 100; height: 100; color: 'red'; MouseArea { anchors.fill: parent; hoverEnabled: true\n"
        "onPressed: log += 'p'; onReleased: log += 'r'; onDoubleClicked: log += 'd'; onWheel: log += 'w'\n"
        "onEntered: log += 'e'; onExited: log += 'x' } }\n"
        "Rectangle { y: 120; width: 100; height: 40; color: 'white'\n"
        "TextInput { id: input; anchors.fill: parent } } }");
    const auto take = [root = qml->getQuickItem()] {
        const QString log = root->property("log").toString();
        root->setProperty("log", QString());
        return log;
    };
    move({50, 50});
    EXPECT_EQ(take(), "e");
    press({50, 50});
    move(cNowhere);
    release(cNowhere);
    EXPECT_EQ(take().remove('x'), "pr");
    wheel({50, 50}, 120);
    touch({50, 50}, {60, 60});
    EXPECT_EQ(take().remove('x').remove('e'), "wpr");
    click({50, 140});
    type("abc");
    EXPECT_EQ(qml->getQuickItem()->property("text").toString(), "abc");
    click(cNowhere);
    type("d");
    EXPECT_EQ(qml->getQuickItem()->property("text").toString(), "abc");
    EXPECT_EQ(mCamera->take().size(), 4u);
}

TEST_F(KyQtPassEventHandlerTest, TheErrorsOfQmlAreInTheLanguageOfNowAndReloadByKey) {
    QFile file(mFolder.filePath("failing.qml"));
    const auto write = [&file](const char* text) {
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) > 0);
        file.close();
    };
    write("import QtQuick 2.15\nItem { nothing: 1 }");
    auto* const pass = KyQmlPass::cast(KyQmlPass::createQmlPassOverlayView(mView, true, true)->getMainPass());
    const QUrl url = QUrl::fromLocalFile(file.fileName());
    pass->setQml(url, false);
    ASSERT_TRUE(kyRunUntil([pass] { return pass->getQuickItem() && !pass->getErrorText().empty(); }));
    settle();
    const auto getSummary = [pass] { return pass->getQuickItem()->property("summary").toString(); };
    EXPECT_EQ(getSummary(), "Cannot be shown: 1 error");
    KyLanguage::set("de");
    EXPECT_TRUE(kyRunUntil([&] { return getSummary() == "Kann nicht gezeigt werden: 1 Fehler"; }));
    KyLanguage::set(KyLanguage::cEnglish);
    write("import QtQuick 2.15\nItem {}");
    // From the button that reloads over the list and the button that opens back to it.
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(mWindow.data(), Qt::Key_Tab);
    EXPECT_FALSE(pass->isLoaded());
    QTest::keyClick(mWindow.data(), Qt::Key_Return);
    EXPECT_TRUE(kyRunUntil([pass] { return pass->isLoaded(); })) << pass->getErrorText();
}

TEST(KyQtPassEventHandlerScaleTest, AllOfItHoldsAtOtherScaleFactors) {
    for (const char* factor : {"1.5", "2"})
        EXPECT_EQ(kyRunProcess("KyQtPassEventHandlerTest.*", "QT_SCALE_FACTOR", factor), 0) << factor;
}

} // namespace
