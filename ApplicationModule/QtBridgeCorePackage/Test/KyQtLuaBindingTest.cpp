// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtNames.h"
#include "KyQtTestFixture.h"

#include <QAction>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QMovie>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTextEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <memory>

class KyQtLuaBindingTest : public KyQtTestFixture {};

TEST_F(KyQtLuaBindingTest, EveryClassHasItsMembersAlsoAfterAReset) {
    for (const bool isReset : {false, true}) {
        if (isReset) {
            KyScriptEngine::get().resetLuaState();
            KyQtLuaBinding::bind();
        }
        KyQtLuaBinding::bind();
        for (const auto& [name, members] : cClasses)
            EXPECT_EQ(run("local class = _G['" + std::string(name) + "'] for name in ('" + members +
                          "'):gmatch('%S+') do if type(class[name]) ~= 'function' then error(name) end end"),
                      "")
                << name;
        EXPECT_EQ(eval("qApp == getQApplication(), toQApplication(qApp) == qApp"), "true, true");
    }
}

TEST_F(KyQtLuaBindingTest, CastsGiveTheObjectOrNil) {
    const std::unique_ptr<QObject> objects[] = {
        std::make_unique<QObject>(),     std::make_unique<QWidget>(),      std::make_unique<QRadioButton>(),
        std::make_unique<QPushButton>(), std::make_unique<QTreeWidget>(),  std::make_unique<QTreeView>(),
        std::make_unique<QVBoxLayout>(), std::make_unique<QProgressBar>(), std::make_unique<QDoubleSpinBox>(),
        std::make_unique<QAction>("a"),  std::make_unique<QMovie>(),       std::make_unique<QStackedWidget>(),
        std::make_unique<QTextEdit>(),   std::make_unique<QScrollArea>(),  std::make_unique<QDockWidget>(),
    };
    const std::string casts = cClasses[std::size(cClasses) - 1].members;
    for (const auto& object : objects) {
        publish("object", object.get());
        for (std::size_t at = casts.find("toQ"); at != std::string::npos; at = casts.find("toQ", at + 1)) {
            const std::string name = casts.substr(at, casts.find(' ', at) - at);
            if (name.front() != 't' || casts[at - 1] != ' ')
                continue;
            const bool isOne = object->inherits(name.c_str() + 2);
            EXPECT_EQ(eval(name + "(object) == object, " + name + "(nil)"), isOne ? "true, nil" : "false, nil")
                << object->metaObject()->className() << ' ' << name;
        }
    }
}

TEST_F(KyQtLuaBindingTest, ObjectsArriveAsTheirNearestClass) {
    QWidget window;
    auto* group = new QGroupBox(&window);
    auto* label = new QLabel("Grün", group);
    group->setObjectName("group");
    label->setObjectName("lábel");
    publish("window", &window);
    expectTexts(
        {{"window", "QWidget()"},
         {"findChild(window, 'group')", "QWidget(group)"},
         {"window:findChild(QString('lábel')):text()", "Grün"},
         {"window:findChild('none'), #window:findChildren('lábel'), #window:findChildren('')", "nil, 1, 2"},
         {"findChildren(window)[1] == window:findChild(), window == nil, window == 5", "true, false, false"},
         {"window:findChild('group'):parent() == window, Vec2d() == window", "true, false"},
         {"window:property('enabled'), QObject_property(window, 'none')", "true, "},
         {"window:inherits('QWidget'), window:blockSignals(true), window:blockSignals(false)", "true, false, true"}});
    expectRuns("window:setProperty('windowTitle', 'Ω') window:setProperty('own', {1, 2}) l = findChild(window, 'lábel')"
               " l:setText('x') l:setObjectName(QString('y'))");
    EXPECT_EQ(window.windowTitle(), "Ω");
    EXPECT_EQ(window.property("own").toList().size(), 2);
    EXPECT_EQ(label->objectName(), "y");
    expectOutput({{"window:setProperty('own', print)", "unknown type of value function: function: "}});
}

TEST_F(KyQtLuaBindingTest, WidgetsArePlacedAndSwitched) {
    expectRuns("w = QWidget(nil) w:setGeometry(1, 2, 30, 40) child = QLabel(w) child:setGeometry(Recti(5, 6, 7, 8))");
    expectTexts(
        {{"w:geometry(), child:geometry(), w:width(), w:height()", "1 2 30 40, 5 6 7 8, 30, 40"},
         {"w:childAt(6, 7) == child, w:childAt(Vec2d(0, 0)), child:parentWidget() == w", "true, nil, true"},
         {"w:mapToGlobal(Vec2d(0.6, 1.4)), w:isHidden(), w:isVisible(), w:isEnabled()", "2 3, true, false, true"}});
    expectRuns("w:resize(50, 60) w:move(3, 4) w:setEnabled(false) placed = tostring(w:geometry()) w:show() "
               "w:setColor(Color(1, 0, 0)) "
               "w:setAutoFillBackground(true) w:setStyleSheet('QWidget {}') w:setAttribute(55, true)");
    expectTexts({{"placed, w:isEnabled(), w:isVisible(), w:testAttribute(55)", "3 4 50 60, false, true, true"}});
    expectRuns("box = QVBoxLayout() a, b = QPushButton(nil), QPushButton(nil) box:addWidget(a) "
               "box:insertWidget(0, b) w:setLayout(box)");
    EXPECT_EQ(eval("w:layout() == box, b:parent() == w, toQHBoxLayout(w:layout())"), "true, true, nil");
    expectRuns("deleteQObject(w)");
    expectTexts({{"box, child, w", "QVBoxLayout(deleted), QLabel(deleted), QWidget(deleted)"}});
}

TEST_F(KyQtLuaBindingTest, ControlsKeepWhatScriptsSet) {
    expectRuns("s = QSlider() s:setMinimum(-5) s:setMaximum(50) s:setValue(12.9) p = QProgressBar() p:setMaximum(7) "
               "p:setValue(3) d = QDoubleSpinBox() d:setValue(2.25) e = QLineEdit() e:setText('Grün') "
               "e:setCursorPosition(2) t = QTextEdit() t:setHtml('<b>x</b>') c = QComboBox() c:addItem('b') "
               "c:insertItem(0, 'a') c:setCurrentIndex(1) k = QPushButton() k:setText('go') m = QMenu('File', nil) "
               "action = m:addAction('Open') k:setMenu(m) l = QListWidget() l:addItem('x') dock = QDockWidget() "
               "dock:setWidget(t) q = QLabel() movie = QMovie('none.gif') q:setMovie(movie) movie:setSpeed(0)");
    expectTexts({{"s:value(), s:minimum(), s:maximum(), p:value(), p:maximum(), d:value()", "12, -5, 50, 3, 7, 2.25"},
                 {"e:text(), e:getCursorPosition(), getCursorPosition(e), t:text()", "Grün, 2, 2, x"},
                 {"c:count(), c:currentText(), c:currentIndex(), c:itemText(0), c:itemText(9)", "2, b, 1, a, "},
                 {"k:text(), k:isChecked(), m:title(), action:text(), action:isVisible(), m:activeAction()",
                  "go, false, File, Open, true, nil"},
                 {"l:currentRow(), dock:isFloating(), t:parentWidget() == dock, q:movie() == movie, movie:speed()",
                  "-1, true, true, true, 0"}});
}

TEST_F(KyQtLuaBindingTest, ArgumentsAreThoseOfTheToolkit) {
    expectRuns("w = QWidget() icon = QIcon() box = QHBoxLayout(w) a, b = QLabel('a'), QLabel('b', w)");
    expectTexts(
        {{"w:layout() == box, a:text(), b:parent() == w, QLineEdit('t', w):text(), QTextEdit('u'):text()",
          "true, a, true, t, u"},
         {"QPushButton('p'):text(), QPushButton(icon, 'q', w):text(), QMenu('m'):title(), QMenu():title()",
          "p, q, m, "},
         {"QAction('x'):text(), QAction(w):parent() == w, QAction(icon, 'y', w):text(), QAction():text()",
          "x, true, y, "},
         {"QSlider(2, w):parent() == w, QDockWidget('d'):property('windowTitle'), QMovie():fileName()", "true, d, "}});
    expectRuns("box:addWidget(a, 1) box:addWidget(b, 1, 4) box:insertWidget(0, QLabel(), 2) "
               "box:insertWidget(0, QLabel(), 2, 1) column = QBoxLayout(2, QWidget()) c = QComboBox() "
               "c:addItem('b', 5) c:addItem(icon, 'c', {1}) c:insertItem(0, 'a', 'x') c:insertItem(9, icon, 'd', nil) "
               "w:move(Vec2d(1, 2)) w:resize(Vec2d(30, 40.4))");
    EXPECT_EQ(eval("w:geometry(), c:count(), c:itemText(0)"), "1 2 30 40, 4, a");
    expectOutput({{"QSlider(0)", "orientation out of range"},
                  {"QBoxLayout(4)", "direction out of range"},
                  {"c:addItem('x', print)", "cannot be kept"},
                  {"QTreeWidget():setProperty('columnCount', 2147483647)", "columnCount out of range"}});
}

TEST_F(KyQtLuaBindingTest, ADeletedObjectIsAnErrorOfTheScript) {
    auto owner = std::make_unique<QWidget>();
    publish("label", new QLabel(owner.get()));
    owner.reset();
    expectOutput({{"label:text()", "the Qt object has been deleted"},
                  {"toQWidget(label)", "the Qt object has been deleted"},
                  {"QWidget(label)", "the Qt object has been deleted"},
                  {"return QLabel.text(nil)", "No matching overload"}});
    expectTexts({{"label == label, tostring(label)", "true, QLabel(deleted)"}});
    expectRuns("deleteQObject(label) deleteQObject(nil) local w = QLabel() deleteQObject(w) deleteQObject(w) "
               "label = nil collectgarbage()");
    const QPointer<QLabel> kept = new QLabel;
    publish("label", kept);
    expectRuns("label = nil collectgarbage() collectgarbage()");
    ASSERT_TRUE(kept);
    delete kept.data();
}

TEST_F(KyQtLuaBindingTest, WhatWouldHangTheToolkitIsRefused) {
    expectRuns("w = QWidget() c = QWidget(w) a = QAction('a', w) box = QVBoxLayout() box:addWidget(w) "
               "inner = QVBoxLayout() c:setLayout(inner) area = QTextEdit(w) dock = QDockWidget(c)");
    expectOutput({{"w:setParent(c)", "below itself"},
                  {"w:setParent(w)", "below itself"},
                  {"w:setLayout(box)", "below itself"},
                  {"inner:addWidget(w)", "below itself"},
                  {"dock:setWidget(w)", "below itself"},
                  {"c:setParent(a)", "must be a widget"},
                  {"box:setParent(nil)", "a layout cannot be given another parent"},
                  {"deleteQObject(qApp)", "cannot be deleted"},
                  {"deleteQObject(area:findChild('qt_scrollarea_viewport'))", "cannot be deleted"},
                  {"deleteQObject(5)", "Qt object expected"},
                  {"w:setAttribute(1e9, true)", "widget attribute out of range"},
                  {"w:testAttribute(-1)", "widget attribute out of range"}});
    expectRuns("c:setParent(nil) c:setParent(w) a:setParent(nil) a:setParent(c) deleteQObject(w) deleteQObject(box)");
}

TEST_F(KyQtLuaBindingTest, IdentifiersAreNewAndInBraces) {
    expectTexts({{"generateGUID():match('^{%x+%-%x+%-%x+%-%x+%-%x+}$') ~= nil, generateGUID() == generateGUID()",
                  "true, false"}});
}
