// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaTestFixture.h"

#include "KyPlatform.h"
#include "KyTypeBuilder.h"

namespace {

class KyLuaTimeTypesTest : public KyLuaTestFixture {
protected:
    void SetUp() override {
        KyLuaTestFixture::SetUp();
        run("function wait(us) local begin = Timer.getCurrentUS() while Timer.getCurrentUS() < begin + us do end end "
            "function after(value, change) return value, change(value) end "
            "function collected(value) collectgarbage() collectgarbage() return value end");
    }
};

TEST_F(KyLuaTimeTypesTest, DatesAreDaysOfTheCalendar) {
    expectTexts({
        {"Date(2024, 2, 29), Date(), Date(0, 1, 1), Date(2024, 0/0, 1)", "2024-02-29, , , "},
        {"Date(2024.9, 2.9, 3.9), Date(4294969320, 1, 1)", "2024-02-03, 2147483647-01-01"},
        {"Date(2024, 2, 29):getYear(), Date(2024, 2, 29):getMonth(), Date(2024, 2, 29):getDay()", "2024, 2, 29"},
        {"after(Date(), function(d) return d:setYMD(2024, 12, 31), Date():getDay() end)", "2024-12-31, true, 0"},
        {"after(Date(1, 2, 3), function(d) return d:setYMD(2024, 13, 1) end)", "0001-02-03, false"},
        {"Date(2024, 1, 1) == Date(2024, 1, 1), Date(2024, 1, 1) == Date(2024, 1, 2)", "true, false"},
    });
}

TEST_F(KyLuaTimeTypesTest, TimesAreSecondsOfTheDay) {
    expectTexts({
        {"Time(), Time(45015.25), Time(1.9, 1.9, 0)", "00:00:00.000, 12:30:15.250, 01:01:00.000"},
        {"Time(86399.9999), Time(-1.5), Time(0/0)", "23:59:59.999, -00:00:01.500, 00:00:00.000"},
        {"Time(12, 30, 0):toString(), Time(1, 0, 0):getTime()", "12:30:00.000, 3600"},
        {"after(Time(), function(t) t:setTime(61) end)", "00:01:01.000"},
        {"Time(10, 0, 0) - Time(10, 0, 1.5)", "-1.5"},
    });
    expectTrue({"(function() local t = Time(-5) t:setToNow() return t:getTime() >= 0 and t:getTime() < 86400 end)()",
                "Time(60) == Time(0, 1, 0)", "Time(60) ~= DateTime(Date(), Time(60))", "Date(2024, 1, 1) ~= Time()"});
}

TEST_F(KyLuaTimeTypesTest, DateTimesHaveLivePartsAndAnOrder) {
    expectTexts({
        {"DateTime(), DateTime(Date(2024, 2, 29), Time(12, 30, 0))", "T00:00:00.000, 2024-02-29T12:30:00.000"},
        {"after(DateTime(), function(d) d.date = Date(2024, 1, 1) d.time = Time(60) end)", "2024-01-01T00:01:00.000"},
        {"after(DateTime(), function(d) d.date:setYMD(2024, 1, 1) d.time:setTime(60) end)", "2024-01-01T00:01:00.000"},
        {"collected(DateTime(Date(), Time(60)).time)", "00:01:00.000"},
    });
    run("a, b, c = DateTime(Date(2024, 1, 1), Time(1)), DateTime(Date(2024, 1, 1), Time(2)), "
        "DateTime(Date(2024, 1, 2), Time(1))");
    expectTrue({"a == DateTime(Date(2024, 1, 1), Time(1))", "a ~= b", "b < c", "not (b < b)", "b <= b", "not (c <= b)",
                "Date(2024, 1, 2) < Date(2024, 2, 1) and not (Date(2024, 2, 1) <= Date(2024, 1, 2))",
                "Time(1) < Time(2) and Time(2) <= Time(2) and not (Time(2) < Time(2))"});
}

TEST_F(KyLuaTimeTypesTest, TimersCountWhileTheyRun) {
    expectTexts({{"Timer():getElapsedTime(), Timer():getPreciseDeltaTime()", "0, -1"},
                 {"(function() local t = Timer() t:start() return t:getPreciseDeltaTime() end)()", "-1"}});
    run("first, running, other = Timer(), Timer(), Timer() first:start() first:getDeltaTime() running:start() "
        "running:pause() paused = running:getPreciseElapsedTime() wait(3000) stopped = running:getPreciseElapsedTime() "
        "running:resume() resumed = running:getPreciseElapsedTime()");
    expectTrue({"first:getPreciseDeltaTime() >= 0", "first:getElapsedTime() >= 3",
                "first:getPreciseElapsedTime() >= 3000", "stopped == paused", "resumed < 3000",
                "math.abs(Timer.getCurrentUS() / 1000 - Timer.getCurrentMS()) < 1000", "Timer() ~= Date()",
                "first ~= other and other ~= first"});
}

TEST_F(KyLuaTimeTypesTest, TypesAreTheRecordsOfClassesAndThePlatformIsTheProgramsOne) {
    run("spot, lamp = Type.find('LuaTestSpot'), Type.find('LuaTestLamp')");
    expectTexts({
        {"spot:getName(), spot:getParent(), spot:getVersion()", "LuaTestSpot, LuaTestLamp, 0"},
        {"Type.find('KyObject'):getParent(), Type.find('NoSuchClass'), Type.of(nil), Type.of(io.stdout)",
         "nil, nil, nil, nil"},
        {"spot:isA(lamp), lamp:isA(spot), spot:getParent() == lamp, spot == lamp", "true, false, true, false"},
        {"spot == Date()", "false"},
        {"(function() local s = createKyObject('LuaTestSpot') local t = Type.of(s) deleteKyObject(s) return t end)()",
         "LuaTestSpot"},
    });
    const std::string type = std::to_string(KyPlatform::getOsType());
    EXPECT_EQ(eval("Platform.getOsType(), Platform:getOsType()"), type + ", " + type);
    EXPECT_EQ(eval("Platform.eWindows, Platform.eLinux"), "0, 1");
}

TEST_F(KyLuaTimeTypesTest, MisuseIsAnError) {
    expectErrors("No matching overload found",
                 {"Date('2024', '1', '1')", "Date().getYear(nil)", "Date().getYear(Time())", "return Date() < Time()",
                  "Time(nil)", "Time():setTime('x')", "(function() DateTime().date = Time() end)()", "Timer().start()",
                  "Type.find(nil)", "Type.find('LuaTestSpot'):isA(Date())", "Type.find('KyObject').getName(nil)"});
    expectErrors({{"return DateTime() <= 5", "attempt to compare userdata with number"},
                  {"Platform()", "Platform cannot be constructed"},
                  {"Type()", "Type cannot be constructed"}});
}

class LuaTestFleeting : public KyObject {};

TEST_F(KyLuaTimeTypesTest, ARecordThatIsRemovedIsStillSafe) {
    const KyType* type = KyTypeBuilder<LuaTestFleeting>("LuaTestFleeting", KyObject::getType()).build();
    expectRuns("kept = Type.find('LuaTestFleeting')");
    KyType::remove(type);
    EXPECT_EQ(eval("Type.find('LuaTestFleeting'), kept == Type.find('KyObject')"), "nil, false");
    expectRuns("local a, b, c = kept:getName(), kept:getParent(), kept:getVersion() kept:isA(kept)");
    expectRuns("kept = nil collectgarbage() collectgarbage()");
    EXPECT_EQ(eval("Type.find('KyObject')"), "KyObject");
}

} // namespace
