// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtTestFixture.h"

#include <QDockWidget>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSlider>
#include <QTreeWidget>

#include <memory>

class KyQtConnectionTest : public KyQtTestFixture {};

TEST_F(KyQtConnectionTest, SignalsCallFunctionsWithTheirValues) {
    expectRuns("s = QSlider() e = QLineEdit() log = '' "
               "connect(s, 'valueChanged(int)', function(v) log = log .. v end) "
               "connect(s, 'valueChanged', function(v) log = log .. '+' .. v end) "
               "connect(e, '2textChanged(const QString &)', function(t) log = log .. t end)");
    expectRuns("s:setValue(7) e:setText('ö')");
    EXPECT_EQ(eval("log"), "7+7ö");
    expectRuns("log = '' coroutine.resume(coroutine.create(function() s:setValue(8) end))");
    EXPECT_EQ(eval("log"), "8+8");
    expectOutput({{"connect(s, 'nosuch()', print)", "QSlider has no signal nosuch()"},
                  {"connect(s, 'valueChanged(int)', 5)", "connect : function expected"},
                  {"connect(nil, 'x()', print)", "No matching overload"}});
}

TEST_F(KyQtConnectionTest, ItemsAndEnumerationsArriveToo) {
    QTreeWidget tree;
    QDockWidget dock;
    tree.addTopLevelItem(new QTreeWidgetItem(QStringList("x")));
    publish("tree", &tree);
    publish("dock", &dock);
    expectRuns("log = {} for _, s in ipairs({'itemChanged', 'currentItemChanged'}) do "
               "connect(tree, s, function(i, j) log[#log + 1] = i:text(0) .. tostring(j) end) end "
               "for _, s in ipairs({'featuresChanged', 'allowedAreasChanged', 'dockLocationChanged'}) do "
               "connect(dock, s, function(v) log[#log + 1] = v end) end");
    tree.topLevelItem(0)->setText(0, "y");
    tree.setCurrentItem(tree.topLevelItem(0));
    dock.setFeatures(QDockWidget::DockWidgetClosable);
    dock.setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    dock.dockLocationChanged(Qt::TopDockWidgetArea);
    EXPECT_EQ(eval("table.concat(log, ' ')"), "y0 ynil 1 3 4");
}

TEST_F(KyQtConnectionTest, ErrorsOfAFunctionGoToTheOutput) {
    QPushButton button;
    publish("button", &button);
    expectRuns("connect(button, 'clicked()', function() error('broken') end)");
    button.click();
    EXPECT_NE(msOutput.find("broken"), std::string::npos);
}

TEST_F(KyQtConnectionTest, DisconnectingTakesAwayWhatIsNamed) {
    expectRuns("s = QSlider() n = 0 function f() n = n + 1 end function g() n = n + 10 end "
               "for i = 1, 2 do connect(s, 'valueChanged(int)', f) connect(s, 'valueChanged(int)', g) "
               "connect(s, 'sliderPressed()', f) end");
    expectTexts({{"disconnect(s, 'valueChanged(int)', f), disconnect(s, 'valueChanged(int)', f)", "2, 0"}});
    expectRuns("s:setValue(1)");
    expectTexts({{"n, disconnect(s, 'sliderPressed()'), disconnect(s), disconnect(s)", "20, 2, 2, 0"}});
}

TEST_F(KyQtConnectionTest, TheFunctionIsReleasedWithTheObject) {
    auto slider = std::make_unique<QSlider>();
    publish("s", slider.get());
    expectRuns("weak = setmetatable({}, {__mode = 'v'}) "
               "do local big = {} weak[1] = big connect(s, 'valueChanged(int)', function() return big end) end "
               "collectgarbage()");
    EXPECT_EQ(eval("weak[1] ~= nil"), "true");
    slider.reset();
    expectRuns("collectgarbage() collectgarbage()");
    EXPECT_EQ(eval("weak[1]"), "nil");
}

TEST_F(KyQtConnectionTest, AFunctionMayDeleteItsSenderOrItself) {
    const QPointer<QWidget> window = new QWidget;
    auto* button = new QPushButton(window);
    publish("window", window);
    publish("button", button);
    expectRuns("connect(button, 'clicked()', function() disconnect(button) deleteQObject(window) "
               "ok, message = pcall(button.text, button) rest = #findChildren(qApp, 'x') end) "
               "connect(button, 'destroyed(QObject*)', function(o) last = tostring(o) .. tostring(button) end)");
    button->click();
    EXPECT_NE(eval("message").find("has been deleted"), std::string::npos);
    EXPECT_EQ(eval("window"), "QWidget(deleted)");
    ASSERT_TRUE(window);
    finishDeletions();
    EXPECT_FALSE(window);

    auto other = std::make_unique<QPushButton>();
    publish("button", other.get());
    expectRuns("connect(button, 'destroyed(QObject*)', function(o) last = tostring(o) .. tostring(button) end)");
    other.reset();
    EXPECT_EQ(eval("last"), "nilQPushButton(deleted)");
}

TEST_F(KyQtConnectionTest, AClosedStateHearsNothingMore) {
    QPushButton button;
    publish("button", &button);
    expectRuns("connect(button, 'clicked()', function() error('broken') end)");
    KyScriptEngine::get().resetLuaState();
    button.click();
    KyQtLuaBinding::bind();
    publish("button", &button);
    expectRuns("connect(button, 'clicked()', function() clicked = true end)");
    button.click();
    EXPECT_EQ(eval("clicked"), "true");
    EXPECT_EQ(msOutput, "");
}
