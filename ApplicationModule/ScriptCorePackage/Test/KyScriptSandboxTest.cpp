// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptSandbox.h"

#include "KyScriptTestFixture.h"

#include "KyBoundFunction.h"
#include "KyDynamicObject.h"
#include "KyLuaDebugger.h"
#include "KyScriptDebugger.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <thread>

#include <lua.hpp>

namespace {

constexpr char cEndless[] = "while true do end";

class KyScriptSandboxTest : public KyScriptTestFixture {
protected:
    void SetUp() override {
        KyDynamicObject::initializeType();
        KyScriptTestFixture::SetUp();
        mLimits.memory = std::size_t{12} << 20;
        mLimits.instructions = 2'000'000;
        mLimits.seconds = 3;
        mLimits.output = 4096;
        mLimits.message = 2000;
        mLimits.objects = 100;
        ASSERT_TRUE(engine().editSandbox().enable(mLimits));
    }

    /// The scripts end in time with these texts in their errors, and the engine goes on.
    static void expectEnds(const std::vector<Row>& rows) {
        for (const auto& [chunk, text] : rows) {
            const auto begin = std::chrono::steady_clock::now();
            const std::string output = run(chunk);
            const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
            EXPECT_NE(output.find(text), std::string::npos) << chunk << "\ngives: " << output.substr(0, 300);
            EXPECT_LT(taken.count(), 8.0) << chunk;
            EXPECT_EQ(run("setmetatable(_G, nil) for name in pairs(_G) do "
                          "if #name == 1 or name:find('^name%d') then _G[name] = nil end end"),
                      "")
                << chunk;
            EXPECT_EQ(eval("1 + 1"), "2") << chunk;
        }
    }

    template <class Callable>
    static void bind(const std::string& name, Callable callable) {
        ASSERT_EQ(engine().bindFunction(name, kyMakeFunction(name, std::move(callable)).release()), 1);
    }

    KyScriptLimits mLimits;
};

TEST_F(KyScriptSandboxTest, WithholdsWhatReachesBeyondTheState) {
    for (const char* name : {"debug",       "io",         "package",     "require",   "module",
                             "dofile",      "loadfile",   "newproxy",    "class",     "super",
                             "property",    "openUrl",    "loadUi",      "Resource",  "ResourceInformation",
                             "string.dump", "os.exit",    "os.execute",  "os.getenv", "os.remove",
                             "os.rename",   "os.tmpname", "os.setlocale"})
        EXPECT_EQ(eval(name), "nil") << name;
    for (const char* name :
         {"pcall", "os.time", "string.rep", "coroutine.wrap", "createKyObject", "Quat", "URL", "print"})
        EXPECT_NE(eval(name), "nil") << name;
    expectRuns("bindAllClasses() assert(openUrl == nil)");
    expectOutput({
        {"getmetatable('').__index = {}", "attempt to index"},
        {"getmetatable(createKyObject('KyDynamicObject')).__gc = print", "attempt to index"},
        {"setfenv(0, {})", "thread"},
        {"setfenv(print, {})", "cannot change"},
        {"collectgarbage('stop')", "withheld"},
        {"collectgarbage('setpause', 1e6)", "withheld"},
        {"assert(loadstring('\\27Lua'))", "bytecode"},
        {"local done assert(load(function() if not done then done = true return '\\27Lua' end end))", "bytecode"},
        {"\x1bLua", "bytecode"},
        {"createKyObject('KyScriptEngine')", "KyScriptEngine is withheld"},
        {"bindClass('KyScriptEngine') KyScriptEngine()", "KyScriptEngine is withheld"},
    });
    expectRuns("string.upper = error string.rep = nil assert(('x'):upper() == 'X' and ('x'):rep(2) == 'xx')");
    expectRuns("assert(getmetatable('') == 'locked' and getmetatable(Quat(1, 0, 0, 0)) == 'locked')");
    expectRuns("local meta = {} assert(getmetatable(setmetatable({}, meta)) == meta)");
}

TEST_F(KyScriptSandboxTest, RefusesBytecodeFromTheHostInFilesAndCoroutinesToo) {
    const auto file = std::filesystem::temp_directory_path() / "ky-sandbox-test.luac";
    for (const auto& [text, expected] :
         std::vector<Row>{{"\x1bLua", "bytecode"}, {"#!lua\nx = 'run'", ""}, {"#!lua\n\x1bLua", "unexpected symbol"}}) {
        std::ofstream(file, std::ios::binary) << text;
        msOutput.clear();
        EXPECT_EQ(engine().executeScript(file.string()), expected.empty()) << text;
        EXPECT_NE(msOutput.find(expected), std::string::npos) << msOutput;
    }
    std::filesystem::remove(file);
    EXPECT_EQ(eval("x"), "run");
    std::string error;
    EXPECT_FALSE(engine().checkChunkSyntax("\x1bLua", error));
    EXPECT_FALSE(engine().executeChunkAsCoroutine("\x1bLua"));
    EXPECT_NE(error.find("bytecode"), std::string::npos);
}

TEST_F(KyScriptSandboxTest, EndsWhatRunsForEver) {
    expectEnds({
        {cEndless, "more than 2000000 instructions"},
        {"while true do pcall(function() while true do end end) end", "instructions"},
        {"while true do xpcall(function() while true do end end, function() while true do end end) end",
         "instructions"},
        {"local function f() pcall(f) while true do end end f()", "instructions"},
        {"xpcall(error, function() while true do end end)", "instructions"},
        {"while true do pcall(coroutine.wrap(function() while true do end end)) end", "instructions"},
        {"local function f() for i = 1, 200 do pcall(coroutine.wrap(f)) end end f()", "sandbox: more than"},
        {"while true do coroutine.resume(coroutine.create(function() end)) end", "sandbox: more than"},
        {"load(function() return ' ' end)", "instructions"},
        {"error(setmetatable({}, {__tostring = function() while true do end end}))", "instructions"},
        {"print(setmetatable({}, {__tostring = function() while true do end end}))", "instructions"},
        {"local a = setmetatable({}, {__index = function() while true do end end}) return a.x", "instructions"},
        {"string.find(('a'):rep(1000), ('a*'):rep(20) .. 'b')", "instructions"},
        {"string.gsub(('a'):rep(1000), ('.-'):rep(20) .. 'b', '')", "instructions"},
        {"for m in string.gmatch(('a'):rep(1000), ('a*'):rep(20) .. 'b') do end", "instructions"},
        {"local a = ('a'):rep(4e5) a:find(('a'):rep(2e5) .. 'b', 1, true)", "instructions"},
        {"local a = ('('):rep(1e5) while true do a:find('%b()') end", "instructions"},
        {"table.insert({}, -2^31, 1)", "instructions"},
        {"local a = {} for i = 1, 2e4 do a[i] = -i end while true do table.sort(a) end", "instructions"},
        {"local a = {} for i = 1, 2e4 do a[i] = i end table.sort(a, function() while true do end end)", "instructions"},
        {"while true do collectgarbage() end", "sandbox: more than"},
        {"local a = ('1'):rep(1e6) while true do tonumber(a) end", "sandbox: more than"},
        {"local a = ('x'):rep(2e6) local b = a .. 'y' while true do local c = a < b end", "sandbox: more than"},
        {"local a = {} for i = 1, 1e5 do a['' .. i] = i end while true do a.x = 1 a.x = nil a.y = 1 a.y = nil end",
         "sandbox: more than"},
        {"local a = ('x'):rep(1e6) while true do local b = a:upper() end", "sandbox: more than"},
    });
}

TEST_F(KyScriptSandboxTest, EndsWhatTakesTooMuchMemory) {
    expectEnds({
        {"a = 'x' while true do a = a .. a end", "not enough memory"},
        {"a = {} while true do a[#a + 1] = {} end", "not enough memory"},
        {"a = {} while true do a[#a + 1] = coroutine.create(function() end) end", "not enough memory"},
        {"local i = 0 while true do i = i + 1 _G['name' .. i] = i end", "not enough memory"},
        {"a = {} while true do pcall(function() while true do a[#a + 1] = {} end end) end", "not enough memory"},
        {"return ('x'):rep(2e7)", "not enough memory"},
        {"return ('x'):rep(1e6):rep(1e6)", "too large"},
        {"return (('a'):rep(1e5):gsub('a', ('b'):rep(1e5)))", "not enough memory"},
        {"return (('a'):rep(1e5):gsub('a', function(x) return ('b'):rep(1e5) end))", "not enough memory"},
        {"local a, b = {}, ('x'):rep(1e5) for i = 1, 200 do a[i] = b end return table.concat(a)", "not enough memory"},
        {"local a = ('x'):rep(1e6) return string.format(('%s'):rep(20), a, a, a, a, a, a, a, a, a, a, a, a, a)",
         "not enough memory"},
        {"local a = ('{'):rep(3e6) assert(loadstring('return ' .. a))", "not enough memory"},
        {"x = '" + std::string(20'000'000, 'x') + "'", "not enough memory"},
    });
    EXPECT_EQ(eval("string.rep('', 1e15) == '' and string.rep('ab', 2.9) == 'abab' and string.rep('x', -1) == ''"),
              "true");
}

TEST_F(KyScriptSandboxTest, SurvivesAFullStateAndLetsAChunkCleanUp) {
    // Up to the very last byte, with threads that want room on their stacks and calls at the end of the C stack.
    const std::string fill = "a = {} local function fill(size) pcall(function() while true do "
                             "a[#a + 1] = ('x'):rep(size) .. #a end end) end ";
    const std::string values = "local function make(n) return unpack({}, 1, n) end ";
    EXPECT_NE(
        run(fill + values +
            "local c = coroutine.create(function(...) while true do coroutine.yield(...) end end) "
            "coroutine.resume(c) local function nest() fill(8) return coroutine.wrap(nest)() end "
            "fill(1e5) fill(100) fill(8) pcall(nest) for i = 1, 7000, 50 do pcall(coroutine.resume, c, make(i)) end "
            "error('end')"),
        "");
    EXPECT_LE(engine().editSandbox().getUsedMemory(), mLimits.memory + (std::size_t{5} << 20));
    EXPECT_EQ(run("a = nil"), "");
    EXPECT_EQ(eval("1 + 1"), "2");
    EXPECT_LT(engine().editSandbox().getUsedMemory(), mLimits.memory);
}

TEST_F(KyScriptSandboxTest, BoundsWhatNestsDeeply) {
    expectEnds({
        {"local function f() return 1 + f() end f()", "stack overflow"},
        {"local function f() return (('x'):gsub('x', f)) end f()", "C stack overflow"},
        {"local function f() return select(2, coroutine.resume(coroutine.create(f))) end error(f())",
         "C stack overflow"},
        {"setmetatable(_G, {__index = function(t, k) return t[k] end}) local b = missing", "stack overflow"},
        {"local a = setmetatable({}, {}) getmetatable(a).__index = a return a.x", "loop in gettable"},
        {"('a'):rep(1e5):find(('a?'):rep(5e4))", "pattern too complex"},
        {"('a'):find(('('):rep(100))", "too many captures"},
        {"assert(loadstring('return ' .. ('('):rep(1e4)))", "too many"},
        {"assert(loadstring(('do '):rep(1e4)))", "too many"},
        {"unpack({}, 1, 1e8)", "too many results"},
        {"local a = {} for i = 1, 1e4 do a = {a} end createKyObject(a)", "string expected"},
    });
    EXPECT_EQ(eval("(function() local function f() return pcall(f) end return f() end)()").substr(0, 4), "true");
}

TEST_F(KyScriptSandboxTest, CutsFloodsOfText) {
    expectEnds({
        {"while true do print('flood') end", "more than 4096 bytes printed"},
        {"while true do pcall(print, ('x'):rep(100)) end", "bytes printed"},
        {"print(('x'):rep(1e6))", "bytes printed"},
        {"error(('x'):rep(1e6))", "xxxxx"},
    });
    run("error(('x'):rep(1e6))");
    EXPECT_EQ(msOutput.size(), mLimits.message + 3);
    EXPECT_TRUE(msOutput.ends_with("..."));
    expectRuns("print('enough for another run')");
}

TEST_F(KyScriptSandboxTest, CountsObjectsAndLeavesThoseOfTheHostAlone) {
    KyDynamicObject host;
    engine().bindInstance(&host, "host");
    expectOutput({
        {"a = {} for i = 1, 1e4 do a[i] = createKyObject('KyDynamicObject') end", "more than 100 objects"},
        {"createKyObject('KyDynamicObject')", "more than 100 objects"},
        {"deleteKyObject(host)", "not one that scripts made"},
        {"host:destroy()", "not one that scripts made"},
    });
    expectRuns(
        "for i = 1, #a do deleteKyObject(a[i]) end for i = 1, 1e3 do createKyObject('KyDynamicObject'):destroy() end");
    EXPECT_EQ(engine().getInstance("host"), &host);
}

TEST_F(KyScriptSandboxTest, HoldsWithTheDebuggersHookAndAfterItHasGone) {
    engine().setHook();
    expectEnds({{cEndless, "instructions"}, {"while true do pcall(error) end", "instructions"}});
    engine().removeHook();
    expectEnds({{cEndless, "instructions"}});
}

TEST_F(KyScriptSandboxTest, TimeAtABreakpointDoesNotCount) {
    struct Waiting : KyLuaDebugger {
        void wait() override {
            std::this_thread::sleep_for(std::chrono::milliseconds(3200));
            KyScriptEngine::get().resume();
        }
    } waiting;
    engine().setHook();
    engine().setLuaDebugger(&waiting);
    engine().editDebugger().setBreakpoints("=stop", {{1, ""}});
    msOutput.clear();
    EXPECT_TRUE(engine().executeChunk("local a = 1\nfor i = 1, 1e5 do end", "=stop", {})) << msOutput;
    engine().setLuaDebugger(nullptr);
}

TEST_F(KyScriptSandboxTest, RunsInsideRunsAreBoundedWithTheOuterOne) {
    bind("inner", [] { engine().executeChunk(cEndless); });
    expectEnds({{"pcall(inner)", "instructions"}, {"while true do pcall(inner) end", "instructions"}});
    // The collector runs on the script's thread, where Lua runs no hooks.
    lua_State* const state = engine().editLuaState();
    lua_newuserdata(state, 1);
    lua_newtable(state);
    lua_pushcfunction(state, [](lua_State*) {
        engine().executeChunk(cEndless);
        return 0;
    });
    lua_setfield(state, -2, "__gc");
    lua_setmetatable(state, -2);
    lua_settop(state, 0);
    expectEnds({{"collectgarbage() for i = 1, 1e9 do local a = {} end", "instructions"}});
}

TEST_F(KyScriptSandboxTest, CoroutinesOfTheFrameAreBoundedAndTheOthersGoOn) {
    ASSERT_TRUE(engine().executeChunkAsCoroutine("good = 0 while true do coroutine.yield() good = good + 1 end"));
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(engine().executeChunkAsCoroutine("coroutine.yield() while true do pcall(error) end"));
    ASSERT_TRUE(engine().executeChunkAsCoroutine("coroutine.yield() while true do pcall(coroutine.yield) end"));
    EXPECT_FALSE(engine().executeChunkAsCoroutine(cEndless));
    for (int frame = 0; frame < 8; ++frame)
        engine().resumeCoroutines(0.01);
    EXPECT_EQ(engine().getNbCoroutines(), 1u);
    EXPECT_EQ(eval("good > 3"), "true");
}

TEST_F(KyScriptSandboxTest, StaysThroughAResetAndEndsAllOfThatState) {
    engine().resetLuaState();
    KyLuaBinder::bind();
    EXPECT_EQ(eval("debug, io, getmetatable('')"), "nil, nil, locked");
    expectEnds({{cEndless, "instructions"}, {"a = {} while true do a[#a + 1] = {} end", "not enough memory"}});
    bind("enableAgain", [] { return engine().editSandbox().enable(); });
    EXPECT_EQ(eval("enableAgain()"), "false");
    engine().closeLuaState();
    EXPECT_FALSE(engine().editSandbox().enable());
    EXPECT_EQ(engine().editSandbox().getUsedMemory(), 0u);
}

TEST_F(KyScriptSandboxTest, NewLimitsHoldFromTheNextRunOn) {
    mLimits.instructions = 1000;
    mLimits.seconds = 0.05;
    ASSERT_TRUE(engine().editSandbox().enable(mLimits));
    expectOutput({{"for i = 1, 1e5 do end", "more than 1000 instructions"}});
    mLimits.instructions = 1'000'000'000'000;
    ASSERT_TRUE(engine().editSandbox().enable(mLimits));
    expectOutput({{cEndless, "more than 0.05 seconds"}});
    EXPECT_TRUE(engine().editSandbox().isExhausted());
    expectRuns("for i = 1, 1e5 do end");
    EXPECT_FALSE(engine().editSandbox().isExhausted());
    EXPECT_GT(engine().editSandbox().getNbInstructions(), 90'000u);
}

/// A Lua of its own, which shows what the bounded functions have to give.
class PlainLua {
public:
    PlainLua()
        : mState(luaL_newstate(), &lua_close) {
        luaL_openlibs(mState.get());
    }

    std::string eval(const std::string& chunk) {
        lua_State* const state = mState.get();
        lua_settop(state, 0);
        if (luaL_loadstring(state, chunk.c_str()) != 0 || lua_pcall(state, 0, 1, 0) != 0)
            return std::string("error: ") + lua_tostring(state, -1);
        return lua_tostring(state, -1);
    }

private:
    std::unique_ptr<lua_State, decltype(&lua_close)> mState;
};

constexpr char cShow[] = "local function show(...) local t = {} for i = 1, select('#', ...) do "
                         "t[i] = tostring((select(i, ...))) end return table.concat(t, '|') end return show(";

TEST_F(KyScriptSandboxTest, BoundedFunctionsGiveWhatLuasGive) {
    PlainLua plain;
    const auto expectSame = [&](const std::string& expression) {
        std::vector<KyField> results;
        msOutput.clear();
        engine().executeChunktWithReturnValues(cShow + expression + ")", results);
        const std::string found = results.empty() ? "error: " + msOutput : results.front().toString();
        EXPECT_EQ(found, plain.eval(cShow + expression + ")")) << expression;
    };
    for (const char* expression : {
             "('hello world'):find('o', 6)",
             "('a.b'):find('.', 1, true)",
             "('abc'):find('b()')",
             "('abc'):find('', 10)",
             "('key = value'):match('^(%w+)%s*=%s*(%w+)$')",
             "('f(a(b)c)d'):match('%b()')",
             "('THE (quick) fox'):find('%f[%a]%a+%f[%A]')",
             "('x'):rep(3)",
             "('abc'):gsub('%w', '%0%0')",
             "('abc'):gsub('', '-')",
             "('hello'):gsub('l', {l = 'L'})",
             "('hello'):gsub('(l)(l)', '%2%1', 1)",
             "('abc'):gsub('b', function() return false end)",
             "pcall(string.gsub, 'a', 'a', '%2')",
             "pcall(string.gsub, 'a', 'a', true)",
             "pcall(string.gsub, 'a', '(a', 'x')",
             "('a,b,,c'):gsub(',', ';', 2)",
             "(function() local t = {} for k, v in ('a=1, b=2'):gmatch('(%w+)=(%w+)') do t[#t + 1] = k .. v end return "
             "unpack(t) end)()",
             "(function() local n = 0 for p in ('aXbX'):gmatch('()') do n = n + p end return n end)()",
             "(function() local t = {5, 2, 9, 1, 7, 3} table.sort(t) return unpack(t) end)()",
             "(function() local t = {'b', 'a', 'c'} table.sort(t, function(a, b) return a > b end) return unpack(t) "
             "end)()",
             "pcall(table.sort, {1, 'x', 2})",
             "(function() local t = {1, 2} table.insert(t, 1, 0) table.insert(t, 3) return unpack(t) end)()",
             "select('#', coroutine.resume(coroutine.create(function() return 1, nil end)))",
             "coroutine.resume(coroutine.create(function() error('x', 0) end))",
             "(function() local c = coroutine.create(function() end) coroutine.resume(c) return coroutine.resume(c) "
             "end)()",
             "xpcall(function() return 1, nil end, print)",
             "xpcall(function() error('x', 0) end, string.upper)",
             "xpcall(error, error)",
             "pcall(xpcall, print)",
             "pcall(coroutine.wrap(function() error('x') end))",
             "pcall(coroutine.wrap(function() error({}) end) and error, 'y')",
             "(function() local f = coroutine.wrap(function(a) local b = coroutine.yield(a + 1) return b * 2 end) "
             "return f(1), f(5) end)()",
             "coroutine.resume(coroutine.running() or coroutine.create(function() return "
             "coroutine.resume(coroutine.running()) end))",
             "loadstring('return 1 +')",
             "loadstring('return ...', '=x')(7)",
             "type(load(function() return nil end))",
             "pcall(load, 5)",
             "pcall(setfenv, 1, 5)",
             "type(collectgarbage('count')), collectgarbage()",
         })
        expectSame(expression);
    std::mt19937 random(20261122);
    const auto makeText = [&random](std::string_view letters, std::size_t most) {
        std::string text;
        for (std::size_t i = random() % (most + 1); i > 0; --i)
            text += letters[random() % letters.size()];
        return text;
    };
    for (int round = 0; round < 4000; ++round) {
        const std::string subject = makeText("ab1 ()%", 10);
        const std::string pattern = makeText("ab%.*-+?[]()^$1fdsW", 8);
        const std::string arguments = ", '" + subject + "', '" + pattern + "'";
        for (const char* call : {"pcall(string.find", "pcall(string.match", "pcall(string.gsub"})
            expectSame(call + arguments + (call[13] == 'g' ? ", '<%0>')" : ")"));
    }
}

} // namespace
