// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptEngineFixture.h"

#include "KyResource.h"

#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

class KyScriptFileTest : public KyScriptEngineFixture {
protected:
    void SetUp() override {
        KyScriptEngineFixture::SetUp();
        mBefore = fs::current_path();
        mFolder = fs::temp_directory_path() /
                  ("KyScriptFileTest" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()));
        fs::remove_all(mFolder);
        fs::create_directories(mFolder / "scripts");
    }
    void TearDown() override {
        EXPECT_EQ(fs::current_path(), mBefore);
        fs::remove_all(mFolder);
        KyScriptEngineFixture::TearDown();
    }

    std::string write(const std::string& name, const std::string& content) const {
        std::ofstream(mFolder / name, std::ios::binary) << content;
        return (mFolder / name).string();
    }

    fs::path mBefore;
    fs::path mFolder;
};

TEST_F(KyScriptFileTest, AScriptRunsInItsDirectory) {
    write("scripts/other.lua", "other = 'found'");
    const std::string path = write("scripts/main.lua", "dofile('other.lua')");
    EXPECT_TRUE(engine().executeScript(path)) << lastOutput();
    EXPECT_EQ(text("other"), "found");
}

TEST_F(KyScriptFileTest, ItsDirectoryIsTheThreadsToo) {
    bind("where", [] { return KyResource::getThreadDirectory().getLocalPath(); });
    const std::string path = write("scripts/main.lua", "return where()");
    const auto results = engine().executeScriptWithReturnValues(path);
    ASSERT_EQ(results.size(), 1u);
    EXPECT_EQ(fs::path(results[0].toString()), mFolder / "scripts" / "");
    EXPECT_TRUE(KyResource::getThreadDirectory().isEmpty());
}

TEST_F(KyScriptFileTest, AURLNamesAFileToo) {
    const std::string path = write("my script.lua", "return 1, 2");
    std::string url = "file://" + path;
    url.replace(url.find(' '), 1, "%20");
    EXPECT_EQ(engine().executeScriptWithReturnValues(url).size(), 2u);
}

TEST_F(KyScriptFileTest, ErrorsShowTheBareName) {
    EXPECT_FALSE(engine().executeScript(write("scripts/bad.lua", "\nerror('x')")));
    EXPECT_EQ(lastOutput(), "bad.lua:2: x");
    EXPECT_FALSE(engine().executeScript(write("scripts/worse.lua", "x =")));
    EXPECT_EQ(lastOutput(), "worse.lua:1: unexpected symbol near '<eof>'");
    EXPECT_EQ(top(), 0);
}

TEST_F(KyScriptFileTest, AMissingFileIsLuasMessage) {
    EXPECT_FALSE(engine().executeScript((mFolder / "scripts/nothing.lua").string()));
    EXPECT_TRUE(lastOutput().starts_with("cannot open nothing.lua")) << lastOutput();
    EXPECT_TRUE(engine().executeScriptWithReturnValues((mFolder / "nothing.lua").string()).empty());
}

TEST_F(KyScriptFileTest, AMissingFolderRunsNoOtherFileOfThatName) {
    fs::current_path(mFolder);
    write("main.lua", "ran = true");
    EXPECT_FALSE(engine().executeScript((mFolder / "nowhere/main.lua").string()));
    EXPECT_NE(lastOutput().find("cannot open"), std::string::npos);
    EXPECT_EQ(text("ran"), "nil");
    fs::current_path(mBefore);
}

TEST_F(KyScriptFileTest, WhatIsNotLocalFailsSilently) {
    EXPECT_FALSE(engine().executeScript("http://localhost/main.lua"));
    EXPECT_FALSE(engine().executeScript(""));
    EXPECT_FALSE(engine().executeScript((mFolder / "").string()));
    EXPECT_TRUE(msOutput.empty());
}

TEST_F(KyScriptFileTest, AFolderAndABinaryAreErrors) {
    EXPECT_FALSE(engine().executeScript((mFolder / "scripts").string()));
    EXPECT_EQ(msOutput.size(), 1u);
    std::string noise;
    for (int i = 0; i < 5000; ++i)
        noise.push_back(static_cast<char>(i * 37 % 251));
    EXPECT_FALSE(engine().executeScript(write("noise.bin", noise)));
    EXPECT_FALSE(engine().executeScript(write("code.luac", "\x1BLua" + noise)));
    EXPECT_EQ(msOutput.size(), 3u);
    EXPECT_EQ(top(), 0);
}

TEST_F(KyScriptFileTest, AByteOrderMarkIsSkippedAndLinesStay) {
    EXPECT_EQ(engine().executeScriptWithReturnValues(write("marked.lua", "\xEF\xBB\xBFreturn 'ok'")).size(), 1u);
    EXPECT_FALSE(engine().executeScript(write("marked.lua", "\xEF\xBB\xBF#!/usr/bin/lua\nerror('x')")));
    EXPECT_EQ(lastOutput(), "marked.lua:2: x");
    EXPECT_TRUE(engine().executeScript(write("empty.lua", "\xEF\xBB\xBF")));
    EXPECT_TRUE(engine().executeScript(write("short.lua", "x")) == false);
}

TEST_F(KyScriptFileTest, SyntaxIsCheckedWithoutRunning) {
    std::string error;
    EXPECT_TRUE(engine().checkScriptSyntax(write("good.lua", "ran = true"), error));
    EXPECT_FALSE(engine().checkScriptSyntax(write("bad.lua", "for"), error));
    EXPECT_NE(error.find("expected near '<eof>'"), std::string::npos) << error;
    EXPECT_FALSE(engine().checkScriptSyntax((mFolder / "nothing.lua").string(), error));
    EXPECT_NE(error.find("cannot open"), std::string::npos) << error;
    EXPECT_EQ(text("ran"), "nil");
    EXPECT_TRUE(msOutput.empty());
}

} // namespace
