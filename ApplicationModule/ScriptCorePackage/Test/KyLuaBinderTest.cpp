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
    EXPECT_EQ(run("lamp.Power = 4 lamp.Count = 3.9 lamp.Label = 'a\\0b' lamp.On = true"), "");
    EXPECT_EQ(mLamp.mCount, 3);
    EXPECT_EQ(mLamp.mLabel, std::string("a\0b", 3));
    expectTexts({{"lamp.Power", "4"}, {"lamp.On", "true"}, {"#lamp.Label", "3"}, {"lamp.Partner", "nil"}});
    run("function read() return lamp.Power end");
    for (int i = 0; i < 20; ++i) {
        mLamp.mPower = i;
        EXPECT_EQ(evalField("read()").toDouble(), i);
    }
}

TEST_F(KyLuaBinderTest, AFailedAccessCarriesItsTextAndTheScriptsPosition) {
    for (const char* chunk : {"lamp.Refusing = 1", "lamp.Fixed = 1", "lamp.Power = 'text'", "lamp.Count = 1e300",
                              "lamp.Count = 0/0", "lamp.Power = print", "lamp.Label = 5", "lamp.Partner = io.stdout"})
        expectErrors({{chunk, "Instance attribute: setValue call failed"}});
    EXPECT_EQ(mLamp.mPower, 1);
    expectErrors({{"\n\nlamp.Refusing = 1", ":3: Instance attribute: setValue call failed"},
                  {"lamp.Targets = {1}", "Instance attribute: cannot set attribute for a container"},
                  {"return lamp.Failing", "lamp is broken"},
                  {"return lamp[{}]", "string expected"},
                  {"return lamp[true]", "string expected"}});
}

TEST_F(KyLuaBinderTest, UnknownKeysReadNilAndAreSilentlyIgnoredWhenWritten) {
    EXPECT_EQ(run("lamp.unknown = 5 lamp[1] = 2 lamp[{}] = 3 lamp[''] = 4 lamp['Power\\0x'] = 99"), "");
    expectTexts({{"lamp.unknown", "nil"}, {"lamp['']", "nil"}, {"lamp[12]", "nil"}, {"lamp['Power\\0x']", "nil"}});
    EXPECT_EQ(mLamp.mPower, 1);
}

TEST_F(KyLuaBinderTest, AttributesHideComponentsAndComponentsHideMethods) {
    run("lamp:touch() lamp:touch()");
    EXPECT_EQ(mLamp.mNbTouches, 2);
    mLamp.mLabel = "attribute";
    mLamp.mBulb = &mBulb;
    expectTexts({{"lamp.Label", "attribute"}, {"lamp.bulb == lamp.touch", "true"}, {"type(lamp.touch)", "userdata"}});
    mLamp.mBulb = nullptr;
    expectTexts({{"lamp.bulb", "nil"}, {"type(lamp.touch)", "function"}});
}

TEST_F(KyLuaBinderTest, ClassTablesInheritAndScriptsMayExtendThem) {
    expectTexts({{"spot.Power", "1"}, {"spot:add(1, 2)", "4"}, {"spot:widen()", "60"}});
    run("function LuaTestLamp:double() return self.Power * 2 end");
    EXPECT_EQ(eval("spot:double()"), "2");
    run("function LuaTestLamp:double() return 'changed' end");
    EXPECT_EQ(eval("spot:double()"), "changed");
    run("function LuaTestSpot:double() return 'own' end");
    EXPECT_EQ(eval("spot:double() .. lamp:double()"), "ownchanged");
}

TEST_F(KyLuaBinderTest, TheMetatableCarriesTheClassWithItsConstants) {
    expectTexts({{"lamp.eBright + LuaTestSpot.eDim", "10"},
                 {"getmetatable(lamp).__tessaly_type", "LuaTestLamp"},
                 {"getmetatable(spot)._base == getmetatable(lamp)", "true"},
                 {"getmetatable(getmetatable(lamp)) == LuaTestLamp", "true"},
                 {"getmetatable(LuaTestLamp) == LuaTestLamp", "true"},
                 {"LuaTestSpot.__index == LuaTestLamp", "true"}});
}

TEST_F(KyLuaBinderTest, TextFormIsTypeAndAddressInUppercaseHexadecimal) {
    char digits[32];
    std::snprintf(digits, sizeof(digits), "%" PRIXPTR,
                  reinterpret_cast<std::uintptr_t>(static_cast<KyObject*>(&mLamp)));
    EXPECT_EQ(eval("lamp"), "LuaTestLamp: " + std::string(digits));
    EXPECT_EQ(eval("getmetatable(lamp).__tostring(io.stdout)"), "LuaTestLamp: 0");
}

TEST_F(KyLuaBinderTest, InstancesOfOneObjectAreEqualAcrossClassesThereIsAnOrder) {
    mLamp.mPartner = &mLamp;
    expectTexts({{"lamp == lamp.Partner", "true"},
                 {"rawequal(lamp, lamp.Partner)", "false"},
                 {"lamp == spot", "false"},
                 {"(lamp < spot) ~= (spot < lamp)", "true"},
                 {"lamp < lamp", "false"}});
    expectErrors({{"getmetatable(lamp).__lt(lamp, 5)", "Comparison with invalid type"},
                  {"getmetatable(lamp).__lt(lamp, newproxy())", "Comparison with invalid type"}});
}

TEST_F(KyLuaBinderTest, MetamethodsDoNotTrustForeignUserdata) {
    run("meta = getmetatable(lamp) "
        "forged = newproxy(true) "
        "for key, value in pairs(meta) do getmetatable(forged)[key] = value end");
    for (const std::string value : {"io.stdout", "newproxy()", "forged", "5", "'text'", "nil", "print"}) {
        expectTexts({{"meta.__index(" + value + ", 'Power')", "nil"}, {"meta.__eq(" + value + ", lamp)", "false"}});
        EXPECT_EQ(run("meta.__newindex(" + value + ", 'Power', 3) meta.__gc(" + value + ")"), "") << value;
        expectErrors({{"LuaTestLamp.add(" + value + ", 1, 2)", "invoke(): invalid object"}});
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
    expectTexts({{"first.Speed", "2"}, {"second.Speed", "nil"}});
    second.addAttribute("Speed", KyField(3.0));
    first.removeAttribute("Speed");
    expectTexts({{"second.Speed", "3"}, {"first.Speed", "nil"}});
    second.addAttribute("destroy", KyField(1.0));
    expectTexts({{"type(first.destroy)", "function"}, {"second.destroy", "1"}});
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
    expectTexts({{"LuaTestLamp", "nil"}, {"createKyObject", "nil"}});
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
    EXPECT_EQ(run("bindAllClasses()"), "");
    for (unsigned i = 0; i < KyType::getNbTypes(); ++i)
        EXPECT_EQ(eval("type(" + KyType::getType(i)->getName() + ")"), "table");
    expectTexts({{"bit_and(12, 10) .. bit_or(12, 10) .. bit_xor(12, 10) .. bit_not(0)", "8146-1"},
                 {"bit_or(4294967295, 0)", "-1"},
                 {"bit_not(0/0)", "-1"}});
}
