// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaCallNames_p.h"
#include "KyLuaCall_p.h"
#include "KyLuaInspector_p.h"
#include "KyScriptChunkFiles_p.h"
#include "KyScriptDebugger.h"
#include "KyScriptEngine.h"
#include "KyScriptTrace_p.h"

#include <atomic>
#include <bitset>
#include <exception>
#include <list>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// What the debugger knows and does: it takes the events of the hook, decides where to stop, and waits there.
struct KyScriptDebugger::Private {
    enum class Step { eNone, eOver, eOut };

    /// While one stands, interrupt() ends what runs.
    struct Evaluating {
        explicit Evaluating(Private& debugger);
        ~Evaluating();
        Evaluating(const Evaluating&) = delete;
        Evaluating& operator=(const Evaluating&) = delete;

        Private& self;
        Private* outer;
    };

    /// While one stands, scripts run without stopping.
    struct Depth {
        Depth() { ++msDepth; }
        ~Depth() { --msDepth; }
        Depth(const Depth&) = delete;
        Depth& operator=(const Depth&) = delete;
    };

    Private(KyScriptEngine& owner, KyScriptDebugger& facade);
    ~Private();

    /// Whether a script stands still or a condition is evaluated: what runs meanwhile runs without stopping.
    static bool isQuiet() { return msDepth > 0; }
    /// That of the engine of the state, null when it ends or has ended.
    static Private* find(lua_State* state);
    static void meet(lua_State* state);
    /// The Lua hook. Nothing of C++ leaves it.
    static void handleEvent(lua_State* state, lua_Debug* record);
    /// Called where an error is raised that no script will catch, with it on the stack at `message`. `thread`, which
    /// is `state` or a coroutine that ended by the error, has its calls on record from `level` on.
    static void handleError(lua_State* state, lua_State* thread, int level, int message);

    /// The first event of the hook after it begins the list of calls anew.
    void beginRun() {
        trace.beginRun();
        callNames.beginRun();
    }
    /// The outermost run of the main thread's state ends.
    void endRun(lua_State* mainState);
    /// A step over or out that has not stopped yet is over.
    void forgetStep();
    void setLines(const std::string& chunkName, const std::list<int>& lines);
    void findLines();
    void noteLine(int line) { lines.set(static_cast<std::size_t>(line) % lines.size()); }
    /// Whether a breakpoint of some chunk may be in the line.
    bool hasLine(int line) const { return lines[static_cast<std::size_t>(line) % lines.size()]; }
    /// Brings the parameters of the debug entity up to date.
    void refreshEntity();

    /// What the host's code throws may not cross Lua.
    template <class Callable>
    static void callHost(Callable callable) {
        try {
            callable();
        } catch (const std::exception& exception) {
            reportHost(exception.what());
        } catch (...) {
            reportHost("unknown C++ exception");
        }
    }
    static void reportHost(const char* text);

    /// Runs the body protected where a script stands still; false when none does, or when the engine ended meanwhile.
    template <class Body>
    bool run(Body&& body, KyLuaFailure& failure) {
        const auto handle = engine.mHandle;
        return stopState && kyProtectedCall(stopState, body, failure) && *handle;
    }
    /// Runs the body protected on a thread of its own, since hooks do not run inside a hook: what it does is counted
    /// there and may be ended.
    template <class Body>
    bool callApart(lua_State* state, Body&& body, KyLuaFailure& failure) const {
        bool isGood = false;
        const auto call = [&](lua_State* outer) { isGood = kyProtectedCall(pushCountedThread(outer), body, failure); };
        return kyProtectedCall(state, call, failure) && isGood;
    }
    lua_State* pushCountedThread(lua_State* state) const;
    /// As run(), but apart, and open to interrupt().
    template <class Body>
    bool evaluateApart(Body&& body, KyLuaFailure& failure) {
        const auto handle = engine.mHandle;
        const Evaluating evaluating(*this);
        return stopState && callApart(stopState, body, failure) && *handle;
    }
    /// Pushes the thread, so that it lives, and finds the call of that level.
    bool findFrame(lua_State* state, int thread, int level, KyLuaFrame& frame) const;
    /// Visits the calls of a thread that are told, innermost first, until told to stop: the engine's own are not.
    template <class Visit>
    void forEachTold(lua_State* thread, Visit visit) const {
        lua_Debug record;
        for (int level = getNbHidden(thread); lua_getstack(thread, level, &record) != 0; ++level)
            if (!kyIsOwnLuaCall(kyLuaCFunction(thread, &record)) && !visit(level, record))
                return;
    }
    /// Levels at the inner end of a thread that are not told.
    int getNbHidden(lua_State* thread) const;
    int getNbTold(lua_State* thread) const;
    /// Tells those who watch that variables may have other values.
    void tellChange();

    bool evaluateGlobally(const std::string& expression, KyScriptVariable& result);

    void handleLine(lua_State* state, lua_Debug* record);
    void handleCall(lua_State* state, lua_Debug* record);
    bool needsToStop(lua_State* state, lua_Debug* record, KyScriptStop& found);
    bool isAtBreakpoint(lua_State* state, lua_Debug* record, KyScriptStop& found);
    bool meetsCondition(lua_State* state, std::string condition, std::string& error);
    /// Counts what a condition does, and raises an error when that is too much, or when an evaluation is interrupted.
    static void spend(lua_State* state, const lua_Debug* record);
    bool isStepDone(lua_State* state) const;
    bool isWatched() const;
    void showLine();
    void showCalls();
    void showVariables(lua_State* state, lua_State* thread, lua_Debug& record);
    void showStop();
    void hideLocals();
    void stopAt(lua_State* state, lua_State* thread, int level, const KyScriptStop& where);
    void beginStop(lua_State* state, lua_State* thread, int level, const KyScriptStop& where);
    /// False when the engine ended meanwhile.
    static bool wait(KyScriptEngine** handle);
    void endStop();
    void beginStep(Step kind);

    KyScriptEngine& engine;
    KyScriptDebugger& debugger;
    KyScriptTrace trace;
    KyLuaCallNames callNames;
    KyLuaInspector inspector;
    std::map<std::pair<std::string, int>, std::string> conditions;
    /// Lines with breakpoints, of all chunks, modulo its size.
    std::bitset<4096> lines;
    bool isBreakingOnErrors = false;
    std::atomic<bool> isPauseWanted = false;
    std::atomic<Step> wantedStep = Step::eNone;
    int nbEvaluations = 0;
    /// Number of the evaluation under way, the outermost of several; 0 while there is none. An interruption names it,
    /// so that one that comes late ends no other.
    std::atomic<int> evaluationNumber = 0;
    std::atomic<int> interruptedNumber = 0;

    Step step = Step::eNone;
    /// Kept alive through the registry while a step lasts.
    lua_State* stepThread = nullptr;
    int stepLevels = 0;

    /// On which expressions run, null while nothing stands still.
    lua_State* stopState = nullptr;
    /// Whose calls are told, on record from this level on when it had so many levels.
    lua_State* stopThread = nullptr;
    int stopLevel = 0;
    int stopNbLevels = 0;
    KyScriptStop stop;
    KyScriptChunkFiles files;
    /// Runs under way, the inner ones included.
    int nbRuns = 0;
    bool areLocalsShown = false;
    bool isTellingChange = false;
    int nbAttached = 0;
    /// The hook goes with the last of them.
    bool isHookBorrowed = false;

    /// Stops and conditions under way, of all engines: hooks do nothing meanwhile.
    static inline int msDepth = 0;
    /// Instructions that a condition has left.
    static inline int msBudget = 0;
    static inline bool msIsBounded = false;
    /// Whose evaluation runs.
    static inline Private* msEvaluating = nullptr;
    /// The state met last, by its registry, and its debugger.
    static inline const void* msKnownRegistry = nullptr;
    static inline Private* msKnown = nullptr;
};
