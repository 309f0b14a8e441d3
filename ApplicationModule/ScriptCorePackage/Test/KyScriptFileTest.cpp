// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptEngineFixture.h"

#include "KyResource.h"

#include <QTemporaryDir>

#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

class KyScriptFileTest : public KyScriptEngineFixture {
protected:
    KyScriptFileTest() { fs::create_directories(mFolder / "scripts"); }
    ~KyScriptFileTest() override { EXPECT_EQ(fs::current_path(), mBefore); }

    std::string write(const std::string& name, const std::string& content) const {
        std::ofstream(mFolder / name, std::ios::binary) << content;
        return (mFolder / name).string();
    }

    const QTemporaryDir mTemporary;
    const fs::path mFolder = mTemporary.path().toStdString();
    const fs::path mBefore = fs::current_path();
};

TEST_F(KyScriptFileTest, AScriptRunsInItsDirectoryWhichIsTheThreadsToo) {
    bind("where", [] { return KyResource::getThreadDirectory().getLocalPath(); });
    write("scripts/other script.lua", "other = 'found'");
    const std::string path = write("scripts/main file.lua", "dofile('other script.lua') return where(), other");
    std::string url = "file://" + path;
    url.replace(url.find(' '), 1, "%20");
    for (const std::string& name : {path, url}) {
        const auto results = engine().executeScriptWithReturnValues(name);
        ASSERT_EQ(results.size(), 2u) << lastOutput();
        EXPECT_EQ(fs::path(results[0].toString()), mFolder / "scripts" / "");
        EXPECT_EQ(results[1].toString(), "found");
    }
    EXPECT_TRUE(KyResource::getThreadDirectory().isEmpty());
}

TEST_F(KyScriptFileTest, ErrorsShowTheBareNameAndAByteOrderMarkIsSkippedAndLinesStay) {
    EXPECT_FALSE(engine().executeScript(write("scripts/bad.lua", "\nerror('x')")));
    EXPECT_EQ(lastOutput(), "bad.lua:2: x");
    EXPECT_FALSE(engine().executeScript(write("scripts/worse.lua", "x =")));
    EXPECT_EQ(lastOutput(), "worse.lua:1: unexpected symbol near '<eof>'");
    EXPECT_EQ(engine().executeScriptWithReturnValues(write("marked.lua", "\xEF\xBB\xBFreturn 'ok'")).size(), 1u);
    EXPECT_FALSE(engine().executeScript(write("marked.lua", "\xEF\xBB\xBF#!/usr/bin/lua\nerror('x')")));
    EXPECT_EQ(lastOutput(), "marked.lua:2: x");
    EXPECT_TRUE(engine().executeScript(write("empty.lua", "\xEF\xBB\xBF")));
    EXPECT_EQ(top(), 0);
}

TEST_F(KyScriptFileTest, AMissingFolderRunsNoOtherFileOfThatName) {
    fs::current_path(mFolder);
    write("main.lua", "ran = true");
    EXPECT_FALSE(engine().executeScript((mFolder / "nowhere/main.lua").string()));
    EXPECT_TRUE(lastOutput().starts_with("cannot open ")) << lastOutput();
    EXPECT_FALSE(engine().executeScript((mFolder / "scripts/nothing.lua").string()));
    EXPECT_TRUE(lastOutput().starts_with("cannot open nothing.lua")) << lastOutput();
    EXPECT_EQ(text("ran"), "nil");
    fs::current_path(mBefore);
}

TEST_F(KyScriptFileTest, WhatIsNotLocalFailsSilentlyAndAFolderAndABinaryAreErrors) {
    EXPECT_FALSE(engine().executeScript("http://localhost/main.lua"));
    EXPECT_FALSE(engine().executeScript((mFolder / "").string()));
    EXPECT_TRUE(msOutput.empty());
    EXPECT_FALSE(engine().executeScript((mFolder / "scripts").string()));
    EXPECT_EQ(msOutput.size(), 1u);
    std::string noise;
    for (int i = 0; i < 5000; ++i)
        noise.push_back(static_cast<char>(i * 37 % 251));
    EXPECT_FALSE(engine().executeScript(write("code.luac", "\x1BLua" + noise)));
    EXPECT_EQ(msOutput.size(), 2u);
    EXPECT_EQ(top(), 0);
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
