// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptDebugger_p.h"

#include "KyLuaDebugger.h"
#include "KyLuaEvaluation_p.h"
#include "KyLuaThreads_p.h"
#include "KyResumeCoroutinesTask.h"
#include "KyScriptEngine.h"
#include "KyScriptSandbox_p.h"

#include "KyDynamicObject.h"
#include "KyException.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <thread>

namespace {

constexpr char cCallstackCategory[] = "category=Callstack;";
constexpr std::chrono::milliseconds cWaitTime{1};

constexpr char cLocalsCategory[] = "category=Locals;";
constexpr char cEndlessCondition[] = "the condition does not come to its end";
constexpr char cInterrupted[] = "the evaluation was interrupted";

/// What a condition may do, in instructions: some hundredths of a second. They are counted by so many.
constexpr int cConditionBudget = 1'000'000;
constexpr int cInstructionsPerCount = 1000;

/// Its address is the key, in the registry, of the thread that steps.
char gStepKey = 0;

bool isLuaKind(const char* what) {
    return *what == 'L' || *what == 'm';
}

/// The innermost call of a script function from the level on; false when there is none.
bool findScriptCall(lua_State* state, lua_Debug& record, int level = 0) {
    for (; lua_getstack(state, level, &record) != 0; ++level) {
        lua_getinfo(state, "S", &record);
        if (isLuaKind(record.what))
            return true;
    }
    return false;
}

void writeLine(const char* line) {
    std::fputs(line, stdout);
    std::fflush(stdout);
}

} // namespace

void KyScriptDebugger::Private::reportHost(const char* text) {
    KyException::create(std::string("script debugger : ") + text);
}

KyScriptDebugger::Private::Private(KyScriptEngine& owner, KyScriptDebugger& facade)
    : engine(owner)
    , debugger(facade) {
    msKnownRegistry = nullptr;
}

KyScriptDebugger::Private::~Private() {
    msKnownRegistry = nullptr;
}

void KyScriptDebugger::Private::meet(lua_State* state) {
    KyScriptEngine* const engine = kyLuaEngine(state);
    msKnown = engine ? engine->mScriptDebugger->mPrivate.get() : nullptr;
    msKnownRegistry = lua_topointer(state, LUA_REGISTRYINDEX);
}

/// Costs less than asking the state for its engine.
KyScriptDebugger::Private* KyScriptDebugger::Private::find(lua_State* state) {
    if (lua_topointer(state, LUA_REGISTRYINDEX) != msKnownRegistry) [[unlikely]]
        meet(state);
    return msKnown && msKnown->engine.mDebugEntity ? msKnown : nullptr;
}

void KyScriptDebugger::Private::handleEvent(lua_State* state, lua_Debug* record) {
    if (msDepth > 0) [[unlikely]]
        return spend(state, record);
    Private* const self = find(state);
    if (!self)
        return;
    // Coroutines that a condition left go on counting, also without a sandbox.
    if (record->event == LUA_HOOKCALL)
        return self->handleCall(state, record);
    if (record->event != LUA_HOOKLINE)
        return record->event == LUA_HOOKCOUNT ? self->engine.mSandbox->mPrivate->count(state) : void();
    self->trace.noteLine(record->currentline);
    const bool hasBreakpoint = self->hasLine(record->currentline);
    const bool isWanted = self->engine.mStepFlag || self->step != Step::eNone || self->isPauseWanted;
    if (hasBreakpoint || isWanted || self->engine.mDebugEntity->isWatched()) [[unlikely]]
        callHost([=] { self->handleLine(state, record); });
}

void KyScriptDebugger::Private::spend(lua_State* state, const lua_Debug* record) {
    const bool isCount = record->event == LUA_HOOKCOUNT;
    if (msIsBounded)
        msBudget = std::max(msBudget - (isCount ? cInstructionsPerCount : 1), 0);
    if (msIsBounded ? msBudget > 0 : !msEvaluating || msEvaluating->interruptedNumber != msEvaluating->evaluationNumber)
        return;
    // Each further instruction fails as well, so that no pcall holds it.
    if (isCount)
        lua_sethook(state, lua_gethook(state), lua_gethookmask(state), 1);
    lua_pushstring(state, msIsBounded ? cEndlessCondition : cInterrupted);
    lua_error(state);
}

KyScriptDebugger::Private::Evaluating::Evaluating(Private& debugger)
    : self(debugger)
    , outer(std::exchange(msEvaluating, &debugger)) {
    static int number = 0;
    if (self.nbEvaluations++ == 0)
        self.evaluationNumber = ++number;
}

KyScriptDebugger::Private::Evaluating::~Evaluating() {
    if (--self.nbEvaluations == 0)
        self.evaluationNumber = 0;
    msEvaluating = outer;
}

/// Without the engine's hook, calls and lines need not be told of coroutines that are made there and live on.
lua_State* KyScriptDebugger::Private::pushCountedThread(lua_State* state) const {
    lua_State* const thread = lua_newthread(state);
    lua_setlevel(state, thread);
    const int mask = engine.mHasHook ? LUA_MASKCALL | LUA_MASKLINE | LUA_MASKCOUNT : LUA_MASKCOUNT;
    lua_sethook(thread, &KyScriptEngine::hook, mask, cInstructionsPerCount);
    return thread;
}

void KyScriptDebugger::Private::handleLine(lua_State* state, lua_Debug* record) {
    if (isWatched()) {
        showLine();
        showVariables(state, state, *record);
    }
    KyScriptStop found;
    if (needsToStop(state, record, found))
        stopAt(state, state, 0, found);
}

void KyScriptDebugger::Private::handleCall(lua_State* state, lua_Debug* record) {
    lua_getinfo(state, "f", record);
    const lua_CFunction function = lua_tocfunction(state, -1);
    const void* const callee = lua_topointer(state, -1);
    lua_pop(state, 1);
    if (function && kyIsOwnLuaCall(function))
        return;
    if (!function)
        lua_getinfo(state, "S", record);
    callHost([&] {
        const char* const name = callNames.find(state, record, callee);
        if (function)
            trace.noteNativeCall(name);
        else
            trace.noteCall(record->what, record->source, name);
        const bool isNewFile = !function && *record->what == 'm' && files.noteChunk(record->source);
        if (isWatched())
            showCalls();
        if (isNewFile)
            debugger.scriptSignal.send(record->source, files.findPath(record->source));
    });
}

bool KyScriptDebugger::Private::isWatched() const {
    KyDynamicObject& entity = *engine.mDebugEntity;
    return entity.isWatched() && entity.modifiedSignal().getNbConnections() > 0;
}

bool KyScriptDebugger::Private::needsToStop(lua_State* state, lua_Debug* record, KyScriptStop& found) {
    const auto handle = engine.mHandle;
    if (isAtBreakpoint(state, record, found))
        return true;
    if (!*handle)
        return false;
    if (engine.mStepFlag || (step != Step::eNone && isStepDone(state))) {
        found.reason = KyScriptStopReason::eStep;
        return true;
    }
    found.reason = KyScriptStopReason::ePause;
    return isPauseWanted;
}

bool KyScriptDebugger::Private::isAtBreakpoint(lua_State* state, lua_Debug* record, KyScriptStop& found) {
    if (!hasLine(record->currentline))
        return false;
    lua_getinfo(state, "S", record);
    found.reason = KyScriptStopReason::eBreakpoint;
    const auto handle = engine.mHandle;
    if (engine.hasBreakpoint(record->source, record->currentline)) {
        const auto condition = conditions.find({record->source, record->currentline});
        if (condition == conditions.end() || meetsCondition(state, condition->second, found.text))
            return true;
    }
    const std::string* condition = *handle ? files.findCondition(record->source, record->currentline) : nullptr;
    return condition && meetsCondition(state, *condition, found.text);
}

/// It may end the engine, and is not met then; the text is its own, since evaluating may take the breakpoint away.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
bool KyScriptDebugger::Private::meetsCondition(lua_State* state, std::string condition, std::string& error) {
    if (condition.empty())
        return true;
    const auto handle = engine.mHandle;
    const Depth depth;
    KyLuaFrame frame{state, {}};
    lua_getstack(state, 0, &frame.record);
    KyLuaEvaluation evaluation(&frame, condition);
    KyLuaFailure failure;
    bool isMet = true;
    const auto test = [&](lua_State* inner) {
        evaluation.run(inner);
        isMet = lua_toboolean(inner, -1) != 0;
    };
    msBudget = cConditionBudget;
    msIsBounded = true;
    const bool isGood = callApart(state, test, failure);
    msIsBounded = false;
    if (!isGood)
        error = failure.message;
    return isMet && *handle;
}

bool KyScriptDebugger::Private::isStepDone(lua_State* state) const {
    if (state != stepThread)
        return kyLuaThreadState(stepThread) == KyLuaThreadState::eDead;
    return !kyLuaHasLevels(state, step == Step::eOver ? stepLevels + 1 : stepLevels);
}

void KyScriptDebugger::Private::showLine() {
    engine.addOrEditLuaDebuggerParameter("CurrentLine", KyField(trace.getLine()), cCallstackCategory);
}

void KyScriptDebugger::Private::showCalls() {
    engine.addOrEditLuaDebuggerParameter("Source", KyField(trace.getSource()), cCallstackCategory);
    engine.addOrEditLuaDebuggerParameter("Callstack", KyField(trace.makeCallstack()), cCallstackCategory);
}

void KyScriptDebugger::Private::showVariables(lua_State* state, lua_State* thread, lua_Debug& record) {
    const Depth depth;
    engine.fileLocals(state, thread, record);
    engine.getGlobalVariables(state, &record);
    areLocalsShown = true;
}

/// Evaluations and the host's scripts may have changed variables since the script stopped.
void KyScriptDebugger::Private::showStop() {
    lua_Debug record;
    if (findScriptCall(stopThread, record, kyLuaNbLevels(stopThread) - stopNbLevels))
        showVariables(stopState, stopThread, record);
    else
        engine.getGlobalVariables(stopState, nullptr);
}

void KyScriptDebugger::Private::hideLocals() {
    if (std::exchange(areLocalsShown, false))
        engine.fileVariables({}, cLocalsCategory);
}

void KyScriptDebugger::Private::refreshEntity() {
    if (stopState)
        return showStop();
    lua_State* const mainState = engine.mState.get();
    lua_State* const running = mainState ? KyLuaGuard::findRunning(mainState) : nullptr;
    if (!running)
        hideLocals();
    // What runs may have changed variables in the same line since they were shown last.
    const bool isOutdated = running ? trace.hasNews() : trace.takeNews();
    if (!isOutdated || isWatched())
        return;
    showLine();
    showCalls();
    lua_Debug record;
    if (running && findScriptCall(running, record))
        showVariables(running, running, record);
    else if (mainState)
        engine.getGlobalVariables(running ? running : mainState, nullptr);
}

void KyScriptDebugger::Private::handleError(lua_State* state, lua_State* thread, int level, int message) {
    Private* const self = msDepth > 0 ? nullptr : find(state);
    if (!self || !self->isBreakingOnErrors)
        return;
    lua_Debug record;
    if (lua_getstack(thread, level, &record) == 0 || kyIsOwnLuaCall(kyLuaCFunction(thread, &record)) ||
        !findScriptCall(thread, record))
        return;
    callHost([&] {
        KyScriptStop found;
        found.reason = KyScriptStopReason::eError;
        if (!kyLuaPlainText(thread, message, found.text))
            found.text = luaL_typename(thread, message);
        self->stopAt(state, thread, level, found);
    });
}

void KyScriptDebugger::Private::stopAt(lua_State* state, lua_State* thread, int level, const KyScriptStop& where) {
    const auto handle = engine.mHandle;
    const auto begin = KyScriptSandbox::Private::Clock::now();
    const Depth depth;
    const KyLuaRunning running(state);
    beginStop(state, thread, level, where);
    if (!*handle)
        return;
    writeLine("break\n");
    callHost([this] { debugger.stoppedSignal.send(); });
    if (!wait(handle.get()))
        return;
    writeLine("resume\n");
    endStop();
    if (!*handle)
        return;
    engine.mSandbox->mPrivate->extend(KyScriptSandbox::Private::Clock::now() - begin);
    callHost([this] { debugger.continuedSignal.send(); });
}

void KyScriptDebugger::Private::beginStop(lua_State* state, lua_State* thread, int level, const KyScriptStop& where) {
    engine.mResumeFlag = false;
    engine.mStepFlag = false;
    isPauseWanted = false;
    wantedStep = Step::eNone;
    step = Step::eNone;
    stopState = state;
    stopThread = thread;
    stopLevel = level;
    stopNbLevels = kyLuaNbLevels(thread);
    stop = where;
    KyLuaFailure failure;
    run([this](lua_State* inner) { stop.thread = kyLuaThreadNumber(inner, stopThread); }, failure);
    lua_Debug record;
    const bool isInScript = findScriptCall(thread, record);
    if (isInScript) {
        lua_getinfo(thread, "l", &record);
        stop.chunkName = record.source;
        stop.line = record.currentline;
        trace.setSource(record.source);
        trace.noteLine(record.currentline);
    }
    showLine();
    if (isInScript)
        showVariables(state, thread, record);
    showCalls();
}

bool KyScriptDebugger::Private::wait(KyScriptEngine** handle) {
    while (*handle && !(*handle)->mResumeFlag) {
        if ((*handle)->mStepFlag)
            break;
        if (KyLuaDebugger* host = (*handle)->mDebugger)
            callHost([host] { host->wait(); });
        std::this_thread::sleep_for(cWaitTime);
    }
    return *handle != nullptr;
}

void KyScriptDebugger::Private::endStop() {
    KyLuaFailure failure;
    run([this](lua_State* state) { inspector.clear(state); }, failure);
    const Step wanted = wantedStep.exchange(Step::eNone);
    if (wanted != Step::eNone && engine.mHasHook)
        beginStep(wanted);
    stopState = nullptr;
    stopThread = nullptr;
    stop = {};
    if (engine.mResumeTask)
        engine.mResumeTask->skipElapsedTime();
}

void KyScriptDebugger::Private::beginStep(Step kind) {
    step = kind;
    stepThread = stopThread;
    stepLevels = kyLuaNbLevels(stopThread) - stopLevel;
    KyLuaFailure failure;
    const auto keepThread = [this](lua_State* state) {
        lua_pushlightuserdata(state, &gStepKey);
        lua_pushthread(stepThread);
        if (stepThread != state)
            lua_xmove(stepThread, state, 1);
        lua_rawset(state, LUA_REGISTRYINDEX);
    };
    if (!run(keepThread, failure))
        forgetStep();
}

void KyScriptDebugger::Private::forgetStep() {
    step = Step::eNone;
    stepThread = nullptr;
    wantedStep = Step::eNone;
}

void KyScriptDebugger::Private::endRun(lua_State* mainState) {
    const bool isOfState =
        stepThread && lua_topointer(stepThread, LUA_REGISTRYINDEX) == lua_topointer(mainState, LUA_REGISTRYINDEX);
    const bool isWaiting = isOfState && kyLuaThreadState(stepThread) == KyLuaThreadState::eSuspended;
    if (isOfState && (!isWaiting || mainState != engine.mState.get()))
        forgetStep();
    if (areLocalsShown && engine.mDebugEntity && isWatched())
        callHost([this] { hideLocals(); });
}
