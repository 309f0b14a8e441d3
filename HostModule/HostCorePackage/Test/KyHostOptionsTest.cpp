// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostOptions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Arguments = std::vector<std::string>;

KyHostOptions parse(const Arguments& arguments) {
    KyHostOptions options;
    std::string error;
    EXPECT_TRUE(KyHostOptions::parse(arguments, options, error)) << error;
    return options;
}

std::string refuse(const Arguments& arguments) {
    KyHostOptions options;
    std::string error;
    EXPECT_FALSE(KyHostOptions::parse(arguments, options, error)) << testing::PrintToString(arguments);
    return error;
}

} // namespace

TEST(KyHostOptionsTest, NothingGivenOpensAWindow) {
    const KyHostOptions options = parse({});
    EXPECT_EQ(KyHostOptions::eRun, options.request);
    EXPECT_EQ(KyHostOptions::eWindow, options.view);
    EXPECT_TRUE(options.items.empty());
    EXPECT_FALSE(options.nbFrames.has_value());
    EXPECT_EQ(1280, options.width);
    EXPECT_EQ(720, options.height);
}

TEST(KyHostOptionsTest, SwitchesSetTheirOwnMemberOnly) {
    struct Case {
        const char* option;
        bool KyHostOptions::*member;
    };
    const Case cases[] = {{"-i", &KyHostOptions::isInteractive},
                          {"--watch", &KyHostOptions::isWatching},
                          {"--sandbox", &KyHostOptions::isSandboxed},
                          {"--print-results", &KyHostOptions::printsResults},
                          {"--traceback", &KyHostOptions::printsTracebacks}};
    for (const Case& set : cases)
        for (const Case& asked : cases)
            EXPECT_EQ(set.member == asked.member, parse({set.option}).*asked.member) << set.option << asked.option;
}

TEST(KyHostOptionsTest, ChunksAndFilesKeepTheirOrder) {
    const KyHostOptions options = parse({"a.lua", "-e", "print(1)", "b.obj", "-e", "--", "c.lua"});
    const std::vector<std::pair<KyHostOptions::Item::Kind, std::string>> expected = {
        {KyHostOptions::Item::eFile, "a.lua"},
        {KyHostOptions::Item::eChunk, "print(1)"},
        {KyHostOptions::Item::eFile, "b.obj"},
        {KyHostOptions::Item::eChunk, "--"},
        {KyHostOptions::Item::eFile, "c.lua"}};
    ASSERT_EQ(expected.size(), options.items.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(expected[i].first, options.items[i].kind) << i;
        EXPECT_EQ(expected[i].second, options.items[i].text) << i;
    }
}

TEST(KyHostOptionsTest, AfterTwoDashesEverythingIsAFile) {
    const KyHostOptions options = parse({"--offscreen", "--", "--frames", "-e"});
    ASSERT_EQ(2u, options.items.size());
    EXPECT_EQ("--frames", options.items[0].text);
    EXPECT_EQ("-e", options.items[1].text);
    EXPECT_EQ(KyHostOptions::eOffscreen, options.view);
}

TEST(KyHostOptionsTest, TheLastViewAsksHolds) {
    EXPECT_EQ(KyHostOptions::eNoView, parse({"--offscreen", "--no-window"}).view);
    EXPECT_EQ(KyHostOptions::eOffscreen, parse({"--no-window", "--offscreen"}).view);
}

TEST(KyHostOptionsTest, ArgumentsStandBehindTheOptionOrAnEqualsSign) {
    for (const Arguments& arguments : {Arguments{"--size", "640x480", "--frames", "7", "--screenshot", "a=b.png"},
                                       Arguments{"--size=640x480", "--frames=7", "--screenshot=a=b.png"}}) {
        const KyHostOptions options = parse(arguments);
        EXPECT_EQ(640, options.width);
        EXPECT_EQ(480, options.height);
        EXPECT_EQ(7, options.nbFrames);
        EXPECT_EQ("a=b.png", options.screenshot);
    }
}

TEST(KyHostOptionsTest, SizesReachFromOneToTheLargest) {
    EXPECT_EQ(1, parse({"--size", "1x16384"}).width);
    EXPECT_EQ(16384, parse({"--size", "1x16384"}).height);
    for (const char* size : {"", "x", "640", "640x", "x480", "0x480", "640x0", "-1x5", "16385x1", "1x16385", "640X480",
                             "640x480x2", "640 x480", "6e2x480", "99999999999x1", "0x10x10"})
        EXPECT_NE(std::string::npos, refuse({"--size", size}).find("--size")) << size;
}

TEST(KyHostOptionsTest, FramesAreWholeNumbersFromOne) {
    EXPECT_EQ(2147483647, parse({"--frames", "2147483647"}).nbFrames);
    for (const char* frames : {"", "0", "-1", "1.5", "2147483648", "many", "7 ", "0x10"})
        EXPECT_NE(std::string::npos, refuse({"--frames", frames}).find("--frames")) << frames;
}

TEST(KyHostOptionsTest, AWrongCommandLineIsNamed) {
    struct Case {
        Arguments arguments;
        const char* named;
    };
    const Case cases[] = {{{"--nonsense"}, "'--nonsense'"},
                          {{"a.lua", "-x"}, "'-x'"},
                          {{"--nonsense=3"}, "'--nonsense'"},
                          {{"--frame", "3"}, "'--frame'"},
                          {{"-e"}, "'-e'"},
                          {{"--size"}, "'--size'"},
                          {{"--offscreen=yes"}, "'--offscreen'"},
                          {{"--screenshot", ""}, "'--screenshot'"},
                          {{"--no-window", "--screenshot", "a.png"}, "'--no-window'"}};
    for (const Case& wrong : cases)
        EXPECT_NE(std::string::npos, refuse(wrong.arguments).find(wrong.named)) << wrong.named;
}

TEST(KyHostOptionsTest, HelpAndVersionAreAnsweredWhateverFollows) {
    EXPECT_EQ(KyHostOptions::eShowHelp, parse({"--help", "--nonsense"}).request);
    EXPECT_EQ(KyHostOptions::eShowHelp, parse({"-h"}).request);
    EXPECT_EQ(KyHostOptions::eShowVersion, parse({"a.lua", "--version", "--size"}).request);
}

TEST(KyHostOptionsTest, HelpTellsWhatWatchingKeepsAfterAnError) {
    EXPECT_NE(std::string::npos, KyHostOptions::getHelp().find("keeps the old picture"));
}

TEST(KyHostOptionsTest, HelpNamesEveryOption) {
    const std::string help = KyHostOptions::getHelp();
    for (const char* usage :
         {"-e CHUNK", "-i ", "--watch", "--sandbox", "--no-window", "--offscreen", "--frames N",
          "--screenshot FILE.png", "--size WxH", "--print-results", "--traceback", "--version", "-h, --help"})
        EXPECT_NE(std::string::npos, help.find(usage)) << usage;
}
