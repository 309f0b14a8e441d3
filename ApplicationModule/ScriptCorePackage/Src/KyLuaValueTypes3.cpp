// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaValueTypes_p.h"

#include "KyLuaInstance_p.h"
#include "KyLuaResourceFunctions_p.h"
#include "KyLuaValueClass_p.h"

#include "KyCallSignatures.h"
#include "KyDateTime.h"
#include "KyObject.h"
#include "KyPlatform.h"
#include "KyResourceInformation.h"
#include "KyTimer.h"
#include "KyType.h"

namespace {

char gGroupKey = 0;

using luabind::argument;
using luabind::class_;
using luabind::scope;

scope makePlatform() {
    class_<KyPlatform> platformClass("Platform");
    KyCallSignatures::add("Platform", {"getOsType(platform?)"});
    platformClass.enum_(
        "OsType")[(luabind::value("eWindows", KyPlatform::eWindows), luabind::value("eLinux", KyPlatform::eLinux))];
    // Scripts write "Platform:getOsType()" as well.
    platformClass.scope[(luabind::def("getOsType", &KyPlatform::getOsType),
                         luabind::def(
                             "getOsType", +[](const argument&) { return KyPlatform::getOsType(); }))];
    return platformClass;
}

double getCurrentMS() {
    return static_cast<double>(KyTimer::getCurrentMS());
}

double getCurrentUS() {
    return static_cast<double>(KyTimer::getCurrentUS());
}

scope makeTimer() {
    class_<KyTimer> timerClass("Timer");
    kyDefineLuaEquality(timerClass);
    timerClass.def("__init", kyLuaConstructor(+[] { return KyTimer(); }))
        .def("start", &KyTimer::start)
        .def("pause", &KyTimer::pause)
        .def("resume", &KyTimer::resume)
        .def("getElapsedTime", &KyTimer::getElapsedTime)
        .def(
            "getPreciseElapsedTime",
            +[](const KyTimer& timer) { return static_cast<double>(timer.getPreciseElapsedTime()); })
        .def("getDeltaTime", &KyTimer::getDeltaTime)
        .def(
            "getPreciseDeltaTime", +[](KyTimer& timer) { return static_cast<double>(timer.getPreciseDeltaTime()); })
        .def(
            "getCurrentMS", +[](const KyTimer&) { return getCurrentMS(); })
        .def(
            "getCurrentUS", +[](const KyTimer&) { return getCurrentUS(); })
        .scope[(luabind::def("getCurrentMS", &getCurrentMS), luabind::def("getCurrentUS", &getCurrentUS))];
    return timerClass;
}

int toInt(double number) {
    return kyToLuaElement<int>(number);
}

scope makeDate() {
    class_<KyDate> dateClass("Date");
    KyCallSignatures::add("Date", {"__init(year: integer, month: integer, day: integer)",
                                   "setYMD(year: integer, month: integer, day: integer)"});
    kyDefineLuaValue(dateClass);
    return dateClass
        .def("__init", kyLuaConstructor(+[](double year, double month, double day) {
                 return KyDate(toInt(year), toInt(month), toInt(day));
             }))
        .def(
            "setYMD", +[](KyDate& date, double year, double month,
                          double day) { return date.setYMD(toInt(year), toInt(month), toInt(day)); })
        .def("getYear", &KyDate::getYear)
        .def("getMonth", &KyDate::getMonth)
        .def("getDay", &KyDate::getDay)
        .def(
            "__lt", +[](const KyDate& a, const KyDate& b) { return a < b; })
        .def(
            "__le", +[](const KyDate& a, const KyDate& b) { return a <= b; });
}

scope makeTime() {
    class_<KyTime> timeClass("Time");
    KyCallSignatures::add("Time",
                          {"__init(seconds)", "__init(hours: integer, minutes: integer, seconds)", "setTime(seconds)"});
    kyDefineLuaValue(timeClass);
    return timeClass.def("__init", kyLuaConstructor(+[](double seconds) { return KyTime(seconds); }))
        .def("__init", kyLuaConstructor(+[](double hours, double minutes, double seconds) {
                 return KyTime(toInt(hours), toInt(minutes), seconds);
             }))
        .def("getTime", &KyTime::getTime)
        .def("setTime", &KyTime::setTime)
        .def("setToNow", &KyTime::setToNow)
        .def("toString", &KyTime::toString)
        .def(
            "__sub", +[](const KyTime& a, const KyTime& b) { return a - b; })
        .def(
            "__lt", +[](const KyTime& a, const KyTime& b) { return a < b; })
        .def(
            "__le", +[](const KyTime& a, const KyTime& b) { return a <= b; });
}

scope makeDateTime() {
    class_<KyDateTime> dateTimeClass("DateTime");
    KyCallSignatures::add("DateTime", {"__init(date, time)"});
    kyDefineLuaValue(dateTimeClass);
    return dateTimeClass
        .def("__init", kyLuaConstructor(+[](const KyDate& date, const KyTime& time) { return KyDateTime(date, time); }))
        .def_readwrite("date", &KyDateTime::date)
        .def_readwrite("time", &KyDateTime::time)
        .def(
            "__lt", +[](const KyDateTime& a, const KyDateTime& b) { return a < b; })
        .def(
            "__le", +[](const KyDateTime& a, const KyDateTime& b) { return a <= b; });
}

/// The record of an object's class; null, which scripts see as nil, for what is no object.
const KyType* getTypeOf(const argument& value) {
    lua_State* state = value.interpreter();
    value.push(state);
    const KyObject* object = kyLuaToObject(state, lua_gettop(state), *KyObject::getType());
    lua_pop(state, 1);
    return object ? object->getObjectType() : nullptr;
}

/// Lua holds the records by their addresses, which stay good when a record leaves the registry, and owns none.
scope makeType() {
    class_<KyType> typeClass("Type");
    KyCallSignatures::add("Type", {"find(name)", "of(object)", "isA(other)"});
    kyDefineLuaEquality(typeClass);
    typeClass.def("__tostring", &KyType::getName)
        .def("getName", &KyType::getName)
        .def("getParent", &KyType::getParent)
        .def("getVersion", &KyType::getVersion)
        .def("isA", &KyType::isA)
        .scope[(luabind::def(
                    "find", +[](const std::string& name) { return KyType::getType(name); }),
                luabind::def("of", &getTypeOf))];
    return typeClass;
}

scope makeResourceInformation() {
    using Information = KyResourceInformation;
    class_<Information> informationClass("ResourceInformation");
    KyCallSignatures::add("ResourceInformation", {"__init(url)"});
    kyDefineLuaEquality(informationClass);
    return informationClass.def("__init", kyLuaConstructor(+[] { return Information(); }))
        .def("__init", kyLuaConstructor(+[](const KyURL& url) { return Information(url); }))
        .def("isValid", &Information::isValid)
        .def("setURL", &Information::setURL)
        .def(
            "getURL", +[](const Information& information) { return KyURL(information.getURL()); })
        .def(
            "getSize32", +[](const Information& information) { return static_cast<double>(information.getSize32()); })
        .def("isHidden", &Information::isHidden)
        .def("isDirectory", &Information::isDirectory)
        .def("isReadable", &Information::isReadable)
        .def("isWritable", &Information::isWritable)
        .def("isSymbolicLink", &Information::isSymbolicLink)
        .def("isExecutable", &Information::isExecutable);
}

} // namespace

void kyBindValueTypes3(lua_State* state) {
    if (!kyMarkLuaGroup(state, &gGroupKey))
        return;
    luabind::module(state)[(makePlatform(), makeTimer(), makeDate(), makeTime(), makeDateTime(), makeType(),
                            makeResourceInformation(), kyMakeLuaResourceScope())];
    kyCompleteLuaClasses(state);
}
