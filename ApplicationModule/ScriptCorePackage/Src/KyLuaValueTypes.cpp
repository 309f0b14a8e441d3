// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaValueTypes_p.h"

#include "KyScriptError_p.h"

#include <luabind/luabind.hpp>
#include <luabind/exception_handler.hpp>
#include <luabind/make_function.hpp>

#include <string>

namespace {

int failConstruction(lua_State* state) {
    return luaL_error(state, "%s cannot be constructed", lua_tostring(state, lua_upvalueindex(1)));
}

/// Copies the constructor of the class whose table is on top to the default table below; makes one that fails when
/// there is none.
void completeConstructor(lua_State* state, const char* className) {
    lua_getfield(state, -1, "__init");
    if (lua_isnil(state, -1)) {
        lua_pop(state, 1);
        lua_pushstring(state, className);
        lua_pushcclosure(state, &failConstruction, 1);
        lua_pushvalue(state, -1);
        lua_setfield(state, -3, "__init");
    }
    lua_setfield(state, -3, "__init");
}

/// Names one of the two functions of the property on top, so that luabind's errors show which property it is.
void nameAccess(lua_State* state, const char* propertyName, int upvalue) {
    if (!lua_getupvalue(state, -1, upvalue))
        return;
    if (lua_iscfunction(state, -1) && luabind::detail::is_luabind_function(state, -1)) {
        lua_getupvalue(state, -1, 1);
        auto* function = *static_cast<luabind::detail::function_object**>(lua_touserdata(state, -1));
        function->name = std::string("property '") + propertyName + '\'';
        lua_pop(state, 1);
    }
    lua_pop(state, 1);
}

/// Names the functions of all properties in the table on top.
void nameProperties(lua_State* state) {
    for (lua_pushnil(state); lua_next(state, -2) != 0; lua_pop(state, 1)) {
        if (lua_tocfunction(state, -1) != &luabind::detail::property_tag || lua_type(state, -2) != LUA_TSTRING)
            continue;
        nameAccess(state, lua_tostring(state, -2), 1);
        nameAccess(state, lua_tostring(state, -2), 2);
    }
}

} // namespace

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
        completeConstructor(state, luaClass->name());
        nameProperties(state);
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
