// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// What KyScriptDebugger tells of scripts: plain values, copies of what was there when they were asked for.

/// Why a script stands still.
enum class KyScriptStopReason { eBreakpoint, eStep, ePause, eError, eNbReasons };

/// Where a script stops.
struct KyScriptBreakpoint {
    /// From 1.
    int line = 0;
    /// A Lua expression in the scope of the line; the script stops when it is neither nil nor false, or when it fails,
    /// which it also does after a million instructions. Empty: always.
    std::string condition;
};

/// Where a script stands still.
struct KyScriptStop {
    /// Why it stands still.
    KyScriptStopReason reason = KyScriptStopReason::eBreakpoint;
    /// Number of the thread, see KyScriptThread.
    int thread = 0;
    /// As passed when the chunk was loaded: "@" in front marks a file.
    std::string chunkName;
    /// From 1, 0 in code without lines.
    int line = 0;
    /// Message of the error, or of a condition that failed; else empty.
    std::string text;
};

enum class KyScriptThreadState {
    /// The one that stands still, or that runs.
    eRunning,
    /// It has resumed another.
    eNormal,
    /// It waits in a yield.
    eSuspended,
    /// It was made and never resumed: it has no frames.
    eNew,
    eNbStates
};

/// The main thread of a state or a coroutine.
struct KyScriptThread {
    /// The main thread is 1; a coroutine keeps its number for its life and none is used twice.
    int id = 0;
    /// "main", or "coroutine" with the place of its outermost function, such as "coroutine door.lua:12".
    std::string name;
    /// What it is doing.
    KyScriptThreadState state = KyScriptThreadState::eSuspended;
};

/// One call under way.
struct KyScriptFrame {
    /// 0 is the innermost call of its thread.
    int level = 0;
    /// Name the function was called by, empty when there is none.
    std::string name;
    /// Lua's word: "Lua", "main", "C" or "tail", a call that gave its place to another.
    std::string kind;
    /// As passed when the chunk was loaded, "=[C]" for C functions.
    std::string chunkName;
    /// As in Lua's messages.
    std::string shortName;
    /// The line it stands at, from 1; 0 where there is none.
    int line = 0;
};

/// A group of variables of a frame: "Locals", "Upvalues", "Globals".
struct KyScriptScope {
    /// One of the three words above.
    std::string name;
    /// For KyScriptDebugger::getVariables.
    int reference = 0;
    /// Variables inside, those of inner tables not counted.
    int nbVariables = 0;
};

/// A variable, an entry of a table, an attribute of an object, or the value of an expression.
struct KyScriptVariable {
    /// Keys of tables that are no texts stand in brackets: "[3]", "[table 0x5581]"; texts that begin with a bracket in
    /// brackets and quotes. No two keys of a table have the same.
    std::string name;
    /// Numbers, texts, booleans and nil as Lua writes them, texts in quotes; other values a short description.
    std::string value;
    /// Lua's word for the type, or the class of an object.
    std::string type;
    /// For KyScriptDebugger::getVariables; 0 when there is nothing inside.
    int reference = 0;
    /// Number of variables inside.
    int nbVariables = 0;
    /// False where KyScriptDebugger::setVariable refuses.
    bool isWritable = true;
};
