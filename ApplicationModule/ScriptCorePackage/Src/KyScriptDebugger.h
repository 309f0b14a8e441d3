// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"
#include "KyScriptInspection.h"

#include "KySignal.h"

#include <memory>
#include <string>
#include <vector>

class KyScriptEngine;
struct lua_Debug;
struct lua_State;

/// The debugger of a script engine, which owns it (KyScriptEngine::editDebugger): breakpoints with conditions,
/// stepping, and reading and writing the variables of scripts that stand still, in the main thread and in coroutines,
/// whatever their age.
///
/// Nothing stops before KyScriptEngine::setHook. A script that stops does so inside the operation that runs it, which
/// returns when the script has gone on and ended; meanwhile the engine calls its KyLuaDebugger over and over, from
/// where all of this is used. What runs then (expressions, slots, the host's own scripts) runs to its end without
/// stopping; waiting coroutines are not resumed. One thread, but for resume, the steps and pause.
///
/// Frames, scopes and references hold until the script goes on; afterwards, and while nothing stands still, they read
/// as empty. Numbers that are wrong read as empty too.
///
/// ```
/// KyScriptDebugger& debugger = KyScriptEngine::get().editDebugger();
/// KyScriptEngine::get().setHook();
/// debugger.setBreakpoints("@door.lua", {{12, "angle > 90"}});
/// debugger.stoppedSignal.connect([&] { show(debugger.getFrames(debugger.getStop().thread)); });
/// ```
class KYAPPLICATION_EXPORT KyScriptDebugger {
public:
    /// Made by the engine.
    explicit KyScriptDebugger(KyScriptEngine& engine);
    KyScriptDebugger(const KyScriptDebugger&) = delete;
    KyScriptDebugger& operator=(const KyScriptDebugger&) = delete;
    ~KyScriptDebugger();

    /// Replaces the breakpoints of the chunk name, with those that KyScriptEngine::executeChunk set; none removes them.
    void setBreakpoints(const std::string& chunkName, const std::vector<KyScriptBreakpoint>& breakpoints);
    std::vector<KyScriptBreakpoint> getBreakpoints(const std::string& chunkName) const;
    /// Of all chunk names.
    void clearBreakpoints();
    /// Whether errors that no pcall of a script catches stop it where they happen. Needs no hook. False at first.
    void setBreakingOnErrors(bool isBreaking);
    bool isBreakingOnErrors() const;

    /// Runs on to the next breakpoint.
    void resume();
    /// Stops at the next line that runs, whatever its thread.
    void stepInto();
    /// Stops at the next line of the function that stands still, or of one that called it. A coroutine that yields
    /// meanwhile stops when it goes on; one that ends, at the next line of another.
    void stepOver();
    /// Stops at the next line of the function that called the one that stands still.
    void stepOut();
    /// Stops at the next line that runs; a script that stands still stays so.
    void pause();

    bool isStopped() const;
    /// Default values while nothing stands still.
    const KyScriptStop& getStop() const;

    /// The main thread first, then the coroutines that have not ended, by number. Also while nothing stands still.
    std::vector<KyScriptThread> getThreads() const;
    /// Calls of a thread, innermost first; `count` 0 gives all from level `first` on.
    std::vector<KyScriptFrame> getFrames(int thread, int first = 0, int count = 0) const;
    int getNbFrames(int thread) const;
    std::vector<KyScriptScope> getScopes(int thread, int level);
    /// What a scope, table or object holds, from entry `first` on; `count` 0 gives all. Of locals with one name the
    /// innermost.
    std::vector<KyScriptVariable> getVariables(int reference, int first = 0, int count = 0);
    /// Gives a variable, named as getVariables does, the value of a Lua expression, evaluated in the frame that the
    /// reference came from. `result` is the variable as it is then; on failure its value is the message.
    bool setVariable(int reference, const std::string& name, const std::string& expression, KyScriptVariable& result);
    /// Evaluates an expression, or runs statements, in the scope of a frame: locals, upvalues and globals read and
    /// write as there. Thread 0 means the globals alone, also while nothing stands still. `result` is its first value;
    /// on failure its value is the message, which goes nowhere else.
    bool evaluate(int thread, int level, const std::string& expression, KyScriptVariable& result);

    /// The whole path of the file last run under a chunk name by KyScriptEngine::executeScript; empty when none was.
    std::string getScriptPath(const std::string& chunkName) const;
    /// The chunk name that executeScript gives to a file: "@" and the file's name.
    static std::string makeChunkName(const std::string& path);

    /// Sent when a script has stopped, before the first wait, and when it goes on.
    KySignal<> stoppedSignal{"stoppedSignal"};
    KySignal<> continuedSignal{"continuedSignal"};

    struct Private;

private:
    friend class KyScriptEngine;
    friend class KyScriptRunner;

    std::unique_ptr<Private> mPrivate;
};
