// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptEngineFixture.h"

#include <cstdlib>
#include <functional>

namespace {

struct FailureCase {
    const char* label;
    const char* chunk;
    /// Part of the message.
    const char* message;
};

constexpr FailureCase cFailures[] = {
    {"Text", "error('plain', 0)", "plain"},
    {"Table", "error({})", "(error object is not a string)"},
    {"TableWithBadText", "error(setmetatable({}, {__tostring = function() error('x') end}))",
     "(error object is not a string)"},
    {"LuaStack", "local function f() return 1 + f() end f()", "stack overflow"},
    {"CStack", "local s = string.rep('(', 500) assert(loadstring('return ' .. s))", "too many syntax levels"},
    {"CCalls", "local t = setmetatable({}, {}) getmetatable(t).__index = function(_, k) return t[k] end return t.x",
     "C stack overflow"},
    {"PcallInsidePcall", "local function f() error(select(2, pcall(f)), 0) end f()", "stack overflow"},
    {"YieldAcrossCall", "coroutine.yield(1)", "attempt to yield"},
    {"YieldAcrossMetamethod",
     "local t = setmetatable({}, {__index = function() coroutine.yield() end})"
     " local ok, e = coroutine.resume(coroutine.create(function() return t.x end)) error(e, 0)",
     "attempt to yield across metamethod/C-call boundary"},
    {"ManyResults", "local t = {} for i = 1, 1000000 do t[i] = i end return unpack(t)", "too many results to unpack"},
    {"TruncatedBytecode", "assert(loadstring(string.dump(function() end):sub(1, 20)))",
     "unexpected end in precompiled chunk"},
    {"Endless", "local s = string.rep('x', 2^20) while true do s = s .. s end", ""},
};

class KyScriptFailureTest : public KyScriptEngineFixture {
protected:
    /// Fails for blocks that no test machine need have.
    static void* allocateUpTo(void*, void* block, std::size_t, std::size_t size) {
        constexpr std::size_t cLargest = 64u << 20u;
        if (size == 0) {
            std::free(block);
            return nullptr;
        }
        return size > cLargest ? nullptr : std::realloc(block, size);
    }
};

TEST_F(KyScriptFailureTest, EveryKindIsOneMessageWhateverRunsTheChunkAndTheEngineGoesOn) {
    lua_setallocf(state(), &allocateUpTo, nullptr);
    std::vector<KyField> results;
    const std::function<bool(const std::string&)> ways[] = {
        [](const std::string& chunk) { return engine().executeChunk(chunk); },
        [&](const std::string&) { return engine().callLuaFunction("called", {}, results); },
        [](const std::string& chunk) {
            engine().executeChunkAsCoroutine("coroutine.yield() " + chunk);
            engine().resumeCoroutines(0);
            return engine().getNbCoroutines() != 0;
        }};
    engine().executeChunk("function called() return loadstring(source)() end");
    for (const auto& [label, chunk, message] : cFailures) {
        engine().setLuaVariable("source", KyField(chunk));
        // A coroutine may yield.
        const std::size_t nbWays = std::string(label) == "YieldAcrossCall" ? 2 : 3;
        for (std::size_t i = 0; i < 2 * nbWays; ++i) {
            msOutput.clear();
            EXPECT_FALSE(ways[i % nbWays](chunk)) << label;
            ASSERT_EQ(msOutput.size(), 1u) << label;
            EXPECT_NE(msOutput[0].find(message), std::string::npos) << label << ": " << msOutput[0];
            EXPECT_EQ(top(), 0) << label;
            EXPECT_EQ(text("1 + 1"), "2") << label;
        }
    }
}

using KyHostileScriptTest = KyScriptEngineFixture;

TEST_F(KyHostileScriptTest, TooManyArgumentsAreAnError) {
    engine().executeChunk("function count(...) return select('#', ...) end");
    std::vector<KyField> results;
    EXPECT_TRUE(engine().callLuaFunction("count", std::vector<KyField>(5000, KyField(1)), results));
    EXPECT_EQ(results.at(0).toInt(), 5000);
    EXPECT_FALSE(engine().callLuaFunction("count", std::vector<KyField>(100000, KyField(1)), results));
    EXPECT_EQ(msOutput.size(), 1u);
    EXPECT_EQ(top(), 0);
}

TEST_F(KyHostileScriptTest, AnErrorInACollectorDoesNotEndTheHost) {
    engine().executeChunk("local p = newproxy(true) getmetatable(p).__gc = function() error({}) end");
    for (int i = 0; i < 50; ++i)
        engine().setLuaVariable("v" + std::to_string(i), KyField(std::string(10000, 'x')));
    engine().executeChunk("collectgarbage() local p = newproxy(true) getmetatable(p).__gc = error");
    EXPECT_EQ(text("#v49"), "10000");
}

TEST_F(KyHostileScriptTest, RecursionThroughTheHostEndsInAnError) {
    bind("run", [](const std::string& chunk) { return engine().executeChunk(chunk); });
    bind("launch", [](const std::string& chunk) { return engine().executeChunkAsCoroutine(chunk); });
    for (const char* chunk :
         {"src = [[depth = depth + 1 run(src)]] run(src)", "src = [[depth = depth + 1 launch(src)]] launch(src)",
          "function dive(n) depth = depth + 1"
          " if n > 0 then coroutine.wrap(dive)(n - 1) else launch('dive(20)') end end"
          " launch('dive(20)')"}) {
        msOutput.clear();
        EXPECT_TRUE(engine().executeChunk(std::string("depth = 0 ") + chunk)) << chunk;
        ASSERT_FALSE(msOutput.empty());
        EXPECT_NE((msOutput.front() + lastOutput()).find("C stack overflow"), std::string::npos) << msOutput.front();
        EXPECT_LT(evaluate("depth").front().toInt(), 1000);
    }
}

} // namespace
