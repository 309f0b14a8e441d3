// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <lua.hpp>

/// The threads of a Lua state by number, the main one 1: a table in its registry that keeps none of them alive. All
/// functions but kyLuaThreadState may raise memory errors.

constexpr int cKyLuaMainThread = 1;

enum class KyLuaThreadState { eNew, eSuspended, eExecuting, eDead };

/// Of a thread that runs, or that has resumed another, eExecuting. Never raises.
inline KyLuaThreadState kyLuaThreadState(lua_State* thread) {
    const int status = lua_status(thread);
    if (status == LUA_YIELD)
        return KyLuaThreadState::eSuspended;
    lua_Debug record;
    if (status == 0 && lua_getstack(thread, 0, &record) != 0)
        return KyLuaThreadState::eExecuting;
    return status == 0 && lua_isfunction(thread, 1) ? KyLuaThreadState::eNew : KyLuaThreadState::eDead;
}

/// Begins the table, on the main thread, and has the scripts' coroutine.create and coroutine.wrap enter what they make.
void kyLuaPrepareThreads(lua_State* mainState);
/// Enters the thread at `index` unless that has been done.
void kyLuaKeepThread(lua_State* state, int index);
/// The number of a thread, which is entered when it has none.
int kyLuaThreadNumber(lua_State* state, lua_State* thread);
/// Pushes the thread of the number; null, and nothing pushed, when it has gone.
lua_State* kyLuaPushThread(lua_State* state, int number);
/// Pushes the table, thread to number, for a walk over it; it is not to be changed meanwhile.
void kyLuaPushThreads(lua_State* state);
/// Installs a debug hook on all of them, null takes it away. Count events, if the mask has them, come after so many
/// instructions.
void kyLuaHookThreads(lua_State* state, lua_Hook hook, int mask, int interval);
