// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaCallNames_p.h"
#include "KyLuaCall_p.h"
#include "KyLuaInspector_p.h"
#include "KyScriptDebugger.h"
#include "KyScriptTrace_p.h"

#include <atomic>
#include <bitset>
#include <list>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// What the debugger knows and does: it takes the events of the hook, decides where to stop, and waits there.
struct KyScriptDebugger::Private {
    enum class Step { eNone, eOver, eOut };

    /// While one stands, scripts run without stopping.
    struct Depth {
        Depth() { ++msDepth; }
        ~Depth() { --msDepth; }
        Depth(const Depth&) = delete;
        Depth& operator=(const Depth&) = delete;
    };

    Private(KyScriptEngine& owner, KyScriptDebugger& facade);
    ~Private();

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
    void setLines(const std::string& chunkName, const std::list<int>& lines);
    void findLines();
    /// Whether a breakpoint of some chunk may be in the line.
    bool hasLine(int line) const { return lines[static_cast<std::size_t>(line) % lines.size()]; }
    /// Brings the parameters of the debug entity up to date.
    void refreshEntity();

    /// Runs the body protected where a script stands still; false when none does.
    template <class Body>
    bool run(Body&& body, KyLuaFailure& failure) {
        return stopState && kyProtectedCall(stopState, body, failure);
    }
    /// Pushes the thread, so that it lives, and finds the call of that level.
    bool findFrame(lua_State* state, int thread, int level, KyLuaFrame& frame) const;
    /// Levels at the inner end of a thread that are not told.
    int getHiddenLevels(lua_State* thread) const;
    int getNbTold(lua_State* thread) const;

    bool evaluateGlobally(const std::string& expression, KyScriptVariable& result);

    void handleLine(lua_State* state, lua_Debug* record);
    void handleCall(lua_State* state, lua_Debug* record);
    bool needsToStop(lua_State* state, lua_Debug* record, KyScriptStop& found);
    bool isAtBreakpoint(lua_State* state, lua_Debug* record, KyScriptStop& found);
    bool meetsCondition(lua_State* state, const std::string& condition, std::string& error);
    bool isStepDone(lua_State* state) const;
    bool isWatched() const;
    void showLine();
    void showCalls();
    void showVariables(lua_State* state, lua_State* thread, lua_Debug& record);
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
    std::map<std::string, std::string> scriptPaths;

    /// Stops and conditions under way, of all engines: hooks do nothing meanwhile.
    static inline int msDepth = 0;
    /// The state met last, by its registry, and its debugger.
    static inline const void* msKnownRegistry = nullptr;
    static inline Private* msKnown = nullptr;
};
