// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaArithmetic_p.h"
#include "KyLuaValueClass_p.h"
#include "KyLuaValueTypes_p.h"

#include "KyCallSignatures.h"
#include "KyEasing.h"
#include "KyIntersectionPoint.h"
#include "KyRay.h"
#include "KyWayPoint.h"

namespace {

char gGroupKey = 0;

template <class T>
luabind::scope makeIntersectionPoint(const char* name) {
    using Point = KyIntersectionPoint<T>;
    luabind::class_<Point> pointClass(name);
    kyDefineLuaValue(pointClass);
    kyDefineLuaNumber<&Point::distance>(pointClass, "distance");
    pointClass.def_readwrite("origin", &Point::origin)
        .def_readwrite("position", &Point::position)
        .def_readwrite("normal", &Point::normal);
    return pointClass;
}

template <class T>
luabind::scope makeWayPoint(const char* name) {
    using Point = KyWayPoint<T>;
    luabind::class_<Point> pointClass(name);
    KyCallSignatures::add(name, {"__init(position, time)"});
    kyDefineLuaValue(pointClass);
    kyDefineLuaNumber<&Point::time>(pointClass, "time");
    pointClass
        .def("__init", kyLuaConstructor(+[](const KyVec3<T>& position, double time) {
                 return Point(position, kyToLuaElement<T>(time));
             }))
        .def_readwrite("position", &Point::position)
        .def_readwrite("cubicVelocity", &Point::cubicVelocity);
    return pointClass;
}

template <class T>
luabind::scope makeRay(const char* name) {
    using Ray = KyRay<T>;
    luabind::class_<Ray> rayClass(name);
    KyCallSignatures::add(name, {"__init(origin, direction)"});
    kyDefineLuaValue(rayClass);
    rayClass
        .def("__init", kyLuaConstructor(
                           +[](const KyVec3<T>& origin, const KyVec3<T>& direction) { return Ray(origin, direction); }))
        .def_readwrite("origin", &Ray::origin)
        .def_readwrite("direction", &Ray::direction);
    return rayClass;
}

/// Scripts evaluate a curve with `Easing.compute(Easing.BackIn, t)`: the part of the way after the part t of the time.
luabind::scope makeEasing() {
    luabind::class_<KyEasing> easingClass("Easing");
    KyCallSignatures::add("Easing", {"compute(kind: integer, time)"});
    luabind::value_vector kinds;
    for (int i = 0; i < KyEasing::eNbKinds; ++i)
        kinds.push_back(luabind::value(KyEasing::getName(static_cast<KyEasing::Kind>(i)), i));
    easingClass.enum_("Kind")[kinds].scope[luabind::def(
        "compute", +[](double kind, double time) {
            return KyEasing::compute(kyCheckLuaEnum<KyEasing::Kind>(kind, KyEasing::eNbKinds, "easing"), time);
        })];
    return easingClass;
}

} // namespace

void kyBindValueTypes1(lua_State* state) {
    if (!kyMarkLuaGroup(state, &gGroupKey))
        return;
    kyRegisterScriptError();
    kyOpenLuaValues(state);
    kyBindVectorTypes(state);
    luabind::module(
        state)[(makeIntersectionPoint<double>("IntersectionPointd"), makeIntersectionPoint<float>("IntersectionPointf"),
                makeWayPoint<double>("WayPointd"), makeWayPoint<float>("WayPointf"), makeRay<double>("Rayd"),
                makeRay<float>("Rayf"), makeEasing())];
    kySetLuaAlias(state, "Ray", "Rayd");
    kySetLuaAlias(state, "WayPoint", "WayPointd");
    kySetLuaAlias(state, "IntersectionPoint", "IntersectionPointd");
    kyCompleteLuaClasses(state);
}
