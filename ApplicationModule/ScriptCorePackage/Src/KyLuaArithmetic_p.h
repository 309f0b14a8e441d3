// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include <luabind/luabind.hpp>

/// How values of one class are calculated with, past luabind's search for the function that takes the arguments: it
/// costs more than the calculation. What is not found here is still luabind's matter, errors too.
struct KyLuaArithmetic {
    using Object = luabind::detail::class_rep;
    /// Pushes the result as an object of the class. May raise a memory error.
    using Combine = void (*)(lua_State* state, Object& luaClass, const void* a, const void* b);
    using Scale = void (*)(lua_State* state, Object& luaClass, const void* value, double number);

    luabind::detail::class_id id;
    Combine add;
    Combine subtract;
    Scale multiply;
    Scale divide;
};

/// Makes the two metatables of value objects in this state: luabind's, with finalizers that do only what values need,
/// or with none where a value needs none, and with the arithmetic below. Does nothing the second time.
void kyOpenLuaValues(lua_State* state);

/// Sets the arithmetic of a class; it must live as long as the state. Classes beyond the eighth are left to luabind.
void kySetLuaArithmetic(lua_State* state, const KyLuaArithmetic& arithmetic);
