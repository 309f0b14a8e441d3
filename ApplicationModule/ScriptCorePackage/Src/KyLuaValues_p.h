// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaClass_p.h"

#include "KyField.h"

#include <span>
#include <typeinfo>

#include <lua.hpp>

class KyLuaBinder;

/// The crossing of the foundation's value types to and from their Lua classes.

/// Pushes a copy of the value of that kind; false, and nothing pushed, when the kind has no Lua class in this state.
bool kyLuaPushValue(lua_State* state, KyLuaShared& shared, KyFieldKind kind, const void* value);
/// Reads an object of one of these Lua classes, trying the class of `kind` first; false for other values.
bool kyLuaCheckValue(lua_State* state, int index, KyLuaShared& shared, KyFieldKind kind, KyField& field);
/// Whether the value is an object of any luabind class.
bool kyLuaIsLuabindObject(lua_State* state, int index);
bool kyLuaIsLuabindProperty(lua_State* state, int index);
/// Pushes the class table of a luabind object; nil for other values.
void kyLuaPushLuabindClass(lua_State* state, int index);

/// The converters that are entered for every value type.
void kyLuaPushValueField(KyLuaBinder& binder, const KyField& field);
KyField kyLuaCheckValueField(KyLuaBinder& binder, int index);
/// The C++ types that these cover.
std::span<const std::type_info* const> kyLuaGetValueTypes();
