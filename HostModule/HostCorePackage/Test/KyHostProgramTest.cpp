// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostProcess.h"

#include <QStandardPaths>

#include <gtest/gtest.h>

#include <string>

namespace {

class KyHostProgramTest : public KyHostProcessTest {
protected:
    /// Runs without a view.
    KyHostResult runPlain(const QStringList& arguments, const QByteArray& input = {}) {
        return run(QStringList{"--no-window"} + arguments, input);
    }
};

} // namespace

TEST_F(KyHostProgramTest, UsageErrorsExitWithTwoAndRunNothing) {
    write("ok.lua", "print('ran')");
    struct Case {
        QStringList arguments;
        const char* named;
    };
    const Case cases[] = {
        {{"ok.lua", "--nonsense"}, "'--nonsense'"},   {{"ok.lua", "--size", "0x10"}, "'0x10'"},
        {{"ok.lua", "--frames"}, "'--frames'"},       {{"ok.lua", "missing.lua"}, "'missing.lua'"},
        {{"ok.lua", "missing.obj"}, "'missing.obj'"}, {{"ok.lua", ""}, "cannot find ''"},
        {{"ok.lua", "--", "--help"}, "'--help'"},     {{"ok.lua", "--screenshot", "a.png"}, "'--screenshot'"}};
    for (const Case& wrong : cases) {
        const KyHostResult result = runPlain(wrong.arguments);
        EXPECT_EQ(2, result.code) << result;
        EXPECT_EQ("", result.output);
        EXPECT_PRED2(startsWith, result.errors, "kyhost: ");
        EXPECT_PRED2(contains, result.errors, wrong.named);
    }
}

TEST_F(KyHostProgramTest, ScriptsThatFailExitWithOneAndLuasMessage) {
    write("throws.lua", "print('before')\nerror('broken')");
    write("syntax.lua", "print('a'");
    write("nil.lua", "error()");
    write("table.lua", "error({})");
    write("binary.lua", QByteArray("\x1bLua\x00\xff\x00garbage", 14));
    write("zeros.lua", QByteArray(4096, '\0'));
    write("yields.lua", "string.gsub('a', '.', coroutine.yield)");
    write("recursion.lua", "local function f() return 1 + f() end f()");
    QDir(mFolder.path()).mkdir("folder.lua");
    struct Case {
        const char* argument;
        const char* output;
        const char* error;
    };
    const Case cases[] = {{"throws.lua", "before\n", "throws.lua:2: broken\n"},
                          {"syntax.lua", "", "syntax.lua:1: ')' expected near '<eof>'\n"},
                          {"nil.lua", "", "(error object is not a string)\n"},
                          {"table.lua", "", "(error object is not a string)\n"},
                          {"binary.lua", "", "binary.lua: "},
                          {"zeros.lua", "", "zeros.lua:"},
                          {"folder.lua", "", "folder.lua"},
                          {"yields.lua", "", "attempt to yield across metamethod/C-call boundary"},
                          {"recursion.lua", "", "stack overflow"}};
    for (const Case& wrong : cases) {
        const KyHostResult result = runPlain({wrong.argument});
        EXPECT_EQ(1, result.code) << wrong.argument << result;
        EXPECT_EQ(wrong.output, result.output) << wrong.argument;
        EXPECT_PRED2(contains, result.errors, wrong.error) << wrong.argument;
        EXPECT_PRED2(lacks, result.errors, "kyhost: ") << wrong.argument;
    }
}

TEST_F(KyHostProgramTest, ChunksScriptsAndFailuresKeepTheirOrder) {
    write("b.lua", "print('b', a)");
    write("d.lua", "print('d')");
    const KyHostResult result =
        runPlain({"-e", "a = 1 print('a')", "b.lua", "-e", "error('c', 0)", "d.lua", "-e", "print('e')"});
    EXPECT_EQ(1, result.code);
    EXPECT_EQ("a\nb\t1\nd\ne\n", result.output);
    EXPECT_EQ("c\n", result.errors);
}

TEST_F(KyHostProgramTest, AChunkIsNamedInItsErrors) {
    EXPECT_EQ("(command line):1: oh\n", runPlain({"-e", "error('oh')"}).errors);
}

TEST_F(KyHostProgramTest, WithoutAWindowItRunsUntilNoCoroutineWaits) {
    const KyHostResult result =
        runPlain({"-e", "return coroutine.create(function() for i = 1, 3 do print(i, host.FrameCount) "
                        "coroutine.yield() end print('done') end)"});
    EXPECT_EQ(0, result.code) << result;
    EXPECT_EQ("1\t0\n2\t1\n3\t2\ndone\n", result.output);
}

TEST_F(KyHostProgramTest, CoroutinesSeeTimeGoBy) {
    const KyHostResult result = runPlain({"--frames", "31", "-e",
                                          "sum = 0 return coroutine.create(function() while true do sum = sum + "
                                          "coroutine.yield() print(sum, host.FrameTime) end end)"});
    const std::string last = result.output.substr(result.output.rfind('\n', result.output.size() - 2) + 1);
    const double seconds = std::stod(last);
    EXPECT_GT(seconds, 0.35) << result;
    EXPECT_LT(seconds, 5.0) << result;
    EXPECT_GT(std::stod(last.substr(last.find('\t'))), 0.001);
}

TEST_F(KyHostProgramTest, FramesEndEndlessCoroutines) {
    const KyHostResult result =
        runPlain({"--frames", "4", "-e",
                  "return coroutine.create(function() while true do io.write('.') coroutine.yield() end end)"});
    EXPECT_EQ(0, result.code);
    EXPECT_EQ("....", result.output);
}

TEST_F(KyHostProgramTest, ACoroutineThatFailsExitsWithOne) {
    const KyHostResult result =
        runPlain({"-e", "return coroutine.create(function() coroutine.yield() error('late', 0) end)"});
    EXPECT_EQ(1, result.code);
    EXPECT_EQ("late\n", result.errors);
}

TEST_F(KyHostProgramTest, QuittingEndsEndlessCoroutinesAfterTheFrame) {
    const KyHostResult result = runPlain({"-e",
                                          "return coroutine.create(function() while true do print(host.FrameCount) "
                                          "if host.FrameCount == 2 then host:quit() end coroutine.yield() end end)",
                                          "-e", "print('second')"});
    EXPECT_EQ(0, result.code);
    EXPECT_EQ("second\n0\n1\n2\n", result.output);
}

TEST_F(KyHostProgramTest, TheSandboxComesBeforeEveryScript) {
    write("a.lua", "print(io, os.execute, require, dofile, os.time ~= nil)");
    EXPECT_EQ("nil\tnil\tnil\tnil\ttrue\n", runPlain({"a.lua", "--sandbox"}).output);
    EXPECT_PRED2(lacks, runPlain({"a.lua"}).output, "nil");
}

TEST_F(KyHostProgramTest, ResultsArePrintedOnRequest) {
    write("a.lua", "return 'from', 'script'");
    EXPECT_EQ("1\t2\nfrom\tscript\n", runPlain({"--print-results", "-e", "return 1, 2", "a.lua"}).output);
    EXPECT_EQ("", runPlain({"-e", "return 1, 2", "a.lua"}).output);
}

TEST_F(KyHostProgramTest, TracebacksFollowTheUnchangedMessage) {
    const char* const chunk = "local function inner() error('deep') end function outer() inner() end outer()";
    EXPECT_EQ("(command line):1: deep\n", runPlain({"-e", chunk}).errors);
    const std::string errors = runPlain({"--traceback", "-e", chunk}).errors;
    EXPECT_PRED2(startsWith, errors, "(command line):1: deep\n");
    EXPECT_PRED2(contains, errors, "'outer'");
}

TEST_F(KyHostProgramTest, ThePromptRunsTheLinesOfAPipe) {
    const KyHostResult result =
        runPlain({"-i", "-e", "x = 20"}, "x + 1\n=x\nfor i = 1, 2 do\nprint(i)\nend\nscene.Name, 5\n"
                                         "y = 3\ny");
    EXPECT_EQ(0, result.code) << result;
    EXPECT_EQ("21\n20\n1\n2\nscene\t5\n3\n", result.output);
    EXPECT_EQ("", result.errors);
}

TEST_F(KyHostProgramTest, ThePromptGoesOnAfterErrorsOfAPipeWhichCount) {
    const KyHostResult result =
        runPlain({"-i"}, "error('one', 0)\nx = = 2\nprint('on')\nhost:quit()\nprint('never')\n");
    EXPECT_EQ(1, result.code);
    EXPECT_EQ("on\n", result.output);
    EXPECT_PRED2(startsWith, result.errors, "one\nstdin:1: ");
}

TEST_F(KyHostProgramTest, AnUnfinishedLastLineOfThePromptIsAnError) {
    const KyHostResult result = runPlain({"-i"}, "for i = 1, 2 do\n");
    EXPECT_EQ(1, result.code);
    EXPECT_PRED2(contains, result.errors, "'end' expected near '<eof>'");
}

TEST_F(KyHostProgramTest, ThePromptCompletesAndRemembersAtATerminal) {
    const QString script = QStandardPaths::findExecutable("script");
    if (script.isEmpty())
        GTEST_SKIP() << "no program to make a terminal with";
    mEnvironment.insert("TERM", "dumb");
    mEnvironment.insert("XDG_DATA_HOME", mFolder.path());
    const QString command = getProgram() + " --no-window -i";
    // A name is completed, an error is answered and forgotten, the line before last comes back with two arrows.
    const KyHostResult result =
        run({"-qec", command, "/dev/null"}, "'<' .. scene.Na\t .. '>'\nerror('oops')\n\x10\x10\nhost:qu\t)\n", script);
    EXPECT_EQ(0, result.code) << result;
    const std::size_t first = result.output.find("<scene>");
    ASSERT_NE(std::string::npos, first) << result;
    EXPECT_NE(std::string::npos, result.output.find("<scene>", first + 1)) << result;
    QFile history(getPath("kyhost/history"));
    ASSERT_TRUE(history.open(QIODevice::ReadOnly));
    EXPECT_PRED2(contains, history.readAll().toStdString(), "scene.Name");
}

TEST_F(KyHostProgramTest, ModelsThatCannotBeReadExitWithOneAndAreNamed) {
    write("garbage.obj", "f 1 2 3\n");
    write("truncated.stl", QByteArray(80, ' ') + QByteArray("\xff\xff\x00\x00", 4));
    for (const char* name : {"garbage.obj", "truncated.stl"}) {
        const KyHostResult result = runPlain({name, "-e", "print(#scene.Children)"});
        EXPECT_EQ(1, result.code) << result;
        EXPECT_PRED2(contains, result.errors, name);
        EXPECT_EQ("0\n", result.output);
    }
}

TEST_F(KyHostProgramTest, ModelsAreThereForTheScriptsAfterThem) {
    write("a.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    const char* const count = "print(#scene.Children)";
    const KyHostResult result = runPlain({"-e", count, "a.obj", "-e", count});
    EXPECT_EQ(0, result.code) << result;
    EXPECT_EQ("0\n1\n", result.output);
}

TEST_F(KyHostProgramTest, AWindowWithoutADisplayIsRefusedWithAHint) {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        mEnvironment.remove(variable);
    const KyHostResult result = run({"-e", "print('ran')"});
    EXPECT_EQ(2, result.code) << result;
    EXPECT_EQ("", result.output);
    EXPECT_PRED2(contains, result.errors, "--offscreen");
}

TEST_F(KyHostProgramTest, AChosenPlatformThatDoesNotWorkIsRefusedToo) {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY"})
        mEnvironment.remove(variable);
    for (const char* platform : {"xcb", "nonsense"}) {
        mEnvironment.insert("QT_QPA_PLATFORM", platform);
        const KyHostResult result = run({"-e", "print('ran')"});
        EXPECT_EQ(2, result.code) << platform << result;
        EXPECT_EQ("", result.output);
        EXPECT_PRED2(contains, result.errors, "--offscreen");
    }
}

TEST_F(KyHostProgramTest, OutputThatIsLostIsAFailure) {
    if (!QFile::exists("/dev/full"))
        GTEST_SKIP() << "nothing here is always full";
    for (const char* arguments : {"--help", "--version", "--no-window -e 'print(1)'",
                                  "--no-window -i </dev/null -e "
                                  "'return coroutine.create("
                                  "function() print(1) end)'"}) {
        const QString command = getProgram() + ' ' + arguments + " >/dev/full";
        const KyHostResult result = run({"-c", command}, {}, "/bin/sh");
        EXPECT_EQ(1, result.code) << arguments << result;
        EXPECT_EQ("kyhost: cannot write to standard output\n", result.errors) << arguments;
    }
}

TEST_F(KyHostProgramTest, AFileOfAnUnknownFormatThatIsNoScriptIsHintedAt) {
    write("part.step", "ISO-10303-21; HEADER;");
    write("fails.txt", "error('broken', 0)");
    write("wrong.lua", "= =");
    const std::string hint = "kyhost: 'part.step' is not a known model format, run as a script\n";
    const KyHostResult result = runPlain({"part.step"});
    EXPECT_EQ(1, result.code);
    EXPECT_PRED2(startsWith, result.errors, "part.step:1: ");
    EXPECT_TRUE(result.errors.ends_with(hint)) << result;
    EXPECT_EQ("broken\n", runPlain({"fails.txt"}).errors);
    EXPECT_PRED2(lacks, runPlain({"wrong.lua"}).errors, "format");
}

TEST_F(KyHostProgramTest, HelpAndVersionGoToStandardOutput) {
    const KyHostResult help = run({"--help"});
    EXPECT_EQ(0, help.code);
    EXPECT_PRED2(startsWith, help.output, "usage: kyhost");
    const KyHostResult version = run({"--version"});
    EXPECT_EQ(0, version.code);
    EXPECT_PRED2(startsWith, version.output, "kyhost ");
    EXPECT_PRED2(contains, version.output, "Lua 5.1");
    EXPECT_EQ("", help.errors + version.errors);
}

TEST_F(KyHostProgramTest, TheExampleOfObjectsRunsWithoutAView) {
    const KyHostResult result = runPlain({KY_TEST_DATA_DIR "/../../../examples/objects.lua"});
    EXPECT_EQ(0, result.code) << result;
    EXPECT_EQ("", result.errors);
    EXPECT_PRED2(contains, result.output, "Create");
}
