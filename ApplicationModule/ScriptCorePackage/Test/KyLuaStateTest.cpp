// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptEngineFixture.h"

#include <utility>

namespace {

using KyLuaStateTest = KyScriptEngineFixture;

TEST_F(KyLuaStateTest, AResetWithdrawsAndForgetsEverything) {
    std::vector<std::string> withdrawn;
    KyDynamicObject object;
    engine().bindInstance(&object, "car");
    engine().unboundSignal.connect([&](KyObject*, const std::string& name) { withdrawn.push_back(name); });
    engine().executeChunkAsCoroutine("coroutine.yield()");
    bool isCalled = false;
    bind("f", [&isCalled] { isCalled = true; });
    engine().executeChunk("x = newproxy(true) getmetatable(x).__gc = function() f() end");
    engine().resetLuaState();
    EXPECT_FALSE(isCalled) << "collectors find no bound functions";
    EXPECT_EQ(withdrawn, std::vector<std::string>{"car"});
    EXPECT_EQ(engine().getNbCoroutines(), 0u);
    EXPECT_FALSE(engine().isClassBound(*KyDynamicObject::getType()));
    EXPECT_EQ(text("x") + text("car") + text("f") + text("createKyObject"), "nilnilnilnil");
    engine().resumeCoroutines(0);
    EXPECT_EQ(engine().bindInstance(&object, "car"), 1);
    EXPECT_TRUE(msReports.empty());
}

TEST_F(KyLuaStateTest, AllOperationsFailOnAClosedState) {
    KyDynamicObject object;
    engine().closeLuaState();
    engine().closeLuaState();
    std::string error;
    std::vector<KyField> results;
    auto function = kyMakeFunction("f", [] { return 1; });
    EXPECT_EQ(state(), nullptr);
    EXPECT_FALSE(engine().executeChunk("x = 1"));
    EXPECT_FALSE(engine().executeChunkAsCoroutine("x = 1"));
    EXPECT_FALSE(engine().callLuaFunction("print", {}, results));
    EXPECT_FALSE(engine().checkChunkSyntax("x = 1", error));
    EXPECT_EQ(engine().bindInstance(&object, "car"), -2);
    EXPECT_EQ(engine().bindFunction("f", function.get()), -2);
    engine().setLuaVariable("x", KyField(1));
    engine().resumeCoroutines(1);
    engine().setHook();
    engine().resetLuaState();
    EXPECT_EQ(text("x"), "nil");
}

TEST_F(KyLuaStateTest, AScriptThatResetsRunsOnToItsEndOnItsOldState) {
    bind("reset", [] {
        engine().resetLuaState();
        engine().setLuaVariable("seen", KyField(3));
    });
    std::vector<KyField> results;
    EXPECT_TRUE(engine().executeChunktWithReturnValues(
        "x = 5 reset() assert(seen == nil) again = pcall(reset) collectgarbage() return x, again", results));
    EXPECT_EQ(results, (std::vector<KyField>{5.0, false}));
    EXPECT_EQ(text("x"), "nil");
    EXPECT_EQ(text("seen"), "3") << "the host's calls go to the new state";
}

TEST_F(KyLuaStateTest, CoroutinesAndThePrintCallbackMayReset) {
    bind("reset", [] { engine().resetLuaState(); });
    for (int i = 0; i < 5; ++i)
        engine().executeChunkAsCoroutine("coroutine.yield() reset() collectgarbage()");
    engine().resumeCoroutines(0);
    KyScriptEngine::setPrintCallback([](const std::string&) { engine().resetLuaState(); });
    for (int i = 0; i < 2; ++i)
        engine().executeChunkAsCoroutine("coroutine.yield() error('x')");
    engine().resumeCoroutines(0);
    EXPECT_EQ(engine().getNbCoroutines(), 0u);
    EXPECT_FALSE(engine().executeChunk("error('x')"));
    engine().executeChunkAsCoroutine("coroutine.yield() n = 1");
    engine().resumeCoroutines(0);
    EXPECT_EQ(text("n"), "1");
}

TEST_F(KyLuaStateTest, SlotsMayNotKeepTheWithdrawingAliveAndMayEndTheEngine) {
    int answer = 7;
    KyDynamicObject object;
    engine().bindInstance(&object, "car");
    engine().unboundSignal.connect([&](KyObject* gone, const std::string&) {
        answer = engine().bindInstance(gone, "again");
        engine().resetLuaState();
        engine().closeLuaState();
        engine().executeChunk("y = 1");
    });
    engine().resetLuaState();
    EXPECT_EQ(answer, -1);
    EXPECT_EQ(text("y"), "nil");
    auto* other = new KyScriptEngine;
    other->bindInstance(&object, "car");
    other->unboundSignal.connect([&](KyObject*, const std::string&) { std::exchange(other, nullptr)->destroy(); });
    other->resetLuaState();
    EXPECT_EQ(other, nullptr);
}

TEST_F(KyLuaStateTest, TheEngineMayEndWhileAScriptRuns) {
    bind("finish", [] { KyScriptEngine::finalizeClass(); });
    std::vector<KyField> results;
    EXPECT_TRUE(engine().executeChunktWithReturnValues(
        "finish() local ok = pcall(finish) collectgarbage() return ok, 4", results));
    EXPECT_EQ(KyScriptEngine::find(), nullptr);
    EXPECT_EQ(results, (std::vector<KyField>{false, 4.0}));
    KyScriptEngine::initializeClass();
    bind("finish", [] { KyScriptEngine::finalizeClass(); });
    for (int i = 0; i < 3; ++i)
        engine().executeChunkAsCoroutine("coroutine.yield() if finish then finish() end error('late')");
    engine().resumeCoroutines(0);
    EXPECT_EQ(KyScriptEngine::find(), nullptr) << "in a coroutine too";
}

TEST_F(KyLuaStateTest, NestedCallsKeepArgumentsAndTheStack) {
    engine().executeChunk("function id(...) return ... end");
    bind("nested", [](double a, const std::string& b, double c) {
        std::vector<KyField> results;
        for (int i = 0; i < 3; ++i) {
            engine().callLuaFunction("id", {KyField(1), KyField(2)}, results);
            engine().callLuaFunction("missing", {}, results);
            engine().executeChunk("return 1, 2, coroutine.create(function() end)");
            engine().executeChunk("error('inner')");
        }
        return b + std::to_string(static_cast<int>(a + c)) + "/" + std::to_string(results.size());
    });
    EXPECT_EQ(text("nested(1, 'key', 2) .. nested(5, 'b', 5)"), "key3/6b10/6");
    EXPECT_EQ(engine().getNbCoroutines(), 6u);
    EXPECT_EQ(top(), 0);
}

} // namespace
