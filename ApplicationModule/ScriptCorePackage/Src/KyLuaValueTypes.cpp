// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaValueTypes_p.h"

bool kyMarkLuaGroup(lua_State* state, const void* key) {
    lua_pushlightuserdata(state, const_cast<void*>(key));
    lua_rawget(state, LUA_REGISTRYINDEX);
    const bool isMarked = lua_toboolean(state, -1) != 0;
    lua_pop(state, 1);
    if (isMarked)
        return false;
    lua_pushlightuserdata(state, const_cast<void*>(key));
    lua_pushboolean(state, 1);
    lua_rawset(state, LUA_REGISTRYINDEX);
    return true;
}

void kySetLuaAlias(lua_State* state, const char* alias, const char* name) {
    lua_pushstring(state, alias);
    lua_pushstring(state, name);
    lua_rawget(state, LUA_GLOBALSINDEX);
    lua_rawset(state, LUA_GLOBALSINDEX);
}

void kyBindValueTypes3(lua_State*) {}

void kyBindValueTypes4(lua_State*) {}
