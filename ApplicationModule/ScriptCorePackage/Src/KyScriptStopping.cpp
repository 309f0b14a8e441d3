// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptDebugger_p.h"

#include "KyLuaDebugger.h"
#include "KyLuaEvaluation_p.h"
#include "KyLuaThreads_p.h"
#include "KyResumeCoroutinesTask.h"
#include "KyScriptEngine.h"

#include "KyDynamicObject.h"
#include "KyException.h"

#include <chrono>
#include <cstdio>
#include <thread>

namespace {

constexpr char cCallstackCategory[] = "category=Callstack;";
constexpr std::chrono::milliseconds cWaitTime{1};

/// Its address is the key, in the registry, of the thread that steps.
char gStepKey = 0;

bool isLuaKind(const char* what) {
    return *what == 'L' || *what == 'm';
}

/// The innermost call of a script function; false when there is none.
bool findScriptCall(lua_State* state, lua_Debug& record) {
    for (int level = 0; lua_getstack(state, level, &record) != 0; ++level) {
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

/// What the host's code throws may not cross Lua.
template <class Callable>
void callHost(Callable callable) {
    try {
        callable();
    } catch (const std::exception& exception) {
        KyException::create(std::string("script debugger : ") + exception.what());
    } catch (...) {
        KyException::create("script debugger : unknown C++ exception");
    }
}

} // namespace

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
    Private* const self = msDepth > 0 ? nullptr : find(state);
    if (!self)
        return;
    if (record->event != LUA_HOOKLINE)
        return self->handleCall(state, record);
    self->trace.noteLine(record->currentline);
    const bool hasBreakpoint = self->hasLine(record->currentline);
    const bool isWanted = self->engine.mStepFlag || self->step != Step::eNone || self->isPauseWanted;
    if (hasBreakpoint || isWanted || self->engine.mDebugEntity->isWatched()) [[unlikely]]
        callHost([=] { self->handleLine(state, record); });
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
        if (isWatched())
            showCalls();
    });
}

bool KyScriptDebugger::Private::isWatched() const {
    KyDynamicObject& entity = *engine.mDebugEntity;
    return entity.isWatched() && entity.modifiedSignal().getNbConnections() > 0;
}

bool KyScriptDebugger::Private::needsToStop(lua_State* state, lua_Debug* record, KyScriptStop& found) {
    if (isAtBreakpoint(state, record, found))
        return true;
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
    if (!engine.hasBreakpoint(record->source, record->currentline))
        return false;
    found.reason = KyScriptStopReason::eBreakpoint;
    if (conditions.empty())
        return true;
    const auto condition = conditions.find({record->source, record->currentline});
    return condition == conditions.end() || meetsCondition(state, condition->second, found.text);
}

bool KyScriptDebugger::Private::meetsCondition(lua_State* state, const std::string& condition, std::string& error) {
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
    if (!kyProtectedCall(state, test, failure))
        error = failure.message;
    return isMet;
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
}

void KyScriptDebugger::Private::refreshEntity() {
    if (!trace.takeNews() || isWatched())
        return;
    showLine();
    showCalls();
    lua_State* const mainState = engine.mState.get();
    if (!mainState)
        return;
    lua_State* const running = KyLuaGuard::findRunning(mainState);
    lua_Debug record;
    if (running && findScriptCall(running, record))
        showVariables(running, running, record);
    else
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
    const Depth depth;
    const KyLuaRunning running(state);
    beginStop(state, thread, level, where);
    writeLine("break\n");
    callHost([this] { debugger.stoppedSignal.send(); });
    if (!wait(handle.get()))
        return;
    writeLine("resume\n");
    endStop();
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
    if (findScriptCall(thread, record)) {
        lua_getinfo(thread, "l", &record);
        stop.chunkName = record.source;
        stop.line = record.currentline;
        trace.setSource(record.source);
        trace.noteLine(record.currentline);
        showVariables(state, thread, record);
    }
    showLine();
    showCalls();
    trace.takeNews();
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
    beginStep(wantedStep.exchange(Step::eNone));
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
    if (step != Step::eNone && !run(keepThread, failure))
        step = Step::eNone;
}
