// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestFixture.h"

#include "KyBoundFunction.h"

class KyLuaMethodTest : public KyLuaTestFixture {
protected:
    void SetUp() override {
        KyLuaTestFixture::SetUp();
        engine().bindInstance(&mLamp, "lamp");
    }

    LuaTestLamp mLamp;
};

TEST_F(KyLuaMethodTest, AMethodTakesArgumentsAndGivesItsResult) {
    EXPECT_EQ(eval("lamp:add(2, 3)"), "6");
    EXPECT_EQ(eval("LuaTestLamp.add(lamp, 2, 3)"), "6");
    EXPECT_EQ(eval("select('#', lamp:touch())"), "0");
    EXPECT_EQ(eval("select('#', lamp:getNothing())"), "1");
    EXPECT_EQ(eval("lamp:getNothing()"), "nil");
}

TEST_F(KyLuaMethodTest, StaticMethodsTakeNoObject) {
    EXPECT_EQ(eval("LuaTestLamp.sum(2, 3)"), "5");
    EXPECT_EQ(eval("lamp.sum(2, 3)"), "5");
    EXPECT_TRUE(contains(eval("LuaTestLamp.sum(2)"), "error in invoke for type LuaTestLamp: "));
}

TEST_F(KyLuaMethodTest, OverloadsAreChosenByTheArguments) {
    EXPECT_EQ(eval("lamp:describe(1)"), "number");
    EXPECT_EQ(eval("lamp:describe('one')"), "text");
    EXPECT_EQ(eval("lamp:describe(lamp)"), "lamp");
    EXPECT_EQ(eval("lamp:describe(1, 'one')"), "both");
    EXPECT_TRUE(contains(eval("lamp:describe({}, {})"), "error in invoke for type LuaTestLamp: "));
    EXPECT_TRUE(contains(eval("lamp:describe()"), "error in invoke for type LuaTestLamp: "));
}

TEST_F(KyLuaMethodTest, ListsCrossAsTables) {
    EXPECT_EQ(eval("lamp:join{'a', 'b'}"), "a;b;");
    EXPECT_EQ(eval("lamp:join{}"), "");
    mLamp.mPower = 4;
    EXPECT_EQ(eval("table.concat(lamp:getPowers(), ' ')"), "4 8");
    EXPECT_TRUE(contains(eval("lamp:join{'a', {}}"), "error in invoke for type LuaTestLamp: "));
}

TEST_F(KyLuaMethodTest, ArgumentsThatDoNotFitAreNamed) {
    for (const char* call : {"lamp:add(1)", "lamp:add(1, 2, 3)", "lamp:add('x', 2)", "lamp:add(1, {})",
                             "lamp:add(1, 2, 3, 4, 5, 6)", "lamp:add(nil, 1)", "lamp:add(print, 1)"})
        EXPECT_TRUE(contains(eval(call), "error in invoke for type LuaTestLamp: the arguments do not fit add("))
            << call << ": " << msOutput;
}

TEST_F(KyLuaMethodTest, WhatAMethodThrowsBecomesTheError) {
    EXPECT_TRUE(contains(run("\nlamp:breakDown()"), ":2: error in invoke for type LuaTestLamp: no light"));
    EXPECT_EQ(eval("pcall(lamp.breakDown, lamp)"), "false");
}

TEST_F(KyLuaMethodTest, ManyThrownErrorsLeaveTheStateUsable) {
    run("for i = 1, 1000 do pcall(lamp.breakDown, lamp) end");
    EXPECT_EQ(eval("loadstring('return 1')()"), "1");
}

TEST_F(KyLuaMethodTest, AnObjectOfAnotherClassIsRefused) {
    LuaTestCounted counted;
    counted.addReference();
    engine().bindInstance(&counted, "counted");
    EXPECT_TRUE(contains(eval("LuaTestLamp.add(counted, 1, 2)"), "error in invoke: invalid type, LuaTestCounted"));
    EXPECT_TRUE(contains(eval("LuaTestLamp.add()"), "invoke(): invalid object"));
    EXPECT_TRUE(contains(eval("LuaTestLamp.add(LuaTestLamp, 1, 2)"), "invoke(): invalid object"));
}

TEST_F(KyLuaMethodTest, TheMethodOfAGoneObjectIsRefused) {
    run("made = createKyObject('LuaTestLamp') made:destroy()");
    EXPECT_TRUE(contains(eval("LuaTestLamp.add(made, 1, 2)"), "invoke(): invalid object"));
}

TEST_F(KyLuaMethodTest, AMethodMayRunScriptsThatFail) {
    mLamp.mHook = [] { engine().executeChunk("error('inner')"); };
    EXPECT_EQ(eval("lamp:callHook()"), "1");
    EXPECT_TRUE(contains(msOutput, "inner"));
}

TEST_F(KyLuaMethodTest, AMethodCalledInAScriptsCoroutineMayCallLuaFunctions) {
    std::vector<KyField> results;
    run("function double(x) return x * 2 end");
    mLamp.mHook = [&] { engine().callLuaFunction("double", {KyField(21.0)}, results); };
    EXPECT_EQ(run("co = coroutine.wrap(function(a, b) local p = lamp:callHook() coroutine.yield(a + p) return b end) "
                  "first = co(1, 'second') second = co()"),
              "");
    EXPECT_EQ(eval("first .. second"), "2second");
    ASSERT_EQ(results.size(), 1u);
    EXPECT_EQ(results[0].toDouble(), 42);
}

TEST_F(KyLuaMethodTest, AFinalizerThatFailsWhileTheResultIsPushedLeavesTheObjectMortal) {
    auto* const mortal = new LuaTestLamp;
    const KyObjectReference reference(mortal);
    ASSERT_EQ(engine().bindInstance(mortal, "mortal"), 1);
    run("local function bad() getmetatable(newproxy(true)).__gc = function() error('finalizer') end end "
        "collectgarbage('stop') collectgarbage('setpause', 1) collectgarbage('setstepmul', 1000000) "
        "failed = 0 for i = 1, 50 do bad() local f = mortal.getPowers collectgarbage('restart') "
        "if not pcall(f, mortal) then failed = failed + 1 end collectgarbage('stop') end collectgarbage('restart')");
    EXPECT_EQ(eval("failed > 0"), "true");
    run("mortal:destroy()");
    EXPECT_FALSE(reference);
}

TEST_F(KyLuaMethodTest, ACoroutineThatAFinalizerEndedMayBeCollected) {
    auto collectNow =
        kyMakeFunction("collectNow", [] { engine().executeChunk("for i = 1, 20 do pcall(collectgarbage) end"); });
    ASSERT_EQ(engine().bindFunction("collectNow", collectNow.release()), 1);
    run("collectgarbage('stop') collectgarbage('setpause', 1) collectgarbage('setstepmul', 1000000) "
        "local function bad() getmetatable(newproxy(true)).__gc = function() error('finalizer') end end "
        "local inner = function() bad() local f = lamp.getPowers collectgarbage('restart') f(lamp) end "
        "coroutine.wrap(function() for i = 1, 20 do local b = coroutine.create(inner) coroutine.resume(b) "
        "collectgarbage('stop') b = nil collectNow() end end)() collectgarbage('restart')");
    EXPECT_EQ(eval("type(lamp.Power)"), "number");
}
