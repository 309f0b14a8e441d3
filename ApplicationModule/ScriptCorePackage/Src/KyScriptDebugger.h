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
/// stopping; waiting coroutines are not resumed. One thread, but for resume, the steps, pause and interrupt.
///
/// Frames, scopes and references hold until the script goes on; afterwards, and while nothing stands still, they read
/// as empty. Numbers that are wrong read as empty too, and so do frames of a coroutine that an expression lets run on.
/// Expressions may also end the engine, and the debugger with it: they fail then.
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
    /// The same for a file, whatever name its chunks go by: those that executeScript, require and dofile load. Beside
    /// the breakpoints of their chunk names. A relative path is one from the current directory.
    ///
    /// Chunks are known by name only, so of several files of one name the one loaded last counts. One that a script
    /// loaded while the hook was not installed is looked for in the current directory, then beside executed scripts.
    void setFileBreakpoints(const std::string& path, const std::vector<KyScriptBreakpoint>& breakpoints);
    /// One a line, by line.
    std::vector<KyScriptBreakpoint> getFileBreakpoints(const std::string& path) const;
    /// Of all chunk names and files.
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
    /// Stops at the next line of the function that called the one that stands still. Like stepOver it is over when the
    /// run ends that it began in, unless its coroutine waits, and when the hook is removed.
    void stepOut();
    /// Stops at the next line that runs; a script that stands still stays so.
    void pause();

    /// True while a script stands still.
    bool isStopped() const;
    /// Default values while nothing stands still.
    const KyScriptStop& getStop() const;

    /// The main thread first, then the coroutines that have not ended, by number. Also while nothing stands still.
    std::vector<KyScriptThread> getThreads() const;
    /// Calls of a thread, innermost first; `count` 0 gives all from level `first` on.
    std::vector<KyScriptFrame> getFrames(int thread, int first = 0, int count = 0) const;
    /// Calls under way in a thread; 0 when there is no such thread.
    int getNbFrames(int thread) const;
    /// Locals, upvalues and globals of a frame; empty when there is no such frame.
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
    /// Ends a setVariable or evaluate under way: it fails, unless it is in a native function that does not return.
    /// Nothing when none is.
    void interrupt();
    /// The Lua thread that stands still, for hooks of the host; null while none does.
    lua_State* editStoppedThread() const;

    /// Counts those that watch: the first attach installs the engine's hook, and the last detach takes it away unless
    /// KyScriptEngine::setHook was called. KyScriptEngine::removeHook takes it away at once.
    void attach();
    /// The last one takes back pauses and steps that have not stopped yet. Nothing when nobody is attached.
    void detach();

    /// The whole path of the file last run under a chunk name by KyScriptEngine::executeScript; empty when none was.
    std::string getScriptPath(const std::string& chunkName) const;
    /// The chunk name that executeScript gives to a file: "@" and the file's name.
    static std::string makeChunkName(const std::string& path);
    /// The whole path, without links, of the file that setFileBreakpoints finds for a chunk name; empty for a name that
    /// is none of a file.
    std::string findFile(const std::string& chunkName) const;
    /// Chunk names of all files that executeScript has run and, while the hook was installed, scripts have loaded, in
    /// alphabetical order.
    std::vector<std::string> getScripts() const;

    /// Sent when a script has stopped, before the first wait, and when it goes on.
    KySignal<> stoppedSignal{"stoppedSignal"};
    /// Sent when the script runs on.
    KySignal<> continuedSignal{"continuedSignal"};
    /// Sent when setVariable or evaluate may have changed variables of a script that stands still.
    KySignal<> changedSignal{"changedSignal"};
    /// Sent before executeScript runs a file, with its chunk name and its whole path; while the hook is installed, also
    /// when one begins that a script loads for the first time. Slots must not end the engine.
    KySignal<const std::string&, const std::string&> scriptSignal{"scriptSignal"};
    /// What scripts print, with its line end, after it went to the standard output.
    KySignal<const std::string&> printedSignal{"printedSignal"};
    /// The messages of KyScriptEngine::output, of the single engine.
    KySignal<const std::string&> reportedSignal{"reportedSignal"};

    struct Private;

private:
    friend class KyScriptEngine;
    friend class KyScriptRunner;

    /// Shared by operations under way, since an expression may end the engine.
    std::shared_ptr<Private> mPrivate;
};
