// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaValueClass_p.h"
#include "KyLuaValueTypes_p.h"

#include "KyCallSignatures.h"
#include "KyMat4.h"
#include "KyQuat.h"

#include <algorithm>
#include <array>
#include <type_traits>

namespace {

char gGroupKey = 0;

constexpr int cNbMatrixRows = 4;

template <class T>
using OtherElement = std::conditional_t<std::is_same_v<T, double>, float, double>;

template <class T>
void defineQuatConstructors(luabind::class_<KyQuat<T>>& quatClass) {
    using Quat = KyQuat<T>;
    quatClass.def("__init", kyLuaConstructor(+[](const KyQuat<OtherElement<T>>& other) { return Quat(other); }))
        .def("__init", kyLuaConstructor(
                           +[](const KyVec3<T>& axis, double angle) { return Quat(axis, kyToLuaElement<T>(angle)); }))
        .def("__init", kyLuaConstructor(+[](double x, double y, double z, double w) {
                 return Quat(kyToLuaElement<T>(x), kyToLuaElement<T>(y), kyToLuaElement<T>(z), kyToLuaElement<T>(w));
             }));
}

template <class T>
luabind::scope makeQuat(const char* name) {
    using Quat = KyQuat<T>;
    using Vec = KyVec3<T>;
    luabind::class_<Quat> quatClass(name);
    KyCallSignatures::add(name,
                          {"__init(other)", "__init(axis, angle)", "__init(x, y, z, w)", "setAxisAngle(axis, angle)",
                           "setFrontDirectionAndTwist(direction, twist)", "rotate(vector)", "setEulerAngles(angles)",
                           "setEulerAngles(a, b, c)", "slerp(other, factor)"});
    kyDefineLuaValue(quatClass);
    defineQuatConstructors(quatClass);
    kyDefineLuaNumber<&Quat::x>(quatClass, "x");
    kyDefineLuaNumber<&Quat::y>(quatClass, "y");
    kyDefineLuaNumber<&Quat::z>(quatClass, "z");
    kyDefineLuaNumber<&Quat::w>(quatClass, "w");
    quatClass.def("angle", &Quat::angle)
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
        .def(
            "setEulerAngles",
            +[](Quat& quat, double a, double b, double c) {
                quat.setEulerAngles(Vec(kyToLuaElement<T>(a), kyToLuaElement<T>(b), kyToLuaElement<T>(c)));
            })
        .def(
            "__add", +[](const Quat& a, const Quat& b) { return a + b; })
        .def(
            "__sub", +[](const Quat& a, const Quat& b) { return a - b; })
        .def(
            "__mul", +[](const Quat& a, const Quat& b) { return a * b; });
    return quatClass;
}

/// The matrix on paper: the first four numbers are the first row.
template <class T>
KyMat4<T> readMatrix(const KyLuaTable& table) {
    const std::vector<double> numbers = kyReadLuaNumbers(table);
    std::array<T, cNbMatrixRows * cNbMatrixRows> elements{};
    if (numbers.size() != elements.size())
        throw KyScriptError("table of 16 numbers expected");
    std::ranges::transform(numbers, elements.begin(), &kyToLuaElement<T>);
    return KyMat4<T>::fromRows(elements);
}

int checkPlace(double index, const char* what) {
    return kyCheckLuaIndex(index, cNbMatrixRows, what);
}

template <class T>
void defineMatrixConstructors(luabind::class_<KyMat4<T>>& matrixClass) {
    using Matrix = KyMat4<T>;
    matrixClass.def("__init", kyLuaConstructor(+[](const KyMat4<OtherElement<T>>& other) { return Matrix(other); }))
        .def("__init", kyLuaConstructor(+[](const KyQuat<T>& rotation, const KyVec3<T>& translation) {
                 return Matrix(rotation, translation);
             }))
        .def("__init", kyLuaConstructor(&readMatrix<T>));
}

template <class T>
luabind::scope makeMatrix(const char* name) {
    using Matrix = KyMat4<T>;
    luabind::class_<Matrix> matrixClass(name);
    KyCallSignatures::add(name, {"__init(other)", "__init(rotation, translation)", "__init(numbers)",
                                 "get(row: integer, column: integer)", "set(row: integer, column: integer, value)"});
    kyDefineLuaValue(matrixClass);
    defineMatrixConstructors(matrixClass);
    matrixClass.def("transpose", &Matrix::transpose)
        .def("invert", &Matrix::invert)
        .def("identity", &Matrix::identity)
        .def("determinant", &Matrix::determinant)
        .def("translation", &Matrix::translation)
        .def("rotation", &Matrix::rotation)
        .def(
            "get", +[](const Matrix& matrix, double row,
                       double column) { return matrix.get(checkPlace(row, "row"), checkPlace(column, "column")); })
        .def(
            "set",
            +[](Matrix& matrix, double row, double column, double value) {
                matrix.set(checkPlace(row, "row"), checkPlace(column, "column"), kyToLuaElement<T>(value));
            })
        .def(
            "__mul", +[](const Matrix& a, const Matrix& b) { return a * b; })
        .def(
            "__mul", +[](const Matrix& matrix, const KyVec3<T>& point) { return matrix * point; });
    return matrixClass;
}

} // namespace

void kyBindValueTypes2(lua_State* state) {
    if (!kyMarkLuaGroup(state, &gGroupKey))
        return;
    kyRegisterScriptError();
    kyBindURLType(state);
    kyBindColorType(state);
    luabind::module(state)[(makeQuat<double>("Quatd"), makeQuat<float>("Quatf"), makeMatrix<double>("Matrixd"),
                            makeMatrix<float>("Matrixf"))];
    kySetLuaAlias(state, "Quat", "Quatd");
    kySetLuaAlias(state, "Matrix", "Matrixd");
    kyCompleteLuaClasses(state);
}
