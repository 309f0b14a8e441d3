// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaVectorTypes_p.h"

#include "KyLuaArithmetic_p.h"
#include "KyLuaValueClass_p.h"
#include "KyLuaValueTypes_p.h"

#include "KyCallSignatures.h"
#include "KyNumberText.h"
#include "KyVec2.h"
#include "KyVec3.h"

#include <algorithm>
#include <iterator>
#include <type_traits>

namespace {

/// The vector in whose numbers a script's arithmetic is done: sums of integers may leave their range on the way.
template <class Vec>
struct WideVector {
    using Type = Vec;
};
template <>
struct WideVector<KyVec2i> {
    using Type = KyVec2d;
};
template <>
struct WideVector<KyVec3i> {
    using Type = KyVec3d;
};

template <class Vec>
using Wide = typename WideVector<Vec>::Type;
template <class Vec>
using WideElement = decltype(Wide<Vec>::x);

template <class Vec>
Vec add(const Vec& a, const Vec& b) {
    return Vec(Wide<Vec>(a) + Wide<Vec>(b));
}

template <class Vec>
Vec subtract(const Vec& a, const Vec& b) {
    return Vec(Wide<Vec>(a) - Wide<Vec>(b));
}

template <class Vec>
Vec multiply(const Vec& vector, double factor) {
    return Vec(Wide<Vec>(vector) * static_cast<WideElement<Vec>>(factor));
}

/// Integers: 0 when divided by 0, as everywhere.
template <class Vec>
Vec divide(const Vec& vector, double divisor) {
    if (std::is_integral_v<decltype(vector.x)> && divisor == 0)
        return Vec();
    return Vec(Wide<Vec>(vector) / static_cast<WideElement<Vec>>(divisor));
}

template <class Vec>
auto cross(const Vec& a, const Vec& b) {
    if constexpr (std::is_arithmetic_v<decltype(a.cross(b))>)
        return a.cross(b);
    else
        return Vec(Wide<Vec>(a).cross(Wide<Vec>(b)));
}

template <class Vec>
void defineArithmetic(luabind::class_<Vec>& vectorClass) {
    vectorClass.def("__add", &add<Vec>)
        .def("__sub", &subtract<Vec>)
        .def("__mul", &multiply<Vec>)
        .def(
            "__mul", +[](double factor, const Vec& vector) { return multiply(vector, factor); })
        .def("__div", &divide<Vec>)
        .def(
            "__unm", +[](const Vec& vector) { return Vec(-Wide<Vec>(vector)); });
}

template <class Vec, auto Operation>
void push(lua_State* state, KyLuaArithmetic::Object& luaClass, const void* a, const void* b) {
    kyLuaPushValueObject(state, luaClass, Operation(*static_cast<const Vec*>(a), *static_cast<const Vec*>(b)));
}

template <class Vec, auto Operation>
void pushScaled(lua_State* state, KyLuaArithmetic::Object& luaClass, const void* vector, double number) {
    kyLuaPushValueObject(state, luaClass, Operation(*static_cast<const Vec*>(vector), number));
}

template <class Vec>
void setArithmetic(lua_State* state) {
    static const KyLuaArithmetic arithmetic{luabind::detail::registered_class<Vec>::id, &push<Vec, &add<Vec>>,
                                            &push<Vec, &subtract<Vec>>, &pushScaled<Vec, &multiply<Vec>>,
                                            &pushScaled<Vec, &divide<Vec>>};
    kySetLuaArithmetic(state, arithmetic);
}

template <class Vec>
void defineVector(luabind::class_<Vec>& vectorClass) {
    kyDefineLuaValue(vectorClass);
    defineArithmetic(vectorClass);
    kyDefineLuaNumber<&Vec::x>(vectorClass, "x");
    kyDefineLuaNumber<&Vec::y>(vectorClass, "y");
    vectorClass.def("length", &Vec::length)
        .def("normalize", &Vec::normalize)
        .def("dot", &Vec::dot)
        .def("cross", &cross<Vec>)
        .def("isNull", &Vec::isNull);
}

/// The constructor from the same kind of vector with other elements.
template <class Other, class Vec>
void defineConversion(luabind::class_<Vec>& vectorClass) {
    if constexpr (!std::is_same_v<Vec, Other>)
        vectorClass.def("__init", kyLuaConstructor(+[](const Other& other) { return Vec(other); }));
}

template <class T>
luabind::scope makeVec2(const char* name) {
    using Vec = KyVec2<T>;
    luabind::class_<Vec> vectorClass(name);
    KyCallSignatures::add(name, {"__init(other)", "__init(other)", "__init(x, y)", "dot(other)", "cross(other)"});
    defineVector(vectorClass);
    defineConversion<KyVec2i>(vectorClass);
    defineConversion<KyVec2d>(vectorClass);
    defineConversion<KyVec2f>(vectorClass);
    vectorClass.def("__init", kyLuaConstructor(
                                  +[](double x, double y) { return Vec(kyToLuaElement<T>(x), kyToLuaElement<T>(y)); }));
    return vectorClass;
}

template <class T>
luabind::scope makeVec3(const char* name) {
    using Vec = KyVec3<T>;
    luabind::class_<Vec> vectorClass(name);
    KyCallSignatures::add(name, {"__init(other)", "__init(other)", "__init(x, y, z)", "dot(other)", "cross(other)"});
    defineVector(vectorClass);
    defineConversion<KyVec3i>(vectorClass);
    defineConversion<KyVec3d>(vectorClass);
    defineConversion<KyVec3f>(vectorClass);
    kyDefineLuaNumber<&Vec::z>(vectorClass, "z");
    vectorClass.def("__init", kyLuaConstructor(+[](double x, double y, double z) {
                        return Vec(kyToLuaElement<T>(x), kyToLuaElement<T>(y), kyToLuaElement<T>(z));
                    }));
    return vectorClass;
}

KyLuaIntVector readIntegers(const KyLuaTable& table) {
    KyLuaIntVector vector;
    std::ranges::transform(kyReadLuaNumbers(table), std::back_inserter(vector.numbers), &kyToLuaElement<int>);
    return vector;
}

std::size_t checkIndex(const KyLuaIntVector& vector, double index) {
    return static_cast<std::size_t>(kyCheckLuaIndex(index, static_cast<int>(vector.numbers.size())));
}

luabind::scope makeIntVector() {
    using Vector = KyLuaIntVector;
    luabind::class_<Vector> vectorClass("IntVector");
    KyCallSignatures::add(
        "IntVector", {"__init(numbers)", "push_back(number)", "get(index: integer)", "set(index: integer, number)"});
    kyDefineLuaValue(vectorClass);
    vectorClass.def("__init", kyLuaConstructor(&readIntegers))
        .def(
            "push_back", +[](Vector& vector, double number) { vector.numbers.push_back(kyToLuaElement<int>(number)); })
        .def(
            "size", +[](const Vector& vector) { return static_cast<double>(vector.numbers.size()); })
        .def(
            "get", +[](const Vector& vector, double index) { return vector.numbers[checkIndex(vector, index)]; })
        .def(
            "set", +[](Vector& vector, double index,
                       double number) { vector.numbers[checkIndex(vector, index)] = kyToLuaElement<int>(number); })
        .def(
            "clear", +[](Vector& vector) { vector.numbers.clear(); });
    return vectorClass;
}

} // namespace

std::string KyLuaIntVector::toString() const {
    return KyNumberText::format(numbers, KyNumberText::cDefaultPrecision);
}

void kyBindVectorTypes(lua_State* state) {
    luabind::module(
        state)[(makeVec3<double>("Vec3d"), makeVec3<float>("Vec3f"), makeVec3<int>("Vec3i"), makeVec2<int>("Vec2i"),
                makeVec2<double>("Vec2d"), makeVec2<float>("Vec2f"), makeIntVector())];
    setArithmetic<KyVec3d>(state);
    setArithmetic<KyVec3f>(state);
    setArithmetic<KyVec3i>(state);
    setArithmetic<KyVec2d>(state);
    setArithmetic<KyVec2f>(state);
    setArithmetic<KyVec2i>(state);
    kySetLuaAlias(state, "Vec2", "Vec2d");
    kySetLuaAlias(state, "Vec3", "Vec3d");
}
