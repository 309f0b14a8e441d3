// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestFixture.h"

#include "KyPlatform.h"
#include "KyTypeBuilder.h"

namespace {

class KyLuaTimeTypesTest : public KyLuaTestFixture {};

TEST_F(KyLuaTimeTypesTest, DatesAreDaysOfTheCalendar) {
    expectTexts({
        {"Date(2024, 2, 29)", "2024-02-29"},
        {"Date()", ""},
        {"Date(0, 1, 1)", ""},
        {"Date(2024, 0/0, 1)", ""},
        {"Date(2024.9, 2.9, 3.9)", "2024-02-03"},
        {"Date(4294969320, 1, 1)", "2147483647-01-01"},
        {"(function() local d = Date(2024, 2, 29) return d:getYear() .. ' ' .. d:getMonth() .. ' ' .. d:getDay() "
         "end)()",
         "2024 2 29"},
        {"Date():getDay()", "0"},
        {"(function() local d = Date() return tostring(d:setYMD(2024, 12, 31)) .. tostring(d) end)()",
         "true2024-12-31"},
        {"(function() local d = Date(1, 2, 3) return tostring(d:setYMD(2024, 13, 1)) .. tostring(d) end)()",
         "false0001-02-03"},
        {"Date(2024, 1, 1) == Date(2024, 1, 1)", "true"},
        {"Date(2024, 1, 1) == Date(2024, 1, 2)", "false"},
        {"Date(2024, 1, 1) == Time()", "false"},
    });
}

TEST_F(KyLuaTimeTypesTest, TimesAreSecondsOfTheDay) {
    expectTexts({
        {"Time()", "00:00:00.000"},
        {"Time(45015.25)", "12:30:15.250"},
        {"Time(1.9, 1.9, 0)", "01:01:00.000"},
        {"Time(86399.9999)", "23:59:59.999"},
        {"Time(-1.5)", "-00:00:01.500"},
        {"Time(0/0)", "00:00:00.000"},
        {"Time(12, 30, 0):toString()", "12:30:00.000"},
        {"Time(1, 0, 0):getTime()", "3600"},
        {"(function() local t = Time() t:setTime(61) return t end)()", "00:01:01.000"},
        {"(function() local t = Time(-5) t:setToNow() return t:getTime() >= 0 and t:getTime() < 86400 end)()", "true"},
        {"Time(10, 0, 0) - Time(10, 0, 1.5)", "-1.5"},
        {"Time(60) == Time(0, 1, 0)", "true"},
        {"Time(60) == DateTime(Date(), Time(60))", "false"},
    });
}

TEST_F(KyLuaTimeTypesTest, DateTimesHaveLivePartsAndAnOrder) {
    expectTexts({
        {"DateTime()", "T00:00:00.000"},
        {"DateTime(Date(2024, 2, 29), Time(12, 30, 0))", "2024-02-29T12:30:00.000"},
        {"(function() local d = DateTime() d.date = Date(2024, 1, 1) d.time = Time(60) return d end)()",
         "2024-01-01T00:01:00.000"},
        {"(function() local d = DateTime() d.date:setYMD(2024, 1, 1) d.time:setTime(60) return d end)()",
         "2024-01-01T00:01:00.000"},
        {"(function() local t = DateTime(Date(), Time(60)).time collectgarbage() collectgarbage() return t end)()",
         "00:01:00.000"},
        {"DateTime(Date(2024, 1, 1), Time(1)) == DateTime(Date(2024, 1, 1), Time(1))", "true"},
        {"DateTime(Date(2024, 1, 1), Time(1)) == DateTime(Date(2024, 1, 1), Time(2))", "false"},
        {"DateTime(Date(2024, 1, 1), Time(2)) < DateTime(Date(2024, 1, 2), Time(1))", "true"},
        {"DateTime(Date(2024, 1, 1), Time(2)) < DateTime(Date(2024, 1, 1), Time(2))", "false"},
        {"DateTime(Date(2024, 1, 1), Time(2)) <= DateTime(Date(2024, 1, 1), Time(2))", "true"},
        {"DateTime(Date(2024, 1, 2), Time(1)) <= DateTime(Date(2024, 1, 1), Time(2))", "false"},
        {"Date(2024, 1, 2) < Date(2024, 2, 1) and not (Date(2024, 2, 1) <= Date(2024, 1, 2))", "true"},
        {"Time(1) < Time(2) and Time(2) <= Time(2) and not (Time(2) < Time(2))", "true"},
    });
}

TEST_F(KyLuaTimeTypesTest, TimersCountWhileTheyRun) {
    run("function wait(us) local begin = Timer.getCurrentUS() while Timer.getCurrentUS() < begin + us do end end");
    expectTexts({
        {"Timer():getElapsedTime()", "0"},
        {"Timer():getPreciseDeltaTime()", "-1"},
        {"(function() local t = Timer() t:start() return t:getPreciseDeltaTime() end)()", "-1"},
        {"(function() local t = Timer() t:start() t:getDeltaTime() return t:getPreciseDeltaTime() >= 0 end)()", "true"},
        {"(function() local t = Timer() t:start() t:pause() local a = t:getPreciseElapsedTime() wait(100) "
         "return t:getPreciseElapsedTime() == a end)()",
         "true"},
        {"(function() local t = Timer() t:start() wait(3000) return t:getElapsedTime() >= 3 and "
         "t:getPreciseElapsedTime() >= 3000 end)()",
         "true"},
        {"(function() local t = Timer() t:start() t:pause() wait(3000) t:resume() return t:getPreciseElapsedTime() < "
         "3000 end)()",
         "true"},
        {"math.abs(Timer.getCurrentUS() / 1000 - Timer.getCurrentMS()) < 1000", "true"},
        {"Timer() == Date()", "false"},
        {"(function() local a, b = Timer(), Timer() a:start() wait(100) return a == b or b == a end)()", "false"},
    });
}

TEST_F(KyLuaTimeTypesTest, TypesAreTheRecordsOfClasses) {
    expectTexts({
        {"Type.find('LuaTestSpot'):getName()", "LuaTestSpot"},
        {"Type.find('LuaTestSpot'):getParent()", "LuaTestLamp"},
        {"Type.find('KyObject'):getParent()", "nil"},
        {"Type.find('NoSuchClass')", "nil"},
        {"Type.find('LuaTestSpot'):getVersion()", "0"},
        {"Type.find('LuaTestSpot'):isA(Type.find('LuaTestLamp'))", "true"},
        {"Type.find('LuaTestLamp'):isA(Type.find('LuaTestSpot'))", "false"},
        {"Type.find('LuaTestSpot'):getParent() == Type.find('LuaTestLamp')", "true"},
        {"Type.find('LuaTestSpot') == Type.find('LuaTestLamp')", "false"},
        {"Type.find('LuaTestSpot') == Date()", "false"},
        {"(function() local s = createKyObject('LuaTestSpot') local t = Type.of(s) deleteKyObject(s) return t end)()",
         "LuaTestSpot"},
        {"Type.of(nil)", "nil"},
        {"Type.of(io.stdout)", "nil"},
    });
}

TEST_F(KyLuaTimeTypesTest, MisuseIsAnError) {
    const std::string noMatch = "No matching overload found";
    expectErrors({
        {"Date('2024', '1', '1')", noMatch},
        {"Date().getYear(nil)", noMatch},
        {"Date().getYear(Time())", noMatch},
        {"return Date() < Time()", noMatch},
        {"Time(nil)", noMatch},
        {"Time():setTime('x')", noMatch},
        {"return DateTime() <= 5", "attempt to compare userdata with number"},
        {"(function() DateTime().date = Time() end)()", noMatch},
        {"Timer().start()", noMatch},
        {"Platform()", "Platform cannot be constructed"},
        {"Type()", "Type cannot be constructed"},
        {"Type.find(nil)", noMatch},
        {"Type.find('LuaTestSpot'):isA(Date())", noMatch},
        {"Type.find('KyObject').getName(nil)", noMatch},
    });
    EXPECT_EQ(eval("Date(2024, 1, 1)"), "2024-01-01");
}

TEST_F(KyLuaTimeTypesTest, ThePlatformIsTheOneOfTheProgram) {
    const std::string type = std::to_string(KyPlatform::getOsType());
    EXPECT_EQ(eval("Platform.getOsType()"), type);
    EXPECT_EQ(eval("Platform:getOsType()"), type);
    EXPECT_EQ(eval("Platform.eWindows .. ' ' .. Platform.eLinux"), "0 1");
}

class LuaTestFleeting : public KyObject {};

TEST_F(KyLuaTimeTypesTest, ARecordThatIsRemovedIsStillSafe) {
    const KyType* type = KyTypeBuilder<LuaTestFleeting>("LuaTestFleeting", KyObject::getType()).build();
    ASSERT_EQ(run("kept = Type.find('LuaTestFleeting')"), "");
    KyType::remove(type);
    EXPECT_EQ(eval("Type.find('LuaTestFleeting')"), "nil");
    EXPECT_EQ(eval("kept == Type.find('KyObject')"), "false");
    EXPECT_EQ(run("local a, b, c = kept:getName(), kept:getParent(), kept:getVersion() kept:isA(kept)"), "");
    EXPECT_EQ(run("kept = nil collectgarbage() collectgarbage()"), "");
    EXPECT_EQ(eval("Type.find('KyObject')"), "KyObject");
}

} // namespace
