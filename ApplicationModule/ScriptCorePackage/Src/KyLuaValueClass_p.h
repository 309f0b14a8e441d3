// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaValueHolder_p.h"
#include "KyScriptError_p.h"

#include "KyScalar.h"

#include <cmath>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include <luabind/luabind.hpp>
#include <luabind/operator.hpp>
#include <luabind/tag_function.hpp>

/// What the value classes of scripts have in common. A class is put together like this:
///
/// ```
/// luabind::class_<KyRayd> rayClass("Rayd");
/// kyDefineLuaValue(rayClass);
/// rayClass.def("__init", kyLuaConstructor(+[](const KyVec3d& origin, const KyVec3d& direction) { ... }))
///     .def_readwrite("origin", &KyRayd::origin);
/// ```
///
/// - Numbers are `double` in every bound function, whatever the element type: kyToLuaElement limits them to it. No
///   function takes an unsigned number.
/// - A member that is a value class itself and is bound with `def_readwrite` is live: what scripts change in it changes
///   the whole, which lives at least as long as the part.
/// - Functions give values; results by value stand in the Lua object itself.
/// - Functions fail by throwing a KyScriptError.

/// A number from a script as an element of a value: integers are truncated and limited to their range, NaN gives 0.
template <class T>
T kyToLuaElement(double number) {
    return KyScalar::convert<T>(number);
}

/// Text of a value in scripts: the foundation's, with its own precision.
template <class T>
std::string kyGetLuaValueText(const T& value) {
    if constexpr (requires { value.toString(); })
        return value.toString();
    else
        return (std::ostringstream() << value).str();
}

namespace KyLuaDetail {

template <class T, class... Arguments>
struct ValueConstructor {
    T (*make)(Arguments...);

    void operator()(const luabind::argument& self, Arguments... arguments) const {
        kyLuaInitValue<T>(self, make(arguments...));
    }
};

template <auto Member>
struct NumberMember;

template <class Class, class T, T Class::*Member>
struct NumberMember<Member> {
    static double get(const Class& object) { return static_cast<double>(object.*Member); }
    static void set(Class& object, double value) { object.*Member = kyToLuaElement<T>(value); }
};

} // namespace KyLuaDetail

/// A constructor to be bound as "__init", from a function that makes the value.
template <class T, class... Arguments>
auto kyLuaConstructor(T (*make)(Arguments...)) {
    return luabind::tag_function<void(const luabind::argument&, Arguments...)>(
        KyLuaDetail::ValueConstructor<T, Arguments...>{make});
}

/// The three comparisons of every value class: `areEqual` within the class, unequal to objects of all others.
template <class T, class... Options>
void kyDefineLuaEquality(luabind::class_<T, Options...>& valueClass) {
    using luabind::argument;
    valueClass.def(
        "__eq", +[](const T& a, const T& b) { return a == b; });
    valueClass.def(
        "__eq", +[](const T&, const argument&) { return false; });
    valueClass.def(
        "__eq", +[](const argument&, const T&) { return false; });
}

template <class T, class... Options>
void kyDefineLuaText(luabind::class_<T, Options...>& valueClass) {
    valueClass.def("__tostring", &kyGetLuaValueText<T>);
}

/// What every value class has: the constructors without argument and from its own class, comparison and text.
template <class T, class... Options>
void kyDefineLuaValue(luabind::class_<T, Options...>& valueClass) {
    valueClass.def("__init", kyLuaConstructor(+[] { return T(); }));
    valueClass.def("__init", kyLuaConstructor(+[](const T& other) { return other; }));
    kyDefineLuaEquality(valueClass);
    kyDefineLuaText(valueClass);
}

/// A number that scripts read and write: `kyDefineLuaNumber<&KyVec2i::x>(vecClass, "x")`.
template <auto Member, class T, class... Options>
void kyDefineLuaNumber(luabind::class_<T, Options...>& valueClass, const char* name) {
    using Property = KyLuaDetail::NumberMember<Member>;
    valueClass.property(name, &Property::get, &Property::set);
}

/// The number as an index below `count`; throws for all else, NaN and fractions too.
inline int kyCheckLuaIndex(double number, int count, const char* what = "index") {
    if (number >= 0 && number < count && number == std::trunc(number))
        return static_cast<int>(number);
    std::ostringstream text;
    text << what << " out of range, " << number << " given, ";
    if (count > 0)
        text << "valid is [0," << count - 1 << ']';
    else
        text << "it is empty";
    throw KyScriptError(text.str());
}

/// The number as a value of an enumeration that counts from 0 to `count` - 1; throws for all else. Bound functions take
/// enumerations as `double` and check them so.
template <class Enumeration>
Enumeration kyCheckLuaEnum(double number, int count, const char* what) {
    return static_cast<Enumeration>(kyCheckLuaIndex(number, count, what));
}

/// An argument that must be a table.
using KyLuaTable = luabind::table<luabind::argument>;

/// The values 1 to #table, read without its metatable; throws when one is no number.
inline std::vector<double> kyReadLuaNumbers(const KyLuaTable& table) {
    lua_State* state = table.interpreter();
    table.push(state);
    std::vector<double> numbers(lua_objlen(state, -1));
    bool areNumbers = true;
    for (std::size_t i = 0; i < numbers.size() && areNumbers; ++i) {
        lua_rawgeti(state, -1, static_cast<int>(i + 1));
        areNumbers = lua_type(state, -1) == LUA_TNUMBER;
        numbers[i] = lua_tonumber(state, -1);
        lua_pop(state, 1);
    }
    lua_pop(state, 1);
    if (!areNumbers)
        throw KyScriptError("table of numbers expected");
    return numbers;
}
