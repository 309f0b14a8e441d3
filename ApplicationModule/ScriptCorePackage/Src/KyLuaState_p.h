// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include <lua.hpp>

class KyScriptEngine;

/// The shared owner of a Lua state: the engine and every entry into Lua hold a share, the last one closes the state.
using KyLuaState = std::shared_ptr<lua_State>;

/// The engine that a Lua state belongs to, null once it has ended. Shared by all states that one engine ever had.
using KyScriptEngineHandle = std::shared_ptr<KyScriptEngine*>;

/// Closes a state when its last share goes.
struct KyLuaCloser {
    KyScriptEngineHandle handle;
    /// What must live as long as scripts of the state may run it; ends after the state.
    std::vector<std::shared_ptr<void>> attic;

    void operator()(lua_State* state) const { lua_close(state); }
};

/// Opens a bare state with a panic function, whose C functions find the engine by kyLuaEngine. Null without memory.
KyLuaState kyOpenLuaState(const KyScriptEngineHandle& handle);

/// The engine of a running C function; null when there is none (any more). Needs one free slot, never raises.
KyScriptEngine* kyLuaEngine(lua_State* state);
inline bool kyLuaEngineExists(lua_State* state) {
    return kyLuaEngine(state) != nullptr;
}

/// Stands on the C++ stack while Lua code runs that C++ has started: keeps the state open and knows its running thread.
///
/// ```
/// KyLuaGuard guard(state);
/// if (guard.isHostLevel())
///     lua_settop(guard.getState(), 0);
/// lua_cpcall(guard.getState(), function, data);
/// ```
class KyLuaGuard {
public:
    /// A null state is allowed and runs nothing.
    explicit KyLuaGuard(KyLuaState state);
    ~KyLuaGuard();
    KyLuaGuard(const KyLuaGuard&) = delete;
    KyLuaGuard& operator=(const KyLuaGuard&) = delete;

    /// What to run on: the running thread, or the main one at host level.
    lua_State* getState() const { return mBase; }
    lua_State* getMainState() const { return mState.get(); }
    /// No code of the state was running when the guard was made.
    bool isHostLevel() const { return mIsHostLevel; }
    /// What follows runs on this thread of the state, resumed from getState().
    void enterThread(lua_State* thread);
    void leaveThread();

    /// The thread of the state whose code runs now, null at host level.
    static lua_State* findRunning(const lua_State* mainState);

private:
    friend class KyLuaRunning;

    KyLuaState mState;
    KyLuaGuard* mOuter;
    lua_State* mOuterRunning;
    lua_State* mBase = nullptr;
    lua_State* mThread = nullptr;
    std::size_t mScratchDepth;
    unsigned mPendingDepth;
    int mDepth = 1;
    bool mIsHostLevel = true;

    static inline KyLuaGuard* msInnermost = nullptr;
    static inline lua_State* msRunning = nullptr;
};

/// Stands in a C function: tells the guard around it on which thread it runs, which matters once scripts resume
/// coroutines themselves. Costs a comparison while the thread is the same; without a guard it does nothing. It may be
/// jumped over: a thread that is not running any more is recognised.
class KyLuaRunning {
public:
    explicit KyLuaRunning(lua_State* state)
        : mOuter(KyLuaGuard::msRunning)
        , mState(state) {
        if (mOuter != state) [[unlikely]]
            mOuter = enter(mOuter, state);
    }
    ~KyLuaRunning() {
        if (mOuter != mState) [[unlikely]]
            switchTo(mOuter);
    }
    KyLuaRunning(const KyLuaRunning&) = delete;
    KyLuaRunning& operator=(const KyLuaRunning&) = delete;

private:
    /// Switches to the thread and gives the one to switch back to: what was remembered, unless it was jumped over and
    /// has ended. Gives the thread itself, which switches nothing back, where there is no guard of its state.
    static lua_State* enter(lua_State* outer, lua_State* state);
    static void switchTo(lua_State* state);

    lua_State* mOuter;
    lua_State* mState;
};
