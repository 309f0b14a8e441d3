// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaCall_p.h"
#include "KyLuaMemory_p.h"
#include "KyScriptSandbox.h"

#include "KyObjectReference.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

class KyFunction;
class KyObject;

/// What the sandbox of an engine knows and does. Functions that a state may call are static: they find the sandbox by
/// its engine and do nothing without, as when the engine has ended or its sandbox is not enabled.
struct KyScriptSandbox::Private {
    using Clock = std::chrono::steady_clock;

    explicit Private(KyScriptEngine& owner)
        : engine(owner) {}
    ~Private();
    Private(const Private&) = delete;
    Private& operator=(const Private&) = delete;

    /// Whether any engine has a sandbox: asked first where it matters.
    static bool isAnyEnabled() { return msNbEnabled > 0; }
    /// Null while it is not enabled.
    static Private* find(lua_State* state);

    /// Takes the present state of the engine into the sandbox; it is locked when the next run begins.
    void adoptState();
    /// Of that state, null when it is not in the sandbox.
    std::shared_ptr<KyLuaMemory> findMemory(lua_State* mainState) const;
    /// At host level, around everything that runs in the state.
    void beginRun(lua_State* mainState);
    void endRun(lua_State* mainState);
    /// One coroutine of a frame, which has what a run has.
    void beginSlice(lua_State* mainState);
    /// Whether the coroutines of the frame have used up the time of a run.
    bool isFrameOver() const { return isEnabled && Clock::now() >= frameDeadline; }
    /// A script stood still for so long.
    void extend(Clock::duration pause);
    /// Shortens the texts of an error and names what was used up.
    void trim(KyLuaFailure& failure) const;
    std::string cutMessage(std::string text) const;

    /// The count event of the hook.
    void count(lua_State* state);
    /// Work of native functions, in instructions of Lua. Raises an error when that is too much; no pcall holds it.
    static void charge(lua_State* state, std::size_t units);
    /// Whether the run has used up what it had.
    static bool isEnding(lua_State* state);
    /// Before each call of a bound method.
    static void checkCall(lua_State* state, const KyType& type, const KyFunction& function);
    /// Before a script makes an object of the type, and after.
    static void checkCreation(lua_State* state, const KyType& type);
    static void noteCreation(lua_State* state, KyObject& object);
    /// Raises an error unless scripts made the object.
    static void checkDestruction(lua_State* state, const KyObject& object);
    /// Raises an error when the attribute is withheld.
    static void checkWriting(lua_State* state, const KyObject& object, const char* name);
    static void chargeOutput(lua_State* state, std::size_t bytes);
    /// For what native code puts out while a script runs, where no error may be raised. When it is too much the run
    /// ends with its next instruction.
    bool admitOutput(std::size_t bytes);
    /// For errors of runs inside the run; once it has ended one more is reported.
    bool admitReport(std::size_t bytes);
    /// Whether text begins like bytecode and may not be loaded.
    static bool isRefused(lua_State* state, std::string_view text);

private:
    friend class KyScriptSandbox;

    void lock(lua_State* mainState);
    void spend(lua_State* state, std::uint64_t units);
    /// Before what may take long: charges and looks at the clock.
    static void chargeCall(lua_State* state, std::size_t units);
    void checkClock(lua_State* state);
    void adaptProcessCeiling(lua_State* mainState);
    void collect(lua_State* state);
    void setCollectionMark();
    void markExhausted(std::string_view what, double limit);
    /// Ends the run; what follows in it fails as well.
    [[noreturn]] void exhaust(lua_State* state, std::string_view what, double limit);
    [[noreturn]] static void raise(lua_State* state, const char* text);
    int getHookMask() const;
    void rearm(lua_State* mainState) const;
    void purgeObjects();

    KyScriptEngine& engine;

public:
    KyScriptLimits limits;
    bool isEnabled = false;
    bool isExhausted = false;
    /// Of the present state; it may outlive the engine with it.
    std::shared_ptr<KyLuaMemory> memory;

private:
    bool needsLock = false;
    bool isEndReported = false;
    std::string reason;
    std::uint64_t instructionsLeft = 0;
    std::uint64_t outputLeft = 0;
    std::uint64_t unitsToClock = 0;
    Clock::time_point deadline;
    Clock::time_point frameDeadline;
    Clock::time_point nextProcessCheck;
    std::size_t processCeiling = 0;
    /// Of the present run.
    std::size_t runCeiling = 0;
    std::size_t collectionMark = 0;
    std::unordered_map<const KyObject*, KyObjectReference> objects;
    std::size_t nextPurge = 0;

    static inline int msNbEnabled = 0;
};

/// Replaces what the libraries of Lua offer to scripts. Raises Lua errors.
void kyLockLuaLibraries(lua_State* state);
/// Its parts: text functions, table functions, and those without a library.
void kyBoundLuaStrings(lua_State* state);
void kyBoundLuaTables(lua_State* state);
void kyBoundLuaThreads(lua_State* state);
void kyBoundLuaBasics(lua_State* state);

/// Enters the function into the table at `table`, an absolute index.
void kySetLuaFunction(lua_State* state, int table, const char* name, lua_CFunction function);
/// Puts the wrapper, with Lua's own function as its upvalue, into its place, if there is one. The wrapper calls that
/// within its own call, so functions with upvalues, which scripts may have put there, are left out.
void kyWrapLuaFunction(lua_State* state, int table, const char* name, lua_CFunction wrapper);
/// As before, by one that charges for long texts and tables.
void kyMeterLuaFunction(lua_State* state, int table, const char* name);
