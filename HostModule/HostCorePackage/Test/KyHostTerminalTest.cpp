// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostProcess.h"

#include <QElapsedTimer>
#include <QStandardPaths>
#include <QThread>

#include <gtest/gtest.h>

#include <string>

namespace {

/// The prompt at a terminal, which a person types at.
class KyHostTerminalTest : public KyHostProcessTest {
protected:
    void SetUp() override {
        if (QStandardPaths::findExecutable("script").isEmpty())
            GTEST_SKIP() << "no program to make a terminal with";
        mEnvironment.insert("TERM", "xterm");
        mEnvironment.insert("XDG_DATA_HOME", mFolder.path());
    }
    ~KyHostTerminalTest() override {
        if (mTerminal.state() == QProcess::NotRunning)
            return;
        mTerminal.kill();
        mTerminal.waitForFinished();
    }

    /// Starts the prompt, runs the script's text beside it and what is behind the program's end in a shell.
    void start(const QByteArray& script = {}, const QString& afterwards = "true") {
        write("a.lua", script);
        write("run.sh", ("trap : INT\n" + getProgram() + " --no-window -i a.lua\necho code $?\n" + afterwards + "\n")
                            .toLocal8Bit());
        mTerminal.setProcessChannelMode(QProcess::MergedChannels);
        mTerminal.setProcessEnvironment(mEnvironment);
        mTerminal.setWorkingDirectory(mFolder.path());
        mTerminal.start("script", {"-qec", "sh run.sh", "/dev/null"});
        ASSERT_TRUE(waitFor("> "));
    }

    /// Waits for a text that comes after the one waited for before.
    testing::AssertionResult waitFor(const std::string& text) {
        constexpr int cPatience = 20000;
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < cPatience) {
            const std::size_t found = mSeen.find(text, mPosition);
            if (found != std::string::npos) {
                mPosition = found + text.size();
                return testing::AssertionSuccess();
            }
            mTerminal.waitForReadyRead(100);
            mSeen += mTerminal.readAll().toStdString();
        }
        return testing::AssertionFailure() << "no '" << text << "' in: " << mSeen;
    }

    void end() { ASSERT_TRUE(mTerminal.waitForFinished()); }

    void type(const QByteArray& keys) {
        mTerminal.write(keys);
        mTerminal.waitForBytesWritten();
    }

    std::string readHistory() const {
        QFile file(getPath("kyhost/history"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    }

private:
    QProcess mTerminal;
    std::string mSeen;
    std::size_t mPosition = 0;
};

constexpr const char* cInterrupt = "\x03";

} // namespace

TEST_F(KyHostTerminalTest, NamesAreCompletedErrorsForgottenAndLinesComeBack) {
    start();
    type("for i = 1, 2 do\n");
    ASSERT_TRUE(waitFor(">> "));
    type(cInterrupt);
    ASSERT_TRUE(waitFor("> ")) << "it gives up what a line continues";
    type("'<' .. scene.Na\t .. '>'\n");
    ASSERT_TRUE(waitFor("<scene>"));
    type("error('oops')\n");
    ASSERT_TRUE(waitFor("oops\r\n"));
    ASSERT_TRUE(waitFor("> "));
    type("\x10\x10\n");
    ASSERT_TRUE(waitFor("<scene>"));
    type("host:qu\t)\n");
    ASSERT_TRUE(waitFor("code 0"));
}

TEST_F(KyHostTerminalTest, AnInterruptEndsALineThatRunsForeverAndHistoryIsKeptBefore) {
    start();
    type("x = 5\n");
    ASSERT_TRUE(waitFor("> "));
    type("print('busy') while true do end\n");
    ASSERT_TRUE(waitFor("busy\r\n"));
    EXPECT_EQ("x = 5\nprint('busy') while true do end\n", readHistory()) << "whatever ends the program";
    type(cInterrupt);
    ASSERT_TRUE(waitFor("code 130"));
}

TEST_F(KyHostTerminalTest, InterruptsEndACoroutineThatNeverYields) {
    start("return coroutine.create(function() while not go do coroutine.yield() end "
          "io.stderr:write('stuck\\n') while true do end end)",
          "stty -a");
    type("go = true\n");
    ASSERT_TRUE(waitFor("stuck"));
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
        start("return coroutine.create(function() while not go do coroutine.yield() end "
              "os.execute('kill -" +
                  signal + " $PPID') while true do coroutine.yield() end end)",
              "stty -a");
        type("go = '" + signal + "'\n");
        ASSERT_TRUE(waitFor("> "));
        ASSERT_TRUE(waitFor("code 0"));
        EXPECT_TRUE(waitFor(" icanon"));
        EXPECT_TRUE(waitFor(" echo "));
        EXPECT_PRED2(contains, readHistory(), "go = '" + signal.toStdString() + "'\n");
        end();
    }
}

TEST_F(KyHostTerminalTest, WhatCoroutinesPrintGoesAroundTheLine) {
    start("return coroutine.create(function() while not go do coroutine.yield() end "
          "for i = 1, 20 do coroutine.yield() end print('from beside') end)");
    type("go = true\n");
    ASSERT_TRUE(waitFor("> "));
    type("6 * 1");
    ASSERT_TRUE(waitFor("from beside\r\n"));
    ASSERT_TRUE(waitFor("> 6 * 1"));
    type("1\n");
    ASSERT_TRUE(waitFor("66"));
}
