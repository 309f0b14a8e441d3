// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptDebuggerFixture.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

namespace {

class KyScriptStoppingTest : public KyScriptDebuggerFixture {
protected:
    static std::string parameter(const char* name, const char* category) {
        const KyDynamicObject& entity = *engine().getDebugEntity();
        const KyAttributeInterface* attribute = entity.findAttribute(name, category);
        KyField value;
        return attribute && attribute->getValue(entity, value) ? value.toString() : "absent";
    }
    static std::string parameterNames() {
        std::string names;
        const KyDynamicObject& entity = *engine().getDebugEntity();
        for (unsigned i = 0; i < entity.getNbAttributes(); ++i)
            names += entity.getAttribute(i)->getName() + ' ';
        return names;
    }
    void restart() {
        KyScriptEngine::initializeClass();
        engine().setLuaDebugger(this);
        engine().setHook();
        bind("bye", [] { KyScriptEngine::finalizeClass(); });
    }
};

TEST_F(KyScriptStoppingTest, StepsAreOverWithTheirRun) {
    const struct {
        const char* chunk;
        const char* actions;
        bool isReset;
    } cCases[] = {
        {"local a = 1\nlocal b = 2", "o", false},
        {"local a = 1\nlocal b = 2", "u", false},
        {"local a = 1\nlocal b = 2", "o", true},
        {"co = coroutine.wrap(function()\n coroutine.yield()\nend)\nco()", "o", true},
        {"coroutine.wrap(function()\n local a = 1\nend)()", "u", false},
    };
    for (const auto& [chunk, actions, isReset] : cCases) {
        EXPECT_EQ(run(chunk, 2, actions), "breakpoint2") << chunk;
        if (isReset)
            engine().resetLuaState();
        debugger().clearBreakpoints();
        engine().executeChunk("x = 1\nlocal function f()\n x = 2\nend\nf()");
        EXPECT_EQ(mStops, "breakpoint2") << chunk << actions;
    }
    mLook = [] { engine().removeHook(); };
    run("local a = 1\nlocal b = 2\nlocal c = 3", 2, "o");
    engine().setHook();
    engine().executeChunk("x = 1\nx = 2");
    EXPECT_EQ(mStops, "breakpoint2");
}

TEST_F(KyScriptStoppingTest, FramesOfCoroutinesThatRunOnAreNoMore) {
    const char* const cDeep = "local function deep(n) local b = n if n > 0 then deep(n - 1) else coroutine.yield() end"
                              " return b end co = coroutine.create(function() deep(150) coroutine.yield() end)"
                              " coroutine.resume(co)\n"
                              "function fin() while coroutine.resume(co) do end for i = 1, 9 do collectgarbage() end"
                              " return true end";
    const std::pair<std::string, const char*> cCases[] = {{"b", "1"},
                                                          {"fin() and b", "failed: no such frame"},
                                                          {"fin()", "failed: no such frame"},
                                                          {"coroutine.resume(co) and b", "failed: no such frame"}};
    for (const auto& [expression, value] : cCases)
        for (const bool isSet : {false, true}) {
            engine().executeChunk(cDeep);
            mLook = [&, text = expression, wanted = std::string(value)] {
                const int thread = debugger().getThreads().back().id;
                const std::string result =
                    isSet ? set(debugger().getScopes(thread, 2)[0].reference, "b", text) : evaluate(text, thread, 2);
                EXPECT_EQ(result, text == "fin()" && !isSet ? "true" : wanted) << text;
            };
            EXPECT_EQ(run("local z = 1\nz = 2", 2), "breakpoint2");
        }
}

TEST_F(KyScriptStoppingTest, ExpressionsMayEndTheEngine) {
    const std::pair<const char*, std::function<std::string()>> cCases[] = {
        {"bye()", [] { return std::string("not met"); }},
        {"", [] { return evaluate("bye()"); }},
        {"", [] { return set(debugger().getScopes(1, 0)[0].reference, "a", "bye()"); }},
    };
    for (const auto& [condition, look] : cCases) {
        restart();
        std::string result;
        mLook = [&result, &act = look] { result = act(); };
        debugger().setBreakpoints("=end", {{2, condition}});
        EXPECT_TRUE(engine().executeChunk("local a = 1\nlocal b = 2\nlocal c = 3", "=end", {}));
        EXPECT_EQ(KyScriptEngine::find(), nullptr);
        EXPECT_EQ(result, *condition == '\0' ? "failed: the script engine has ended" : "");
    }
    restart();
    EXPECT_EQ(evaluate("bye()", 0), "failed: the script engine has ended");
    restart();
    engine().closeLuaState();
    EXPECT_EQ(evaluate("1", 0), "failed: the Lua state is closed");
}

TEST_F(KyScriptStoppingTest, ConditionsThatNeverEndFail) {
    engine().removeHook();
    engine().executeChunk("local function loop() while true do end end\n"
                          "old = coroutine.wrap(function() coroutine.yield() loop() end) old()\n"
                          "function hold() while true do pcall(loop) end end\n"
                          "function make() return coroutine.wrap(hold)() end");
    engine().setHook();
    const std::pair<const char*, const char*> cCases[] = {{"(function() while true do end end)()", "not come to"},
                                                          {"hold()", "not come to"},
                                                          {"make()", "not come to"},
                                                          {"old()", "not come to"},
                                                          {"coroutine.yield()", "attempt to yield"},
                                                          {"a == 1", ""}};
    for (const auto& [condition, message] : cCases) {
        debugger().setBreakpoints("=c", {{2, condition}});
        mStops.clear();
        EXPECT_TRUE(engine().executeChunk("local a = 1\nlocal b = 2", "=c", {})) << condition;
        EXPECT_EQ(mStops, "breakpoint2") << condition;
        EXPECT_NE(mStopped.text.find(message), std::string::npos) << condition << mStopped.text;
    }
}

TEST_F(KyScriptStoppingTest, EvaluationsThatNeverEndCanBeInterrupted) {
    engine().executeChunk("local function loop() while true do end end\n"
                          "function hold() while true do pcall(loop) end end\n"
                          "function make() return coroutine.wrap(hold)() end");
    const auto act = [] {
        for (const char* expression : {"(function() while true do end end)()", "hold()", "make()"}) {
            std::atomic<bool> isOver = false;
            std::thread impatient([&] {
                for (; !isOver; std::this_thread::sleep_for(std::chrono::milliseconds(5)))
                    debugger().interrupt();
            });
            const auto results = {evaluate(expression), evaluate(expression, 0),
                                  set(debugger().getScopes(1, 0)[0].reference, "a", expression)};
            isOver = true;
            impatient.join();
            for (const std::string& result : results)
                EXPECT_NE(result.find("the evaluation was interrupted"), std::string::npos) << expression << result;
        }
        EXPECT_EQ(evaluate("a"), "1") << "only what runs is interrupted";
        EXPECT_NE(debugger().editStoppedThread(), nullptr);
    };
    mLook = act;
    EXPECT_EQ(run("local a = 1\nlocal b = 2", 2), "breakpoint2");
    EXPECT_EQ(debugger().editStoppedThread(), nullptr);
    debugger().interrupt();
    EXPECT_EQ(evaluate("1", 0), "1");
}

TEST_F(KyScriptStoppingTest, TheEntityFollowsWhatIsDoneMeanwhile) {
    std::string names;
    int nbChanges = 0;
    const KyConnection changed = debugger().changedSignal.connect([&nbChanges] { ++nbChanges; });
    mLook = [&names] {
        names = parameterNames();
        set(debugger().getScopes(1, 0)[0].reference, "a", "42");
        evaluate("x = 77");
        engine().executeChunk("made = 5");
        names += parameter("a", "Locals") + parameter("x", "Globals") + parameter("made", "Globals");
    };
    run("local a = 1\nlocal b = 2", 2);
    EXPECT_LT(names.find("CurrentLine"), names.find(" a "));
    EXPECT_LT(names.find(" a "), names.find(" _VERSION "));
    EXPECT_EQ(names.substr(names.rfind(' ')) + std::to_string(nbChanges), " 427752");
    EXPECT_EQ(parameter("a", "Locals") + parameter("CurrentLine", "Callstack"), "absent2");
    mLook = nullptr;
    engine().getDebugEntity()->modifiedSignal().connect(
        *this, [](KyObject*, KyObjectModificationType, const std::string&, int) {});
    engine().executeChunk("local seen = 1\nlocal b = seen");
    EXPECT_EQ(parameter("seen", "Locals"), "absent");
}

TEST_F(KyScriptStoppingTest, KeysOfOneTableHaveNamesOfTheirOwn) {
    const std::pair<const char*, std::size_t> cCases[] = {
        {"{[{}] = 1, [{}] = 2}", 2},
        {"{[3] = 1, ['[3]'] = 2, ['[\"[3]\"]'] = 3}", 3},
        {"{[0.1] = 1, [0.1 + 2^-55] = 2, [true] = 3, ['true'] = 4}", 4},
        {"setmetatable({['(metatable)'] = 1}, {})", 2},
        {"{[function() end] = 1, [function() end] = 2, [newproxy()] = 3, [newproxy()] = 4}", 4},
    };
    for (const auto& [table, nbNames] : cCases) {
        mLook = [&, count = nbNames] {
            const int reference = findReference(debugger().getScopes(1, 0)[0].reference, "t");
            std::map<std::string, std::string> values;
            for (const KyScriptVariable& entry : debugger().getVariables(reference))
                values[entry.name] =
                    entry.isWritable ? set(reference, entry.name, std::to_string(values.size() + 50)) : entry.value;
            EXPECT_EQ(values.size(), count);
            for (const KyScriptVariable& entry : debugger().getVariables(reference))
                EXPECT_EQ(entry.value, values[entry.name]) << entry.name;
        };
        EXPECT_EQ(run("local t = " + std::string(table) + "\nlocal z = 1", 2), "breakpoint2");
    }
}

TEST_F(KyScriptStoppingTest, BreakpointsOfFilesReachWhatScriptsLoad) {
    const std::filesystem::path folder = std::filesystem::path(::testing::TempDir()) / "stopping";
    const std::filesystem::path inner = folder / "inner";
    std::filesystem::create_directories(inner);
    const std::pair<std::filesystem::path, const char*> cFiles[] = {
        {folder / "main.lua", "require 'mod'\ndofile('inner/sub.lua')\ndofile('mod.lua')\ndofile('inner/mod.lua')"},
        {folder / "mod.lua", "local a = 1\nfunction later()\n a = 3\nend"},
        {inner / "mod.lua", "local b = 1"},
        {inner / "sub.lua", "local c = 1"}};
    for (const auto& [path, text] : cFiles)
        std::ofstream(path) << text;
    std::string files;
    mLook = [this, &files] { files += debugger().findFile(mStopped.chunkName) + ' '; };
    const auto mod = folder / "mod.lua";
    debugger().setFileBreakpoints(mod.string(), {{1, ""}, {3, "a == 1"}});
    debugger().setFileBreakpoints((inner / ".." / "inner" / "sub.lua").string(), {{1, ""}, {1, "c"}, {1, "not c"}});
    EXPECT_EQ(debugger().getFileBreakpoints((inner / "sub.lua").string()).size(), 1u);
    std::vector<KyField> results;
    engine().removeHook();
    EXPECT_TRUE(engine().executeScript((folder / "main.lua").string()));
    engine().setHook();
    engine().callLuaFunction("later", {}, results);
    EXPECT_EQ(mStops, "breakpoint3") << "loaded before anybody looked";
    engine().resetLuaState();
    EXPECT_TRUE(engine().executeScript((folder / "main.lua").string()));
    engine().callLuaFunction("later", {}, results);
    engine().callLuaFunction("later", {}, results);
    EXPECT_EQ(mStops, "breakpoint3 breakpoint1 breakpoint1 breakpoint1 breakpoint3");
    const std::string whole = std::filesystem::canonical(mod).string() + ' ';
    EXPECT_EQ(files, whole + whole + std::filesystem::canonical(inner / "sub.lua").string() + ' ' + whole + whole);
    debugger().clearBreakpoints();
    EXPECT_TRUE(debugger().getFileBreakpoints(mod.string()).empty());
    EXPECT_EQ(debugger().findFile("=test"), "");
}

TEST_F(KyScriptStoppingTest, RunsInsideRunsShowOnlyTheCallsOfScripts) {
    std::string frames;
    bind("nest", [] { engine().executeChunk("local inside = 1\nlocal b = inside", "=nest", {2}); });
    mLook = [&frames] {
        const int nbFrames = debugger().getNbFrames(1);
        for (const KyScriptFrame& frame : debugger().getFrames(1))
            frames += frame.kind + frame.name + std::to_string(frame.line) + ' ';
        frames +=
            std::to_string(nbFrames) + ' ' + debugger().getFrames(1, 2, 1)[0].name + ' ' + locals(1, 2) + locals(1, 9);
    };
    engine().executeChunk("local function f(p)\n nest()\n local q = p\nend\nf(7)", "=outer", {});
    EXPECT_EQ(frames, "main2 Cnest0 Luaf2 main5 4 f p=7 none");
}

} // namespace
