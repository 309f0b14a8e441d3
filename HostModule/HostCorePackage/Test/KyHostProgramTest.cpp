// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostProcess.h"

#include <QDir>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <algorithm>

namespace {

class KyHostProgramTest : public KyHostProcessTest {
protected:
    /// Runs without a view. Errors that do not end with a line's end are a part of those expected.
    void expect(const KyHostResult& expected, const QStringList& arguments, const QByteArray& input = {}) const {
        const KyHostResult result = run(QStringList{"--no-window"} + arguments, input);
        SCOPED_TRACE(arguments.join(' ').toStdString());
        EXPECT_EQ(expected.code, result.code) << result;
        EXPECT_EQ(expected.output, result.output);
        if (expected.errors.empty() || expected.errors.ends_with('\n'))
            EXPECT_EQ(expected.errors, result.errors);
        else
            EXPECT_PRED2(contains, result.errors, expected.errors);
    }
};

} // namespace

TEST_F(KyHostProgramTest, UsageErrorsExitWithTwoAndRunNothing) {
    write("ok.lua", "print('ran')");
    expect({2, "", "kyhost: unknown option '--nonsense'"}, {"ok.lua", "--nonsense"});
    expect({2, "", "kyhost: cannot find 'missing.obj'"}, {"ok.lua", "missing.obj"});
    expect({2, "", "kyhost: cannot find ''"}, {"ok.lua", ""});
}

TEST_F(KyHostProgramTest, ScriptsThatFailExitWithOneAndLuasMessage) {
    write("throws.lua", "print('before')\nerror('broken')");
    write("binary.lua", QByteArray("\x1bLua\x00\xff\x00garbage", 14));
    write("yields.lua", "string.gsub('a', '.', coroutine.yield)");
    write("fails.txt", "error('broken', 0)");
    write("part.step", "ISO-10303-21; HEADER;");
    QDir(mFolder.path()).mkdir("folder.lua");
    expect({1, "before\n", "throws.lua:2: broken\n"}, {"throws.lua"});
    expect({1, "", "binary.lua: "}, {"binary.lua"});
    expect({1, "", "folder.lua"}, {"folder.lua"});
    expect({1, "", "attempt to yield across metamethod/C-call boundary"}, {"yields.lua"});
    expect({1, "", "broken\n"}, {"fails.txt"});
    for (const char* part : {"part.step:1: ", "\nkyhost: 'part.step' is not a known model format, run as a script"})
        expect({1, "", part}, {"part.step"});
}

TEST_F(KyHostProgramTest, ChunksScriptsAndFailuresKeepTheirOrderAndResultsArePrintedOnRequest) {
    write("b.lua", "print('b', a)");
    write("d.lua", "print('d') return 'from', 'script'");
    const QStringList items{"-e", "a = 1 print('a')",      "b.lua", "-e", "error('c')", "d.lua",
                            "-e", "print('e') return 1, 2"};
    const char* const error = "(command line):1: c\n";
    expect({1, "a\nb\t1\nd\ne\n", error}, items);
    expect({1, "a\nb\t1\nd\nfrom\tscript\ne\n1\t2\n", error}, QStringList{"--print-results"} + items);
}

TEST_F(KyHostProgramTest, WithoutAWindowItRunsUntilNoCoroutineWaitsOrItQuits) {
    const QString endless = "return coroutine.create(function() while true do print(host.FrameCount) "
                            "if host.FrameCount == %1 then %2 end coroutine.yield() end end)";
    expect({0, "second\n0\n1\n2\n", ""}, {"-e", endless.arg("2", "host:quit()"), "-e", "print('second')"});
    expect({1, "0\n1\n", "late\n"}, {"-e", endless.arg("1", "error('late', 0)")});
    expect({0, "0\n1\n", ""}, {"-e", endless.arg("1", "return")});
    expect({0, "0\n1\n2\n", ""}, {"--frames", "3", "-e", endless.arg("9", "return")});
}

TEST_F(KyHostProgramTest, TheSandboxComesBeforeEveryScript) {
    write("a.lua", "print(io == nil, os.execute == nil, require == nil, dofile == nil, os.time == nil)");
    expect({0, "true\ttrue\ttrue\ttrue\tfalse\n", ""}, {"a.lua", "--sandbox"});
    expect({0, "false\tfalse\tfalse\tfalse\tfalse\n", ""}, {"a.lua"});
}

TEST_F(KyHostProgramTest, AStrictSandboxEndsAScriptAndRunsTheNextAlsoInAFreshState) {
    const QString hostile = "while true do pcall(error) end";
    expect(
        {1, "true\tlocked\ttrue\n", "sandbox: more than "},
        {"--sandbox=strict", "-e", hostile, "-e",
         "bindAllClasses() print(debug == nil and io == nil and openUrl == nil and loadUi == nil and network == nil, "
         "getmetatable(scene), scene:getNbChildren() == 0)"});
    expect({1, "", "scene: sandbox: the object is not one that scripts made"},
           {"--sandbox=strict", "-e", "local ok, text = pcall(deleteKyObject, scene) error('scene: ' .. text, 0)"});
    expect({1, "next\n", "KyHost.quit is withheld"}, {"--sandbox=strict", "-e", "host:quit()", "-e", "print('next')"});
}

TEST_F(KyHostProgramTest, ThePromptRunsTheLinesOfAPipeAndGoesOnAfterErrorsWhichCount) {
    expect({0, "21\n20\n1\n2\nscene\t5\n3\n", ""}, {"-i", "-e", "x = 20"},
           "x + 1\n=x\nfor i = 1, 2 do\nprint(i)\nend\nscene.Name, 5\ny = 3\ny");
    expect({1, "on\n", "one\nstdin:1: "}, {"-i"},
           "error('one', 0)\nx = = 2\nprint('on')\nhost:quit()\nprint('never')\n");
}

TEST_F(KyHostProgramTest, ModelsAreReadInTheirOrderAndBadOnesNamed) {
    write("garbage.obj", "f 1 2 3\n");
    write("a.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    const char* const count = "print(#scene.Children)";
    expect({1, "0\n1\n", "garbage.obj"}, {"garbage.obj", "-e", count, "a.obj", "-e", count});
}

TEST_F(KyHostProgramTest, ScriptsAreToldHowFarAModelIsReadAndMayCancelIt) {
    write("make.lua",
          "local file, n = io.open('grid.obj', 'w'), 400 "
          "for i = 1, n * n do file:write('v ', i % n, ' ', math.floor(i / n), ' ', i % 7, '\\n') end "
          "for i = 1, n * n - n - 1 do file:write('f ', i, ' ', i + 1, ' ', i + n, '\\n') end file:close()");
    write("load.lua",
          "local told, last = 0 connect(progress, 'changed', function(title, share) "
          "told, last = told + 1, title if cancels then progress:cancel() end end) "
          "local node = KyMeshNode() scene:addChild(node) print(node:loadModel('grid.obj'), told > 0, last) "
          "print(#node.Children, progress.Active, progress.Title)");
    expect({0, "true\ttrue\tLoading grid.obj\n1\tfalse\t\n", ""}, {"make.lua", "load.lua"});
    expect({0, "false\ttrue\tLoading grid.obj\n0\tfalse\t\n", "cannot be loaded: it was cancelled"},
           {"-e", "cancels = true", "load.lua"});
}

TEST_F(KyHostProgramTest, DrawingsAreReadWithoutAWindowTooAndWhatIsMissingOfThemIsNamed) {
    write("broken.svg", "<svg><g></svg>");
    write("a.svg",
          "<svg xmlns='http://www.w3.org/2000/svg'><rect id='r' width='9' height='4' filter='url(#f)'/></svg>");
    const char* const find = "local r = drawing:find('r') print(r.Width, r.Height, drawingView)";
    expect({1, "9\t4\tnil\n", "broken.svg"}, {"broken.svg", "a.svg", "-e", find});
    expect({0, "", "'a.svg' is shown without: filter"}, {"a.svg"});
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

TEST_F(KyHostProgramTest, DevicesAreListedWithTheDriversThatAreLoaded) {
    const KyHostResult all = run({"--devices"});
    EXPECT_EQ(0, all.code) << all;
    for (const char* part : {"Plugged in (HID):\n", "Drivers:\n", "  Joystick\n", "  SpaceMouse\n", "Devices:\n"})
        EXPECT_PRED2(contains, all.output, part);
    EXPECT_PRED2(contains, run({"--devices", "--no-drivers"}).output, "Drivers:\n  none\n");
    write("no.so", "no module");
    expect({1, "", "kyhost: cannot load the driver 'no.so': "}, {"--driver", "no.so", "-e", "print(1)"});
    expect({2, "", "kyhost: cannot find 'missing.so'"}, {"--driver", "missing.so"});
}

TEST_F(KyHostProgramTest, APortForEditorsIsToldAndOneThatIsTakenEndsTheProgramBeforeItsScripts) {
    expect({0, "1\n", "kyhost: debugger listens on 127.0.0.1:"}, {"--debug-port", "0", "-e", "print(1)"});
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    const QString port = QString::number(server.serverPort());
    expect({2, "", "kyhost: cannot listen on port " + port.toStdString() + ": "},
           {"--debug-port", port, "-e", "print(1)"});
}

TEST_F(KyHostTalkTest, ScriptsWaitForTheEditorWhenTheyAreToldToAndRunOnWithoutIt) {
    talk({"--no-window", "--debug-port=0", "--debug-wait", "-e", "print('first') print('last')"});
    ASSERT_TRUE(waitFor("127.0.0.1:"));
    ASSERT_TRUE(waitFor("\n"));
    const auto port = static_cast<quint16>(std::stoi(mSeen.substr(mSeen.rfind(':') + 1)));
    QTcpSocket editor;
    for (const char* requests : {"GET / HTTP/1.1\r\n\r\n", "initialize", "initialize attach configurationDone"}) {
        editor.abort();
        QThread::msleep(100);
        editor.connectToHost("127.0.0.1", port);
        ASSERT_TRUE(editor.waitForConnected());
        for (const QByteArray& request : QByteArray(requests).split(' ')) {
            const QByteArray body = "{\"seq\":1,\"type\":\"request\",\"command\":\"" + request + "\"}";
            editor.write(request == "GET" ? QByteArray(requests)
                                          : "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
        }
        ASSERT_TRUE(editor.waitForReadyRead());
    }
    ASSERT_TRUE(waitFor("break\n"));
    EXPECT_FALSE(contains(mSeen, "first"));
    editor.abort();
    EXPECT_TRUE(waitFor("resume\nfirst\nlast\n"));
    ASSERT_TRUE(mProcess.waitForFinished(cPatience));
    EXPECT_EQ(0, mProcess.exitCode());
}

TEST_F(KyHostProgramTest, WhatScriptsSeeIsWrittenAndNothingElseIsDone) {
    expect({0, "", ""}, {"--write-stubs", "stubs", "--write-reference", "reference.md"});
    QStringList chunks;
    for (const char* name : {"enumerations", "functions", "globals", "objects", "qt", "values"}) {
        const QString stub = QString("stubs/%1.lua").arg(name);
        EXPECT_TRUE(read(stub).starts_with("---@meta\n")) << name;
        chunks << "-e"
               << "assert(loadfile('" + stub + "'))";
    }
    expect({0, "", ""}, chunks);
    for (const char* line : {"---@type KyScene\nscene", "---@type Ky2DScene?\ndrawing",
                             "---@type Ky2DView?\ndrawingView", "---@type KyNetworkConnectionObject?\nnetwork"})
        EXPECT_PRED2(contains, read("stubs/globals.lua"), std::string("\n") + line + " = nil\n");
}

TEST_F(KyHostProgramTest, TheReferenceInTheDocumentsIsTheOneThatTheProgramWrites) {
    expect({0, "", ""}, {"--write-reference", "reference.md"});
    const std::string written = read("reference.md"), kept = read(KY_DOCUMENTS_DIR "/scripting-reference.md");
    const auto [now, then] = std::ranges::mismatch(written, kept);
    EXPECT_TRUE(now == written.end() && then == kept.end())
        << "what scripts see has changed; renew it by: kyhost --write-reference docs/scripting-reference.md\nnow:  "
        << std::string(now, std::find(now, written.end(), '\n'))
        << "\nkept: " << std::string(then, std::find(then, kept.end(), '\n'));
}

TEST_F(KyHostProgramTest, DescriptionsThatCannotBeWrittenAreAFailureAndLoseNothing) {
    write("file", "old");
    expect({1, "", "kyhost: cannot write '"}, {"--write-stubs", "file"});
    expect({1, "", "kyhost: cannot write '"}, {"--write-reference", "file/reference.md"});
    if (!QFile::exists("/dev/full"))
        GTEST_SKIP() << "nothing here is always full";
    expect({1, "", "kyhost: cannot write '/dev/full'"}, {"--write-reference", "/dev/full"});
    // Files may not grow beyond what the smaller ones need.
    QDir(mFolder.path()).mkdir("stubs");
    write("stubs/objects.lua", "old");
    write("stubs/enumerations.lua", "old");
    const QString script = "trap '' XFSZ; ulimit -f 16; exec " + getProgram() + " --write-stubs stubs";
    const KyHostResult result = run({"-c", script}, {}, "/bin/sh");
    EXPECT_EQ(1, result.code) << result;
    EXPECT_PRED2(contains, result.errors, "kyhost: cannot write 'stubs/");
    for (const char* name : {"file", "stubs/objects.lua", "stubs/enumerations.lua"})
        EXPECT_EQ("old", read(name)) << name;
    EXPECT_EQ(2, QDir(getPath("stubs")).entryList(QDir::Files | QDir::Hidden).size());
}
