// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtTestFixture.h"

#include <QAction>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTextEdit>
#include <QTreeWidget>

#include <memory>

class KyQtLifetimeTest : public KyQtTestFixture {};

TEST_F(KyQtLifetimeTest, InnerPartsStayWhereTheyAre) {
    const std::unique_ptr<QWidget> widgets[] = {
        std::make_unique<QLineEdit>(),      std::make_unique<QTextEdit>(),   std::make_unique<QDoubleSpinBox>(),
        std::make_unique<QTreeWidget>(),    std::make_unique<QListWidget>(), std::make_unique<QDockWidget>(),
        std::make_unique<QStackedWidget>(), std::make_unique<QScrollArea>(), std::make_unique<QMainWindow>(),
    };
    for (const auto& widget : widgets) {
        publish("w", widget.get());
        expectRuns("box, other, dock = QVBoxLayout(), QWidget(), QDockWidget() nbParts = #w:findChildren() "
                   "for _, part in ipairs(w:findChildren()) do "
                   "  part:setObjectName('mine') "
                   "  for name, move in pairs({delete = deleteQObject, setParent = function(p) p:setParent(nil) end, "
                   "    addWidget = function(p) box:addWidget(p) end, insert = function(p) box:insertWidget(0, p) end, "
                   "    setWidget = function(p) dock:setWidget(p) end, "
                   "    setLayout = function(p) other:setLayout(p) end}) do "
                   "    assert(not pcall(move, part), name .. tostring(part)) "
                   "  end "
                   "end");
        EXPECT_EQ(eval("nbParts > 0, #w:findChildren() == nbParts"), "true, true") << widget->metaObject()->className();
        widget->show();
        expectRuns("made = _G[({tostring(w):match('^%a+')})[1]]() for _, c in ipairs(made:findChildren()) do "
                   "deleteQObject(c) end made:show() deleteQObject(made)");
    }
    expectRuns("for _, c in ipairs(qApp:findChildren()) do assert(not pcall(deleteQObject, c) and "
               "not pcall(c.setParent, c, nil), tostring(c)) end");
}

TEST_F(KyQtLifetimeTest, WhatOthersPutTogetherScriptsTakeApart) {
    QMainWindow window;
    auto* central = new QWidget;
    window.setCentralWidget(central);
    window.addDockWidget(Qt::LeftDockWidgetArea, new QDockWidget);
    const QPointer<QPushButton> button = new QPushButton(central);
    publish("window", &window);
    expectRuns("for _, c in ipairs(window:findChildren()) do if c:inherits('QPushButton') then b = c end end "
               "b:setParent(nil) assert(b:parent() == nil) deleteQObject(b)");
    EXPECT_FALSE(button);
    expectRuns(
        "for _, c in ipairs(window:findChildren()) do if c:inherits('QDockWidget') then dock = c end end "
        "deleteQObject(dock) own = QLabel(window) own:setObjectName('qt_mine') own:setParent(nil) deleteQObject(own) "
        "m = QMenu('m') a = m:addAction('a') deleteQObject(a) m:clear() deleteQObject(m)");
    EXPECT_FALSE(window.findChild<QDockWidget*>());
    EXPECT_EQ(eval("own, a"), "QLabel(deleted), QAction(deleted)");
}

TEST_F(KyQtLifetimeTest, TheEndOfAnObjectWithoutHandlesIsHeard) {
    for (const char* make : {"QAction('x', w)", "QMovie('x', '', w)", "QLabel(w)", "QVBoxLayout(w)"})
        for (const char* handler : {"log = tostring(o)", "log = tostring(o) deleteQObject(w)"})
            for (const char* end : {"deleteQObject(w)", "deleteQObject(w:findChild('o'))"}) {
                expectRuns("w = QWidget() log = '' do local o = " + std::string(make) +
                           " o:setObjectName('o') connect(o, 'destroyed', function(o) " + handler +
                           " end) end collectgarbage() collectgarbage() " + end + " w = nil");
                EXPECT_EQ(eval("log"), "nil") << make;
                finishDeletions();
            }
}

TEST_F(KyQtLifetimeTest, AWidgetThatASignalComesThroughOutlivesIt) {
    QWidget window;
    const QPointer<QMenu> menu = new QMenu("m", &window);
    auto* action = new QAction("a", &window);
    menu->addAction(action);
    publish("menu", menu);
    publish("action", action);
    expectRuns("connect(action, 'triggered', function() deleteQObject(menu) dead = tostring(menu) end)");
    action->trigger();
    EXPECT_TRUE(menu);
    EXPECT_EQ(eval("dead, #findChildren(action:parent(), 'm')"), "QMenu(deleted), 0");
    finishDeletions();
    EXPECT_FALSE(menu);
}
