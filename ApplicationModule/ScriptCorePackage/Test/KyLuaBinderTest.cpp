// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestFixture.h"

#include "KyDynamicObject.h"
#include "KyFieldType.h"
#include "KyType.h"

#include <cinttypes>
#include <cstdio>

class KyLuaBinderTest : public KyLuaTestFixture {
protected:
    void SetUp() override {
        KyLuaTestFixture::SetUp();
        engine().bindInstance(&mLamp, "lamp");
    }

    LuaTestLamp mLamp;
    LuaTestLamp mBulb;
};

TEST_F(KyLuaBinderTest, AttributesOfEveryKindAreRead) {
    mLamp.mPower = 2.5;
    mLamp.mCount = 7;
    mLamp.mLabel = "desk";
    mLamp.mIsOn = true;
    EXPECT_EQ(eval("lamp.Power"), "2.5");
    EXPECT_EQ(eval("lamp.Count"), "7");
    EXPECT_EQ(eval("lamp.Label"), "desk");
    EXPECT_EQ(eval("lamp.On"), "true");
    EXPECT_EQ(eval("lamp.Partner"), "nil");
}

TEST_F(KyLuaBinderTest, RepeatedReadsSeeNewValues) {
    run("function read() return lamp.Power end");
    for (int i = 0; i < 20; ++i) {
        mLamp.mPower = i;
        EXPECT_EQ(evalField("read()").toDouble(), i);
    }
}

TEST_F(KyLuaBinderTest, AttributesAreWrittenAndConverted) {
    EXPECT_EQ(run("lamp.Power = 4 lamp.Count = 3.9 lamp.Label = 'x' lamp.On = true"), "");
    EXPECT_EQ(mLamp.mPower, 4);
    EXPECT_EQ(mLamp.mCount, 3);
    EXPECT_EQ(mLamp.mLabel, "x");
    EXPECT_TRUE(mLamp.mIsOn);
}

TEST_F(KyLuaBinderTest, TextsKeepTheirEmbeddedZeros) {
    run("lamp.Label = 'a\\0b'");
    EXPECT_EQ(mLamp.mLabel, std::string("a\0b", 3));
    EXPECT_EQ(eval("#lamp.Label"), "3");
}

TEST_F(KyLuaBinderTest, AFailedWriteNamesSetValue) {
    for (const char* chunk : {"lamp.Refusing = 1", "lamp.Fixed = 1", "lamp.Power = 'text'", "lamp.Count = 1e300",
                              "lamp.Count = 0/0", "lamp.Power = print", "lamp.Label = 5", "lamp.Partner = io.stdout"})
        EXPECT_TRUE(contains(run(chunk), "Instance attribute: setValue call failed")) << chunk;
    EXPECT_EQ(mLamp.mPower, 1);
}

TEST_F(KyLuaBinderTest, ErrorsCarryTheScriptsPosition) {
    EXPECT_TRUE(contains(run("\n\nlamp.Refusing = 1"), ":3: Instance attribute: setValue call failed"));
}

TEST_F(KyLuaBinderTest, AContainerCannotBeAssigned) {
    EXPECT_TRUE(contains(run("lamp.Targets = {1}"), "Instance attribute: cannot set attribute for a container"));
}

TEST_F(KyLuaBinderTest, UnknownKeysReadNilAndAreSilentlyIgnoredWhenWritten) {
    EXPECT_EQ(eval("lamp.unknown"), "nil");
    EXPECT_EQ(run("lamp.unknown = 5 lamp.other = print lamp[1] = 2 lamp[{}] = 3 lamp[''] = 4"), "");
    EXPECT_EQ(eval("lamp.unknown"), "nil");
    EXPECT_EQ(eval("lamp['']"), "nil");
}

TEST_F(KyLuaBinderTest, KeysAreComparedWithTheirWholeLength) {
    EXPECT_EQ(eval("lamp['Power\\0x']"), "nil");
    EXPECT_EQ(run("lamp['Power\\0x'] = 99"), "");
    EXPECT_EQ(mLamp.mPower, 1);
}

TEST_F(KyLuaBinderTest, AKeyThatIsNoStringIsRefusedWhenRead) {
    EXPECT_TRUE(contains(eval("lamp[{}]"), "string expected"));
    EXPECT_TRUE(contains(eval("lamp[true]"), "string expected"));
    EXPECT_EQ(eval("lamp[12]"), "nil");
}

TEST_F(KyLuaBinderTest, AttributesHideComponentsAndComponentsHideMethods) {
    mLamp.mLabel = "attribute";
    mLamp.mBulb = &mBulb;
    EXPECT_EQ(eval("lamp.Label"), "attribute");
    EXPECT_EQ(eval("lamp.bulb == lamp.touch"), "true");
    EXPECT_EQ(eval("type(lamp.bulb)"), "userdata");
    mLamp.mBulb = nullptr;
    EXPECT_EQ(eval("lamp.bulb"), "nil");
    EXPECT_EQ(eval("type(lamp.touch)"), "function");
}

TEST_F(KyLuaBinderTest, AComponentThatAppearsLaterHidesAMethodUsedBefore) {
    run("lamp:touch() lamp:touch()");
    EXPECT_EQ(mLamp.mNbTouches, 2);
    mLamp.mBulb = &mBulb;
    EXPECT_EQ(eval("type(lamp.touch)"), "userdata");
}

TEST_F(KyLuaBinderTest, AReadThatThrowsBecomesALuaError) {
    EXPECT_TRUE(contains(eval("lamp.Failing"), "lamp is broken"));
    EXPECT_EQ(eval("pcall(function() return lamp.Failing end)"), "false");
}

TEST_F(KyLuaBinderTest, ClassTablesInheritAndScriptsMayExtendThem) {
    LuaTestSpot spot;
    engine().bindInstance(&spot, "spot");
    EXPECT_EQ(eval("spot.Power"), "1");
    EXPECT_EQ(eval("spot:add(1, 2)"), "4");
    EXPECT_EQ(eval("spot:widen()"), "60");
    run("function LuaTestLamp:double() return self.Power * 2 end");
    EXPECT_EQ(eval("spot:double()"), "2");
    run("function LuaTestLamp:double() return 'changed' end");
    EXPECT_EQ(eval("spot:double()"), "changed");
    run("function LuaTestSpot:double() return 'own' end");
    EXPECT_EQ(eval("spot:double() .. lamp:double()"), "ownchanged");
}

TEST_F(KyLuaBinderTest, ConstantsStandInTheClassTable) {
    EXPECT_EQ(eval("LuaTestLamp.eOff + LuaTestLamp.eDim * 10 + LuaTestLamp.eBright * 100"), "730");
    EXPECT_EQ(eval("lamp.eBright"), "7");
    engine().bindClass(*LuaTestSpot::getType());
    EXPECT_EQ(eval("LuaTestSpot.eBright"), "7");
}

TEST_F(KyLuaBinderTest, TheMetatableCarriesTheClass) {
    engine().bindClass(*LuaTestSpot::getType());
    LuaTestSpot spot;
    engine().bindInstance(&spot, "spot");
    EXPECT_EQ(eval("getmetatable(lamp).__tessaly_type"), "LuaTestLamp");
    EXPECT_EQ(eval("getmetatable(spot)._base == getmetatable(lamp)"), "true");
    EXPECT_EQ(eval("getmetatable(getmetatable(lamp)) == LuaTestLamp"), "true");
    EXPECT_EQ(eval("getmetatable(LuaTestLamp) == LuaTestLamp"), "true");
    EXPECT_EQ(eval("LuaTestSpot.__index == LuaTestLamp"), "true");
    EXPECT_EQ(eval("LuaTestLamp.__index == KyObject"), "true");
    EXPECT_EQ(eval("getmetatable(lamp).__eq == getmetatable(spot).__eq"), "true");
    EXPECT_EQ(eval("getmetatable(lamp).__lt == getmetatable(spot).__lt"), "true");
    for (const char* name : {"__index", "__newindex", "__tostring", "__eq", "__lt", "__gc"})
        EXPECT_EQ(eval("type(getmetatable(lamp)." + std::string(name) + ")"), "function") << name;
}

TEST_F(KyLuaBinderTest, AParentsGlobalMayChangeBeforeItsChildIsBound) {
    run("LuaTestLamp = nil");
    LuaTestSpot spot;
    engine().bindInstance(&spot, "spot");
    EXPECT_EQ(eval("spot:add(1, 2)"), "4");
}

TEST_F(KyLuaBinderTest, TextFormIsTypeAndAddressInUppercaseHexadecimal) {
    char digits[32];
    std::snprintf(digits, sizeof(digits), "%" PRIXPTR,
                  reinterpret_cast<std::uintptr_t>(static_cast<KyObject*>(&mLamp)));
    EXPECT_EQ(eval("lamp"), "LuaTestLamp: " + std::string(digits));
    EXPECT_EQ(eval("getmetatable(lamp).__tostring(io.stdout)"), "LuaTestLamp: 0");
}

TEST_F(KyLuaBinderTest, InstancesOfOneObjectAreEqualAcrossClassesThereIsAnOrder) {
    LuaTestSpot spot;
    engine().bindInstance(&spot, "spot");
    mLamp.mPartner = &mLamp;
    EXPECT_EQ(eval("lamp == lamp.Partner"), "true");
    EXPECT_EQ(eval("rawequal(lamp, lamp.Partner)"), "false");
    EXPECT_EQ(eval("lamp == spot"), "false");
    EXPECT_EQ(eval("(lamp < spot) ~= (spot < lamp)"), "true");
    EXPECT_EQ(eval("lamp < lamp"), "false");
    EXPECT_EQ(eval("getmetatable(lamp).__eq(lamp, io.stdout)"), "false");
    EXPECT_TRUE(contains(eval("getmetatable(lamp).__lt(lamp, 5)"), "Comparison with invalid type"));
    EXPECT_TRUE(contains(eval("getmetatable(lamp).__lt(lamp, newproxy())"), "Comparison with invalid type"));
}

TEST_F(KyLuaBinderTest, MetamethodsDoNotTrustForeignUserdata) {
    run("meta = getmetatable(lamp) "
        "forged = newproxy(true) "
        "for key, value in pairs(meta) do getmetatable(forged)[key] = value end");
    for (const char* value : {"io.stdout", "newproxy()", "forged", "5", "'text'", "nil", "print"}) {
        EXPECT_EQ(eval("meta.__index(" + std::string(value) + ", 'Power')"), "nil") << value;
        EXPECT_EQ(run("meta.__newindex(" + std::string(value) + ", 'Power', 3)"), "") << value;
        EXPECT_EQ(run("meta.__gc(" + std::string(value) + ")"), "") << value;
        EXPECT_EQ(eval("meta.__eq(" + std::string(value) + ", lamp)"), "false") << value;
        EXPECT_TRUE(contains(eval("LuaTestLamp.add(" + std::string(value) + ", 1, 2)"), "invoke(): invalid object"));
    }
    EXPECT_EQ(eval("forged.Power"), "nil");
    run("forged = nil");
    collect();
}

TEST_F(KyLuaBinderTest, MetamethodsOfOneClassTakeInstancesOfOthers) {
    LuaTestCounted counted;
    counted.addReference();
    engine().bindInstance(&counted, "counted");
    EXPECT_EQ(eval("getmetatable(lamp).__index(counted, 'Value')"), "5");
    EXPECT_EQ(run("getmetatable(lamp).__newindex(counted, 'Value', 6)"), "");
    EXPECT_EQ(counted.mValue, 6);
}

TEST_F(KyLuaBinderTest, MetamethodsOnTablesAreRaw) {
    EXPECT_EQ(eval("getmetatable(lamp).__index({a = 3}, 'a')"), "3");
    EXPECT_EQ(run("t = {} getmetatable(lamp).__newindex(t, 'a', 4)"), "");
    EXPECT_EQ(eval("t.a"), "4");
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
    EXPECT_EQ(eval("first.Speed"), "2");
    EXPECT_EQ(eval("second.Speed"), "nil");
    second.addAttribute("Speed", KyField(3.0));
    EXPECT_EQ(eval("second.Speed"), "3");
    first.removeAttribute("Speed");
    EXPECT_EQ(eval("first.Speed"), "nil");
    second.addAttribute("destroy", KyField(1.0));
    EXPECT_EQ(eval("type(first.destroy)"), "function");
    EXPECT_EQ(eval("second.destroy"), "1");
}

TEST_F(KyLuaBinderTest, BindingAClassTwiceDoesNothingTheSecondTime) {
    EXPECT_TRUE(engine().bindClass(*LuaTestSpot::getType()));
    run("LuaTestSpot.mark = 1");
    EXPECT_FALSE(engine().bindClass(*LuaTestSpot::getType()));
    EXPECT_EQ(eval("LuaTestSpot.mark"), "1");
    EXPECT_EQ(eval("bindClass('LuaTestCounted')"), "true");
    EXPECT_EQ(eval("bindClass('LuaTestCounted')"), "false");
    EXPECT_EQ(eval("bindClass('NoSuchType')"), "false");
}

TEST_F(KyLuaBinderTest, BindAllClassesMakesEveryTypeAGlobal) {
    EXPECT_EQ(run("bindAllClasses()"), "");
    for (unsigned i = 0; i < KyType::getNbTypes(); ++i)
        EXPECT_EQ(eval("type(" + KyType::getType(i)->getName() + ")"), "table");
}

TEST_F(KyLuaBinderTest, ATypeThatLeavesTheRegistryLosesItsClass) {
    auto* spot = new LuaTestSpot;
    engine().bindInstance(spot, "spot");
    run("kept = spot method = spot.widen class = LuaTestSpot local x = spot.Angle");
    LuaTestSpot::finalizeType();
    EXPECT_EQ(eval("LuaTestSpot"), "nil");
    EXPECT_TRUE(contains(eval("method(kept)"), "invalid method"));
    delete spot;
    LuaTestSpot::getType();
    LuaTestSpot again;
    engine().bindInstance(&again, "again");
    EXPECT_EQ(eval("again.Angle .. again:widen()"), "3060");
    EXPECT_EQ(eval("LuaTestSpot ~= class"), "true");
}

TEST_F(KyLuaBinderTest, AResetStateKnowsNoClassesAndCanBeBoundAgain) {
    engine().resetLuaState();
    EXPECT_EQ(eval("LuaTestLamp"), "nil");
    EXPECT_EQ(eval("createKyObject"), "nil");
    KyLuaBinder::bind();
    for (const char* name : {"createKyObject", "deleteKyObject", "bindAllClasses", "ldb", "tprint", "bindClass"})
        EXPECT_EQ(eval("type(" + std::string(name) + ")"), "function") << name;
    EXPECT_EQ(engine().bindInstance(&mLamp, "lamp"), 1);
    EXPECT_EQ(eval("lamp.Power"), "1");
}

TEST_F(KyLuaBinderTest, ListFieldTypesAreRegisteredByName) {
    for (const char* name : {"FieldList", "Vec3dList", "IntList", "UIntList", "StringList", "BoolList", "FloatList",
                             "DoubleList", "KyInvalidField"})
        EXPECT_NE(KyFieldManager::get().findFieldType(std::string_view(name)), nullptr) << name;
    const KyFieldType* list = KyFieldManager::get().findFieldType(std::string_view("IntList"));
    EXPECT_EQ(list->getKind(), KyField(std::vector<int>()).getKind());
    EXPECT_FALSE(KyFieldManager::get().findFieldType(std::string_view("KyInvalidField"))->isValue());
}

TEST_F(KyLuaBinderTest, VariableNamesAreLettersDigitsAndUnderscores) {
    for (const char* name : {"a", "_", "_a9", "Z_z", "nil", "end"})
        EXPECT_TRUE(KyLuaBinder::isValidLuaVariable(name)) << name;
    for (const char* name : {"", "9a", "a b", "a.b", "\xe9t\xe9", "a\n"})
        EXPECT_FALSE(KyLuaBinder::isValidLuaVariable(name)) << name;
    EXPECT_FALSE(KyLuaBinder::isValidLuaVariable(std::string("a\0b", 3)));
}

TEST_F(KyLuaBinderTest, ABinderReadsArguments) {
    lua_State* state = engine().editLuaState();
    KyLuaBinder binder(state);
    binder.pushBoolean(true);
    binder.pushInteger(-3);
    binder.pushNumber(2.5);
    binder.pushString("text");
    binder.pushNil();
    binder.pushUserType(mLamp);
    EXPECT_TRUE(binder.checkBoolean(1));
    EXPECT_EQ(binder.checkInteger(2), -3);
    EXPECT_EQ(binder.checkNumber(3), 2.5);
    EXPECT_STREQ(binder.checkString(4), "text");
    EXPECT_TRUE(binder.checkNil(5));
    EXPECT_TRUE(binder.checkNil(20));
    EXPECT_FALSE(binder.checkNil(4));
    EXPECT_EQ(binder.checkUserType(6, *LuaTestLamp::getType()), &mLamp);
    EXPECT_EQ(binder.checkUserType(6, *KyObject::getType()), &mLamp);
    EXPECT_EQ(binder.checkUserType(6, *LuaTestSpot::getType()), nullptr);
    EXPECT_TRUE(binder.isUserType(6, *LuaTestLamp::getType()));
    EXPECT_FALSE(binder.isUserType(4, *LuaTestLamp::getType()));
    EXPECT_EQ(binder.checkNumber(1), 0);
    EXPECT_EQ(binder.checkString(6), nullptr);
    EXPECT_EQ(lua_gettop(state), 6);
    binder.cleanStack();
    EXPECT_EQ(lua_gettop(state), 0);
}

TEST_F(KyLuaBinderTest, EnumTablesAreMadeAndExtended) {
    const KyEnum first[] = {{"eA", 1}, {"eB", -2}};
    const KyEnum second[] = {{"eC", 30}};
    KyLuaBinder binder(engine().editLuaState());
    binder.createEnum("Modes", 2, first);
    binder.addEnum("Modes", 1, second);
    binder.addEnum("Others", 1, second);
    EXPECT_EQ(eval("Modes.eA + Modes.eB + Modes.eC"), "29");
    EXPECT_EQ(eval("Others.eC"), "30");
    binder.createEnum("Modes", 1, second);
    EXPECT_EQ(eval("Modes.eA"), "nil");
    EXPECT_EQ(lua_gettop(engine().editLuaState()), 0);
}

TEST_F(KyLuaBinderTest, TwoRoundsOfInitialisationWork) {
    engine().unbindInstance(&mLamp);
    TearDown();
    SetUp();
    EXPECT_EQ(eval("lamp.Power"), "1");
}

TEST_F(KyLuaBinderTest, BindingAllClassesBringsTheUtilities) {
    EXPECT_EQ(eval("bit_and"), "nil");
    run("bindAllClasses()");
    EXPECT_EQ(eval("bit_and(12, 10)"), "8");
    EXPECT_EQ(eval("bit_or(12, 10)"), "14");
    EXPECT_EQ(eval("bit_xor(12, 10)"), "6");
    EXPECT_EQ(eval("bit_not(0)"), "-1");
    EXPECT_EQ(eval("bit_and(-1, 255)"), "255");
    EXPECT_EQ(eval("bit_or(4294967295, 0)"), "-1");
    EXPECT_TRUE(contains(eval("bit_not(0/0)"), "finite number expected"));
    EXPECT_TRUE(contains(eval("bit_and(1)"), "number expected"));
    EXPECT_EQ(eval("openUrl('nowhere:')"), "false") << "no desktop in a test";
}
