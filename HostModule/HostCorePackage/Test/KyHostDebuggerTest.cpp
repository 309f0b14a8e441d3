// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostSession.h"

#include "KyHostDebugger.h"
#include "KyHostErrors.h"
#include "KyHostScripts.h"
#include "KyHostSettings.h"
#include "KyHostSourceView.h"

#include "KyMainTaskManager.h"
#include "KyScriptDebugger.h"
#include "KyScriptEngine.h"

#include <lua.hpp>

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

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
