// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestFixture.h"

#include <limits>

class KyLuaConvertersTest : public KyLuaTestFixture {
protected:
    /// The field after a way through a Lua variable.
    static KyField roundTrip(const KyField& field) {
        engine().setLuaVariable("value", field);
        return evalField("value");
    }

    static std::string shown(const KyField& field) {
        engine().setLuaVariable("value", field);
        return eval("value");
    }
};

TEST_F(KyLuaConvertersTest, NumbersAndEnumeratedValuesArriveAsDoubles) {
    EXPECT_EQ(roundTrip(KyField(7u)), KyField(7.0));
    EXPECT_EQ(roundTrip(KyField(std::numeric_limits<std::uint64_t>::max())), KyField(18446744073709551616.0));
    const char* names[] = {"eA", "eB", "eC"};
    const KyFieldType& type = KyFieldManager::get().registerEnumFieldType("LuaTestMode", 3, names);
    EXPECT_EQ(roundTrip(KyField::makeEnumerated(type.getKind(), 2)), KyField(2.0));
    EXPECT_TRUE(roundTrip(KyField(static_cast<KyObject*>(nullptr))).isEmpty());
}

TEST_F(KyLuaConvertersTest, AttributesOfValueTypesAreCopies) {
    LuaTestLamp lamp;
    lamp.mPosition = KyVec3d(1, 2, 3);
    engine().bindInstance(&lamp, "lamp");
    expectRuns("p = lamp.Position p.x = 9");
    EXPECT_EQ(lamp.mPosition, KyVec3d(1, 2, 3));
    expectRuns("lamp.Position = Vec3f(4, 5, 6)");
    EXPECT_EQ(lamp.mPosition, KyVec3d(4, 5, 6));
    expectErrors({{"lamp.Position = Vec2(1, 2)", "setValue call failed"}});
}

TEST_F(KyLuaConvertersTest, ListsAndObjectsCrossAsTablesAndReferencesAndWhatNoFieldHoldsIsInvalid) {
    LuaTestLamp lamp;
    engine().setLuaVariable("list", KyField(std::vector<KyField>{KyField(&lamp), KyField(2.5)}));
    EXPECT_EQ(evalField("list[1]").toKyObject(), &lamp);
    EXPECT_EQ(eval("list[2]"), "2.5");
    const std::vector<KyField> inner{2.0};
    EXPECT_EQ(evalField("{1, 'a', true, {2}}"), KyField(std::vector<KyField>{1.0, "a", true, KyField(inner)}));
    for (const char* value : {"print", "coroutine.create(function() end)", "io.stdout", "newproxy()"})
        EXPECT_NE(evalField(value).get<KyInvalidField>(), nullptr) << value;
}

namespace {

struct Temperature {
    double degrees = 0;
    bool operator==(const Temperature&) const = default;
};

void pushTemperature(KyLuaBinder& binder, const KyField& field) {
    binder.pushNumber(field.get<Temperature>()->degrees);
}

KyField checkTemperature(KyLuaBinder& binder, int index) {
    if (lua_type(binder.editLuaState(), index) != LUA_TNUMBER)
        return KyField(KyInvalidField());
    return KyField(Temperature{binder.checkNumber(index)});
}

TEST_F(KyLuaConvertersTest, TablesThatHoldThemselvesOrEachOtherManyTimesEnd) {
    EXPECT_TRUE(evalField("(function() local t = {1} t[2] = t t[3] = t return t end)()").isValid());
    EXPECT_FALSE(evalField("(function() local t = {1} for i = 1, 40 do t = {t, t} end return t end)()").isEmpty());
    EXPECT_EQ(lua_gettop(engine().editLuaState()), 0);
}

} // namespace

TEST_F(KyLuaConvertersTest, OtherTypesNeedAConverter) {
    EXPECT_EQ(shown(KyField(Temperature{21})), "nil");
    KyLuaBinder::registerCppToLuaConverter(typeid(Temperature), &pushTemperature);
    KyLuaBinder::registerLuaToCppConverter(typeid(Temperature), &checkTemperature);
    EXPECT_EQ(shown(KyField(Temperature{21})), "21");
    KyLuaBinder binder(engine().editLuaState());
    binder.pushNumber(30);
    binder.pushString("warm");
    EXPECT_EQ(binder.checkField(1, typeid(Temperature)), KyField(Temperature{30}));
    EXPECT_FALSE(binder.checkField(2, typeid(Temperature)).isValid());
    binder.cleanStack();
}

TEST_F(KyLuaConvertersTest, FieldsAreReadAsATypeOrAClass) {
    LuaTestLamp lamp;
    KyLuaBinder binder(engine().editLuaState());
    binder.pushNumber(3.7);
    binder.pushUserType(lamp);
    binder.pushNil();
    EXPECT_EQ(binder.checkField(1, typeid(int)), KyField(3));
    EXPECT_FALSE(binder.checkField(1, typeid(KyVec3d)).isValid());
    EXPECT_EQ(binder.checkField(2, *LuaTestLamp::getType()).toKyObject(), &lamp);
    EXPECT_FALSE(binder.checkField(2, *LuaTestSpot::getType()).isValid());
    EXPECT_TRUE(binder.checkField(3, *LuaTestLamp::getType()).isEmpty());
    binder.cleanStack();
}

TEST_F(KyLuaConvertersTest, WhatAnyHoldsIsPushed) {
    LuaTestLamp lamp;
    KyLuaBinder binder(engine().editLuaState());
    const boost::any values[] = {
        true, 4000000000u, 0.5f, static_cast<const char*>("text"), static_cast<KyObject*>(&lamp), KyVec3d(1, 2, 3)};
    for (const boost::any& value : values)
        binder.cpp_to_lua(value);
    const KyField expected[] = {true, 4000000000.0, 0.5, "text", KyField(&lamp), KyVec3d(1, 2, 3)};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(binder.checkField(i + 1), expected[i]) << i;
    binder.cleanStack();
    binder.cpp_to_lua(static_cast<KyObject*>(nullptr));
    binder.cpp_to_lua(boost::any());
    EXPECT_TRUE(binder.checkNil(1) && binder.checkNil(2));
    binder.cleanStack();
    EXPECT_EQ(shown(KyField(boost::any(12))), "12");
}
