// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostOptions.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace {

using Arguments = std::vector<std::string>;

KyHostOptions parse(const Arguments& arguments) {
    KyHostOptions options;
    std::string error;
    EXPECT_TRUE(KyHostOptions::parse(arguments, options, error)) << error;
    return options;
}

/// The error names that.
void expectRefused(const Arguments& arguments, const std::string& name) {
    KyHostOptions options;
    std::string error;
    EXPECT_FALSE(KyHostOptions::parse(arguments, options, error)) << testing::PrintToString(arguments);
    EXPECT_NE(std::string::npos, error.find("'" + name + "'")) << error;
}

} // namespace

TEST(KyHostOptionsTest, SwitchesSetTheirOwnMemberOnly) {
    const std::pair<const char*, bool KyHostOptions::*> cases[] = {
        {"-i", &KyHostOptions::isInteractive},       {"--watch", &KyHostOptions::isWatching},
        {"--sandbox", &KyHostOptions::isSandboxed},  {"--print-results", &KyHostOptions::printsResults},
        {"--debugger", &KyHostOptions::hasDebugger}, {"--traceback", &KyHostOptions::printsTracebacks}};
    for (const auto& [option, member] : cases)
        for (const auto& [other, asked] : cases)
            EXPECT_EQ(member == asked, parse({option}).*asked) << option << other;
    EXPECT_TRUE(parse({"--sandbox=strict"}).isSandboxed && parse({"--sandbox=strict"}).isSandboxStrict);
    EXPECT_FALSE(parse({"--sandbox", "strict"}).isSandboxStrict) << "a file of that name";
    for (const char* word : {"--sandbox=", "--sandbox=loose", "--sandbox=strict "})
        expectRefused({word}, "--sandbox");
    EXPECT_EQ(KyHostOptions::eWindow, parse({}).view);
    EXPECT_EQ(KyHostOptions::eNoView, parse({"--offscreen", "--no-window"}).view) << "the last one holds";
}

TEST(KyHostOptionsTest, DescriptionsNeedNoViewAndAreTheSameOnEveryMachine) {
    const std::tuple<Arguments, const char*, const char*> cases[] = {
        {{"--write-stubs", "a"}, "a", ""},
        {{"--write-reference=b"}, "", "b"},
        {{"--write-stubs=a", "--write-reference", "b"}, "a", "b"}};
    for (const auto& [arguments, stubs, reference] : cases) {
        const KyHostOptions options = parse(arguments);
        EXPECT_EQ(KyHostOptions::eDescribeScripts, options.request);
        EXPECT_EQ(KyHostOptions::eNoView, options.view);
        EXPECT_FALSE(options.loadsInstalledDrivers);
        EXPECT_EQ(stubs, options.stubs);
        EXPECT_EQ(reference, options.reference);
    }
    expectRefused({"--write-stubs", ""}, "--write-stubs");
    expectRefused({"--write-stubs", "--write-reference", "b"}, "--write-reference");
    expectRefused({"--write-reference=--offscreen"}, "--write-reference");
    expectRefused({"--write-stubs", "a", "a.lua"}, "--write-stubs");
    expectRefused({"--write-reference", "a", "-e", "print(1)"}, "--write-reference");
}

TEST(KyHostOptionsTest, ChunksAndFilesKeepTheirOrderAndAfterTwoDashesAllAreFiles) {
    const KyHostOptions options = parse({"a.lua", "-e", "print(1)", "b.obj", "-e", "--", "--", "--frames"});
    std::string items;
    for (const KyHostOptions::Item& item : options.items)
        items += (item.kind == KyHostOptions::Item::eFile ? "file " : "chunk ") + item.text + '\n';
    EXPECT_EQ("file a.lua\nchunk print(1)\nfile b.obj\nchunk --\nfile --frames\n", items);
}

TEST(KyHostOptionsTest, ArgumentsStandBehindTheOptionOrAnEqualsSignAndHaveTheirRanges) {
    for (const Arguments& arguments : {Arguments{"--size", "1x16384", "--frames", "2147483647", "--screenshot", "a=b"},
                                       Arguments{"--size=1x16384", "--frames=2147483647", "--screenshot=a=b"}}) {
        const KyHostOptions options = parse(arguments);
        EXPECT_EQ(1, options.width);
        EXPECT_EQ(16384, options.height);
        EXPECT_EQ(2147483647, options.nbFrames);
        EXPECT_EQ("a=b", options.screenshot);
    }
    for (const char* size : {"", "640", "640x", "x480", "0x480", "-1x5", "16385x1", "1x16385", "640x480x2", "640 x480",
                             "6e2x480", "99999999999x1", "0x10x10"})
        expectRefused({"--size", size}, "--size");
    for (const char* frames : {"", "0", "-1", "1.5", "2147483648", "7 ", "0x10"})
        expectRefused({"--frames", frames}, "--frames");
}

TEST(KyHostOptionsTest, TheDebuggerHasLinesAPortAndNeeds) {
    const KyHostOptions options =
        parse({"--break", "c:/a b.lua:12", "--break=x:1", "--debug-port", "0", "--debug-wait"});
    std::string breakpoints;
    for (const KyHostOptions::Breakpoint& breakpoint : options.breakpoints)
        breakpoints += breakpoint.script + " at " + std::to_string(breakpoint.line) + ' ';
    EXPECT_EQ("c:/a b.lua at 12 x at 1 ", breakpoints);
    EXPECT_EQ(0, options.debugPort);
    EXPECT_TRUE(options.waitsForClient);
    EXPECT_EQ(65535, parse({"--no-window", "--debug-port=65535"}).debugPort);
    for (const char* place : {"", "a.lua", ":3", "a.lua:", "a.lua:0", "a.lua:-1", "a.lua:1x"})
        expectRefused({"--break", place}, "--break");
    for (const char* port : {"", "-1", "65536", "80 ", "http"})
        expectRefused({"--debug-port", port}, "--debug-port");
    expectRefused({"--debug-wait"}, "--debug-port");
    for (const char* view : {"--offscreen", "--no-window"}) {
        expectRefused({view, "--debugger"}, "--debugger");
        expectRefused({"--break", "a:1", view}, "--break");
    }
}

TEST(KyHostOptionsTest, ALanguageIsOneThatIsThere) {
    EXPECT_EQ("", parse({}).language);
    EXPECT_EQ("de", parse({"--language", "de_AT.UTF-8"}).language);
    EXPECT_EQ("en", parse({"--language=en"}).language);
    for (const char* language : {"", "it", "German"})
        expectRefused({"--language", language}, "--language");
}

TEST(KyHostOptionsTest, AWrongCommandLineIsNamed) {
    expectRefused({"a.lua", "-x"}, "-x");
    expectRefused({"--nonsense=3"}, "--nonsense");
    expectRefused({"--frame", "3"}, "--frame");
    expectRefused({"-e"}, "-e");
    expectRefused({"--offscreen=yes"}, "--offscreen");
    expectRefused({"--screenshot", ""}, "--screenshot");
    expectRefused({"--no-window", "--screenshot", "a.png"}, "--no-window");
    expectRefused({"--no-window", "--statistics"}, "--no-window");
    expectRefused({"--no-window", "--inspect", "camera"}, "--inspect");
}

TEST(KyHostOptionsTest, HelpAndVersionAreAnsweredWhateverFollows) {
    EXPECT_EQ(KyHostOptions::eShowHelp, parse({"--help", "--nonsense"}).request);
    EXPECT_EQ(KyHostOptions::eShowHelp, parse({"-h"}).request);
    EXPECT_EQ(KyHostOptions::eShowVersion, parse({"a.lua", "--version", "--size"}).request);
}
