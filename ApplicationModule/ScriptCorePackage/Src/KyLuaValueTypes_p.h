// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <lua.hpp>

/// The groups of value types, registered as luabind classes in this order. Each does nothing the second time in one
/// state; luabind must have been opened on it. May throw and raise Lua errors: to be called protected.
void kyBindValueTypes1(lua_State* state);
void kyBindValueTypes2(lua_State* state);
void kyBindValueTypes3(lua_State* state);
void kyBindValueTypes4(lua_State* state);

/// Parts of the groups, each called once by its group.
void kyBindVectorTypes(lua_State* state);
void kyBindURLType(lua_State* state);
void kyBindColorType(lua_State* state);

/// Marks the group whose key is the address, in the registry; false when it was marked already.
bool kyMarkLuaGroup(lua_State* state, const void* key);
/// Makes the global `alias` mean what the global `name` means now.
void kySetLuaAlias(lua_State* state, const char* alias, const char* name);
/// Completes all luabind classes: scripts may call the constructors by name, as classes that derive from them in Lua
/// must; classes without constructor say so; errors about properties name them. To be called at the end of a group.
void kyCompleteLuaClasses(lua_State* state);
