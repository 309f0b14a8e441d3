// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptSandbox_p.h"

#include <cmath>
#include <cstddef>
#include <string_view>

namespace {

using Private = KyScriptSandbox::Private;

constexpr char cLocked[] = "locked";

/// Its address is the key of a mark in the registry: what scripts could have changed since is not taken for Lua's own.
char gLockedKey = 0;

/// Methods of texts come from a table of their own, which no script reaches.
void lockTexts(lua_State* state) {
    lua_pushliteral(state, "");
    if (!lua_getmetatable(state, -1))
        return lua_pop(state, 1);
    lua_newtable(state);
    lua_getglobal(state, LUA_STRLIBNAME);
    for (lua_pushnil(state); lua_istable(state, -2) && lua_next(state, -2) != 0; lua_pop(state, 1)) {
        lua_pushvalue(state, -2);
        lua_pushvalue(state, -2);
        lua_rawset(state, -6);
    }
    lua_pop(state, 1);
    lua_setfield(state, -2, "__index");
    lua_pushstring(state, cLocked);
    lua_setfield(state, -2, "__metatable");
    lua_pop(state, 2);
}

int getMetatable(lua_State* state) {
    luaL_checkany(state, 1);
    if (!lua_getmetatable(state, 1)) {
        lua_pushnil(state);
        return 1;
    }
    if (lua_istable(state, 1))
        luaL_getmetafield(state, 1, "__metatable");
    else
        lua_pushstring(state, cLocked);
    return 1;
}

int setEnvironment(lua_State* state) {
    if (lua_isnumber(state, 1) != 0 && lua_tonumber(state, 1) == 0)
        return luaL_error(state, "sandbox: the environment of a thread cannot be set");
    return lua_tocfunction(state, lua_upvalueindex(1))(state);
}

int collectGarbage(lua_State* state) {
    const std::string_view option = luaL_optstring(state, 1, "collect");
    if (option == "count") {
        lua_pushnumber(state, lua_gc(state, LUA_GCCOUNT, 0) + lua_gc(state, LUA_GCCOUNTB, 0) / 1024.0);
        return 1;
    }
    luaL_argcheck(state, option == "collect" || option == "step", 1, "sandbox: the option is withheld");
    constexpr std::size_t cBytesPerUnit = 64;
    Private::charge(state, KyLuaMemory::get(state).getUsed() / cBytesPerUnit);
    lua_gc(state, LUA_GCCOLLECT, 0);
    option == "step" ? lua_pushboolean(state, 1) : lua_pushinteger(state, 0);
    return 1;
}

/// Work that a function does by itself for its arguments.
std::size_t getUnits(lua_State* state) {
    constexpr std::size_t cBytesPerUnit = 16;
    std::size_t units = lua_istable(state, 1) ? lua_objlen(state, 1) : 0;
    for (int i = lua_gettop(state); i > 0; --i)
        if (lua_type(state, i) == LUA_TSTRING)
            units += lua_objlen(state, i) / cBytesPerUnit;
    return units;
}

int callMetered(lua_State* state) {
    constexpr std::size_t cFew = 16;
    if (const std::size_t units = getUnits(state); units > cFew)
        Private::charge(state, units);
    return lua_tocfunction(state, lua_upvalueindex(1))(state);
}

/// Lua's own counts in int, where large ranges come out as small ones and are written beyond the stack.
int unpackEntries(lua_State* state) {
    luaL_checktype(state, 1, LUA_TTABLE);
    const double first = std::trunc(luaL_optnumber(state, 2, 1));
    const double last =
        lua_isnoneornil(state, 3) ? static_cast<double>(lua_objlen(state, 1)) : std::trunc(luaL_checknumber(state, 3));
    if (first > last)
        return 0;
    constexpr double cMost = 8000;
    // So as to refuse NaN as well.
    const bool isFew = last - first < cMost;
    const int number = isFew ? static_cast<int>(last - first) + 1 : 0;
    if (!isFew || lua_checkstack(state, number + 1) == 0)
        return luaL_error(state, "too many results to unpack");
    Private::charge(state, static_cast<std::size_t>(number));
    for (int i = 0; i < number; ++i) {
        lua_pushnumber(state, first + i);
        lua_rawget(state, 1);
    }
    return number;
}

void boundSystem(lua_State* state) {
    lua_getglobal(state, LUA_OSLIBNAME);
    if (lua_istable(state, -1))
        kyMeterLuaFunction(state, lua_gettop(state), "date");
    lua_pop(state, 1);
}

/// Lua makes these texts where nothing catches an error, so they are there before the memory ends.
void keepMessages(lua_State* state) {
    for (const char* const text :
         {"C stack overflow", "cannot resume non-suspended coroutine", "error in error handling"}) {
        lua_pushstring(state, text);
        luaL_ref(state, LUA_REGISTRYINDEX);
    }
}

} // namespace

void kySetLuaFunction(lua_State* state, int table, const char* name, lua_CFunction function) {
    lua_pushstring(state, name);
    function ? lua_pushcfunction(state, function) : lua_pushnil(state);
    lua_rawset(state, table);
}

void kyWrapLuaFunction(lua_State* state, int table, const char* name, lua_CFunction wrapper) {
    lua_pushstring(state, name);
    lua_pushvalue(state, -1);
    lua_rawget(state, table);
    const bool hasUpvalue = lua_getupvalue(state, -1, 1) != nullptr;
    if (hasUpvalue || lua_iscfunction(state, -1) == 0)
        return lua_pop(state, hasUpvalue ? 3 : 2);
    lua_pushcclosure(state, wrapper, 1);
    lua_rawset(state, table);
}

void kyMeterLuaFunction(lua_State* state, int table, const char* name) {
    kyWrapLuaFunction(state, table, name, &callMetered);
}

void kyBoundLuaBasics(lua_State* state) {
    kySetLuaFunction(state, LUA_GLOBALSINDEX, "getmetatable", &getMetatable);
    kySetLuaFunction(state, LUA_GLOBALSINDEX, "collectgarbage", &collectGarbage);
    kySetLuaFunction(state, LUA_GLOBALSINDEX, "unpack", &unpackEntries);
    kyWrapLuaFunction(state, LUA_GLOBALSINDEX, "setfenv", &setEnvironment);
    kyMeterLuaFunction(state, LUA_GLOBALSINDEX, "tonumber");
    boundSystem(state);
}

void kyLockLuaLibraries(lua_State* state) {
    luaL_checkstack(state, LUA_MINSTACK, "too many values");
    lua_pushlightuserdata(state, &gLockedKey);
    lua_rawget(state, LUA_REGISTRYINDEX);
    if (lua_toboolean(state, -1) != 0)
        return;
    kyBoundLuaStrings(state);
    kyBoundLuaTables(state);
    kyBoundLuaThreads(state);
    kyBoundLuaBasics(state);
    kyBoundLuaLoading(state);
    lockTexts(state);
    keepMessages(state);
    lua_pushlightuserdata(state, &gLockedKey);
    lua_pushboolean(state, 1);
    lua_rawset(state, LUA_REGISTRYINDEX);
}
