// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaThreads_p.h"

namespace {

/// Its address is the key of the table in the registry.
char gThreadsKey = 0;
int gNextNumber = cKyLuaMainThread + 1;

void enterThread(lua_State* state, int index, int number) {
    kyLuaPushThreads(state);
    lua_pushvalue(state, index);
    lua_pushinteger(state, number);
    lua_rawset(state, -3);
    lua_pop(state, 1);
}

int getNumber(lua_State* state, int index) {
    kyLuaPushThreads(state);
    lua_pushvalue(state, index);
    lua_rawget(state, -2);
    const auto number = static_cast<int>(lua_tointeger(state, -1));
    lua_pop(state, 2);
    return number;
}

void checkFunction(lua_State* state) {
    luaL_argcheck(state, lua_isfunction(state, 1) && !lua_iscfunction(state, 1), 1, "Lua function expected");
}

int createCoroutine(lua_State* state) {
    checkFunction(state);
    lua_State* const thread = lua_newthread(state);
    lua_pushvalue(state, 1);
    lua_xmove(state, thread, 1);
    kyLuaKeepThread(state, lua_gettop(state));
    return 1;
}

/// Lua's own function, the upvalue, gives a function whose first upvalue is the thread.
int wrapCoroutine(lua_State* state) {
    checkFunction(state);
    lua_pushvalue(state, lua_upvalueindex(1));
    lua_pushvalue(state, 1);
    lua_call(state, 1, 1);
    if (lua_getupvalue(state, -1, 1)) {
        kyLuaKeepThread(state, lua_gettop(state));
        lua_pop(state, 1);
    }
    return 1;
}

void replaceLibraryFunctions(lua_State* state) {
    lua_getglobal(state, LUA_COLIBNAME);
    lua_pushcfunction(state, &createCoroutine);
    lua_setfield(state, -2, "create");
    lua_getfield(state, -1, "wrap");
    lua_pushcclosure(state, &wrapCoroutine, 1);
    lua_setfield(state, -2, "wrap");
    lua_pop(state, 1);
}

} // namespace

void kyLuaPrepareThreads(lua_State* mainState) {
    lua_pushlightuserdata(mainState, &gThreadsKey);
    lua_newtable(mainState);
    lua_newtable(mainState);
    lua_pushliteral(mainState, "k");
    lua_setfield(mainState, -2, "__mode");
    lua_setmetatable(mainState, -2);
    lua_rawset(mainState, LUA_REGISTRYINDEX);
    lua_pushthread(mainState);
    enterThread(mainState, lua_gettop(mainState), cKyLuaMainThread);
    lua_pop(mainState, 1);
    replaceLibraryFunctions(mainState);
}

void kyLuaPushThreads(lua_State* state) {
    lua_pushlightuserdata(state, &gThreadsKey);
    lua_rawget(state, LUA_REGISTRYINDEX);
}

void kyLuaKeepThread(lua_State* state, int index) {
    luaL_checkstack(state, 3, "too many values");
    if (getNumber(state, index) == 0)
        enterThread(state, index, gNextNumber++);
}

int kyLuaThreadNumber(lua_State* state, lua_State* thread) {
    luaL_checkstack(state, 4, "too many values");
    lua_pushthread(thread);
    if (thread != state)
        lua_xmove(thread, state, 1);
    const int index = lua_gettop(state);
    kyLuaKeepThread(state, index);
    const int number = getNumber(state, index);
    lua_pop(state, 1);
    return number;
}

lua_State* kyLuaPushThread(lua_State* state, int number) {
    kyLuaPushThreads(state);
    for (lua_pushnil(state); lua_next(state, -2) != 0; lua_pop(state, 1)) {
        if (lua_tointeger(state, -1) != number)
            continue;
        lua_pop(state, 1);
        lua_remove(state, -2);
        return lua_tothread(state, -1);
    }
    lua_pop(state, 1);
    return nullptr;
}

void kyLuaHookThreads(lua_State* state, lua_Hook hook, int mask, int interval) {
    kyLuaPushThreads(state);
    for (lua_pushnil(state); lua_next(state, -2) != 0; lua_pop(state, 1))
        lua_sethook(lua_tothread(state, -2), hook, mask, (mask & LUA_MASKCOUNT) != 0 ? interval : 0);
    lua_pop(state, 1);
}
