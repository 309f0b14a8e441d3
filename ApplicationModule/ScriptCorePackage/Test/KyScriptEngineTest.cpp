// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptEngineFixture.h"

#include <memory>
#include <stdexcept>

namespace {

using KyScriptEngineTest = KyScriptEngineFixture;
using Texts = std::vector<std::string>;

TEST_F(KyScriptEngineTest, ErrorsAreReportedAsLuasOwnMessageWithTheChunksNameAndTheTracebackIsKept) {
    EXPECT_TRUE(engine().executeChunk("x = 1 + 2 return 1, 2, 3"));
    EXPECT_FALSE(engine().executeChunk("x = = 1"));
    EXPECT_FALSE(engine().executeChunk("nothing()", "plain", {}));
    EXPECT_EQ(msOutput, (Texts{"[string \"x = = 1\"]:1: unexpected symbol near '='",
                               "[string \"plain\"]:1: attempt to call global 'nothing' (a nil value)"}));
    EXPECT_EQ(text("x"), "3");
    std::string error = "old";
    EXPECT_TRUE(engine().checkChunkSyntax("x = 4", error));
    EXPECT_EQ(text("x") + error, "3old") << "checking syntax runs nothing";
    EXPECT_FALSE(engine().checkChunkSyntax("for", error));
    EXPECT_EQ(error, "[string \"for\"]:1: '<name>' expected near '<eof>'");
    EXPECT_FALSE(engine().executeChunk(
        "local function inner() error('broken') end\nfunction outer() inner() end\n outer()", "@scene.lua", {}));
    EXPECT_EQ(lastOutput(), "scene.lua:1: broken");
    const std::string& traceback = engine().getLastTraceback();
    EXPECT_LT(traceback.find("in function 'inner'"), traceback.find("in function 'outer'")) << traceback;
    EXPECT_NE(traceback.find("'outer'"), std::string::npos) << traceback;
    EXPECT_EQ(top(), 0);
}

TEST_F(KyScriptEngineTest, WithoutACallbackThatWorksErrorsGoToTheErrorReport) {
    KyScriptEngine::setPrintCallback(nullptr);
    EXPECT_FALSE(engine().executeChunk("error('lost', 0)"));
    KyScriptEngine::setPrintCallback([](const std::string&) { throw std::runtime_error("no console"); });
    EXPECT_FALSE(engine().executeChunk("error('x')"));
    EXPECT_EQ(msReports, (Texts{"lost", "print callback : no console"}));
}

TEST_F(KyScriptEngineTest, ResultsAreTheCallsOwnAndAppendedAndPrintedAsFarAsPrintTakesThem) {
    lua_pushnumber(state(), 99);
    std::vector<KyField> results{KyField(7)};
    EXPECT_TRUE(engine().executeChunktWithReturnValues("return 1.5, 'two', true", results));
    EXPECT_EQ(results, (std::vector<KyField>{7, 1.5, "two", true}));
    EXPECT_EQ(top(), 1);
    EXPECT_EQ(lua_tonumber(state(), 1), 99);
    lua_settop(state(), 0);
    engine().setReturnValuesOutput(true);
    engine().executeChunk("function print(...) printed = table.concat({...}, '|') calls = (calls or 0) + 1 end");
    EXPECT_EQ(evaluate("1, 'b', 3").size(), 3u);
    EXPECT_TRUE(engine().executeChunk("assert(printed .. calls == '1|b|31')")) << lastOutput();
    engine().executeChunk("function print() error('no paper', 0) end");
    EXPECT_EQ(evaluate("1").size(), 1u);
    EXPECT_EQ(msOutput, Texts{"no paper"});
    engine().executeChunk("print = function() end t = {} for i = 1, 5000 do t[i] = i end");
    EXPECT_EQ(evaluate("unpack(t)").size(), 5000u);
    EXPECT_EQ(lastOutput(), "stack overflow (too many results to print)");
}

TEST_F(KyScriptEngineTest, FunctionsAreCalledWithFieldsAndVariablesSetPastMetatablesOfTheGlobals) {
    engine().executeChunk("function join(a, b, c) return a .. b, c end function fail() error('down', 0) end");
    std::vector<KyField> results;
    EXPECT_TRUE(engine().callLuaFunction("join", {KyField("x"), KyField(3), KyField(true)}, results));
    EXPECT_EQ(results, (std::vector<KyField>{"x3", true}));
    lua_pushnumber(state(), 1);
    EXPECT_FALSE(engine().callLuaFunction("nothing", {}, results));
    EXPECT_TRUE(msOutput.empty());
    EXPECT_EQ(top(), 0);
    EXPECT_FALSE(engine().callLuaFunction("fail", {}, results));
    lua_getglobal(state(), "fail");
    EXPECT_FALSE(engine().callLuaFunction(luaL_ref(state(), LUA_REGISTRYINDEX)));
    EXPECT_EQ(msOutput, (Texts{"down", "down"}));
    EXPECT_FALSE(engine().callLuaFunction(LUA_NOREF));
    EXPECT_EQ(top(), 0);
    engine().executeChunk("setmetatable(_G, {__newindex = function() error('strict') end,"
                          " __index = function() error('strict') end})");
    engine().setLuaVariable("speed", KyField(2.5));
    EXPECT_EQ(text("speed"), "2.5");
    engine().removeLuaVariable("speed");
    EXPECT_EQ(text("rawget(_G, 'speed')"), "nil");
    EXPECT_FALSE(engine().callLuaFunction("nothing", {}, results));
    EXPECT_EQ(msOutput.size(), 2u);
}

TEST_F(KyScriptEngineTest, NamesOfPublicationsAreVariablesButNoKeywords) {
    KyDynamicObject object;
    for (const char* name : {"nil", "_a9", "string"}) {
        EXPECT_EQ(engine().bindInstance(&object, name), 1) << name;
        EXPECT_EQ(engine().getInstance(name), &object);
        EXPECT_EQ(engine().unbindInstance(name), 1);
    }
    for (const std::string& name : {std::string("end"), std::string("9a"), std::string(), std::string("math"),
                                    std::string("\xE4"), std::string("a\0b", 3), std::string(100000, 'a')})
        EXPECT_EQ(engine().bindInstance(&object, name), -1) << name;
    EXPECT_EQ(engine().bindInstance(nullptr, "a"), -1);
    auto function = kyMakeFunction("f", [] { return 1; });
    EXPECT_EQ(engine().bindFunction("end", function.get()), -1);
    EXPECT_EQ(engine().bindFunction("f", nullptr), -1);
    EXPECT_EQ(engine().bindFunction("f", function.get()), 1);
    EXPECT_EQ(engine().bindFunction("f", function.release()), 0);
    EXPECT_TRUE(msReports.empty());
}

TEST_F(KyScriptEngineTest, AnObjectThatEndsIsWithdrawnAndNotPublishedAgain) {
    auto object = std::make_unique<KyDynamicObject>();
    int again = 99;
    KyConnection connection = engine().unboundSignal.connect(
        [&](KyObject* ending, const std::string& name) { again = engine().bindInstance(ending, name); });
    engine().bindInstance(object.get(), "car");
    engine().executeChunk("kept = car");
    object.reset();
    EXPECT_EQ(again, -1);
    EXPECT_EQ(engine().getInstance("car"), nullptr);
    EXPECT_EQ(text("car") + text("kept.Speed"), "nilnil");
    connection.disconnect();
}

TEST_F(KyScriptEngineTest, PublicationIsSignalledByTheFirstTwoOfItsSignals) {
    EXPECT_EQ(engine().editSignal(0u), &engine().boundSignal);
    EXPECT_EQ(engine().editSignal(1u), &engine().unboundSignal);
    Texts events;
    engine().boundSignal.connect([&](KyObject*, const std::string& name) { events.push_back("+" + name); });
    engine().unboundSignal.connect([&](KyObject*, const std::string& name) { events.push_back("-" + name); });
    KyDynamicObject first;
    KyDynamicObject second;
    EXPECT_EQ(engine().bindInstance(&first, "a"), 1);
    EXPECT_EQ(engine().bindInstance(&first, "b"), 0) << "it has its name";
    EXPECT_EQ(engine().bindInstance(&second, "a"), 1);
    EXPECT_EQ(engine().getInstance("a"), &second);
    engine().unbindInstance(&second);
    EXPECT_EQ(text("a"), "nil");
    EXPECT_EQ(events, (Texts{"+a", "-a", "+a", "-a"}));
}

TEST_F(KyScriptEngineTest, WhatABoundFunctionThrowsIsALuaErrorAndAClassIsBoundOnce) {
    bind("fail", []() -> double { throw std::runtime_error("no fuel"); });
    bind("failOddly", []() -> double { throw 7; });
    EXPECT_EQ(text("select(2, pcall(fail)):match('no fuel')"), "no fuel");
    EXPECT_EQ(text("select(2, pcall(failOddly)):match('unknown C%+%+ exception')"), "unknown C++ exception");
    const KyType& type = *KyDynamicObject::getType();
    EXPECT_TRUE(engine().bindClass(type));
    EXPECT_FALSE(engine().bindClass(type));
    EXPECT_TRUE(engine().isClassBound(*KyObject::getType())) << "with its parents";
    for (const auto& [name, isBound] :
         {std::pair("KyScriptEngine", "true"), {"KyScriptEngine", "false"}, {"None", "false"}})
        EXPECT_EQ(text("bindClass('" + std::string(name) + "')"), isBound) << name;
}

TEST_F(KyScriptEngineTest, ACloneHasTheSamePublicationsAndAStateOfItsOwn) {
    KyDynamicObject object;
    object.addAttribute("Speed", KyField(2.0));
    engine().bindInstance(&object, "car");
    engine().executeChunk("secret = 1");
    std::unique_ptr<KyScriptEngine> copy(KyScriptEngine::cast(engine().clone()));
    ASSERT_NE(copy, nullptr);
    std::vector<KyField> results;
    EXPECT_TRUE(copy->executeChunktWithReturnValues("return car.Speed, tostring(secret)", results));
    EXPECT_EQ(results, (std::vector<KyField>{2.0, "nil"}));
    EXPECT_EQ(&KyScriptEngine::get(), &engine());
}

TEST_F(KyScriptEngineTest, TheStackIsDumpedOneValueALine) {
    lua_pushboolean(state(), 1);
    lua_pushnumber(state(), 2.5);
    lua_pushliteral(state(), "three");
    lua_newtable(state());
    EXPECT_EQ(KyScriptEngine::dumpStack(nullptr, "here"), 0);
    const std::string dump = lastOutput();
    EXPECT_TRUE(dump.starts_with("--- Begin Stack dump #")) << dump;
    EXPECT_NE(dump.find(" ---\n [ here ] \ntrue\n2.5\nthree\ntable\n--- End Stack dump #"), std::string::npos) << dump;
    lua_settop(state(), 0);
}

} // namespace
