// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaSandbox.h"

#include "KyScriptEngineFixture.h"

namespace {

using KyLuaSandboxTest = KyScriptEngineFixture;

TEST_F(KyLuaSandboxTest, RemovesWhatReachesTheSystemAndNothingElseUntilAReset) {
    const std::vector<const char*> removed{"os.exit",   "os.setlocale", "os.getenv", "os.remove", "os.tmpname",
                                           "os.rename", "os.execute",   "io",        "package",   "dofile",
                                           "loadfile",  "module",       "require"};
    for (const char* name : removed)
        EXPECT_NE(text(name), "nil") << name;
    KyApplication::removeUnsafeLuaFunctionsAndModules();
    for (const char* name : removed)
        EXPECT_EQ(text(name), "nil") << name;
    for (const char* name : {"os.time", "os.clock", "os.date", "os.difftime", "string", "table", "math", "coroutine",
                             "debug", "print", "loadstring", "pcall"})
        EXPECT_NE(text(name), "nil") << name;
    engine().resetLuaState();
    EXPECT_NE(text("io"), "nil");
}

TEST_F(KyLuaSandboxTest, WorksWhateverScriptsDidToTheGlobalsAndWithoutAnEngine) {
    engine().executeChunk("os = nil setmetatable(_G, {__newindex = function() error('strict') end})");
    KyApplication::removeUnsafeLuaFunctionsAndModules();
    EXPECT_EQ(text("io"), "nil");
    EXPECT_TRUE(msOutput.empty());
    KyScriptEngine::finalizeClass();
    KyApplication::removeUnsafeLuaFunctionsAndModules();
    EXPECT_TRUE(msReports.empty());
}

} // namespace
