// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include <lua.hpp>

class KyScriptEngine;
class KyScriptRunner;

/// The waiting coroutines of an engine: a table in the registry of its state, under the engine's address, whose keys
/// are the threads. Threads registered while the others are being resumed start in the next round.
class KyCoroutineTable {
public:
    explicit KyCoroutineTable(KyScriptEngine& engine)
        : mEngine(engine) {}
    KyCoroutineTable(const KyCoroutineTable&) = delete;
    KyCoroutineTable& operator=(const KyCoroutineTable&) = delete;

    /// Registrations that have not ended; one thread may count more than once.
    unsigned size() const { return mCount; }
    /// Forgets everything, with the state.
    void clear();

    /// Registers the value at `index` when it is a thread. May raise a memory error, as the next.
    void add(lua_State* state, int index);
    void addThread(lua_State* state, lua_State* thread);

    /// Runs a chunk on a thread of its own up to its first yield, which registers it.
    bool launch(const std::string& chunk);
    /// Resumes each thread once with the time as the result of its yield.
    void resumeAll(double elapsedSeconds);
    /// Installs a debug hook on every thread, null takes it away.
    void setHook(lua_Hook hook, int mask, int interval);
    /// Takes the thread that launch left on the stack of the main thread away.
    void dropFailedThread(lua_State* mainState);

private:
    enum class Outcome { eWaiting, eEnded, eFailed };

    void pushTable(lua_State* state) const;
    void makeTable(lua_State* state) const;
    void collectThreads(lua_State* state);
    void releaseNewThread(lua_State* state) const;
    bool start(KyScriptRunner& runner, lua_State* thread, int top);
    void resumeThreads(KyScriptRunner& runner, double elapsedSeconds);
    void removeEnded(KyScriptRunner& runner);
    static Outcome resumeThread(KyScriptRunner& runner, lua_State* thread, double elapsedSeconds);
    static void takeFailure(KyScriptRunner& runner, lua_State* thread);

    KyScriptEngine& mEngine;
    unsigned mCount = 0;
    bool mIsResuming = false;
    lua_State* mFailedThread = nullptr;
    /// Kept for their memory.
    std::vector<lua_State*> mThreads;
    std::vector<lua_State*> mEnded;
    /// What had to wait for the next frame; only compared, they may be gone.
    std::vector<const lua_State*> mLeft;
};
