// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptSandbox.h"

#include "KyLuaClass_p.h"
#include "KyLuaThreads_p.h"
#include "KyProcessMemory_p.h"
#include "KyScriptDebugger_p.h"
#include "KyScriptEngine.h"
#include "KyScriptRunner_p.h"
#include "KyScriptSandbox_p.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

/// A run that begins with a full state may allocate so much, up to the margin beyond the limit.
constexpr std::size_t cLeeway = std::size_t{256} << 10;
constexpr std::size_t cMargin = std::size_t{4} << 20;
/// Units of work between two looks at the clock.
constexpr std::uint64_t cUnitsPerLook = KyLuaMemory::cMaxInterval;
constexpr std::chrono::milliseconds cProcessInterval{2};
constexpr char cCutMark[] = "...";

using Private = KyScriptSandbox::Private;

Private::Clock::duration toDuration(double seconds) {
    constexpr double cMaxSeconds = 1e9;
    const std::chrono::duration<double> wanted(std::clamp(seconds, 0.0, cMaxSeconds));
    return std::chrono::duration_cast<Private::Clock::duration>(wanted);
}

void cut(std::string& text, std::size_t size) {
    if (text.size() > size)
        text.replace(size, std::string::npos, cCutMark);
}

KyLuaMemory* getMemory(lua_State* state) {
    void* data = nullptr;
    lua_getallocf(state, &data);
    return static_cast<KyLuaMemory*>(data);
}

} // namespace

KyScriptSandbox::KyScriptSandbox(KyScriptEngine& engine)
    : mPrivate(std::make_unique<Private>(engine)) {}

KyScriptSandbox::~KyScriptSandbox() = default;

bool KyScriptSandbox::enable(const KyScriptLimits& limits) {
    KyScriptEngine& engine = mPrivate->engine;
    lua_State* const state = engine.editLuaState();
    if (!state || KyLuaGuard::findRunning(state))
        return false;
    if (!std::exchange(mPrivate->isEnabled, true))
        ++Private::msNbEnabled;
    mPrivate->limits = limits;
    // NaN is none.
    if (!(limits.seconds > 0))
        mPrivate->limits.seconds = 0;
    const std::size_t present = limits.processMemory == 0 ? 0 : kyGetProcessMemory();
    mPrivate->processCeiling = present == 0 ? KyLuaMemory::cUnlimited : present + limits.processMemory;
    mPrivate->nextProcessCheck = {};
    mPrivate->adoptState();
    // Locks the state; the second one runs under the hook.
    { const KyScriptRunner runner(engine); }
    engine.installHook();
    return !mPrivate->needsLock;
}

bool KyScriptSandbox::isEnabled() const {
    return mPrivate->isEnabled;
}

const KyScriptLimits& KyScriptSandbox::getLimits() const {
    return mPrivate->limits;
}

std::size_t KyScriptSandbox::getUsedMemory() const {
    return mPrivate->memory && mPrivate->engine.editLuaState() ? mPrivate->memory->getUsed() : 0;
}

std::uint64_t KyScriptSandbox::getNbInstructions() const {
    return mPrivate->limits.instructions - mPrivate->instructionsLeft;
}

bool KyScriptSandbox::isExhausted() const {
    return mPrivate->isExhausted;
}

Private::~Private() {
    if (isEnabled)
        --msNbEnabled;
}

Private* Private::find(lua_State* state) {
    KyScriptEngine* const engine = isAnyEnabled() ? kyLuaEngine(state) : nullptr;
    Private* const found = engine ? engine->editSandbox().mPrivate.get() : nullptr;
    return found && found->isEnabled ? found : nullptr;
}

void Private::adoptState() {
    lua_State* const state = engine.editLuaState();
    if (!isEnabled || !state)
        return;
    needsLock = true;
    if (memory && getMemory(state) == memory.get())
        return;
    shared = nullptr;
    memory = std::make_shared<KyLuaMemory>(state);
    std::get_deleter<KyLuaCloser>(engine.mState)->attic.push_back(memory);
}

std::shared_ptr<KyLuaMemory> Private::findMemory(lua_State* mainState) const {
    return isEnabled && getMemory(mainState) == memory.get() ? memory : nullptr;
}

void Private::beginRun(lua_State* mainState) {
    if (!isEnabled || getMemory(mainState) != memory.get())
        return;
    if (needsLock)
        lock(mainState);
    if (shared)
        shared->granted = nullptr;
    beginSlice(mainState);
    frameDeadline = deadline;
    if (memory->getUsed() + cLeeway > limits.memory)
        collect(mainState);
    const std::size_t least = std::min(memory->getUsed() + cLeeway, limits.memory + cMargin);
    memory->setCeiling(std::max(limits.memory, least));
    memory->setRunning(mainState);
    setCollectionMark();
    adaptProcessCeiling(mainState);
}

void Private::adaptProcessCeiling(lua_State* mainState) {
    const Clock::time_point now = Clock::now();
    if (processCeiling == KyLuaMemory::cUnlimited || now < nextProcessCheck)
        return;
    nextProcessCheck = now + cProcessInterval;
    runCeiling = processCeiling;
    if (kyGetProcessMemory() <= processCeiling)
        return;
    collect(mainState);
    runCeiling = std::max(processCeiling, kyGetProcessMemory() + cMargin);
}

/// A state that is not locked runs nothing.
void Private::lock(lua_State* mainState) {
    KyLuaFailure failure;
    const auto withhold = [this](lua_State* state) {
        kyLockLuaLibraries(state);
        kyWithholdLuaGlobals(state, engine, allowedGlobals);
        kyMeterLuaValues(state);
        shared = &KyLuaShared::get(state);
        shared->isSandboxed = true;
    };
    needsLock = !kyProtectedCall(mainState, withhold, failure);
    if (!needsLock)
        return;
    reason = "sandbox: the state cannot be locked: " + failure.message;
    KyScriptEngine::output(reason);
}

void Private::endRun(lua_State* mainState) {
    if (!isEnabled || !memory || getMemory(mainState) != memory.get())
        return;
    memory->setRunning(nullptr);
    memory->setCeiling(KyLuaMemory::cUnlimited);
    if (memory->takeRefusal() || isExhausted)
        collect(mainState);
}

void Private::beginSlice(lua_State* mainState) {
    if (!isEnabled || getMemory(mainState) != memory.get())
        return;
    const bool runsNothing = !needsLock && limits.seconds == 0;
    if (needsLock)
        lua_sethook(mainState, &KyScriptEngine::hook, getHookMask(), 1);
    else if (isExhausted || runsNothing)
        rearm(mainState, runsNothing ? 1 : memory->getInterval());
    isExhausted = needsLock;
    if (runsNothing)
        markExhausted("seconds", 0);
    isEndReported = false;
    instructionsLeft = limits.instructions;
    outputLeft = limits.output;
    unitsToClock = cUnitsPerLook;
    deadline = Clock::now() + toDuration(limits.seconds);
}

void Private::extend(Clock::duration pause) {
    deadline += pause;
    frameDeadline += pause;
}

void Private::trim(KyLuaFailure& failure) const {
    if (!isEnabled)
        return;
    if (isExhausted && failure.message.find(reason) == std::string::npos)
        failure.message = reason;
    cut(failure.message, limits.message);
    cut(failure.traceback, limits.message);
}

std::string Private::cutMessage(std::string text) const {
    cut(text, limits.message);
    return text;
}

int Private::getHookMask() const {
    return engine.mHasHook ? LUA_MASKCALL | LUA_MASKLINE | LUA_MASKCOUNT : LUA_MASKCOUNT;
}

/// Threads on which the run was ended count every instruction.
void Private::rearm(lua_State* mainState, int interval) const {
    KyLuaFailure failure;
    const auto install = [this, interval](lua_State* state) {
        kyLuaHookThreads(state, &KyScriptEngine::hook, getHookMask(), interval);
    };
    kyProtectedCall(mainState, install, failure);
}

void Private::count(lua_State* state) {
    if (!isEnabled)
        return;
    // What runs on after a reset has the memory that it had.
    const bool isPresent = getMemory(state) == memory.get();
    if (isPresent)
        memory->setRunning(state);
    const int interval = lua_gethookcount(state);
    spend(state,
          static_cast<std::uint64_t>(interval) + std::uint64_t{memory->takeAlarms()} * KyLuaMemory::cMaxInterval);
    checkClock(state);
    if (!isPresent)
        return;
    if (memory->getUsed() > collectionMark)
        collect(state);
    if (const int wanted = memory->getInterval(); wanted != interval)
        lua_sethook(state, lua_gethook(state), lua_gethookmask(state), wanted);
}

void Private::charge(lua_State* state, std::size_t units) {
    // What a person evaluates at a breakpoint is not counted.
    Private* const self = KyScriptDebugger::Private::isQuiet() ? nullptr : find(state);
    if (!self)
        return;
    self->spend(state, units);
    if (units < self->unitsToClock) {
        self->unitsToClock -= units;
        return;
    }
    self->unitsToClock = cUnitsPerLook;
    self->checkClock(state);
}

void Private::chargeCall(lua_State* state, std::size_t units) {
    if (Private* const self = find(state))
        self->unitsToClock = 0;
    charge(state, units);
}

void Private::spend(lua_State* state, std::uint64_t units) {
    if (isExhausted)
        raise(state, reason.c_str());
    if (units > instructionsLeft)
        exhaust(state, "instructions", static_cast<double>(limits.instructions));
    instructionsLeft -= units;
}

void Private::checkClock(lua_State* state) {
    const Clock::time_point now = Clock::now();
    if (now >= deadline)
        exhaust(state, "seconds", limits.seconds);
    if (now < nextProcessCheck || processCeiling == KyLuaMemory::cUnlimited)
        return;
    nextProcessCheck = now + cProcessInterval;
    if (kyGetProcessMemory() <= runCeiling)
        return;
    // The next run shall know of it.
    nextProcessCheck = {};
    exhaust(state, "bytes of the process", static_cast<double>(limits.processMemory));
}

void Private::collect(lua_State* state) {
    // Collecting needs memory itself, for a while.
    const std::size_t ceiling = memory->getCeiling();
    memory->setCeiling(memory->getUsed() + cMargin);
    const auto present = memory;
    KyLuaFailure failure;
    kyProtectedCall(
        state, [](lua_State* inner) { lua_gc(inner, LUA_GCCOLLECT, 0); }, failure);
    present->setCeiling(ceiling);
    setCollectionMark();
}

/// Lua itself collects when the memory has doubled, which may be too late.
void Private::setCollectionMark() {
    const std::size_t used = std::min(memory->getUsed(), limits.memory);
    collectionMark = used + (limits.memory - used) / 2;
}

void Private::markExhausted(std::string_view what, double limit) {
    constexpr std::size_t cCapacity = 128;
    char text[cCapacity];
    std::snprintf(text, sizeof(text), "sandbox: more than %.14g %.*s", limit, static_cast<int>(what.size()),
                  what.data());
    reason = text;
    isExhausted = true;
}

void Private::exhaust(lua_State* state, std::string_view what, double limit) {
    markExhausted(what, limit);
    raise(state, reason.c_str());
}

/// Each further instruction fails as well, so that no pcall holds it.
void Private::raise(lua_State* state, const char* text) {
    if ((lua_gethookmask(state) & LUA_MASKCOUNT) != 0)
        lua_sethook(state, lua_gethook(state), lua_gethookmask(state), 1);
    luaL_where(state, 0);
    if (lua_objlen(state, -1) == 0)
        luaL_where(state, 1);
    lua_pushstring(state, text);
    lua_concat(state, 2);
    lua_error(state);
    std::abort();
}
