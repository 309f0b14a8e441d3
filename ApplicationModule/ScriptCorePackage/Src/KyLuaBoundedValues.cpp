// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptSandbox_p.h"

#include <algorithm>
#include <string_view>

#include <luabind/luabind.hpp>
#include <luabind/make_function.hpp>

namespace {

using luabind::detail::class_registry;
using luabind::detail::class_rep;
using luabind::detail::function_object;

/// Values that hold as much as somebody puts into them, outside the memory that Lua counts. All others are as large as
/// their type.
constexpr std::string_view cSized[] = {"IntVector", "QString", "QUrl", "URL"};
constexpr const char* cFunctions[] = {"QString_fromStdString", "QString_fromUtf8", "QString_toQUrl",
                                      "QString_toStdString",   "QString_toUtf8",   "QUrl_toString"};
constexpr std::size_t cUnitsPerCall = 20;

/// Has the upvalues of the function that it stands for, so that it goes on as that one.
int callSized(lua_State* state) {
    for (int i = lua_gettop(state); i > 0; --i)
        KyScriptSandbox::Private::checkText(state, i);
    KyScriptSandbox::Private::chargeCall(state, cUnitsPerCall);
    return (*static_cast<function_object* const*>(lua_touserdata(state, lua_upvalueindex(1))))->entry(state);
}

/// Replaces a function of luabind on top by one that counts; false, and nothing changed, for all other values.
bool wrap(lua_State* state) {
    if (lua_tocfunction(state, -1) == &callSized || !luabind::detail::is_luabind_function(state, -1))
        return false;
    const int function = lua_gettop(state);
    int nbUpvalues = 0;
    while (lua_getupvalue(state, function, nbUpvalues + 1))
        ++nbUpvalues;
    lua_pushcclosure(state, &callSized, nbUpvalues);
    lua_replace(state, function);
    return true;
}

/// All functions in the table on top, which is taken off.
void wrapEntries(lua_State* state) {
    const int table = lua_gettop(state);
    for (lua_pushnil(state); lua_next(state, table) != 0; lua_pop(state, 1)) {
        if (!wrap(state))
            continue;
        lua_pushvalue(state, -2);
        lua_pushvalue(state, -2);
        lua_rawset(state, table);
    }
    lua_pop(state, 1);
}

} // namespace

void kyMeterLuaValues(lua_State* state) {
    luaL_checkstack(state, LUA_MINSTACK, "too many values");
    for (const auto& [type, luaClass] : class_registry::get_registry(state)->get_classes()) {
        if (!luaClass->name() || std::ranges::count(cSized, std::string_view(luaClass->name())) == 0)
            continue;
        luaClass->get_table(state);
        wrapEntries(state);
        luaClass->get_default_table(state);
        wrapEntries(state);
    }
    for (const char* const name : cFunctions) {
        lua_pushstring(state, name);
        lua_pushvalue(state, -1);
        lua_rawget(state, LUA_GLOBALSINDEX);
        wrap(state) ? lua_rawset(state, LUA_GLOBALSINDEX) : lua_pop(state, 2);
    }
}
