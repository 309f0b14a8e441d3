// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaThreads_p.h"
#include "KyScriptSandbox_p.h"

namespace {

/// What a thread may do before its own hook counts for the first time.
constexpr std::size_t cUnitsPerResumption = 100;

/// Why the thread cannot be resumed; null when it can.
const char* findObstacle(lua_State* state, lua_State* thread) {
    switch (kyLuaThreadState(thread)) {
    case KyLuaThreadState::eNew:
    case KyLuaThreadState::eSuspended:
        return nullptr;
    case KyLuaThreadState::eExecuting:
        return thread == state ? "cannot resume running coroutine" : "cannot resume normal coroutine";
    default:
        return "cannot resume dead coroutine";
    }
}

/// Resumes with the arguments on top. The number of results, which stand on top then, or -1 with an error value there.
int resume(lua_State* state, lua_State* thread, int nbArguments) {
    KyScriptSandbox::Private::charge(state, cUnitsPerResumption);
    if (const char* const obstacle = findObstacle(state, thread)) {
        lua_pushstring(state, obstacle);
        return -1;
    }
    KyLuaMemory& memory = KyLuaMemory::get(state);
    if (!memory.hasRoom(nbArguments))
        luaL_error(state, "not enough memory");
    if (memory.makeRoom(thread, nbArguments) == 0)
        luaL_error(state, "too many arguments to resume");
    lua_xmove(state, thread, nbArguments);
    lua_setlevel(state, thread);
    const int status = memory.resume(thread, nbArguments);
    KyScriptSandbox::Private::charge(state, 0);
    if (status != 0 && status != LUA_YIELD) {
        lua_xmove(thread, state, 1);
        return -1;
    }
    const int nbResults = lua_gettop(thread);
    if (lua_checkstack(state, nbResults + 1) == 0)
        luaL_error(state, "too many results to resume");
    lua_xmove(thread, state, nbResults);
    return nbResults;
}

int resumeCoroutine(lua_State* state) {
    lua_State* const thread = lua_tothread(state, 1);
    luaL_argcheck(state, thread, 1, "coroutine expected");
    const int nbResults = resume(state, thread, lua_gettop(state) - 1);
    lua_pushboolean(state, nbResults >= 0);
    lua_insert(state, nbResults >= 0 ? -nbResults - 1 : -2);
    return nbResults >= 0 ? nbResults + 1 : 2;
}

int callWrapped(lua_State* state) {
    const int nbResults = resume(state, lua_tothread(state, lua_upvalueindex(1)), lua_gettop(state));
    if (nbResults >= 0)
        return nbResults;
    if (lua_isstring(state, -1) != 0) {
        luaL_where(state, 1);
        lua_insert(state, -2);
        lua_concat(state, 2);
    }
    return lua_error(state);
}

/// The upvalue makes coroutines.
int wrapFunction(lua_State* state) {
    lua_pushvalue(state, lua_upvalueindex(1));
    lua_pushvalue(state, 1);
    lua_call(state, 1, 1);
    lua_pushcclosure(state, &callWrapped, 1);
    return 1;
}

/// The handler of a script, the upvalue, on a thread of its own: Lua calls it where the error is, which may be in a
/// hook, and no hook would end it there.
int callHandler(lua_State* state) {
    lua_settop(state, 1);
    if (!lua_checkstack(state, LUA_MINSTACK) || KyScriptSandbox::Private::isEnding(state))
        return 1;
    KyLuaMemory& memory = KyLuaMemory::get(state);
    lua_State* const thread = lua_newthread(state);
    lua_setlevel(state, thread);
    lua_pushvalue(state, lua_upvalueindex(1));
    lua_pushvalue(state, 1);
    lua_xmove(state, thread, 2);
    lua_State* const running = memory.getRunning();
    memory.setRunning(thread);
    const bool isGood = lua_pcall(thread, 1, 1, 0) == 0;
    memory.setRunning(running);
    // Not made on the thread, where nothing would catch an error.
    if (isGood)
        lua_xmove(thread, state, 1);
    else
        lua_pushliteral(state, "error in error handling");
    return 1;
}

int callWithHandler(lua_State* state) {
    luaL_checkany(state, 2);
    lua_settop(state, 2);
    lua_pushcclosure(state, &callHandler, 1);
    lua_insert(state, 1);
    const int status = lua_pcall(state, 0, LUA_MULTRET, 1);
    KyScriptSandbox::Private::charge(state, 0);
    lua_pushboolean(state, status == 0);
    lua_replace(state, 1);
    return lua_gettop(state);
}

} // namespace

void kyBoundLuaThreads(lua_State* state) {
    kySetLuaFunction(state, LUA_GLOBALSINDEX, "xpcall", &callWithHandler);
    lua_getglobal(state, LUA_COLIBNAME);
    if (!lua_istable(state, -1))
        return lua_pop(state, 1);
    const int table = lua_gettop(state);
    kySetLuaFunction(state, table, "resume", &resumeCoroutine);
    lua_pushliteral(state, "wrap");
    lua_getfield(state, table, "create");
    lua_pushcclosure(state, &wrapFunction, 1);
    lua_rawset(state, table);
    lua_pop(state, 1);
}
