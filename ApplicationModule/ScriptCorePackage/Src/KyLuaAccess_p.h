// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <lua.hpp>

/// The metamethods of instances. Reading and writing have the class's KyLuaClass as upvalue 1, but take instances of
/// every class; the text form has the type record as upvalue 1, light userdata.
int kyLuaIndexInstance(lua_State* state);
int kyLuaNewIndexInstance(lua_State* state);
int kyLuaInstanceToString(lua_State* state);
int kyLuaInstancesEqual(lua_State* state);
int kyLuaInstanceLess(lua_State* state);
