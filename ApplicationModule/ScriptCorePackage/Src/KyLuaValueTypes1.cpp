// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaValueTypes_p.h"

#include "KyVec2.h"
#include "KyVec3.h"

#include <luabind/luabind.hpp>
#include <luabind/operator.hpp>

namespace {

char gGroupKey = 0;

// luabind tells calls apart by the argument's class only, so one element type of each operation is enough.
/// What vectors of two and three components have in common.
template <class Vec, class T>
luabind::scope withVectorMembers(luabind::class_<Vec>& vectorClass) {
    using namespace luabind;
    return vectorClass.def("length", &Vec::length)
        .def("normalize", &Vec::normalize)
        .def("dot", &Vec::dot)
        .def("cross", &Vec::cross)
        .def("isNull", &Vec::isNull)
        .def(tostring(const_self))
        .def(const_self + other<const Vec&>())
        .def(const_self - other<const Vec&>())
        .def(const_self * other<const Vec&>())
        .def(const_self * T())
        .def(T() * const_self)
        .def(const_self / T())
        .def(const_self == other<const Vec&>())
        .def(
            "__unm", +[](const Vec& vector) { return -vector; });
}

template <class T>
luabind::scope makeVec2(const char* name) {
    using Vec = KyVec2<T>;
    using namespace luabind;
    return withVectorMembers<Vec, T>(class_<Vec>(name)
                                         .def(constructor<>())
                                         .def(constructor<T, T>())
                                         .def(constructor<const Vec&>())
                                         .def_readwrite("x", &Vec::x)
                                         .def_readwrite("y", &Vec::y));
}

template <class T>
luabind::scope makeVec3(const char* name) {
    using Vec = KyVec3<T>;
    using namespace luabind;
    return withVectorMembers<Vec, T>(class_<Vec>(name)
                                         .def(constructor<>())
                                         .def(constructor<T, T, T>())
                                         .def(constructor<const Vec&>())
                                         .def_readwrite("x", &Vec::x)
                                         .def_readwrite("y", &Vec::y)
                                         .def_readwrite("z", &Vec::z));
}

} // namespace

void kyBindValueTypes1(lua_State* state) {
    if (!kyMarkLuaGroup(state, &gGroupKey))
        return;
    luabind::module(state)[(makeVec3<double>("Vec3d"), makeVec3<float>("Vec3f"), makeVec2<int>("Vec2i"),
                            makeVec2<double>("Vec2d"), makeVec2<float>("Vec2f"))];
    kySetLuaAlias(state, "Vec2", "Vec2d");
    kySetLuaAlias(state, "Vec3", "Vec3d");
}
