// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostSession.h"

#include "KyHostDebugger.h"
#include "KyHostErrors.h"
#include "KyHostScripts.h"
#include "KyHostSettings.h"
#include "KyHostSourceView.h"

#include "KyLanguage.h"
#include "KyMainTaskManager.h"
#include "KyScriptDebugger.h"
#include "KyScriptEngine.h"
#include "KyScriptListing.h"

#include <lua.hpp>

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <fstream>
#include <functional>

namespace {

/// Scripts under the debugger, and a user who does something each time that one stands still.
class KyHostDebuggerTest : public KyHostSession<QApplication> {
protected:
    KyHostDebuggerTest() {
        mOptions.items.push_back({KyHostOptions::Item::eFile, mFolder.filePath("a.lua").toStdString()});
    }
    ~KyHostDebuggerTest() override {
        mDebugger.reset();
        KyScriptEngine::get().closeLuaState();
    }

    void open() {
        std::string error;
        KyHostDebugger::Listeners listeners;
        listeners.waiting = [this] { wait(); };
        listeners.continued = [] {};
        listeners.isEnding = [this] { return mIsEnding; };
        mDebugger = std::make_unique<KyHostDebugger>(mOptions, std::move(listeners));
        EXPECT_TRUE(mDebugger->open(error)) << error;
    }
    void wait() {
        const KyScriptStop& stop = KyScriptEngine::get().editDebugger().getStop();
        mStops += std::to_string(stop.line) + " ";
        mUser();
    }
    bool run(const std::string& text) {
        std::ofstream(mOptions.items[0].text, std::ios::trunc) << text;
        return mScripts.run();
    }
    static QWidget* findWindow() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->objectName() == "debugger")
                return widget;
        return nullptr;
    }
    static std::string getState() { return findWindow()->findChild<QLabel*>("state")->text().toStdString(); }
    static void press(const char* button) { findWindow()->findChild<QPushButton*>(button)->click(); }
    static QTreeWidget& getTree() { return *findWindow()->findChild<QTreeWidget*>("variables"); }
    static QListWidget& getCalls() { return *findWindow()->findChild<QListWidget*>("calls"); }
    static QTreeWidgetItem* findRow(const char* name) {
        const auto found = getTree().findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
        return found.isEmpty() ? nullptr : found.front();
    }
    /// All that is open in the tree, but the globals.
    static std::string describe(const QTreeWidgetItem& item) {
        std::string text = item.text(0).toStdString();
        text += item.text(1).isEmpty() ? "" : "=" + item.text(1).toStdString();
        for (int i = 0; item.isExpanded() && i < item.childCount(); ++i)
            text += (i == 0 ? "(" : " ") + describe(*item.child(i)) + (i == item.childCount() - 1 ? ")" : "");
        return text;
    }
    static std::string describeVariables() {
        return describe(*getTree().topLevelItem(0)) + " " + describe(*getTree().topLevelItem(1));
    }
    static bool hasHook() { return lua_gethook(KyScriptEngine::get().editLuaState()) != nullptr; }
    static double evaluate(const std::string& expression) {
        std::vector<KyField> results;
        KyScriptEngine::get().executeChunktWithReturnValues("return " + expression, results);
        return results.empty() ? -1 : results[0].toDouble();
    }

    QTemporaryDir mFolder;
    KyHostOptions mOptions;
    KyHostErrors mErrors{false};
    KyHostSettings mSettings{mFolder.filePath("settings.xml")};
    KyHostScripts mScripts{mOptions, mErrors, mHost, mStage, mSettings};
    std::unique_ptr<KyHostDebugger> mDebugger;
    std::function<void()> mUser = [] { press("mResumeButton"); };
    std::string mStops;
    bool mIsEnding = false;
};

constexpr const char* cSum = "n = 1\nn = n + 2\nn = n * 5\nn = n - 1\n";

} // namespace

TEST_F(KyHostDebuggerTest, ABreakpointStopsTheScriptAndTheWindowLeadsItOn) {
    mOptions.breakpoints = {{"somewhere/a.lua", 3}};
    open();
    ASSERT_TRUE(findWindow()->isVisible());
    mUser = [] {
        const int line = KyScriptEngine::get().editDebugger().getStop().line;
        EXPECT_EQ(getState(), line == 3 ? "Stopped at a.lua:3 (breakpoint)" : "Stopped at a.lua:4 (step)");
        const auto* const source = findWindow()->findChild<KyHostSourceView*>("source");
        EXPECT_EQ(source->toPlainText(), cSum);
        EXPECT_EQ(source->getCursorLine(), line);
        press(line == 3 ? "mStepButton" : "mResumeButton");
    };
    EXPECT_TRUE(run(cSum));
    EXPECT_EQ(mStops, "3 4 ");
    EXPECT_EQ(getState(), "Running");
    EXPECT_EQ(evaluate("n"), 14);
}

TEST_F(KyHostDebuggerTest, ABreakpointBetweenLinesGoesToTheNextAndOneThatCannotBeIsSaid) {
    const std::string text = "n = 1\n\n\nn = 2\n";
    std::ofstream(mOptions.items[0].text) << text;
    mOptions.breakpoints = {{"a.lua", 2}, {"a.lua", 5}, {"missing.lua", 3}};
    testing::internal::CaptureStderr();
    open();
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find("kyhost: 'a.lua' has no code from line 5 on, and does not stop there\n"
                        "kyhost: there is no script 'missing.lua'; one of that name would stop\n"),
              std::string::npos)
        << said;
    EXPECT_TRUE(run(text));
    EXPECT_EQ(mStops, "4 ");
}

TEST_F(KyHostDebuggerTest, WithoutBreakpointsTheFirstLineStopsSoThatOneCanBeSetBesideTheText) {
    mOptions.hasDebugger = true;
    open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(findWindow()));
    mUser = [] {
        auto* const source = findWindow()->findChild<KyHostSourceView*>("source");
        if (source->getCursorLine() == 1) {
            const int y = source->cursorRect().center().y() + 2 * source->cursorRect().height();
            QTest::mouseClick(source->findChild<QWidget*>("margin"), Qt::LeftButton, {}, QPoint(5, y));
        }
        QTest::keyClick(findWindow(), Qt::Key_F5);
    };
    EXPECT_TRUE(run(cSum));
    EXPECT_EQ(mStops, "1 3 ");
    EXPECT_EQ(KyScriptEngine::get().editDebugger().getFileBreakpoints(mOptions.items[0].text).size(), 1u);
}

TEST_F(KyHostDebuggerTest, ClosingTheWindowLetsTheScriptRunOnUnwatchedAndCoroutinesStopWhenItIsOpenedLater) {
    mOptions.breakpoints = {{"a.lua", 2}, {"a.lua", 4}, {"a.lua", 6}};
    open();
    mUser = [] { findWindow()->close(); };
    EXPECT_TRUE(run("return coroutine.create(function()\n n = 1\n coroutine.yield()\n n = 2\n coroutine.yield()\n"
                    " n = 3\n end)"));
    const auto runUntil = [](double n) {
        for (int i = 0; i < 3 && evaluate("n or 0") < n; ++i)
            KyMainTaskManager::get().update();
        EXPECT_EQ(evaluate("n"), n);
    };
    runUntil(1);
    EXPECT_FALSE(hasHook());
    runUntil(2);
    EXPECT_EQ(mStops, "2 ");
    mUser = [] { press("mResumeButton"); };
    mDebugger->openWindow();
    runUntil(3);
    EXPECT_EQ(mStops, "2 6 ");
}

TEST_F(KyHostDebuggerTest, AScriptThatStandsStillKeepsNoProgramNotEvenOneThatWouldNeverEnd) {
    mOptions.breakpoints = {{"a.lua", 2}};
    mUser = [this] { mIsEnding = true; };
    const char* const endless = "coroutine.wrap(function()\n n = 1\n while true do pcall(error) end end)()";
    for (const char* text : {cSum, endless}) {
        mIsEnding = false;
        open();
        QElapsedTimer timer;
        timer.start();
        EXPECT_EQ(run(text), text == cSum);
        EXPECT_LT(timer.elapsed(), 2 * KyHostDebugger::cPatience);
        mDebugger.reset();
    }
    EXPECT_EQ(mStops, "2 2 ");
}

TEST_F(KyHostDebuggerTest, TheVariablesOfEachCallOpenOnDemandAndStayOpenFromLineToLine) {
    mOptions.breakpoints = {{"a.lua", 5}};
    open();
    std::vector<std::string> seen;
    mUser = [&seen] {
        if (seen.empty()) {
            seen.push_back(describeVariables());
            findRow("t")->setExpanded(true);
            findRow("Globals")->setExpanded(true);
            EXPECT_EQ(findRow("shared")->text(1), "\"text\"");
            EXPECT_EQ(findRow("t")->child(0)->childCount(), 0) << "nothing is listed before it is opened";
            findRow("deep")->setExpanded(true);
            press("mStepButton");
            return;
        }
        seen.push_back(describeVariables());
        EXPECT_EQ(findRow("shared")->text(1), "true") << "open rows follow";
        getCalls().setCurrentRow(1);
        seen.push_back(describeVariables());
        EXPECT_EQ(findWindow()->findChild<KyHostSourceView*>("source")->getCursorLine(), 8);
        press("mResumeButton");
    };
    EXPECT_TRUE(run("local up = {deep = {1, {}}}\nshared = 'text'\nlocal function f(a)\n local t = up\n"
                    " shared, t.deep[2], t.also = true, 'two', 3\n return t\nend\nf(7)"));
    EXPECT_EQ(seen, (std::vector<std::string>{
                        "Locals(a=7 t=table of 1) Upvalues(up=table of 1)",
                        "Locals(a=7 t=table of 2(also=3 deep=table of 2([1]=1 [2]=\"two\"))) Upvalues(up=table of 2)",
                        "Locals(up=table of 2 f=function a.lua:3) Upvalues"}));
}

TEST_F(KyHostDebuggerTest, LargeTablesAreCutAndThoseInThemselvesOpenOneByOne) {
    mOptions.breakpoints = {{"a.lua", 4}};
    open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(findWindow()));
    mUser = [] {
        QTreeWidget& tree = getTree();
        tree.setFocus();
        tree.setCurrentItem(findRow("big"));
        QTest::keyClick(&tree, Qt::Key_Right);
        const QTreeWidgetItem& big = *findRow("big");
        ASSERT_EQ(big.childCount(), KyScriptListing::cMaxVariables + 1);
        EXPECT_EQ(describe(*big.child(9999)) + describe(*big.child(10000)), "[10000]=10000…=the rest is left out");
        tree.setCurrentItem(findRow("me"));
        QTest::keyClick(&tree, Qt::Key_Asterisk);
        EXPECT_EQ(describe(*findRow("me")), "me=table of 1(me=table of 1)");
        findRow("long")->setExpanded(true);
        const int nbLong = findRow("long")->childCount();
        EXPECT_TRUE(nbLong > 900 && nbLong < 1100) << nbLong;
        tree.setCurrentItem(findRow("long")->child(0));
        QTest::keyClick(&tree, Qt::Key_F2);
        const auto* const whole = tree.findChild<QLineEdit*>();
        ASSERT_TRUE(whole);
        EXPECT_TRUE(whole->text().size() > 4000 && whole->isReadOnly());
        QTest::keyClick(tree.findChild<QLineEdit*>(), Qt::Key_Escape);
        EXPECT_TRUE(findWindow()->isVisible());
        tree.setFocus();
        QTest::keyClick(&tree, Qt::Key_F5);
    };
    EXPECT_TRUE(run("local big, me, long = {}, {}, {}\nfor i = 1, 1e5 do big[i] = i end me.me = me\n"
                    "for i = 1, 2000 do long[i] = ('x'):rep(4090) .. i end\nx = 1"));
    EXPECT_EQ(mStops, "4 ");
}

TEST_F(KyHostDebuggerTest, WhereAScriptStandsStillIsReachedByKeysAndNamedInTheLanguage) {
    mOptions.breakpoints = {{"a.lua", 2}};
    open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(findWindow()));
    mUser = [] {
        QWidget* const window = findWindow();
        QSet<QWidget*> reached;
        window->setFocus();
        for (int i = 0; i < 20; ++i) {
            QTest::keyClick(window->focusWidget() ? window->focusWidget() : window, Qt::Key_Tab);
            reached.insert(window->focusWidget());
        }
        EXPECT_TRUE(reached.contains(&getCalls()) && reached.contains(&getTree()));
        EXPECT_EQ(findRow("n")->data(0, Qt::AccessibleTextRole), "n = 1");
        for (const auto& [language, expected] :
             {std::pair("de", "Aufrufe|Variablen|Name|Lokale Variablen|Tabelle mit 0|(Hauptprogramm)  a.lua:2"),
              std::pair("fr", "Appels|Variables|Nom|Variables locales|table de 0|(programme principal)  a.lua:2"),
              std::pair("en", "Calls|Variables|Name|Locals|table of 0|(main chunk)  a.lua:2")}) {
            KyLanguage::set(language);
            QCoreApplication::processEvents();
            const QStringList texts{getCalls().accessibleName(),     getTree().accessibleName(),
                                    getTree().headerItem()->text(0), getTree().topLevelItem(0)->text(0),
                                    findRow("t")->text(1),           getCalls().item(0)->text()};
            EXPECT_EQ(texts.join('|').toStdString(), expected);
        }
        press("mResumeButton");
    };
    EXPECT_TRUE(run("local n, t = 1, {}\nx = 1"));
}
