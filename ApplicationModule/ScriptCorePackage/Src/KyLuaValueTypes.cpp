// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaValueTypes_p.h"

#include "KyScriptError_p.h"

#include <luabind/luabind.hpp>
#include <luabind/exception_handler.hpp>

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

void kyCompleteLuaClasses(lua_State* state) {
    for (const auto& [type, luaClass] : luabind::detail::class_registry::get_registry(state)->get_classes()) {
        luaClass->get_default_table(state);
        luaClass->get_table(state);
        lua_getfield(state, -1, "__init");
        lua_setfield(state, -3, "__init");
        lua_pop(state, 2);
    }
}

void kyRegisterScriptError() {
    static const bool isRegistered = [] {
        luabind::register_exception_handler<KyScriptError>(
            +[](lua_State* state, const KyScriptError& error) { lua_pushstring(state, error.what()); });
        return true;
    }();
    static_cast<void>(isRegistered);
}
