// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestFixture.h"

class KyLuaInstanceTest : public KyLuaTestFixture {
protected:
    void SetUp() override {
        KyLuaTestFixture::SetUp();
        run("bindClass('LuaTestLamp') bindClass('LuaTestSpot') bindClass('LuaTestCounted')");
        ASSERT_EQ(LuaTestLamp::msNbAlive, 0);
        ASSERT_EQ(LuaTestCounted::msNbAlive, 0);
    }

    void TearDown() override {
        KyLuaTestFixture::TearDown();
        EXPECT_EQ(LuaTestCounted::msNbAlive, 0);
    }

    static void publishHeld(LuaTestCounted& counted) {
        counted.addReference();
        engine().setLuaVariable("held", KyField(&counted));
    }
};

TEST_F(KyLuaInstanceTest, ConstructorsAreChosenByTheArguments) {
    run("a = LuaTestLamp(4) b = LuaTestLamp('desk') c = LuaTestLamp()");
    EXPECT_EQ(eval("a.Power .. b.Label .. c.Power"), "4desk1");
    EXPECT_EQ(LuaTestLamp::msNbAlive, 3);
    run("a:destroy() b:destroy() c:destroy()");
    EXPECT_EQ(LuaTestLamp::msNbAlive, 0);
}

TEST_F(KyLuaInstanceTest, ArgumentsThatNoConstructorTakesFail) {
    EXPECT_TRUE(contains(run("LuaTestLamp({}, {})"), "Instance creation failure"));
    EXPECT_TRUE(contains(run("LuaTestSpot(1)"), "Instance creation failure"));
    EXPECT_TRUE(contains(run("KyObject()"), "Instance creation failure"));
    engine().setInstanceCreatorFallback(&KyScriptEngine::fallbackCreatorFail);
    EXPECT_TRUE(contains(run("LuaTestSpot()"), "Instance creation failure."));
    engine().setInstanceCreatorFallback(nullptr);
    EXPECT_TRUE(contains(run("LuaTestSpot()"), "defaultInstanceCreator() failure for LuaTestSpot"));
    EXPECT_EQ(LuaTestLamp::msNbAlive, 0);
}

namespace {

struct NullType {
    int (*function)(lua_State*);
    const char* text;
};

constexpr NullType cNullTypes[] = {
    {&KyScriptEngine::defaultInstanceCreator, "defaultInstanceCreator() invalid type"},
    {&KyScriptEngine::defaultInstanceDestructor, "Instance destructor invalid type"},
    {&KyScriptEngine::defaultInstanceGarbageCollection, "Instance garbage collection invalid type"},
    {&KyScriptEngine::fallbackCreatorConstructor, "Instance creation invalid type"},
    {&KyScriptEngine::fallbackCreatorFail, "Instance creation failure."},
};

} // namespace

TEST_F(KyLuaInstanceTest, TheFunctionsMissTheirType) {
    lua_State* state = engine().editLuaState();
    for (const NullType& entry : cNullTypes) {
        lua_pushcfunction(state, entry.function);
        EXPECT_NE(lua_pcall(state, 0, 0, 0), 0);
        EXPECT_STREQ(lua_tostring(state, -1), entry.text);
        lua_settop(state, 0);
    }
}

TEST_F(KyLuaInstanceTest, CreateKyObjectKnowsTheFactories) {
    run("a = createKyObject('LuaTestSpot') b = createKyObject('NoSuchType') c = createKyObject('KyLuaBinder')");
    EXPECT_EQ(eval("a.Angle"), "30");
    EXPECT_EQ(eval("b"), "nil");
    EXPECT_EQ(eval("c"), "nil");
    run("deleteKyObject(a)");
    EXPECT_EQ(LuaTestLamp::msNbAlive, 0);
}

TEST_F(KyLuaInstanceTest, DestroyClearsTheInstance) {
    run("a = createKyObject('LuaTestLamp') destroy = a.destroy a:destroy()");
    EXPECT_EQ(LuaTestLamp::msNbAlive, 0);
    EXPECT_EQ(eval("a"), "LuaTestLamp: 0");
    EXPECT_EQ(eval("a.Power"), "nil");
    EXPECT_EQ(run("a.Power = 5"), "");
    EXPECT_EQ(run("destroy(a) deleteKyObject(a) destroy(nil) destroy(5) deleteKyObject(io.stdout)"), "");
    EXPECT_EQ(eval("a == createKyObject"), "false");
}

TEST_F(KyLuaInstanceTest, DeleteKyObjectLeavesThePointer) {
    run("a = createKyObject('LuaTestLamp') text = tostring(a) deleteKyObject(a)");
    EXPECT_EQ(LuaTestLamp::msNbAlive, 0);
    EXPECT_EQ(eval("tostring(a) == text"), "true");
    EXPECT_EQ(eval("a.Power"), "nil");
    EXPECT_EQ(run("deleteKyObject(a) LuaTestLamp.destroy(a) a.Power = 1"), "");
    collect();
}

TEST_F(KyLuaInstanceTest, AllInstancesOfAGoneObjectReadAsNull) {
    auto* lamp = new LuaTestLamp;
    engine().setLuaVariable("a", KyField(lamp));
    engine().setLuaVariable("b", KyField(lamp));
    delete lamp;
    EXPECT_EQ(eval("a.Power"), "nil");
    EXPECT_EQ(eval("b.Power"), "nil");
    EXPECT_EQ(eval("a == b"), "true");
    EXPECT_EQ(run("a.Power = 3 LuaTestLamp.destroy(a)"), "");
    EXPECT_EQ(eval("tostring(a) == tostring(b)"), "true");
}

TEST_F(KyLuaInstanceTest, DestroyChecksTheClass) {
    run("a = createKyObject('LuaTestLamp') LuaTestSpot.destroy(a)");
    EXPECT_EQ(LuaTestLamp::msNbAlive, 1);
    run("KyObject.destroy(a)");
    EXPECT_EQ(LuaTestLamp::msNbAlive, 0);
}

TEST_F(KyLuaInstanceTest, TheCollectorFreesNoObjectThatIsNotCounted) {
    run("a = createKyObject('LuaTestLamp')");
    auto* lamp = evalField("a").toKyObject();
    run("a = nil");
    collect();
    EXPECT_EQ(LuaTestLamp::msNbAlive, 1);
    delete lamp;
}

TEST_F(KyLuaInstanceTest, TheCollectorGivesCountedReferencesBack) {
    EXPECT_EQ(eval("rawget(getmetatable(createKyObject('LuaTestCounted')), '_refcounted')"), "true");
    run("a = createKyObject('LuaTestCounted')");
    engine().setLuaVariable("b", evalField("a"));
    collect();
    EXPECT_EQ(LuaTestCounted::msNbAlive, 1);
    run("a = nil");
    collect();
    EXPECT_EQ(eval("b.Value"), "5");
    run("b = nil");
    collect();
    EXPECT_EQ(LuaTestCounted::msNbAlive, 0);
}

TEST_F(KyLuaInstanceTest, TheFlagIsReadFromTheMetatableAlone) {
    run("a = createKyObject('LuaTestLamp')");
    EXPECT_EQ(eval("rawget(getmetatable(a), '_refcounted')"), "nil");
    run("LuaTestLamp._refcounted = true");
    auto* lamp = evalField("a").toKyObject();
    run("a = nil");
    collect();
    EXPECT_EQ(LuaTestLamp::msNbAlive, 1);
    delete lamp;
}

TEST_F(KyLuaInstanceTest, ACountedObjectThatCppHoldsSurvivesDestroy) {
    auto* counted = new LuaTestCounted;
    publishHeld(*counted);
    run("other = held");
    engine().setLuaVariable("again", KyField(counted));
    EXPECT_EQ(counted->getNbReferences(), 3u);
    run("held:destroy()");
    EXPECT_EQ(eval("held"), "LuaTestCounted: 0");
    EXPECT_EQ(eval("again.Value"), "5");
    EXPECT_EQ(LuaTestCounted::msNbAlive, 1);
    run("held = nil other = nil again = nil");
    collect();
    EXPECT_EQ(counted->getNbReferences(), 1u);
    counted->removeReference();
}

TEST_F(KyLuaInstanceTest, ACountedObjectThatOnlyScriptsHoldEndsWithDestroy) {
    run("a = createKyObject('LuaTestCounted')");
    engine().setLuaVariable("b", evalField("a"));
    run("a:destroy()");
    EXPECT_EQ(LuaTestCounted::msNbAlive, 0);
    EXPECT_EQ(eval("b.Value"), "nil");
    run("a = nil b = nil");
    collect();
}

TEST_F(KyLuaInstanceTest, DeleteKyObjectOfACountedObjectRespectsCppToo) {
    auto* counted = new LuaTestCounted;
    publishHeld(*counted);
    run("deleteKyObject(held)");
    EXPECT_EQ(LuaTestCounted::msNbAlive, 1);
    EXPECT_EQ(eval("held.Value"), "nil");
    EXPECT_EQ(counted->getNbReferences(), 1u);
    counted->removeReference();
}

TEST_F(KyLuaInstanceTest, GraphicsObjectsAreCountedTheirOwnWay) {
    run("a = createKyObject('LuaTestTexture')");
    auto* texture = static_cast<LuaTestTexture*>(evalField("a").toKyObject());
    ASSERT_NE(texture, nullptr);
    EXPECT_EQ(texture->getNbReferences(), 1u);
    EXPECT_EQ(eval("rawget(getmetatable(a), '_refcounted')"), "true");
    engine().setLuaVariable("b", KyField(texture));
    EXPECT_EQ(texture->getNbReferences(), 2u);
    run("a = nil");
    collect();
    EXPECT_EQ(texture->getNbReferences(), 1u);
    run("b = nil");
    collect();
    EXPECT_EQ(LuaTestTexture::msNbAlive, 0);
}

TEST_F(KyLuaInstanceTest, AGraphicsObjectThatCppHoldsSurvivesDestroy) {
    auto* texture = new LuaTestTexture;
    texture->incrementReference();
    engine().setLuaVariable("a", KyField(texture));
    run("a:destroy()");
    EXPECT_EQ(LuaTestTexture::msNbAlive, 1);
    EXPECT_EQ(texture->getNbReferences(), 1u);
    engine().setLuaVariable("a", KyField(texture));
    texture->decrementReference();
    run("a:destroy()");
    EXPECT_EQ(LuaTestTexture::msNbAlive, 0);
}

TEST_F(KyLuaInstanceTest, CallingTheCollectorsFunctionByHandDoesNoHarm) {
    auto* counted = new LuaTestCounted;
    publishHeld(*counted);
    EXPECT_EQ(run("getmetatable(held).__gc(held) getmetatable(held).__gc(held)"), "");
    EXPECT_EQ(counted->getNbReferences(), 1u);
    EXPECT_EQ(eval("held.Value"), "nil");
    run("held = nil");
    collect();
    EXPECT_EQ(counted->getNbReferences(), 1u);
    counted->removeReference();
}

TEST_F(KyLuaInstanceTest, AnInstanceUsedInTheFinalizerOfAnotherIsHarmless) {
    run("do local a = createKyObject('LuaTestCounted') local p = newproxy(true) "
        "getmetatable(p).__gc = function() seen = tostring(a.Value) end end");
    collect();
    collect();
    EXPECT_TRUE(eval("seen") == "5" || eval("seen") == "nil");
    EXPECT_EQ(LuaTestCounted::msNbAlive, 0);
}

TEST_F(KyLuaInstanceTest, ReferencesGoBackWhenTheStateCloses) {
    run("a = createKyObject('LuaTestCounted') b = {a, createKyObject('LuaTestCounted')}");
    EXPECT_EQ(LuaTestCounted::msNbAlive, 2);
    engine().closeLuaState();
    EXPECT_EQ(LuaTestCounted::msNbAlive, 0);
}

TEST_F(KyLuaInstanceTest, AnObjectDestroyedInItsOwnMethodEndsAfterIt) {
    auto* lamp = new LuaTestLamp;
    engine().setLuaVariable("lamp", KyField(lamp));
    engine().setLuaVariable("same", KyField(lamp));
    for (const char* chunk : {"lamp:destroy()", "deleteKyObject(same)"}) {
        int aliveInside = 0;
        std::string read;
        lamp->mHook = [&] {
            engine().executeChunk(chunk);
            aliveInside = LuaTestLamp::msNbAlive;
            read = eval("same.Power");
        };
        EXPECT_EQ(eval("lamp:callHook()"), "1");
        EXPECT_EQ(aliveInside, 1) << chunk;
        EXPECT_EQ(read, "nil") << chunk;
        EXPECT_EQ(LuaTestLamp::msNbAlive, 0) << chunk;
        lamp = new LuaTestLamp;
        engine().setLuaVariable("lamp", KyField(lamp));
        engine().setLuaVariable("same", KyField(lamp));
    }
    delete lamp;
}

TEST_F(KyLuaInstanceTest, NestedMethodsEndTheObjectWithTheOutermost) {
    auto* lamp = new LuaTestLamp;
    engine().setLuaVariable("lamp", KyField(lamp));
    int depth = 0;
    lamp->mHook = [&] {
        if (++depth == 1) {
            EXPECT_EQ(eval("lamp:callHook()"), "1");
            EXPECT_EQ(LuaTestLamp::msNbAlive, 1);
        } else {
            run("lamp:destroy()");
        }
    };
    EXPECT_EQ(eval("lamp:callHook()"), "1");
    EXPECT_EQ(LuaTestLamp::msNbAlive, 0);
}

TEST_F(KyLuaInstanceTest, ACountedObjectIsKeptWhileItsMethodRuns) {
    run("counted = createKyObject('LuaTestCounted')");
    auto* counted = static_cast<LuaTestCounted*>(evalField("counted").toKyObject());
    counted->mHook = [] {
        run("counted = nil collectgarbage() collectgarbage()");
        EXPECT_EQ(LuaTestCounted::msNbAlive, 1);
    };
    EXPECT_EQ(eval("counted:callHook()"), "5");
    collect();
    EXPECT_EQ(LuaTestCounted::msNbAlive, 0);
}

TEST_F(KyLuaInstanceTest, ACountedObjectDestroyedInItsOwnMethodEndsAfterIt) {
    run("counted = createKyObject('LuaTestCounted')");
    auto* counted = static_cast<LuaTestCounted*>(evalField("counted").toKyObject());
    counted->mHook = [] {
        run("counted:destroy()");
        EXPECT_EQ(LuaTestCounted::msNbAlive, 1);
    };
    EXPECT_EQ(eval("counted:callHook()"), "5");
    EXPECT_EQ(LuaTestCounted::msNbAlive, 0);
}

TEST_F(KyLuaInstanceTest, TheHostMayDeleteAnObjectInItsOwnMethod) {
    auto* counted = new LuaTestCounted;
    publishHeld(*counted);
    counted->mHook = [counted] { counted->removeReference(); };
    EXPECT_EQ(eval("held:callHook()"), "5");
    EXPECT_EQ(eval("held.Value"), "5");
    run("held = nil");
    collect();
    EXPECT_EQ(LuaTestCounted::msNbAlive, 0);
}

TEST_F(KyLuaInstanceTest, AnObjectThatEndsReadsAsNullForItsListeners) {
    auto* lamp = new LuaTestLamp;
    engine().setLuaVariable("lamp", KyField(lamp));
    std::string read;
    lamp->modifiedSignal().connect(
        [&](KyObject*, KyObjectModificationType, const std::string&, int) { read = eval("lamp.Power"); });
    lamp->destroy();
    EXPECT_EQ(read, "nil");
}

TEST_F(KyLuaInstanceTest, PushingAnObjectBindsItsClass) {
    engine().resetLuaState();
    KyLuaBinder::bind();
    run("a = createKyObject('LuaTestSpot')");
    EXPECT_EQ(eval("a.Angle"), "30");
    EXPECT_EQ(eval("type(LuaTestSpot)"), "table");
    run("a:destroy()");
    EXPECT_EQ(LuaTestLamp::msNbAlive, 0);
}
