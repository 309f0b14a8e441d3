// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCoroutineTable_p.h"

#include "KyLuaThreads_p.h"
#include "KyScriptDebugger_p.h"
#include "KyScriptEngine.h"
#include "KyScriptFile_p.h"
#include "KyScriptRunner_p.h"
#include "KyScriptSandbox_p.h"

#include <algorithm>
#include <utility>

namespace {

/// Moves the thread object onto the stack of another thread. Threads have room for it.
void pushThread(lua_State* state, lua_State* thread) {
    lua_pushthread(thread);
    if (state != thread)
        lua_xmove(thread, state, 1);
}

} // namespace

void KyCoroutineTable::clear() {
    mCount = 0;
    mFailedThread = nullptr;
}

void KyCoroutineTable::pushTable(lua_State* state) const {
    lua_pushlightuserdata(state, &mEngine);
    lua_rawget(state, LUA_REGISTRYINDEX);
}

void KyCoroutineTable::makeTable(lua_State* state) const {
    lua_newtable(state);
    lua_pushlightuserdata(state, &mEngine);
    lua_pushvalue(state, -2);
    lua_rawset(state, LUA_REGISTRYINDEX);
}

void KyCoroutineTable::add(lua_State* state, int index) {
    if (!lua_isthread(state, index))
        return;
    luaL_checkstack(state, LUA_MINSTACK, "too many values");
    kyLuaKeepThread(state, index);
    lua_pushvalue(state, index);
    pushTable(state);
    if (!lua_istable(state, -1)) {
        lua_pop(state, 1);
        makeTable(state);
    }
    lua_insert(state, -2);
    lua_pushboolean(state, 1);
    lua_rawset(state, -3);
    lua_pop(state, 1);
    ++mCount;
}

void KyCoroutineTable::addThread(lua_State* state, lua_State* thread) {
    luaL_checkstack(state, 1, "too many values");
    pushThread(state, thread);
    add(state, lua_gettop(state));
    lua_pop(state, 1);
}

void KyCoroutineTable::dropFailedThread(lua_State* mainState) {
    if (!mFailedThread)
        return;
    for (int i = lua_gettop(mainState); i > 0; --i)
        if (lua_tothread(mainState, i) == mFailedThread) {
            lua_remove(mainState, i);
            break;
        }
    mFailedThread = nullptr;
}

bool KyCoroutineTable::launch(const std::string& chunk) {
    KyScriptRunner runner(mEngine);
    lua_State* thread = nullptr;
    bool isLoaded = false;
    const bool isMade = runner.run([&](lua_State* state) {
        luaL_checkstack(state, LUA_MINSTACK, "too many values");
        kyCheckLuaText(state, chunk, chunk.c_str());
        lua_pushlightuserdata(state, this);
        thread = lua_newthread(state);
        kyLuaKeepThread(state, lua_gettop(state));
        lua_rawset(state, LUA_REGISTRYINDEX);
        isLoaded = KyScriptSandbox::Private::load(thread, chunk, chunk.c_str()) == 0;
    });
    if (!isMade) {
        if (runner.isOpen())
            runner.report();
        return false;
    }
    const int top = lua_gettop(runner.getState());
    pushThread(runner.getState(), thread);
    releaseNewThread(runner.getState());
    if (isLoaded)
        return start(runner, thread, top);
    takeFailure(runner, thread);
    runner.editFailure().traceback.clear();
    lua_settop(runner.getState(), top);
    runner.report();
    return false;
}

/// A new thread waits in the registry until it stands on the stack. Taking it away allocates nothing.
void KyCoroutineTable::releaseNewThread(lua_State* state) const {
    lua_pushlightuserdata(state, const_cast<KyCoroutineTable*>(this));
    lua_pushnil(state);
    lua_rawset(state, LUA_REGISTRYINDEX);
}

/// The thread is on the stack of the runner's state, above `top`.
bool KyCoroutineTable::start(KyScriptRunner& runner, lua_State* thread, int top) {
    lua_State* const state = runner.getState();
    const int status = runner.resume(thread, 0);
    if (status == 0 || status == LUA_YIELD) {
        lua_settop(thread, 0);
        const bool isKept = status == 0 || !runner.isCurrent() ||
                            runner.run([this, thread](lua_State* inner) { addThread(inner, thread); });
        lua_settop(state, top);
        if (!isKept)
            runner.report();
        return isKept;
    }
    takeFailure(runner, thread);
    if (runner.isHostLevel() && runner.isCurrent())
        mFailedThread = thread;
    else
        lua_settop(state, top);
    runner.report();
    return false;
}

/// The error value is on top of the thread, whose calls are still on record.
void KyCoroutineTable::takeFailure(KyScriptRunner& runner, lua_State* thread) {
    KyScriptDebugger::Private::handleError(runner.getState(), thread, 0, -1);
    KyLuaFailure& failure = runner.editFailure();
    std::string traceback;
    kyLuaTraceback(thread, 0, traceback);
    if (!kyLuaPlainText(thread, -1, failure.message))
        runner.run([&](lua_State* state) {
            runner.makeRoom(thread);
            lua_pushvalue(thread, -1);
            lua_xmove(thread, state, 1);
            kyLuaErrorText(state, -1, failure.message);
        });
    failure.traceback = std::move(traceback);
}

void KyCoroutineTable::resumeAll(double elapsedSeconds) {
    if (mCount == 0 || mIsResuming)
        return;
    KyScriptRunner runner(mEngine);
    if (!runner.isOpen())
        return;
    if (runner.isHostLevel())
        lua_settop(runner.getState(), 0);
    if (!runner.run([this](lua_State* state) { collectThreads(state); })) {
        runner.report();
        return;
    }
    const auto left = std::exchange(mLeft, {});
    if (!left.empty())
        std::ranges::stable_partition(mThreads, [&left](auto* thread) { return std::ranges::count(left, thread) > 0; });
    mIsResuming = true;
    resumeThreads(runner, elapsedSeconds);
    if (!runner.getEngine())
        return;
    mIsResuming = false;
    if (!runner.isCurrent())
        return;
    removeEnded(runner);
    if (runner.isHostLevel())
        lua_settop(runner.getState(), 0);
}

/// Resumed code may enter threads into the table, which would disturb a walk over it.
void KyCoroutineTable::collectThreads(lua_State* state) {
    mThreads.clear();
    mEnded.clear();
    pushTable(state);
    if (!lua_istable(state, -1))
        return;
    lua_pushnil(state);
    while (lua_next(state, -2) != 0) {
        lua_pop(state, 1);
        if (lua_State* thread = lua_tothread(state, -1))
            mThreads.push_back(thread);
    }
}

void KyCoroutineTable::resumeThreads(KyScriptRunner& runner, double elapsedSeconds) {
    for (std::size_t i = 0; i < mThreads.size(); ++i) {
        lua_State* thread = mThreads[i];
        if (!runner.beginSlice()) {
            mLeft.assign(mThreads.begin() + static_cast<std::ptrdiff_t>(i), mThreads.end());
            return;
        }
        const Outcome outcome = resumeThread(runner, thread, elapsedSeconds);
        if (!runner.isCurrent())
            return;
        if (outcome == Outcome::eFailed)
            runner.report();
        if (!runner.isCurrent())
            return;
        if (outcome != Outcome::eWaiting)
            mEnded.push_back(thread);
    }
}

KyCoroutineTable::Outcome KyCoroutineTable::resumeThread(KyScriptRunner& runner, lua_State* thread,
                                                         double elapsedSeconds) {
    const KyLuaThreadState threadState = kyLuaThreadState(thread);
    if (threadState == KyLuaThreadState::eExecuting)
        return Outcome::eWaiting;
    if (threadState == KyLuaThreadState::eDead || !runner.makeRoom(thread)) {
        runner.editFailure() = {"cannot resume dead coroutine", {}};
        return Outcome::eFailed;
    }
    lua_pushnumber(thread, elapsedSeconds);
    const int status = runner.resume(thread, 1);
    if (status != 0 && status != LUA_YIELD)
        takeFailure(runner, thread);
    // An ended thread with something on its stack would look like one that has not begun.
    lua_settop(thread, 0);
    if (status == LUA_YIELD)
        return Outcome::eWaiting;
    return status == 0 ? Outcome::eEnded : Outcome::eFailed;
}

void KyCoroutineTable::removeEnded(KyScriptRunner& runner) {
    if (mEnded.empty())
        return;
    const auto remove = [this](lua_State* state) {
        pushTable(state);
        for (lua_State* thread : mEnded) {
            pushThread(state, thread);
            lua_pushnil(state);
            lua_rawset(state, -3);
        }
    };
    if (runner.run(remove))
        mCount -= static_cast<unsigned>(mEnded.size());
    else
        runner.report();
}

void KyCoroutineTable::setHook(lua_Hook hook, int mask, int interval) {
    KyScriptRunner runner(mEngine);
    if (!runner.isOpen())
        return;
    const auto install = [=](lua_State* state) { kyLuaHookThreads(state, hook, mask, interval); };
    if (!runner.run(install))
        runner.report();
}
