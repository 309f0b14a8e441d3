// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostProcess.h"

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
    const std::pair<QStringList, const char*> cases[] = {{{"ok.lua", "--nonsense"}, "'--nonsense'"},
                                                         {{"ok.lua", "missing.obj"}, "'missing.obj'"},
                                                         {{"ok.lua", ""}, "cannot find ''"},
                                                         {{"ok.lua", "--screenshot", "a.png"}, "'--screenshot'"}};
    for (const auto& [arguments, named] : cases) {
        const KyHostResult result = runPlain(arguments);
        EXPECT_EQ(2, result.code) << result;
        EXPECT_EQ("", result.output);
        EXPECT_PRED2(startsWith, result.errors, "kyhost: ");
        EXPECT_PRED2(contains, result.errors, named);
    }
}

TEST_F(KyHostProgramTest, ScriptsThatFailExitWithOneAndLuasMessage) {
    write("throws.lua", "print('before')\nerror('broken')");
    write("binary.lua", QByteArray("\x1bLua\x00\xff\x00garbage", 14));
    write("yields.lua", "string.gsub('a', '.', coroutine.yield)");
    QDir(mFolder.path()).mkdir("folder.lua");
    struct Case {
        const char* argument;
        const char* output;
        const char* error;
    };
    const Case cases[] = {{"throws.lua", "before\n", "throws.lua:2: broken\n"},
                          {"binary.lua", "", "binary.lua: "},
                          {"folder.lua", "", "folder.lua"},
                          {"yields.lua", "", "attempt to yield across metamethod/C-call boundary"}};
    for (const Case& wrong : cases) {
        const KyHostResult result = runPlain({wrong.argument});
        EXPECT_EQ(1, result.code) << wrong.argument << result;
        EXPECT_EQ(wrong.output, result.output) << wrong.argument;
        EXPECT_PRED2(contains, result.errors, wrong.error) << wrong.argument;
        EXPECT_PRED2(lacks, result.errors, "kyhost: ") << wrong.argument;
    }
}

TEST_F(KyHostProgramTest, ChunksScriptsAndFailuresKeepTheirOrderAndResultsArePrintedOnRequest) {
    write("b.lua", "print('b', a)");
    write("d.lua", "print('d') return 'from', 'script'");
    const QStringList items{"-e", "a = 1 print('a')",      "b.lua", "-e", "error('c')", "d.lua",
                            "-e", "print('e') return 1, 2"};
    const KyHostResult result = runPlain(items);
    EXPECT_EQ(1, result.code);
    EXPECT_EQ("a\nb\t1\nd\ne\n", result.output);
    EXPECT_EQ("(command line):1: c\n", result.errors);
    EXPECT_EQ("a\nb\t1\nd\nfrom\tscript\ne\n1\t2\n", runPlain(QStringList{"--print-results"} + items).output);
}

TEST_F(KyHostProgramTest, WithoutAWindowItRunsUntilNoCoroutineWaitsOrItQuits) {
    const QString endless = "return coroutine.create(function() while true do print(host.FrameCount) "
                            "if host.FrameCount == %1 then %2 end coroutine.yield() end end)";
    struct Case {
        QStringList arguments;
        int code;
        const char* output;
        const char* errors;
    };
    const Case cases[] = {
        {{"-e", endless.arg("2", "host:quit()"), "-e", "print('second')"}, 0, "second\n0\n1\n2\n", ""},
        {{"-e", endless.arg("1", "error('late', 0)")}, 1, "0\n1\n", "late\n"},
        {{"-e", endless.arg("1", "return")}, 0, "0\n1\n", ""},
        {{"--frames", "3", "-e", endless.arg("9", "return")}, 0, "0\n1\n2\n", ""}};
    for (const Case& ending : cases) {
        const KyHostResult result = runPlain(ending.arguments);
        EXPECT_EQ(ending.code, result.code) << result;
        EXPECT_EQ(ending.output, result.output);
        EXPECT_EQ(ending.errors, result.errors);
    }
}

TEST_F(KyHostProgramTest, TheSandboxComesBeforeEveryScript) {
    write("a.lua", "print(io, os.execute, require, dofile, os.time ~= nil)");
    EXPECT_EQ("nil\tnil\tnil\tnil\ttrue\n", runPlain({"a.lua", "--sandbox"}).output);
    EXPECT_PRED2(lacks, runPlain({"a.lua"}).output, "nil");
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

TEST_F(KyHostProgramTest, ModelsAreReadInTheirOrderAndBadOnesNamed) {
    write("garbage.obj", "f 1 2 3\n");
    write("a.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    const char* const count = "print(#scene.Children)";
    const KyHostResult result = runPlain({"garbage.obj", "-e", count, "a.obj", "-e", count});
    EXPECT_EQ(1, result.code) << result;
    EXPECT_PRED2(contains, result.errors, "garbage.obj");
    EXPECT_EQ("0\n1\n", result.output);
}

TEST_F(KyHostProgramTest, AWindowWithoutADisplayIsRefusedWithAHint) {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        mEnvironment.remove(variable);
    for (const char* platform : {"", "xcb", "nonsense"}) {
        if (*platform)
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
    for (const char* arguments :
         {"--help", "--no-window -i </dev/null -e 'return coroutine.create(function() print(1) end)'"}) {
        const QString command = getProgram() + ' ' + arguments + " >/dev/full";
        const KyHostResult result = run({"-c", command}, {}, "/bin/sh");
        EXPECT_EQ(1, result.code) << arguments << result;
        EXPECT_EQ("kyhost: cannot write to standard output\n", result.errors) << arguments;
    }
}

TEST_F(KyHostProgramTest, AFileOfAnUnknownFormatThatIsNoScriptIsHintedAt) {
    write("part.step", "ISO-10303-21; HEADER;");
    write("fails.txt", "error('broken', 0)");
    const std::string hint = "kyhost: 'part.step' is not a known model format, run as a script\n";
    const KyHostResult result = runPlain({"part.step"});
    EXPECT_EQ(1, result.code);
    EXPECT_PRED2(startsWith, result.errors, "part.step:1: ");
    EXPECT_TRUE(result.errors.ends_with(hint)) << result;
    EXPECT_EQ("broken\n", runPlain({"fails.txt"}).errors);
}
