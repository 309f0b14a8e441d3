// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaSandbox.h"

#include "KyScriptEngineFixture.h"

namespace {

class KyLuaSandboxTest : public KyScriptEngineFixture, public ::testing::WithParamInterface<const char*> {};

using KyRemovedNameTest = KyLuaSandboxTest;
using KyKeptNameTest = KyLuaSandboxTest;

TEST_P(KyRemovedNameTest, IsThereBeforeAndNilAfterwards) {
    const std::string name = GetParam();
    const bool isThere = name != "loadlib";
    EXPECT_EQ(text(name) != "nil", isThere);
    KyApplication::removeUnsafeLuaFunctionsAndModules();
    EXPECT_EQ(text(name), "nil");
}

INSTANTIATE_TEST_SUITE_P(Names, KyRemovedNameTest,
                         ::testing::Values("os.exit", "os.setlocale", "os.getenv", "os.remove", "os.tmpname",
                                           "os.rename", "os.execute", "io", "package", "dofile", "loadfile", "loadlib",
                                           "module", "require"));

TEST_P(KyKeptNameTest, Stays) {
    KyApplication::removeUnsafeLuaFunctionsAndModules();
    EXPECT_NE(text(GetParam()), "nil");
}

INSTANTIATE_TEST_SUITE_P(Names, KyKeptNameTest,
                         ::testing::Values("os.time", "os.clock", "os.date", "os.difftime", "string", "table", "math",
                                           "coroutine", "debug", "print", "loadstring", "pcall"));

TEST_F(KyLuaSandboxTest, WorksWhateverScriptsDidToTheGlobals) {
    engine().executeChunk("os = nil setmetatable(_G, {__newindex = function() error('strict') end})");
    KyApplication::removeUnsafeLuaFunctionsAndModules();
    EXPECT_EQ(text("io"), "nil");
    EXPECT_TRUE(msOutput.empty());
}

TEST_F(KyLuaSandboxTest, WithoutAnEngineNothingHappens) {
    KyScriptEngine::finalizeClass();
    KyApplication::removeUnsafeLuaFunctionsAndModules();
    EXPECT_TRUE(msReports.empty());
}

TEST_F(KyLuaSandboxTest, AResetBringsEverythingBack) {
    KyApplication::removeUnsafeLuaFunctionsAndModules();
    engine().resetLuaState();
    EXPECT_NE(text("io"), "nil");
}

} // namespace
