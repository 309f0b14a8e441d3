// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaCall_p.h"
#include "KyLuaMemory_p.h"
#include "KyLuaState_p.h"

#include "KyField.h"

#include <QtGlobal>

#include <memory>
#include <string>
#include <vector>

class KyScriptEngine;

/// Source text and the name that messages show for it.
struct KyScriptSource {
    const std::string& text;
    const std::string& name;
};

/// One operation of an engine on its Lua state: stands on the C++ stack while it lasts. The engine may be reset or end
/// under it, since scripts run; what comes after a run asks isCurrent() or getEngine() first.
class KyScriptRunner {
public:
    explicit KyScriptRunner(KyScriptEngine& engine);
    ~KyScriptRunner();
    KyScriptRunner(const KyScriptRunner&) = delete;
    KyScriptRunner& operator=(const KyScriptRunner&) = delete;

    /// False on a closed state, where nothing may be run.
    bool isOpen() const { return mGuard.getMainState() != nullptr; }
    bool isHostLevel() const { return mGuard.isHostLevel(); }
    lua_State* getState() const { return mGuard.getState(); }
    KyLuaGuard& editGuard() { return mGuard; }
    /// Null once the engine has ended.
    KyScriptEngine* getEngine() const { return *mHandle; }
    /// The engine lives and still has the state that runs.
    bool isCurrent() const;

    /// Runs the body protected, see kyProtectedCall; a failure stays in editFailure(). False on a closed state.
    template <class Body>
    bool run(Body&& body) {
        if (!isOpen())
            return false;
        return mMemory && !isHostLevel() ? runApart(body) : kyProtectedCall(getState(), body, mFailure);
    }
    KyLuaFailure& editFailure() { return mFailure; }
    /// Resumes a thread of the state with the arguments on its stack; the result is that of lua_resume.
    int resume(lua_State* thread, int nbArguments);
    /// For one value on the stack of a thread that is not running, where nothing would catch Lua's error.
    bool makeRoom(lua_State* thread) const;
    /// Before each coroutine of a frame: false when a sandbox leaves it to the next frame.
    bool beginSlice();
    /// Sends the failure to the engine's output and keeps its traceback.
    void report();
    /// Reports the failure as one of a binding.
    void reportInternal();

    /// Loads and runs; the results are registered as coroutines, printed and appended as the engine's settings say.
    bool execute(const KyScriptSource& source, std::vector<KyField>* results);
    /// As execute, a file; loaded by `fileName`, which stands in messages.
    bool executeFile(const std::string& fileName, std::vector<KyField>* results);
    /// Loads only; the failure is left unreported.
    bool check(const KyScriptSource& source);
    bool checkFile(const std::string& fileName);
    bool callGlobal(const std::string& name, const std::vector<KyField>& arguments, std::vector<KyField>& results);
    bool callReference(int reference);

private:
    /// On a thread of its own: in the collector, and in a hook, Lua runs no hooks on the thread that is there, and a
    /// sandbox depends on them.
    template <class Body>
    bool runApart(Body&& body) {
        bool isGood = false;
        const auto call = [&](lua_State* outer) {
            lua_State* const thread = pushOwnThread(outer);
            lua_State* const outerRunning = mMemory->getRunning();
            mMemory->setRunning(thread);
            isGood = kyProtectedCall(thread, body, mFailure);
            mMemory->setRunning(outerRunning);
        };
        return kyProtectedCall(getState(), call, mFailure) && isGood;
    }
    static lua_State* pushOwnThread(lua_State* state);
    void beginLog();
    void endLog();
    static void log(const std::string& text);
    static void logQt(QtMsgType type, const QMessageLogContext& context, const QString& text);
    bool isReportAdmitted() const;
    void keepFailure();
    template <class Load>
    bool executeLoaded(Load load, std::vector<KyField>* results);
    void finishResults(lua_State* state, std::vector<KyField>* results);
    void registerCoroutines(lua_State* state, int nbResults);
    void printResults(lua_State* state, int nbResults);
    void collectHostThreads();

    std::shared_ptr<KyScriptEngine*> mHandle;
    KyLuaGuard mGuard;
    KyLuaFailure mFailure;
    /// Of a state in a sandbox, else null.
    std::shared_ptr<KyLuaMemory> mMemory;
    /// Message of the print function; empty when it went well.
    std::string mPrintError;
    /// What the host has on the stack: threads, null for other values.
    std::vector<lua_State*> mHostThreads;
    /// Whose reports were counted before.
    KyScriptRunner* mOuter = nullptr;
    bool mIsLogged = false;
};

/// While it lasts what is reported on the thread is not counted as the script's: the engine's own output.
class KyScriptOutputScope {
public:
    KyScriptOutputScope();
    KyScriptOutputScope(const KyScriptOutputScope&) = delete;
    KyScriptOutputScope& operator=(const KyScriptOutputScope&) = delete;
    ~KyScriptOutputScope();

private:
    KyScriptRunner* mRunner;
};
