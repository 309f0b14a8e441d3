// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptEngineFixture.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace {

using KyScriptEngineTest = KyScriptEngineFixture;

TEST_F(KyScriptEngineTest, AChunkRunsAndLeavesTheStackAsItWas) {
    EXPECT_TRUE(engine().executeChunk("x = 1 + 2 return 1, 2, 3"));
    EXPECT_EQ(text("x"), "3");
    EXPECT_EQ(top(), 0);
}

TEST_F(KyScriptEngineTest, ASyntaxErrorIsReportedAsLuasOwnMessage) {
    EXPECT_FALSE(engine().executeChunk("x = = 1"));
    EXPECT_EQ(msOutput, std::vector<std::string>{"[string \"x = = 1\"]:1: unexpected symbol near '='"});
    EXPECT_EQ(top(), 0);
}

TEST_F(KyScriptEngineTest, ARuntimeErrorIsReportedUnchangedAndItsTracebackKept) {
    EXPECT_FALSE(engine().executeChunk(
        "local function inner() error('broken') end\nfunction outer() inner() end\n outer()", "@scene.lua", {}));
    EXPECT_EQ(lastOutput(), "scene.lua:1: broken");
    const std::string& traceback = engine().getLastTraceback();
    EXPECT_NE(traceback.find("in function 'inner'"), std::string::npos) << traceback;
    EXPECT_NE(traceback.find("in function 'outer'"), std::string::npos) << traceback;
    EXPECT_LT(traceback.find("'inner'"), traceback.find("'outer'"));
}

TEST_F(KyScriptEngineTest, TheChunkNameStandsInMessages) {
    EXPECT_FALSE(engine().executeChunk("nothing()", "plain", {}));
    EXPECT_EQ(lastOutput(), "[string \"plain\"]:1: attempt to call global 'nothing' (a nil value)");
}

TEST_F(KyScriptEngineTest, WithoutACallbackErrorsGoToTheErrorReport) {
    KyScriptEngine::setPrintCallback(nullptr);
    EXPECT_FALSE(engine().executeChunk("error('lost', 0)"));
    EXPECT_EQ(msReports, std::vector<std::string>{"lost"});
}

TEST_F(KyScriptEngineTest, AThrowingPrintCallbackIsReported) {
    KyScriptEngine::setPrintCallback([](const std::string&) { throw std::runtime_error("no console"); });
    EXPECT_FALSE(engine().executeChunk("error('x')"));
    EXPECT_EQ(msReports, std::vector<std::string>{"print callback : no console"});
}

TEST_F(KyScriptEngineTest, ResultsAreAppendedAsFields) {
    std::vector<KyField> results{KyField(7)};
    EXPECT_TRUE(engine().executeChunktWithReturnValues("return 1.5, 'two', true", results));
    ASSERT_EQ(results.size(), 4u);
    EXPECT_EQ(results[0].toInt(), 7);
    EXPECT_EQ(results[1].toDouble(), 1.5);
    EXPECT_EQ(results[2].toString(), "two");
    EXPECT_TRUE(results[3].toBool());
}

TEST_F(KyScriptEngineTest, AFailedChunkLeavesTheResultsAlone) {
    std::vector<KyField> results{KyField(7)};
    EXPECT_FALSE(engine().executeChunktWithReturnValues("error('x') return 1", results));
    EXPECT_EQ(results.size(), 1u);
}

TEST_F(KyScriptEngineTest, ResultsAreTheCallsOwnWhenTheHostHasValuesOnTheStack) {
    lua_pushnumber(state(), 99);
    EXPECT_EQ(evaluate("5, 6").size(), 2u);
    EXPECT_EQ(top(), 1);
    EXPECT_EQ(lua_tonumber(state(), 1), 99);
    lua_settop(state(), 0);
}

TEST_F(KyScriptEngineTest, PrintedResultsGoThroughTheScriptsPrintAndStayResults) {
    engine().executeChunk("function print(...) printed = table.concat({...}, '|') calls = (calls or 0) + 1 end");
    engine().setReturnValuesOutput(true);
    EXPECT_TRUE(engine().areReturnValuesOutput());
    EXPECT_EQ(evaluate("1, 'b', 3").size(), 3u);
    EXPECT_TRUE(engine().executeChunk("local nothing = 1"));
    engine().setReturnValuesOutput(false);
    EXPECT_EQ(text("printed"), "1|b|3");
    EXPECT_EQ(text("calls"), "1");
}

TEST_F(KyScriptEngineTest, AnErrorInPrintIsReportedAndTheChunkSucceeds) {
    engine().executeChunk("function print() error('no paper', 0) end");
    engine().setReturnValuesOutput(true);
    EXPECT_EQ(evaluate("1").size(), 1u);
    EXPECT_EQ(msOutput, std::vector<std::string>{"no paper"});
    engine().executeChunk("print = nil");
    EXPECT_EQ(evaluate("1").size(), 1u);
}

TEST_F(KyScriptEngineTest, CheckingSyntaxRunsNothing) {
    std::string error = "old";
    EXPECT_TRUE(engine().checkChunkSyntax("ran = true", error));
    EXPECT_EQ(error, "old");
    EXPECT_EQ(text("ran"), "nil");
    EXPECT_FALSE(engine().checkChunkSyntax("for", error));
    EXPECT_EQ(error, "[string \"for\"]:1: '<name>' expected near '<eof>'");
    EXPECT_TRUE(msOutput.empty());
    EXPECT_EQ(top(), 0);
}

TEST_F(KyScriptEngineTest, AGlobalFunctionIsCalledWithFields) {
    engine().executeChunk("function join(a, b, c) return a .. b, c end");
    std::vector<KyField> results;
    EXPECT_TRUE(engine().callLuaFunction("join", {KyField("x"), KyField(3), KyField(true)}, results));
    ASSERT_EQ(results.size(), 2u);
    EXPECT_EQ(results[0].toString(), "x3");
    EXPECT_TRUE(results[1].toBool());
}

TEST_F(KyScriptEngineTest, CallingWhatIsNoFunctionFailsSilentlyAndClearsTheStack) {
    std::vector<KyField> results;
    lua_pushnumber(state(), 1);
    EXPECT_FALSE(engine().callLuaFunction("nothing", {}, results));
    EXPECT_TRUE(msOutput.empty());
    EXPECT_EQ(top(), 0);
}

TEST_F(KyScriptEngineTest, AnErrorInACalledFunctionIsReported) {
    engine().executeChunk("function fail() error('down', 0) end");
    std::vector<KyField> results;
    EXPECT_FALSE(engine().callLuaFunction("fail", {}, results));
    EXPECT_EQ(lastOutput(), "down");
    EXPECT_TRUE(results.empty());
    EXPECT_EQ(top(), 0);
}

TEST_F(KyScriptEngineTest, AFunctionOfTheRegistryIsCalledByItsReference) {
    lua_pushnumber(state(), 5);
    engine().executeChunk("function tick() ticks = (ticks or 0) + 1 end");
    lua_getglobal(state(), "tick");
    const int reference = luaL_ref(state(), LUA_REGISTRYINDEX);
    EXPECT_TRUE(engine().callLuaFunction(reference));
    EXPECT_TRUE(engine().callLuaFunction(reference));
    EXPECT_FALSE(engine().callLuaFunction(LUA_NOREF));
    EXPECT_EQ(top(), 1);
    EXPECT_EQ(text("ticks"), "2");
}

TEST_F(KyScriptEngineTest, VariablesAreSetPastMetatablesOfTheGlobals) {
    engine().executeChunk("setmetatable(_G, {__newindex = function() error('strict') end,"
                          " __index = function() error('strict') end})");
    engine().setLuaVariable("speed", KyField(2.5));
    EXPECT_EQ(text("speed"), "2.5");
    engine().removeLuaVariable("speed");
    EXPECT_EQ(text("rawget(_G, 'speed')"), "nil");
    std::vector<KyField> results;
    EXPECT_FALSE(engine().callLuaFunction("nothing", {}, results));
    EXPECT_TRUE(msOutput.empty());
}

struct NameCase {
    const char* name;
    int result;
};

void PrintTo(const NameCase& nameCase, std::ostream* stream) {
    *stream << '"' << nameCase.name << '"';
}

class KyPublicationNameTest : public KyScriptEngineFixture, public ::testing::WithParamInterface<NameCase> {};

TEST_P(KyPublicationNameTest, IsAcceptedOrRefused) {
    KyDynamicObject object;
    EXPECT_EQ(engine().bindInstance(&object, GetParam().name), GetParam().result);
    EXPECT_EQ(engine().getInstance(GetParam().name) == &object, GetParam().result == 1);
}

INSTANTIATE_TEST_SUITE_P(Names, KyPublicationNameTest,
                         ::testing::Values(NameCase{"nil", 1}, NameCase{"_a9", 1}, NameCase{"Z", 1},
                                           NameCase{"end", -1}, NameCase{"9a", -1}, NameCase{"", -1},
                                           NameCase{"a b", -1}, NameCase{"math", -1}, NameCase{"in", -1},
                                           NameCase{"\xE4", -1}, NameCase{"a\n", -1}, NameCase{"string", 1}));

TEST_F(KyScriptEngineTest, NamesWithZerosAndEndlessNamesAreRefused) {
    KyDynamicObject object;
    EXPECT_EQ(engine().bindInstance(&object, std::string("a\0b", 3)), -1);
    EXPECT_EQ(engine().bindInstance(&object, std::string(100000, 'a')), -1);
    EXPECT_EQ(engine().bindInstance(nullptr, "a"), -1);
    EXPECT_TRUE(msReports.empty());
}

TEST_F(KyScriptEngineTest, TheKeywordsAreHandedOut) {
    const auto& keywords = KyScriptEngine::getLuaKeywords();
    EXPECT_EQ(keywords.size(), 25u);
    EXPECT_EQ(std::count(keywords.begin(), keywords.end(), "in"), 2);
    EXPECT_EQ(std::count(keywords.begin(), keywords.end(), "nil"), 0);
    EXPECT_EQ(keywords.back(), "package");
}

TEST_F(KyScriptEngineTest, APublishedObjectIsAGlobalUntilItIsWithdrawn) {
    KyDynamicObject object;
    object.addAttribute("Speed", KyField(2.0));
    std::string name;
    EXPECT_FALSE(engine().isInstanceBound(&object, name));
    EXPECT_EQ(engine().bindInstance(&object, "car"), 1);
    EXPECT_EQ(engine().bindInstance(&object, "other"), 0);
    EXPECT_TRUE(engine().isInstanceBound(&object, name));
    EXPECT_EQ(name, "car");
    EXPECT_EQ(text("car.Speed"), "2");
    EXPECT_EQ(engine().unbindInstance("car"), 1);
    EXPECT_EQ(engine().unbindInstance("car"), -1);
    EXPECT_EQ(engine().unbindInstance(&object), -1);
    EXPECT_EQ(text("car"), "nil");
}

TEST_F(KyScriptEngineTest, AnObjectThatEndsIsWithdrawn) {
    auto object = std::make_unique<KyDynamicObject>();
    engine().bindInstance(object.get(), "car");
    engine().executeChunk("kept = car");
    object.reset();
    EXPECT_EQ(engine().getInstance("car"), nullptr);
    EXPECT_EQ(text("car"), "nil");
    EXPECT_EQ(text("kept.Speed"), "nil");
}

TEST_F(KyScriptEngineTest, PublicationIsSignalled) {
    std::vector<std::string> events;
    engine().boundSignal.connect([&](KyObject*, const std::string& name) { events.push_back("+" + name); });
    engine().unboundSignal.connect([&](KyObject*, const std::string& name) { events.push_back("-" + name); });
    KyDynamicObject first;
    KyDynamicObject second;
    engine().bindInstance(&first, "a");
    engine().bindInstance(&second, "a");
    EXPECT_EQ(engine().getInstance("a"), &second);
    engine().unbindInstance(&second);
    EXPECT_EQ(events, (std::vector<std::string>{"+a", "-a", "+a", "-a"}));
}

TEST_F(KyScriptEngineTest, ItsOwnSignalsComeFirst) {
    EXPECT_EQ(engine().getSignalName(0), "boundSignal");
    EXPECT_EQ(engine().getSignalName(1), "unboundSignal");
    EXPECT_EQ(engine().getSignalName(2), "modifiedSignal");
    EXPECT_EQ(engine().editSignal(0u), &engine().boundSignal);
    EXPECT_EQ(engine().editSignal("unboundSignal"), &engine().unboundSignal);
    EXPECT_EQ(engine().editSignal(3u), nullptr);
    EXPECT_EQ(engine().getNbSignals(), 3u);
}

TEST_F(KyScriptEngineTest, FunctionsOfOneNameAreOverloads) {
    bind("describe", [](double) { return std::string("number"); });
    bind("describe", [](const std::string&) { return std::string("text"); });
    bind("describe", [](double, double) { return std::string("two"); });
    EXPECT_EQ(text("describe(1)"), "number");
    EXPECT_EQ(text("describe('a')"), "text");
    EXPECT_EQ(text("describe(1, 2)"), "two");
    EXPECT_FALSE(engine().executeChunk("describe(1, 2, 3)"));
    EXPECT_NE(lastOutput().find("error in invoke for type describe"), std::string::npos) << lastOutput();
}

TEST_F(KyScriptEngineTest, FunctionsAreRefusedLikeInstances) {
    auto function = kyMakeFunction("f", [] { return 1; });
    EXPECT_EQ(engine().bindFunction("f", nullptr), -1);
    EXPECT_EQ(engine().bindFunction("end", function.get()), -1);
    EXPECT_EQ(engine().bindFunction("2f", function.get()), -1);
    EXPECT_EQ(engine().bindFunction("f", function.get()), 1);
    EXPECT_EQ(engine().bindFunction("f", function.get()), 0);
    function.release();
}

TEST_F(KyScriptEngineTest, WhatABoundFunctionThrowsIsALuaError) {
    bind("fail", []() -> double { throw std::runtime_error("no fuel"); });
    bind("failOddly", []() -> double { throw 7; });
    EXPECT_FALSE(engine().executeChunk("fail()"));
    EXPECT_NE(lastOutput().find("no fuel"), std::string::npos) << lastOutput();
    EXPECT_EQ(text("select(2, pcall(failOddly)):match('unknown C%+%+ exception') ~= nil"), "true");
    engine().executeChunk("for i = 1, 1000 do pcall(fail) end");
    EXPECT_EQ(text("1"), "1");
}

TEST_F(KyScriptEngineTest, AClassIsBoundOnce) {
    const KyType& type = *KyDynamicObject::getType();
    EXPECT_FALSE(engine().isClassBound(type));
    EXPECT_TRUE(engine().bindClass(type));
    EXPECT_FALSE(engine().bindClass(type));
    EXPECT_TRUE(engine().isClassBound(type));
    EXPECT_TRUE(engine().isClassBound(*KyObject::getType()));
    std::string name;
    EXPECT_TRUE(engine().getBoundTypeName(&typeid(KyDynamicObject), name));
    EXPECT_EQ(name, "KyDynamicObject");
    EXPECT_FALSE(engine().getBoundTypeName(&typeid(int), name));
    EXPECT_FALSE(engine().getBoundTypeName(nullptr, name));
}

TEST_F(KyScriptEngineTest, ScriptsBindClassesByName) {
    EXPECT_EQ(text("bindClass('KyDynamicObject')"), "true");
    EXPECT_EQ(text("bindClass('KyDynamicObject')"), "false");
    EXPECT_EQ(text("bindClass('NoSuchType')"), "false");
    engine().bindAllClasses();
    EXPECT_EQ(text("type(KyScriptEngine)"), "table");
}

TEST_F(KyScriptEngineTest, ACloneHasTheSamePublicationsAndAStateOfItsOwn) {
    KyDynamicObject object;
    object.addAttribute("Speed", KyField(2.0));
    engine().bindInstance(&object, "car");
    engine().executeChunk("secret = 1");
    std::unique_ptr<KyScriptEngine> copy(KyScriptEngine::cast(engine().clone()));
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getInstance("car"), &object);
    EXPECT_NE(copy->editLuaState(), state());
    std::vector<KyField> results;
    EXPECT_TRUE(copy->executeChunktWithReturnValues("return car.Speed, secret", results));
    ASSERT_GE(results.size(), 1u);
    EXPECT_EQ(results[0].toDouble(), 2.0);
    EXPECT_TRUE(results.size() == 1 || results[1].isEmpty());
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
    EXPECT_TRUE(dump.ends_with(" ---")) << dump;
    EXPECT_EQ(lua_type(state(), 2), LUA_TNUMBER);
    EXPECT_FALSE(engine().assertEmptyStack(nullptr, ""));
    EXPECT_EQ(msOutput.size(), 2u);
    lua_settop(state(), 0);
    EXPECT_TRUE(engine().assertEmptyStack(state(), ""));
    EXPECT_EQ(msOutput.size(), 2u);
}

TEST_F(KyScriptEngineTest, ThereIsOneEngineBetweenInitialiseAndFinalise) {
    KyScriptEngine* first = KyScriptEngine::find();
    KyScriptEngine::initializeClass();
    EXPECT_EQ(KyScriptEngine::find(), first);
    KyScriptEngine::finalizeClass();
    EXPECT_EQ(KyScriptEngine::find(), nullptr);
    KyScriptEngine::initializeClass();
    KyLuaBinder::bind();
    EXPECT_TRUE(engine().executeChunk("assert(createKyObject)"));
}

TEST_F(KyScriptEngineTest, AnObjectThatIsEndingIsNotPublishedAgain) {
    auto* object = new KyDynamicObject;
    int again = 99;
    KyConnection connection = engine().unboundSignal.connect(
        [&](KyObject* ending, const std::string& name) { again = engine().bindInstance(ending, name); });
    ASSERT_EQ(engine().bindInstance(object, "object"), 1);
    object->destroy();
    EXPECT_EQ(again, -1);
    EXPECT_EQ(engine().getInstance("object"), nullptr);
    connection.disconnect();
}

TEST_F(KyScriptEngineTest, MoreResultsThanPrintTakesAreStillResults) {
    engine().setReturnValuesOutput(true);
    std::vector<KyField> results;
    EXPECT_TRUE(engine().executeChunktWithReturnValues(
        "print = function() end local t = {} for i = 1, 5000 do t[i] = i end return unpack(t)", results));
    EXPECT_EQ(results.size(), 5000u);
    EXPECT_EQ(lastOutput(), "stack overflow (too many results to print)");
}

} // namespace
