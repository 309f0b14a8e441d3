// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostProcess.h"

#include <QStandardPaths>
#include <QThread>

#include <initializer_list>

namespace {

/// The prompt at a terminal, which a person types at.
class KyHostTerminalTest : public KyHostTalkTest {
protected:
    void SetUp() override {
        if (QStandardPaths::findExecutable("script").isEmpty())
            GTEST_SKIP() << "no program to make a terminal with";
        mEnvironment.insert("TERM", "xterm");
        mEnvironment.insert("XDG_DATA_HOME", mFolder.path());
    }

    /// Starts the prompt, runs the script's text beside it and tells the terminal's state when the program ended.
    void begin(const QByteArray& script = {}) {
        write("a.lua", script);
        write("run.sh",
              ("trap : INT\n" + getProgram() + " --no-window -i a.lua\necho code $?\nstty -a\n").toLocal8Bit());
        talk({"-qec", "sh run.sh", "/dev/null"}, "script");
        ASSERT_TRUE(waitFor("> "));
    }

    void type(const QByteArray& keys) {
        mProcess.write(keys);
        mProcess.waitForBytesWritten();
    }

    /// Types and waits for an answer to each.
    void converse(std::initializer_list<std::pair<const char*, const char*>> talks) {
        for (const auto& [typed, answer] : talks) {
            type(typed);
            ASSERT_TRUE(waitFor(answer)) << typed;
        }
    }
};

constexpr const char* cInterrupt = "\x03";

} // namespace

TEST_F(KyHostTerminalTest, NamesAreCompletedErrorsForgottenAndLinesComeBack) {
    begin();
    converse({{"for i = 1, 2 do\n", ">> "},
              // It gives up what a line continues.
              {cInterrupt, "> "},
              {"'<' .. scene.Na\t .. '>'\n", "<scene>"},
              {"error('oops')\n", "oops\r\n"},
              {"", "> "},
              {"\x10\x10\n", "<scene>"},
              {"host:qu\t)\n", "code 0"}});
}

TEST_F(KyHostTerminalTest, AnInterruptEndsALineThatRunsForeverAndHistoryIsKeptBefore) {
    begin();
    converse({{"x = 5\n", "> "}, {"print('busy') while true do end\n", "busy\r\n"}});
    EXPECT_EQ("x = 5\nprint('busy') while true do end\n", read("kyhost/history")) << "whatever ends the program";
    converse({{cInterrupt, "code 130"}});
}

TEST_F(KyHostTerminalTest, InterruptsEndACoroutineThatNeverYields) {
    begin("return coroutine.create(function() while not go do coroutine.yield() end "
          "io.stderr:write('stuck\\n') while true do end end)");
    converse({{"go = true\n", "stuck"}});
    for (int i = 0; i < 3; ++i) {
        type(cInterrupt);
        QThread::msleep(50);
    }
    ASSERT_TRUE(waitFor("code 130"));
    EXPECT_TRUE(waitFor(" icanon"));
}

TEST_F(KyHostTerminalTest, SignalsThatEndTheProgramGiveTheTerminalBackAndKeepTheHistory) {
    for (const QByteArray signal : {"TERM", "HUP"}) {
        SCOPED_TRACE(signal.constData());
        begin("return coroutine.create(function() while not go do coroutine.yield() end "
              "os.execute('kill -" +
              signal + " $PPID') while true do coroutine.yield() end end)");
        const QByteArray line = "go = '" + signal + "'\n";
        converse({{line, "> "}, {"", "code 0"}, {"", " icanon"}, {"", " echo "}});
        EXPECT_PRED2(contains, read("kyhost/history"), line.toStdString());
    }
}

TEST_F(KyHostTerminalTest, WhatCoroutinesPrintGoesAroundTheLine) {
    begin("return coroutine.create(function() while not go do coroutine.yield() end "
          "for i = 1, 20 do coroutine.yield() end print('from beside') end)");
    converse({{"go = true\n", "> "}, {"6 * 1", "from beside\r\n"}, {"", "> 6 * 1"}, {"1\n", "66"}});
}

TEST_F(KyHostTerminalTest, LongWorkIsToldInALineThatGoesWithIt) {
    begin("local file, n = io.open('grid.obj', 'w'), 500 "
          "for i = 1, n * n do file:write('v ', i % n, ' ', math.floor(i / n), ' 0\\n') end "
          "for i = 1, n * n - n - 1 do file:write('f ', i, ' ', i + 1, ' ', i + n, '\\n') end file:close()");
    converse({{"print(KyMeshNode():loadModel('grid.obj'))\n", "\rLoading grid.obj "},
              {"", " %\x1b[K\r\x1b[K"},
              {"", "true"}});
}
