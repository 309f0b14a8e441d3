// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaInstance_p.h"

#include "KyField.h"

#include <new>

#include <lua.hpp>

/// Pushes a field that is no number, boolean, text or object; nil for what has no Lua form.
void kyLuaPushOther(lua_State* state, KyLuaShared& shared, const KyField& field);

/// Pushes a field: numbers, booleans, texts and objects as such, lists as tables, values as their Lua classes, what a
/// registered converter knows through it; nil for the rest. Needs four free slots.
inline void kyLuaPushField(lua_State* state, KyLuaShared& shared, const KyField& field) {
    switch (field.getKind()) {
    case cFieldKindOf<double>:
        return lua_pushnumber(state, field.unchecked<double>());
    case cFieldKindOf<float>:
        return lua_pushnumber(state, static_cast<lua_Number>(field.unchecked<float>()));
    case cFieldKindOf<std::int32_t>:
        return lua_pushnumber(state, field.unchecked<std::int32_t>());
    case cFieldKindOf<bool>:
        return lua_pushboolean(state, field.unchecked<bool>());
    case cFieldKindOf<std::string>: {
        const auto& text = field.unchecked<std::string>();
        return lua_pushlstring(state, text.data(), text.size());
    }
    case cFieldKindOf<KyObjectReference>:
        if (KyObject* object = field.unchecked<KyObjectReference>().get())
            return kyLuaPushInstance(state, shared, *object);
        return lua_pushnil(state);
    default:
        return kyLuaPushOther(state, shared, field);
    }
}
void kyLuaPushField(lua_State* state, const KyField& field);

/// Pushes a field that the caller holds on its own stack: an error of Lua on the way (memory, a script's finalizer)
/// would jump over it, so it comes out as a std::runtime_error where the field has something to lose. Within kyLuaRun
/// only.
void kyLuaPushHeldField(lua_State* state, KyLuaShared& shared, const KyField& field);

/// Pushes a function's result, safe for all that the caller holds, and returns the number of values: none for a field
/// without value.
int kyLuaPushResult(lua_State* state, const KyField& result);
/// A C function: light userdata of a field in, its value out.
int kyLuaPushFieldFunction(lua_State* state);

/// The value at `index` as a field: nil and nothing as an empty field, numbers as double, tables as a list of the
/// values 1 to #table, container proxies as a list of their values; a KyInvalidField for what no field holds. Never
/// raises.
KyField kyLuaCheckField(lua_State* state, int index);

/// As kyLuaCheckField for a receiver that wants the kind; `field` must be empty.
void kyLuaReadOther(lua_State* state, int index, KyFieldKind kind, KyField& field);

inline void kyLuaReadField(lua_State* state, int index, KyFieldKind kind, KyField& field) {
    const int type = lua_type(state, index);
    if (type == LUA_TNUMBER && kind == cFieldKindOf<double>)
        new (&field) KyField(lua_tonumber(state, index));
    else if (type == LUA_TBOOLEAN)
        new (&field) KyField(lua_toboolean(state, index) != 0);
    else
        kyLuaReadOther(state, index, kind, field);
}
