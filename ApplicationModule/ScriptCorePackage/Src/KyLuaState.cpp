// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaState_p.h"

#include "KyLuaCall_p.h"
#include "KyLuaInstance_p.h"
#include "KyLuaScratch_p.h"

#include "KyException.h"

#include <utility>

namespace {

/// Their addresses are keys of the registry.
char gHandleKey = 0;
char gAnchorsKey = 0;

int reportPanic(lua_State* state) {
    const char* message = lua_type(state, -1) == LUA_TSTRING ? lua_tostring(state, -1) : "unknown error";
    KyException::create(std::string("Lua error outside a protected call : ") + message);
    return 0;
}

void prepareRegistry(lua_State* state, KyScriptEngine** handle) {
    lua_pushlightuserdata(state, &gHandleKey);
    lua_pushlightuserdata(state, handle);
    lua_rawset(state, LUA_REGISTRYINDEX);
    lua_pushlightuserdata(state, &gAnchorsKey);
    lua_newtable(state);
    lua_rawset(state, LUA_REGISTRYINDEX);
}

bool shareState(lua_State* one, lua_State* other) {
    return lua_topointer(one, LUA_REGISTRYINDEX) == lua_topointer(other, LUA_REGISTRYINDEX);
}

/// Keeps a thread from being collected as long as its address is remembered.
void anchorThread(lua_State* thread, int slot) {
    lua_pushlightuserdata(thread, &gAnchorsKey);
    lua_rawget(thread, LUA_REGISTRYINDEX);
    lua_pushthread(thread);
    lua_rawseti(thread, -2, slot);
    lua_pop(thread, 1);
}

bool isExecuting(lua_State* thread) {
    lua_Debug record;
    return lua_status(thread) == 0 && lua_getstack(thread, 0, &record) == 1;
}

} // namespace

KyLuaState kyOpenLuaState(const KyScriptEngineHandle& handle) {
    lua_State* state = luaL_newstate();
    if (!state)
        return nullptr;
    KyLuaState owner(state, KyLuaCloser{handle, {}});
    lua_atpanic(state, &reportPanic);
    KyLuaFailure failure;
    const auto prepare = [&handle](lua_State* inner) { prepareRegistry(inner, handle.get()); };
    if (!kyProtectedCall(state, prepare, failure))
        return nullptr;
    return owner;
}

KyScriptEngine* kyLuaEngine(lua_State* state) {
    lua_pushlightuserdata(state, &gHandleKey);
    lua_rawget(state, LUA_REGISTRYINDEX);
    auto* const handle = static_cast<KyScriptEngine**>(lua_touserdata(state, -1));
    lua_pop(state, 1);
    return handle ? *handle : nullptr;
}

KyLuaGuard::KyLuaGuard(KyLuaState state)
    : mState(std::move(state))
    , mOuter(msInnermost)
    , mOuterRunning(msRunning)
    , mScratchDepth(KyLuaScratch::getDepth())
    , mPendingDepth(KyLuaPendingLiveness::getDepth()) {
    if (!mState)
        return;
    lua_State* const running = findRunning(mState.get());
    mIsHostLevel = running == nullptr;
    mBase = running ? running : mState.get();
    mDepth = mOuter ? mOuter->mDepth + 1 : 1;
    msInnermost = this;
    msRunning = mBase;
}

KyLuaGuard::~KyLuaGuard() {
    if (!mState)
        return;
    msInnermost = mOuter;
    msRunning = mOuterRunning;
    KyLuaScratch::unwind(mScratchDepth);
    KyLuaPendingLiveness::unwind(mPendingDepth);
}

void KyLuaGuard::enterThread(lua_State* thread) {
    mThread = thread;
    msRunning = thread;
}

void KyLuaGuard::leaveThread() {
    mThread = nullptr;
    msRunning = mBase;
}

lua_State* KyLuaGuard::findRunning(const lua_State* mainState) {
    lua_State* running = msRunning;
    for (const KyLuaGuard* guard = msInnermost; guard; guard = guard->mOuter) {
        if (guard->mState.get() == mainState) {
            if (isExecuting(running))
                return running;
            return guard->mThread ? guard->mThread : guard->mBase;
        }
        running = guard->mOuterRunning;
    }
    return nullptr;
}

lua_State* KyLuaRunning::enter(lua_State* outer, lua_State* state) {
    const KyLuaGuard* guard = KyLuaGuard::msInnermost;
    if (!guard || !shareState(state, guard->mState.get()))
        return state;
    // Asked while the anchor still keeps it: from here on, a thread that was jumped over may be collected.
    const bool isOfGuard = outer == guard->mBase || outer == guard->mThread;
    if (!outer || (!isOfGuard && !isExecuting(outer)))
        outer = guard->mThread ? guard->mThread : guard->mBase;
    switchTo(state);
    return outer;
}

void KyLuaRunning::switchTo(lua_State* state) {
    const KyLuaGuard* guard = KyLuaGuard::msInnermost;
    if (!guard)
        return;
    if (state != guard->mBase && state != guard->mThread)
        anchorThread(state, guard->mDepth);
    KyLuaGuard::msRunning = state;
}
