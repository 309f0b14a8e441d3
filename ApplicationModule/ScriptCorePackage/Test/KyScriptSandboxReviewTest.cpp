// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptSandbox.h"

#include "KyLuaTestObjects.h"
#include "KyScriptTestFixture.h"

#include "KyBoundFunction.h"
#include "KyDeviceManagerObject.h"
#include "KyDynamicObject.h"
#include "KyMeshNode.h"
#include "KyProgress.h"
#include "KyTypeBuilder.h"

#include <QDebug>

#include <chrono>
#include <cmath>
#include <limits>
#include <thread>
#include <vector>

#include <lua.hpp>

namespace {

/// What a host registers of its own.
class SandboxTestDoor : public LuaTestClass<SandboxTestDoor, KyNode> {
public:
    static const KyType* describe() {
        return KyTypeBuilder<SandboxTestDoor>("SandboxTestDoor", KyNode::getType())
            .factory()
            .attribute("Slow", &SandboxTestDoor::waitForIt)
            .attribute("Width", &SandboxTestDoor::mWidth, &SandboxTestDoor::setWidth)
            .method("open", &SandboxTestDoor::waitForIt)
            .staticMethod("unlockAll", [] { return true; })
            .signal<&SandboxTestDoor::mOpened>("opened")
            .build();
    }
    bool setWidth(double width) {
        mWidth = width;
        return true;
    }
    int waitForIt() const {
        std::this_thread::sleep_for(std::chrono::milliseconds(mMilliseconds));
        return ++mNbWaits;
    }

    double mWidth = 1;
    int mMilliseconds = 0;
    mutable int mNbWaits = 0;
    KySignal<> mOpened{"opened"};
};

class KyScriptSandboxReviewTest : public KyScriptTestFixture {
protected:
    void SetUp() override {
        KyDynamicObject::initializeType();
        KyMeshNode::initializeType();
        KyScriptTestFixture::SetUp();
        KyLuaBinder::bind();
        SandboxTestDoor::getType();
        mDoor.addReference();
        mLimits.instructions = 20'000'000;
        mLimits.seconds = 1;
        mLimits.output = 4096;
        mLimits.message = 2000;
        ASSERT_TRUE(sandbox().enable(mLimits));
        ASSERT_EQ(1, engine().bindFunction(
                         "getDoor", kyMakeFunction("getDoor", [this]() -> KyObject* { return &mDoor; }).release()));
    }
    void TearDown() override {
        KyScriptTestFixture::TearDown();
        mDoor.removeReference();
        SandboxTestDoor::finalizeType();
    }
    static KyScriptSandbox& sandbox() { return engine().editSandbox(); }

    KyScriptLimits mLimits;
    SandboxTestDoor& mDoor = *new SandboxTestDoor;
};

constexpr const char* cUses[] = {"return getDoor().Width", "getDoor().Width = 2", "getDoor():open()",
                                 "SandboxTestDoor.open(getDoor())",
                                 "assert(#getDoor().Children == 0) return getDoor().Slow"};
constexpr const char* cMakings[] = {"createKyObject('SandboxTestDoor')", "SandboxTestDoor()",
                                    "return SandboxTestDoor.unlockAll()"};

TEST_F(KyScriptSandboxReviewTest, TypesOfTheHostAreWithheldUntilItPublishesAnObjectOrGivesThemAway) {
    const auto expectAll = [](const auto& chunks, bool areWithheld) {
        for (const char* const chunk : chunks) {
            const std::string output = run("bindAllClasses() " + std::string(chunk));
            EXPECT_EQ(areWithheld, output.find("is withheld") != std::string::npos) << chunk << ": " << output;
            EXPECT_EQ(areWithheld, !output.empty()) << chunk << ": " << output;
        }
    };
    expectAll(cUses, true);
    expectAll(cMakings, true);
    EXPECT_FALSE(KyScriptSandbox::isTypeReviewed(*SandboxTestDoor::getType()));
    expectRuns("getDoor().Name = 'door' getDoor():translate(1, 0, 0) assert(getDoor().Position.x == 1)");
    ASSERT_EQ(1, engine().bindInstance(&mDoor, "door"));
    expectAll(cUses, false);
    expectAll(cMakings, true);
    expectRuns("door.Width = 5 assert(door.Width == 5)");
    ASSERT_EQ(1, engine().unbindInstance("door"));
    expectAll(cUses, true);
    sandbox().allowType(*SandboxTestDoor::getType());
    expectAll(cUses, false);
    expectAll(cMakings, false);
    engine().resetLuaState();
    KyLuaBinder::bind();
    EXPECT_TRUE(sandbox().isTypeAllowed(*SandboxTestDoor::getType()));
    expectAll(cMakings, false);
}

TEST_F(KyScriptSandboxReviewTest, GlobalsThatNobodyHasReviewedOrGivenAreTakenAway) {
    const auto enter = [](lua_State* state) {
        const bool hasFailed = luaL_dostring(
            state,
            "prelude = function() return 'prelude' end settings = {size = 3, at = Vec3(1, 2, 3)} "
            "alias = print file = require and io.stdout read = io.open string.read = io.open "
            "tools = {read = io.open} deep = {one = {2}} Mine = URL Res = Resource info = ResourceInformation(URL())");
        ASSERT_FALSE(hasFailed) << lua_tostring(state, -1);
        lua_register(state, "spared", [](lua_State*) { return 0; });
        lua_register(state, "native", [](lua_State*) { return 0; });
    };
    KyScriptEngine::finalizeClass();
    KyScriptEngine::initializeClass();
    enter(engine().editLuaState());
    KyLuaBinder::bind();
    const std::string others = "file, read, string.read, tools, Res, info, native";
    sandbox().allowGlobal("spared");
    ASSERT_TRUE(sandbox().enable(mLimits));
    EXPECT_EQ(eval(others), "nil, nil, nil, nil, nil, nil, nil");
    EXPECT_EQ(eval("prelude(), settings.size, settings.at.z, alias == print, deep.one[1], Mine == URL, type(spared)"),
              "prelude, 3, 3, true, 2, true, function");
    // Later ones are the host's word until it enables the sandbox again.
    lua_register(engine().editLuaState(), "native", [](lua_State*) { return 0; });
    EXPECT_EQ(eval("type(native)"), "function");
    expectRuns("p = print t = {say = print, node = KyNode} n = createKyObject('KyNode') c = n.Children");
    ASSERT_TRUE(sandbox().enable(mLimits));
    EXPECT_EQ(eval("native, p == print, type(t), n.Name, type(KyNode), type(connect)"),
              "nil, true, table, , table, nil");
}

/// Enters what leads to a C function of the host by another way each.
void enterSecrets(lua_State* state) {
    lua_register(state, "secret", [](lua_State*) { return 0; });
    const bool hasFailed = luaL_dostring(
        state,
        "libs = {io = io, debug = {debug}, loaded = package.loaded} nested = {['in'] = {{{f = secret}}}} "
        "behind = setmetatable({}, {__index = {f = secret}}) keyed = {[secret] = 1} deepKeys = {[{secret}] = 1} "
        "circle = {} circle[1] = {circle, {circle, secret}} _G[secret] = 'key' "
        "aim = setfenv(function() return f end, {f = secret}) aims = {setfenv(function() end, {{io.stdout}})} "
        "print2, select2 = print, {print, {select}} prelude = function() return secret end "
        "good = {} good.own, good.all = good, setmetatable({f = function() return 'good' end}, {__index = _G}) "
        "local deep = {} for i = 1, 3e5 do deep = {deep} end depth = deep "
        "string.more = {secret} math.own = setfenv(function() end, {secret}) setmetatable(os, {__index = {secret}}) "
        "setmetatable(_G, {__index = {f = secret}}) debug.setmetatable(1, {__index = {f = secret}}) "
        "debug.setmetatable(print, {__index = {f = secret}}) debug.setmetatable(true, {__index = {f = 5}}) "
        "hostIo, hostOpen = io, function() return io.open end io = nil "
        "kept = (function() local held = secret return function() return type(held) end end)()");
    ASSERT_FALSE(hasFailed) << lua_tostring(state, -1);
}

TEST_F(KyScriptSandboxReviewTest, WhatLeadsToUnknownFunctionsIsTakenAwayHoweverDeep) {
    KyScriptEngine::finalizeClass();
    KyScriptEngine::initializeClass();
    enterSecrets(engine().editLuaState());
    KyLuaBinder::bind();
    ASSERT_TRUE(sandbox().enable(mLimits));
    expectTexts({
        {"secret, nested, behind, keyed, deepKeys, circle", "nil, nil, nil, nil, nil, nil"},
        {"aim, aims, string.more, math.own, getmetatable(os), getmetatable(_G)", "nil, nil, nil, nil, nil, nil"},
        {"libs and (libs.io.open or libs.debug[1].getregistry or libs.loaded.io.open)", "nil"},
        {"io, debug, package, hostIo and (hostIo.open or hostIo.stdout)", "nil, nil, nil, nil"},
        {"pcall(function() return (1).f end) and 1", "false"},
        {"pcall(function() return print.f end) and 1, (true).f", "false, 5"},
        {"pcall(hostOpen) and 1, prelude(), kept()", "false, nil, function"},
        {"print2 == print, select2[2][1] == select, good.own == good, good.all.f(), good.all.type(1), type(depth)",
         "true, true, true, good, number, table"},
    });
    expectRuns("for key in pairs(_G) do assert(type(key) == 'string') end");
}

TEST_F(KyScriptSandboxReviewTest, ManyWaysToTheSameDoNotHoldUpTheHost) {
    expectRuns("local many, last = {}, ('x'):gmatch('.') for i = 1, 2e5 do many[i] = i end "
               "for i = 1, 3000 do _G['way' .. i] = {many, {last}} end");
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(sandbox().enable(mLimits));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(12));
    EXPECT_EQ(eval("way1, way3000, type(string.rep)"), "nil, nil, function");
}

TEST_F(KyScriptSandboxReviewTest, LibrariesThatTheHostGivesStayWhole) {
    KyScriptEngine::finalizeClass();
    KyScriptEngine::initializeClass();
    KyLuaBinder::bind();
    sandbox().allowGlobal("io");
    ASSERT_TRUE(sandbox().enable(mLimits));
    EXPECT_EQ(eval("type(io.open), io.type(io.stdout), debug"), "function, file, nil");
}

TEST_F(KyScriptSandboxReviewTest, DevicesAreNeitherOpenedNorScanned) {
    KyDeviceManagerObject::initializeType();
    ASSERT_EQ(1, engine().bindInstance(KyDeviceManagerObject::get(), "devices"));
    expectOutput({
        {"devices:openDevice('Joystick', 'pad', '')", "KyDeviceManagerObject.openDevice is withheld"},
        {"devices.releaseDevice(devices, 'Joystick', nil)", "KyDeviceManagerObject.releaseDevice is withheld"},
        {"devices:rescanDevices()", "KyDeviceManagerObject.rescanDevices is withheld"},
    });
    EXPECT_EQ(eval("devices.NbDevices"), "0");
    ASSERT_EQ(1, engine().unbindInstance("devices"));
    KyDeviceManagerObject::finalizeClass();
}

TEST_F(KyScriptSandboxReviewTest, WithoutTimeNothingRuns) {
    expectRuns("ran = 0 function go() ran = ran + 1 end");
    ASSERT_TRUE(engine().executeChunkAsCoroutine("while true do coroutine.yield() ran = ran + 1 end"));
    for (const double seconds : {0.0, -1.0, -1e300, std::nan(""), -std::numeric_limits<double>::infinity()}) {
        mLimits.seconds = seconds;
        ASSERT_TRUE(sandbox().enable(mLimits));
        EXPECT_EQ(sandbox().getLimits().seconds, 0);
        EXPECT_EQ(run("ran = 1"), "sandbox: more than 0 seconds") << seconds;
        msOutput.clear();
        std::vector<KyField> results;
        EXPECT_FALSE(engine().callLuaFunction("go", {}, results));
        EXPECT_NE(msOutput.find("sandbox: more than 0 seconds"), std::string::npos) << msOutput;
        engine().resumeCoroutines(0.01);
    }
    mLimits.seconds = std::numeric_limits<double>::infinity();
    ASSERT_TRUE(sandbox().enable(mLimits));
    EXPECT_EQ(eval("ran"), "0");
}

TEST_F(KyScriptSandboxReviewTest, LongTextsEndWhileTheyAreCompiled) {
    mLimits.seconds = 0.3;
    ASSERT_TRUE(sandbox().enable(mLimits));
    for (const char* const text : {"'return a' .. (' and a'):rep(2e5)", "'return a' .. (' or a'):rep(2e5)",
                                   "'while a do ' .. ('if a then break end '):rep(3e5) .. 'end'",
                                   "'if a then ' .. ('elseif a then '):rep(2e5) .. 'end'"}) {
        const std::string chunk = std::string("local s = ") + text;
        const auto begin = std::chrono::steady_clock::now();
        const std::string limit = "sandbox: more than 0.3 seconds";
        EXPECT_NE(run(chunk + " loadstring(s)").find(limit), std::string::npos) << text << ": " << msOutput;
        EXPECT_NE(run(chunk + " load(function() local t = s s = nil return t end)").find(limit), std::string::npos);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10)) << text;
    }
    std::string condition = "return a";
    for (int i = 0; i < 200'000; ++i)
        condition += " and a";
    std::string error;
    EXPECT_FALSE(engine().checkChunkSyntax(condition, error));
    EXPECT_NE(run(condition).find("more than 0.3 seconds"), std::string::npos) << msOutput;
    EXPECT_FALSE(engine().executeChunkAsCoroutine(condition));
    // A text of many pieces, from a function that gives them one by one.
    EXPECT_EQ(eval("loadstring('return ' .. ('1 + '):rep(180) .. '1')()"), "181");
    EXPECT_EQ(eval("(function() local n = 0 return load(function() n = n + 1 return n < 400 and ('x'):rep(n) .. '=n ' "
                   "or nil end) ~= nil end)()"),
              "true");
}

TEST_F(KyScriptSandboxReviewTest, LongSetsOfPatternsCount) {
    for (const char* const find :
         {"('a'):rep(1e4):find('[' .. ('b'):rep(4e6) .. ']')", "('a'):rep(1e4):find('%f[' .. ('b'):rep(4e6) .. ']')"}) {
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_NE(run(find).find("sandbox: more than"), std::string::npos) << find << ": " << msOutput;
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(4)) << find;
    }
}

TEST_F(KyScriptSandboxReviewTest, SlowAttributesAndElementsEndWithTheTime) {
    ASSERT_EQ(1, engine().bindInstance(&mDoor, "door"));
    mDoor.mMilliseconds = 30;
    for (const char* const chunk :
         {"for i = 1, 1e6 do local x = door.Slow end", "local f = door.open while true do pcall(f, door) end"}) {
        const int former = mDoor.mNbWaits;
        EXPECT_NE(run(chunk).find("more than 1 seconds"), std::string::npos) << chunk << ": " << msOutput;
        EXPECT_LT(mDoor.mNbWaits - former, 60) << chunk;
    }
}

TEST_F(KyScriptSandboxReviewTest, BoundsWhatIsHandedToObjectsAndLargeValues) {
    mLimits.processMemory = std::size_t{200} << 20;
    ASSERT_EQ(1, engine().bindInstance(&KyProgress::get(), "progress"));
    ASSERT_TRUE(sandbox().enable(mLimits));
    const std::string node = "local n = createKyObject('KyMeshNode') ";
    const std::string web = "local t = {1} for i = 1, 40 do t = {t, t} end ";
    expectOutput({
        {node + "n.Name = ('x'):rep(2e6)", "bytes of text"},
        {node + "n:find(('x'):rep(2e6))", "bytes of text"},
        {"URL(('x'):rep(2e6))", "bytes of text"},
        {node + "n:find(unpack({}, 1, 100))", "64 arguments"},
        {node + web + "for i = 1, 100 do pcall(n.setScale, n, t, t, t, t) end", "sandbox: more than"},
        {"v = IntVector() for i = 1, 2e6 do v:push_back(i) end", "sandbox: more than"},
        {"local t, f = {}, IntVector for i = 1, 1e5 do t[i] = f(v) end", "sandbox: more than"},
        {"local u, t = URL('http://a/' .. ('x'):rep(9e5)), {} collectgarbage() for i = 1, 1e5 do t[i] = URL(u) end",
         "sandbox: more than"},
        {"local u = URL('http://a/' .. ('x'):rep(9e5)) local f, t = u.getAbsoluteURL, {} collectgarbage() "
         "for i = 1, 1e5 do t[i] = f(u, u) end",
         "sandbox: more than"},
        {"progress:cancel()", "KyProgress.cancel is withheld"},
    });
}

TEST_F(KyScriptSandboxReviewTest, CutsFloodsOfMessagesOfQt) {
    static std::size_t nbBytes = 0;
    const QtMessageHandler former = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { nbBytes += std::size_t(text.size()); });
    ASSERT_EQ(1, engine().bindFunction("complain", kyMakeFunction("complain", [] {
                                                       qWarning() << QString(99, QLatin1Char('x'));
                                                   }).release()));
    EXPECT_NE(run("for i = 1, 1000 do complain() end").find("more than 4096 bytes printed"), std::string::npos);
    EXPECT_GT(nbBytes, 3000u);
    EXPECT_LE(nbBytes, mLimits.output);
    qWarning() << QString(5000, QLatin1Char('x'));
    EXPECT_GT(nbBytes, 5000u) << "the host's own are told";
    qInstallMessageHandler(former);
}

} // namespace
