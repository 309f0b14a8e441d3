// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaValueTypes_p.h"

#include "KyColor.h"
#include "KyMat4.h"
#include "KyQuat.h"
#include "KyVec3.h"

#include <luabind/luabind.hpp>
#include <luabind/operator.hpp>

namespace {

char gGroupKey = 0;

luabind::scope makeColor() {
    using namespace luabind;
    return class_<KyColor>("Color")
        .def(constructor<>())
        .def(constructor<float, float, float>())
        .def(constructor<float, float, float, float>())
        .def(constructor<const KyColor&>())
        .enum_("Name")[(
            value("eAqua", KyColor::eAqua), value("eBlack", KyColor::eBlack), value("eBlue", KyColor::eBlue),
            value("eFuchsia", KyColor::eFuchsia), value("eGray", KyColor::eGray), value("eGreen", KyColor::eGreen),
            value("eLime", KyColor::eLime), value("eMaroon", KyColor::eMaroon), value("eNavy", KyColor::eNavy),
            value("eOlive", KyColor::eOlive), value("eOrange", KyColor::eOrange), value("ePurple", KyColor::ePurple),
            value("eRed", KyColor::eRed), value("eSilver", KyColor::eSilver), value("eTeal", KyColor::eTeal),
            value("eWhite", KyColor::eWhite), value("eYellow", KyColor::eYellow))]
        .def_readwrite("red", &KyColor::red)
        .def_readwrite("green", &KyColor::green)
        .def_readwrite("blue", &KyColor::blue)
        .def_readwrite("alpha", &KyColor::alpha)
        .def("setGamma", &KyColor::setGamma)
        .def("setHSV", &KyColor::setHSV)
        .def("RGB2HSV", &KyColor::RGB2HSV)
        .def("HSV2RGB", &KyColor::HSV2RGB)
        .def("getHtmlName", &KyColor::getHtmlName)
        .def("toR8G8B8A8", &KyColor::toR8G8B8A8)
        .def(tostring(const_self))
        .def(const_self - other<const KyColor&>())
        .def(const_self * other<const KyColor&>())
        .def(const_self * float())
        .def(float() * const_self)
        .def(const_self == other<const KyColor&>());
}

template <class T>
luabind::scope makeQuat(const char* name) {
    using Quat = KyQuat<T>;
    using namespace luabind;
    return class_<Quat>(name)
        .def(constructor<>())
        .def(constructor<T, T, T, T>())
        .def(constructor<const KyVec3<T>&, T>())
        .def(constructor<const Quat&>())
        .def_readwrite("x", &Quat::x)
        .def_readwrite("y", &Quat::y)
        .def_readwrite("z", &Quat::z)
        .def_readwrite("w", &Quat::w)
        .def("angle", &Quat::angle)
        .def("axis", &Quat::axis)
        .def("setAxisAngle", &Quat::setAxisAngle)
        .def("length", &Quat::length)
        .def("getInverse", &Quat::getInverse)
        .def("frontDirection", &Quat::frontDirection)
        .def("setFrontDirectionAndTwist", &Quat::setFrontDirectionAndTwist)
        .def("rotate", &Quat::rotate)
        .def("getMatrix", &Quat::getMatrix)
        .def("getEulerAngles", &Quat::getEulerAngles)
        .def("setEulerAngles", &Quat::setEulerAngles)
        .def("slerp", &Quat::slerp)
        .def(tostring(const_self))
        .def(const_self - other<const Quat&>())
        .def(const_self * other<const Quat&>())
        .def(const_self == other<const Quat&>());
}

template <class T>
luabind::scope makeMatrix(const char* name) {
    using Matrix = KyMat4<T>;
    using namespace luabind;
    return class_<Matrix>(name)
        .def(constructor<>())
        .def(constructor<const KyQuat<T>&, const KyVec3<T>&>())
        .def(constructor<const Matrix&>())
        .def("transpose", &Matrix::transpose)
        .def("invert", &Matrix::invert)
        .def("identity", &Matrix::identity)
        .def("determinant", &Matrix::determinant)
        .def("translation", &Matrix::translation)
        .def("rotation", &Matrix::rotation)
        .def("get", &Matrix::get)
        .def("set", &Matrix::set)
        .def(tostring(const_self))
        .def(const_self * other<const Matrix&>())
        .def(const_self * other<const KyVec3<T>&>())
        .def(const_self == other<const Matrix&>());
}

} // namespace

void kyBindValueTypes2(lua_State* state) {
    if (!kyMarkLuaGroup(state, &gGroupKey))
        return;
    luabind::module(state)[(makeColor(), makeQuat<double>("Quatd"), makeQuat<float>("Quatf"),
                            makeMatrix<double>("Matrixd"), makeMatrix<float>("Matrixf"))];
    kySetLuaAlias(state, "Quat", "Quatd");
    kySetLuaAlias(state, "Matrix", "Matrixd");
}
