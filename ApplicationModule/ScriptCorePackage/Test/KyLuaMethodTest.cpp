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

TEST_F(KyLuaMethodTest, OverloadsAndStaticMethodsAreChosenByTheArgumentsAndWhatTheyThrowBecomesTheError) {
    expectTexts({{"lamp:add(2, 3), lamp.sum(2, 3), lamp:join{'a', 'b'}", "6, 5, ab"},
                 {"select('#', lamp:touch()), select('#', lamp:getNothing())", "0, 1"},
                 {"lamp:describe(1), lamp:describe('one')", "number, text"},
                 {"lamp:describe(lamp), lamp:describe(1, 'one')", "lamp, both"},
                 {"table.concat(lamp:getPowers(), ' ')", "1 2"}});
    const std::string failed = "error in invoke for type LuaTestLamp: ";
    expectErrors(failed, {"lamp:describe({}, {})", "lamp:describe()", "lamp:join{'a', {}}", "LuaTestLamp.sum(2)"});
    expectErrors(failed + "the arguments do not fit add(",
                 {"lamp:add(1)", "lamp:add(1, 2, 3, 4, 5, 6)", "lamp:add(1, {})", "lamp:add(nil, 1)"});
    expectErrors({{"\nlamp:breakDown()", ":2: " + failed + "no light"}});
}

TEST_F(KyLuaMethodTest, AnObjectOfAnotherClassOrAGoneOneIsRefused) {
    LuaTestCounted counted;
    counted.addReference();
    engine().bindInstance(&counted, "counted");
    run("made = createKyObject('LuaTestLamp') made:destroy()");
    expectErrors({{"LuaTestLamp.add(counted, 1, 2)", "error in invoke: invalid type, LuaTestCounted"}});
    expectErrors("invoke(): invalid object",
                 {"LuaTestLamp.add()", "LuaTestLamp.add(LuaTestLamp, 1, 2)", "LuaTestLamp.add(made, 1, 2)"});
}

TEST_F(KyLuaMethodTest, AMethodCalledInAScriptsCoroutineMayRunScriptsThatFail) {
    std::vector<KyField> results;
    run("function double(x) return x * 2 end");
    mLamp.mHook = [&] {
        engine().callLuaFunction("double", {KyField(21.0)}, results);
        engine().executeChunk("error('inner', 0)");
    };
    EXPECT_EQ(run("co = coroutine.wrap(function(a, b) local p = lamp:callHook() coroutine.yield(a + p) return b end) "
                  "first = co(1, 'second') second = co()"),
              "inner");
    EXPECT_EQ(eval("first .. second"), "2second");
    EXPECT_EQ(results, std::vector<KyField>{42.0});
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
