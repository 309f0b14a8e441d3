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

    /// A counted object that the test holds and scripts know as `held`.
    static LuaTestCounted* publishHeld() {
        auto* counted = new LuaTestCounted;
        counted->addReference();
        engine().setLuaVariable("held", KyField(counted));
        return counted;
    }
};

TEST_F(KyLuaInstanceTest, ConstructorsAreChosenByTheArgumentsAndOthersFail) {
    run("a = LuaTestLamp(4) b = LuaTestLamp('desk') c = LuaTestLamp()");
    EXPECT_EQ(eval("a.Power, b.Label, c.Power"), "4, desk, 1");
    EXPECT_EQ(LuaTestLamp::msNbAlive, 3);
    run("a:destroy() b:destroy() c:destroy()");
    expectErrors("Instance creation failure", {"LuaTestLamp({}, {})", "KyObject()"});
    engine().setInstanceCreatorFallback(&KyScriptEngine::fallbackCreatorFail);
    expectErrors({{"LuaTestSpot()", "Instance creation failure."}});
    engine().setInstanceCreatorFallback(nullptr);
    expectErrors({{"LuaTestSpot()", "defaultInstanceCreator() failure for LuaTestSpot"}});
    EXPECT_EQ(LuaTestLamp::msNbAlive, 0);
}

TEST_F(KyLuaInstanceTest, DestroyClearsTheInstanceAndAllInstancesOfAGoneObjectReadAsNull) {
    run("a = createKyObject('LuaTestLamp') destroy = a.destroy LuaTestSpot.destroy(a)");
    EXPECT_EQ(LuaTestLamp::msNbAlive, 1) << "it is no spot";
    run("a:destroy()");
    EXPECT_EQ(LuaTestLamp::msNbAlive, 0);
    EXPECT_EQ(eval("a, a.Power, a == createKyObject"), "LuaTestLamp: 0, nil, false");
    expectRuns("a.Power = 5 destroy(a) deleteKyObject(a) destroy(nil) destroy(5) deleteKyObject(io.stdout)");
    auto* lamp = new LuaTestLamp;
    engine().setLuaVariable("a", KyField(lamp));
    engine().setLuaVariable("b", KyField(lamp));
    std::string read;
    lamp->modifiedSignal().connect(
        [&](KyObject*, KyObjectModificationType, const std::string&, int) { read = eval("a.Power"); });
    delete lamp;
    EXPECT_EQ(read, "nil") << "for listeners too";
    EXPECT_EQ(eval("b.Power, a == b, tostring(a) == tostring(b)"), "nil, true, true");
    expectRuns("a.Power = 3 deleteKyObject(a) LuaTestLamp.destroy(a)");
}

TEST_F(KyLuaInstanceTest, TheCollectorGivesCountedReferencesBackAndFreesNoOtherObject) {
    run("a = createKyObject('LuaTestLamp') LuaTestLamp._refcounted = true");
    auto* lamp = evalField("a").toKyObject();
    run("a = createKyObject('LuaTestCounted')");
    engine().setLuaVariable("b", evalField("a"));
    collect();
    EXPECT_EQ(LuaTestLamp::msNbAlive, 1) << "the flag is read from the metatable alone";
    delete lamp;
    EXPECT_EQ(eval("rawget(getmetatable(a), '_refcounted')"), "true");
    run("a = nil");
    collect();
    EXPECT_EQ(eval("b.Value"), "5");
    engine().setLuaVariable("c", evalField("b"));
    run("b:destroy()");
    EXPECT_EQ(LuaTestCounted::msNbAlive, 0) << "only scripts hold it";
    EXPECT_EQ(eval("c.Value"), "nil");
    run("a = createKyObject('LuaTestCounted') b = {a, createKyObject('LuaTestCounted')}");
    EXPECT_EQ(LuaTestCounted::msNbAlive, 2);
    engine().closeLuaState();
    EXPECT_EQ(LuaTestCounted::msNbAlive, 0) << "closing gives them back";
}

TEST_F(KyLuaInstanceTest, ACountedObjectThatCppHoldsSurvivesDestroy) {
    auto* counted = publishHeld();
    run("other = held");
    engine().setLuaVariable("again", KyField(counted));
    EXPECT_EQ(counted->getNbReferences(), 3u);
    run("held:destroy() getmetatable(other).__gc(other) getmetatable(other).__gc(other)");
    EXPECT_EQ(eval("held, again.Value"), "LuaTestCounted: 0, 5");
    run("held = nil other = nil again = nil");
    collect();
    EXPECT_EQ(counted->getNbReferences(), 1u);
    counted->removeReference();
}

TEST_F(KyLuaInstanceTest, GraphicsObjectsAreCountedTheirOwnWay) {
    run("a = createKyObject('LuaTestTexture')");
    auto* texture = static_cast<LuaTestTexture*>(evalField("a").toKyObject());
    engine().setLuaVariable("b", KyField(texture));
    EXPECT_EQ(texture->getNbReferences(), 2u);
    run("a = nil");
    collect();
    texture->incrementReference();
    run("b:destroy()");
    EXPECT_EQ(LuaTestTexture::msNbAlive, 1) << "C++ holds it";
    engine().setLuaVariable("b", KyField(texture));
    texture->decrementReference();
    run("b:destroy()");
    EXPECT_EQ(LuaTestTexture::msNbAlive, 0);
}

TEST_F(KyLuaInstanceTest, AnObjectDestroyedInItsOwnMethodEndsWithTheOutermostCall) {
    for (const char* chunk : {"lamp:destroy()", "deleteKyObject(same)"}) {
        auto* lamp = new LuaTestLamp;
        engine().setLuaVariable("lamp", KyField(lamp));
        engine().setLuaVariable("same", KyField(lamp));
        int depth = 0;
        lamp->mHook = [&] {
            if (++depth == 1)
                EXPECT_EQ(eval("lamp:callHook()"), "1");
            else
                run(chunk);
            EXPECT_EQ(LuaTestLamp::msNbAlive, 1) << chunk;
            EXPECT_EQ(eval("same.Power"), "nil") << chunk;
        };
        EXPECT_EQ(eval("lamp:callHook()"), "1");
        EXPECT_EQ(LuaTestLamp::msNbAlive, 0) << chunk;
    }
}

TEST_F(KyLuaInstanceTest, ACountedObjectIsKeptWhileItsMethodRuns) {
    for (const char* chunk : {"counted = nil collectgarbage() collectgarbage()", "counted:destroy()"}) {
        run("counted = createKyObject('LuaTestCounted')");
        auto* counted = static_cast<LuaTestCounted*>(evalField("counted").toKyObject());
        counted->mHook = [chunk] {
            run(chunk);
            EXPECT_EQ(LuaTestCounted::msNbAlive, 1);
        };
        EXPECT_EQ(eval("counted:callHook()"), "5") << chunk;
        collect();
        EXPECT_EQ(LuaTestCounted::msNbAlive, 0);
    }
    auto* counted = publishHeld();
    counted->mHook = [counted] { counted->removeReference(); };
    EXPECT_EQ(eval("held:callHook()"), "5") << "the host lets it go";
    run("held = nil");
    collect();
    EXPECT_EQ(LuaTestCounted::msNbAlive, 0);
}
