// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestFixture.h"

#include "KyDynamicObject.h"
#include "KyType.h"

#include <cinttypes>
#include <cstdio>

class KyLuaBinderTest : public KyLuaTestFixture {
protected:
    void SetUp() override {
        KyLuaTestFixture::SetUp();
        engine().bindInstance(&mLamp, "lamp");
        engine().bindInstance(&mSpot, "spot");
    }

    LuaTestLamp mLamp;
    LuaTestLamp mBulb;
    LuaTestSpot mSpot;
};

TEST_F(KyLuaBinderTest, AttributesAreConvertedAndRepeatedReadsSeeNewValues) {
    expectRuns("lamp.Power = 4 lamp.Count = 3.9 lamp.Label = 'a\\0b' lamp.On = true");
    EXPECT_EQ(mLamp.mCount, 3);
    EXPECT_EQ(mLamp.mLabel, std::string("a\0b", 3));
    EXPECT_EQ(eval("lamp.Power, lamp.On, #lamp.Label, lamp.Partner"), "4, true, 3, nil");
    run("function read() return lamp.Power end");
    for (int i = 0; i < 20; ++i) {
        mLamp.mPower = i;
        EXPECT_EQ(evalField("read()").toDouble(), i);
    }
}

TEST_F(KyLuaBinderTest, AFailedAccessCarriesItsTextAndTheScriptsPositionAndUnknownKeysAreNil) {
    expectErrors("Instance attribute: setValue call failed",
                 {"lamp.Refusing = 1", "lamp.Fixed = 1", "lamp.Power = 'text'", "lamp.Count = 1e300",
                  "lamp.Count = 0/0", "lamp.Power = print", "lamp.Label = 5", "lamp.Partner = io.stdout"});
    expectErrors({{"\n\nlamp.Refusing = 1", ":3: Instance attribute: setValue call failed"},
                  {"lamp.Targets = {1}", "Instance attribute: cannot set attribute for a container"},
                  {"return lamp.Failing", "lamp is broken"}});
    expectErrors("string expected", {"return lamp[{}]", "return lamp[true]"});
    expectRuns("lamp.unknown = 5 lamp[1] = 2 lamp[{}] = 3 lamp[''] = 4 lamp['Power\\0x'] = 99");
    EXPECT_EQ(eval("lamp.unknown, lamp[''], lamp[12], lamp['Power\\0x']"), "nil, nil, nil, nil");
    EXPECT_EQ(mLamp.mPower, 1);
}

TEST_F(KyLuaBinderTest, AttributesHideComponentsAndComponentsHideMethods) {
    run("lamp:touch() lamp:touch()");
    EXPECT_EQ(mLamp.mNbTouches, 2);
    mLamp.mLabel = "attribute";
    mLamp.mBulb = &mBulb;
    EXPECT_EQ(eval("lamp.Label, lamp.bulb == lamp.touch, type(lamp.touch)"), "attribute, true, userdata");
    mLamp.mBulb = nullptr;
    EXPECT_EQ(eval("lamp.bulb, type(lamp.touch)"), "nil, function");
}

TEST_F(KyLuaBinderTest, ClassTablesInheritAndScriptsMayExtendThem) {
    EXPECT_EQ(eval("spot.Power, spot:add(1, 2), spot:widen()"), "1, 4, 60");
    run("function LuaTestLamp:double() return self.Power * 2 end");
    EXPECT_EQ(eval("spot:double()"), "2");
    run("function LuaTestLamp:double() return 'changed' end");
    EXPECT_EQ(eval("spot:double()"), "changed");
    run("function LuaTestSpot:double() return 'own' end");
    EXPECT_EQ(eval("spot:double() .. lamp:double()"), "ownchanged");
}

TEST_F(KyLuaBinderTest, TheMetatableCarriesTheClassWithItsConstants) {
    EXPECT_EQ(eval("lamp.eBright, LuaTestSpot.eDim, getmetatable(lamp).__tessaly_type"), "7, 3, LuaTestLamp");
    expectTrue({"getmetatable(spot)._base == getmetatable(lamp)", "getmetatable(getmetatable(lamp)) == LuaTestLamp",
                "getmetatable(LuaTestLamp) == LuaTestLamp", "LuaTestSpot.__index == LuaTestLamp"});
}

TEST_F(KyLuaBinderTest, InstancesShowTheirAddressInUppercaseHexadecimalAndAreComparedByIt) {
    char digits[32];
    std::snprintf(digits, sizeof(digits), "%" PRIXPTR,
                  reinterpret_cast<std::uintptr_t>(static_cast<KyObject*>(&mLamp)));
    EXPECT_EQ(eval("lamp"), "LuaTestLamp: " + std::string(digits));
    EXPECT_EQ(eval("getmetatable(lamp).__tostring(io.stdout)"), "LuaTestLamp: 0");
    mLamp.mPartner = &mLamp;
    expectTrue({"lamp == lamp.Partner", "not rawequal(lamp, lamp.Partner)", "not (lamp == spot)", "not (lamp < lamp)",
                "(lamp < spot) ~= (spot < lamp)"});
    expectErrors("Comparison with invalid type",
                 {"getmetatable(lamp).__lt(lamp, 5)", "getmetatable(lamp).__lt(lamp, newproxy())"});
}

TEST_F(KyLuaBinderTest, MetamethodsDoNotTrustForeignUserdata) {
    run("meta = getmetatable(lamp) "
        "forged = newproxy(true) "
        "for key, value in pairs(meta) do getmetatable(forged)[key] = value end");
    for (const std::string value : {"io.stdout", "newproxy()", "forged", "5", "'text'", "nil", "print"}) {
        EXPECT_EQ(eval("meta.__index(" + value + ", 'Power'), meta.__eq(" + value + ", lamp)"), "nil, false") << value;
        expectRuns("meta.__newindex(" + value + ", 'Power', 3) meta.__gc(" + value + ")");
        expectErrors("invoke(): invalid object", {"LuaTestLamp.add(" + value + ", 1, 2)"});
    }
    run("forged = nil");
    collect();
}

TEST_F(KyLuaBinderTest, UnknownNamesDoNotGrowTheMemory) {
    run("for i = 1, 1000 do local x = lamp['name' .. i] end collectgarbage() collectgarbage()");
    const double before = evalField("collectgarbage('count')").toDouble();
    run("for i = 1, 20000 do local x = lamp['other' .. i] end collectgarbage() collectgarbage()");
    EXPECT_LT(evalField("collectgarbage('count')").toDouble(), before + 20);
}

TEST_F(KyLuaBinderTest, AttributesOfOneObjectAreNotTakenForThoseOfItsClass) {
    KyDynamicObject first;
    KyDynamicObject second;
    first.addAttribute("Speed", KyField(2.0));
    engine().bindInstance(&first, "first");
    engine().bindInstance(&second, "second");
    EXPECT_EQ(eval("first.Speed, second.Speed"), "2, nil");
    second.addAttribute("Speed", KyField(3.0));
    first.removeAttribute("Speed");
    EXPECT_EQ(eval("second.Speed, first.Speed"), "3, nil");
    second.addAttribute("destroy", KyField(1.0));
    EXPECT_EQ(eval("type(first.destroy), second.destroy"), "function, 1");
}

TEST_F(KyLuaBinderTest, ATypeThatLeavesTheRegistryLosesItsClass) {
    auto* ending = new LuaTestSpot;
    engine().bindInstance(ending, "ending");
    run("kept = ending method = ending.widen class = LuaTestSpot local x = ending.Angle");
    LuaTestSpot::finalizeType();
    EXPECT_EQ(eval("LuaTestSpot"), "nil");
    expectErrors({{"method(kept)", "invalid method"}});
    delete ending;
    LuaTestSpot::getType();
    LuaTestSpot again;
    engine().bindInstance(&again, "again");
    expectTexts({{"again.Angle .. again:widen()", "3060"}, {"LuaTestSpot ~= class", "true"}});
}

TEST_F(KyLuaBinderTest, AResetStateKnowsNoClassesAndCanBeBoundAgain) {
    engine().resetLuaState();
    EXPECT_EQ(eval("LuaTestLamp, createKyObject"), "nil, nil");
    KyLuaBinder::bind();
    EXPECT_EQ(eval("type(createKyObject)"), "function");
    EXPECT_EQ(engine().bindInstance(&mLamp, "lamp"), 1);
    run("LuaTestLamp = nil");
    EXPECT_EQ(engine().bindInstance(&mSpot, "spot"), 1);
    EXPECT_EQ(eval("spot:add(1, 2)"), "4") << "whatever the parent's global is by then";
}

TEST_F(KyLuaBinderTest, ABinderReadsArguments) {
    lua_State* state = engine().editLuaState();
    KyLuaBinder binder(state);
    binder.pushBoolean(true);
    binder.pushString("text");
    binder.pushUserType(mLamp);
    EXPECT_EQ(binder.checkNumber(1), 0) << "what is something else reads as nothing";
    EXPECT_EQ(binder.checkString(3), nullptr);
    EXPECT_TRUE(binder.checkNil(20) && !binder.checkNil(2));
    EXPECT_EQ(binder.checkUserType(3, *KyObject::getType()), &mLamp);
    EXPECT_EQ(binder.checkUserType(3, *LuaTestSpot::getType()), nullptr);
    EXPECT_FALSE(binder.isUserType(2, *LuaTestLamp::getType()));
    EXPECT_EQ(lua_gettop(state), 3);
    binder.cleanStack();
    EXPECT_EQ(lua_gettop(state), 0);
}

TEST_F(KyLuaBinderTest, BindingAllClassesMakesEveryTypeAGlobalAndBringsTheUtilities) {
    EXPECT_EQ(eval("bit_and"), "nil");
    expectRuns("bindAllClasses()");
    for (unsigned i = 0; i < KyType::getNbTypes(); ++i)
        EXPECT_EQ(eval("type(" + KyType::getType(i)->getName() + ")"), "table");
    EXPECT_EQ(eval("bit_and(12, 10), bit_or(12, 10), bit_xor(12, 10), bit_not(0)"), "8, 14, 6, -1");
}
