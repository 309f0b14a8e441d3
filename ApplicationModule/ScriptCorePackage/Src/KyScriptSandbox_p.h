// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaCall_p.h"
#include "KyLuaMemory_p.h"
#include "KyScriptSandbox.h"

#include "KyObjectReference.h"

#include <chrono>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

class KyAttributeInterface;
class KyFunction;
class KyObject;
struct KyLuaClass;
struct KyLuaShared;

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
    /// As charge, before what may take long or much memory outside Lua: looks at the clock.
    static void chargeCall(lua_State* state, std::size_t units);
    /// Raises an error for a text at `index` that is too long to be handed out of Lua.
    static void checkText(lua_State* state, int index);
    /// Before each call of a method of the class.
    static void checkCall(lua_State* state, KyLuaClass& luaClass, const KyFunction& function);
    /// Before a script makes an object of the type, and after.
    static void checkCreation(lua_State* state, const KyType& type);
    static void noteCreation(lua_State* state, KyObject& object);
    /// Raises an error unless scripts made the object.
    static void checkDestruction(lua_State* state, const KyObject& object);
    /// Raises an error when the attribute is withheld.
    static void checkWriting(lua_State* state, const KyLuaShared& shared, const KyObject& object, const char* name);
    /// Before the reading of attributes and elements in a sandbox: some at a time look at the clock.
    static void chargeReading(lua_State* state, KyLuaShared& shared);
    /// Before the writing of an element of a container, the value at 3.
    static void checkElement(lua_State* state, KyLuaShared& shared);
    /// Whether scripts may read the attribute. No error is raised by these.
    static bool mayRead(lua_State* state, KyLuaClass& luaClass, const KyObject& object,
                        const KyAttributeInterface& attribute);
    static bool mayListen(lua_State* state, const KyObject& object, std::string_view signal);
    /// Work that is done where no error may be raised. False, and the run ends with its next instruction, when it is
    /// too much.
    static bool admitWork(lua_State* state, std::size_t units);
    /// The object is not published any more.
    void withdraw(const KyObject& object);
    /// Pushes a loaded text as luaL_loadbuffer does, but bounded: long conditions may take for ever.
    static int load(lua_State* state, std::string_view text, const char* name);
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
    bool mayUse(const KyType& type, const KyObject* object) const;
    bool isPublished(const KyObject& object) const;
    bool mayWrite(const KyObject& object, std::string_view name) const;
    bool isReviewed(KyLuaClass& luaClass) const;
    template <class Declares>
    bool mayUseMember(const KyObject& object, Declares declares) const;
    void checkClock(lua_State* state);
    void adaptProcessCeiling(lua_State* mainState);
    void collect(lua_State* state);
    void setCollectionMark();
    void markExhausted(std::string_view what, double limit);
    /// Ends the run; what follows in it fails as well.
    [[noreturn]] void exhaust(lua_State* state, std::string_view what, double limit);
    [[noreturn]] static void raise(lua_State* state, const char* text);
    int getHookMask() const;
    void rearm(lua_State* mainState, int interval) const;
    void purgeObjects();

    KyScriptEngine& engine;

public:
    KyScriptLimits limits;
    bool isEnabled = false;
    /// Names of types and globals that the host gives away.
    std::set<std::string, std::less<>> allowedTypes;
    std::set<std::string, std::less<>> allowedGlobals;
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
    /// Of the present state, once it is locked.
    KyLuaShared* shared = nullptr;

    static inline int msNbEnabled = 0;
};

/// How far scripts in a sandbox may go with a type of the libraries.
enum class KyScriptReview {
    /// Not reviewed: withheld unless the host gives it away.
    eNone,
    /// Nothing.
    eClosed,
    /// Objects that they are given, but for withheld members.
    eHeld,
    /// They may also make them.
    eOpen,
    eNbReviews
};
KyScriptReview kyGetScriptReview(const KyType& type);

/// Takes the globals away that nobody has reviewed or given. Raises Lua errors.
void kyWithholdLuaGlobals(lua_State* state, const KyScriptEngine& engine,
                          const std::set<std::string, std::less<>>& allowed);
/// Makes the functions of values that hold memory outside Lua look at the clock.
void kyMeterLuaValues(lua_State* state);
/// Replaces what the libraries of Lua offer to scripts. Raises Lua errors.
void kyLockLuaLibraries(lua_State* state);
/// Its parts: text functions, table functions, and those without a library.
void kyBoundLuaStrings(lua_State* state);
void kyBoundLuaTables(lua_State* state);
void kyBoundLuaThreads(lua_State* state);
void kyBoundLuaBasics(lua_State* state);
/// "load" and "loadstring".
void kyBoundLuaLoading(lua_State* state);

/// Enters the function into the table at `table`, an absolute index.
void kySetLuaFunction(lua_State* state, int table, const char* name, lua_CFunction function);
/// Puts the wrapper, with Lua's own function as its upvalue, into its place, if there is one. The wrapper calls that
/// within its own call, so functions with upvalues, which scripts may have put there, are left out.
void kyWrapLuaFunction(lua_State* state, int table, const char* name, lua_CFunction wrapper);
/// As before, by one that charges for long texts and tables.
void kyMeterLuaFunction(lua_State* state, int table, const char* name);
