// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptDebugger.h"

#include "KyLuaEvaluation_p.h"
#include "KyLuaThreads_p.h"
#include "KyScriptDebugger_p.h"
#include "KyScriptEngine.h"
#include "KyScriptRunner_p.h"

#include <algorithm>
#include <utility>

namespace {

constexpr char cNothingStopped[] = "no script stands still";
constexpr char cNoFrame[] = "no such frame";
constexpr char cNoVariable[] = "no such variable";
constexpr char cNotWritable[] = "the variable cannot be written";
constexpr char cClosed[] = "the Lua state is closed";
constexpr char cEnded[] = "the script engine has ended";

using Kind = KyLuaReference::Kind;

/// A thread that has not begun has its function on the stack and no call.
bool findOutermostFunction(lua_State* thread, lua_Debug& record) {
    if (const int nbLevels = kyLuaNbLevels(thread); nbLevels > 0)
        return lua_getstack(thread, nbLevels - 1, &record) != 0 && lua_getinfo(thread, "S", &record) != 0;
    if (!lua_isfunction(thread, 1))
        return false;
    lua_pushvalue(thread, 1);
    return lua_getinfo(thread, ">S", &record) != 0;
}

std::string getThreadName(lua_State* thread, int number) {
    if (number == cKyLuaMainThread)
        return "main";
    lua_Debug record;
    if (!findOutermostFunction(thread, record))
        return "coroutine";
    return std::string("coroutine ") + record.short_src + ':' + std::to_string(std::max(record.linedefined, 0));
}

KyScriptThreadState getThreadState(lua_State* thread, const lua_State* stopped) {
    switch (kyLuaThreadState(thread)) {
    case KyLuaThreadState::eNew:
        return KyScriptThreadState::eNew;
    case KyLuaThreadState::eSuspended:
        return KyScriptThreadState::eSuspended;
    default:
        return !stopped || thread == stopped ? KyScriptThreadState::eRunning : KyScriptThreadState::eNormal;
    }
}

} // namespace

KyScriptDebugger::KyScriptDebugger(KyScriptEngine& engine)
    : mPrivate(std::make_shared<Private>(engine, *this)) {}

/// Operations under way may keep the rest for a while.
KyScriptDebugger::~KyScriptDebugger() {
    Private::msKnownRegistry = nullptr;
}

void KyScriptDebugger::setBreakingOnErrors(bool isBreaking) {
    mPrivate->isBreakingOnErrors = isBreaking;
}

bool KyScriptDebugger::isBreakingOnErrors() const {
    return mPrivate->isBreakingOnErrors;
}

void KyScriptDebugger::resume() {
    mPrivate->engine.resume();
}

void KyScriptDebugger::stepInto() {
    mPrivate->engine.step();
}

void KyScriptDebugger::stepOver() {
    mPrivate->wantedStep = Private::Step::eOver;
    mPrivate->engine.resume();
}

void KyScriptDebugger::stepOut() {
    mPrivate->wantedStep = Private::Step::eOut;
    mPrivate->engine.resume();
}

void KyScriptDebugger::pause() {
    mPrivate->isPauseWanted = true;
}

bool KyScriptDebugger::isStopped() const {
    return mPrivate->stopState != nullptr;
}

const KyScriptStop& KyScriptDebugger::getStop() const {
    return mPrivate->stop;
}

int KyScriptDebugger::Private::getNbHidden(lua_State* thread) const {
    return thread == stopThread ? kyLuaNbLevels(thread) - stopNbLevels + stopLevel : 0;
}

/// Without runs inside runs the engine's own calls are the outermost: a deep stack need not be walked through.
int KyScriptDebugger::Private::getNbTold(lua_State* thread) const {
    int nbTold = 0;
    if (nbRuns > 1) {
        forEachTold(thread, [&nbTold](int, const lua_Debug&) { return ++nbTold; });
        return nbTold;
    }
    const int nbHidden = getNbHidden(thread);
    int nbLevels = kyLuaNbLevels(thread);
    lua_Debug record;
    while (nbLevels > nbHidden && lua_getstack(thread, nbLevels - 1, &record) != 0 &&
           kyIsOwnLuaCall(kyLuaCFunction(thread, &record)))
        --nbLevels;
    return nbLevels - nbHidden;
}

bool KyScriptDebugger::Private::findFrame(lua_State* state, int thread, int level, KyLuaFrame& frame) const {
    luaL_checkstack(state, LUA_MINSTACK, "too many values");
    frame.thread = kyLuaPushThread(state, thread);
    int found = -1;
    const auto find = [&](int real, const lua_Debug& record) {
        if (level-- == 0) {
            found = real;
            frame.record = record;
        }
        return found < 0;
    };
    if (frame.thread && level >= 0)
        forEachTold(frame.thread, find);
    if (found >= 0)
        kyLuaNoteFrame(frame, found);
    return found >= 0;
}

std::vector<KyScriptThread> KyScriptDebugger::getThreads() const {
    std::vector<KyScriptThread> threads;
    const lua_State* const stopped = mPrivate->stopThread;
    const auto list = [&](lua_State* state) {
        kyLuaPushThreads(state);
        for (lua_pushnil(state); lua_next(state, -2) != 0; lua_pop(state, 1)) {
            lua_State* const thread = lua_tothread(state, -2);
            const auto number = static_cast<int>(lua_tointeger(state, -1));
            if (number == cKyLuaMainThread || thread == stopped || kyLuaThreadState(thread) != KyLuaThreadState::eDead)
                threads.push_back({number, getThreadName(thread, number), getThreadState(thread, stopped)});
        }
    };
    KyLuaFailure failure;
    if (isStopped())
        mPrivate->run(list, failure);
    else
        KyScriptRunner(mPrivate->engine).run(list);
    std::sort(threads.begin(), threads.end(), [](const auto& one, const auto& other) { return one.id < other.id; });
    return threads;
}

std::vector<KyScriptFrame> KyScriptDebugger::getFrames(int thread, int first, int count) const {
    first = std::max(first, 0);
    std::vector<KyScriptFrame> frames;
    KyLuaFailure failure;
    const auto list = [&](lua_State* state) {
        KyLuaFrame frame{kyLuaPushThread(state, thread), {}};
        if (!frame.thread)
            return;
        int level = 0;
        mPrivate->forEachTold(frame.thread, [&](int, const lua_Debug& record) {
            if (level++ < first)
                return true;
            frame.record = record;
            frames.emplace_back().level = level - 1;
            kyLuaDescribeFrame(frame, frames.back());
            return count <= 0 || static_cast<int>(frames.size()) < count;
        });
    };
    mPrivate->run(list, failure);
    return frames;
}

int KyScriptDebugger::getNbFrames(int thread) const {
    int nbFrames = 0;
    KyLuaFailure failure;
    const auto count = [&](lua_State* state) {
        if (lua_State* found = kyLuaPushThread(state, thread))
            nbFrames = mPrivate->getNbTold(found);
    };
    mPrivate->run(count, failure);
    return nbFrames;
}

std::vector<KyScriptScope> KyScriptDebugger::getScopes(int thread, int level) {
    std::vector<KyScriptScope> scopes;
    KyLuaInspector& inspector = mPrivate->inspector;
    KyLuaFrame frame;
    KyLuaFailure failure;
    const auto list = [&](lua_State* state) {
        if (!mPrivate->findFrame(state, thread, level, frame))
            return;
        kyLuaPushFunction(state, frame);
        const int function = lua_gettop(state);
        const int nbLocals = lua_iscfunction(state, function) ? 0 : KyLuaInspector::countLocals(frame);
        scopes.push_back({"Locals", inspector.refer({Kind::eLocals, thread, level}), nbLocals});
        scopes.push_back({"Upvalues", inspector.refer({Kind::eUpvalues, thread, level}),
                          KyLuaInspector::countUpvalues(state, function)});
        if (lua_isfunction(state, function))
            lua_getfenv(state, function);
        else
            lua_pushvalue(state, LUA_GLOBALSINDEX);
        scopes.push_back({"Globals", inspector.referToValue(state, -1, {Kind::eValue, thread, level}),
                          KyLuaInspector::count(state, -1)});
    };
    mPrivate->run(list, failure);
    return scopes;
}

std::vector<KyScriptVariable> KyScriptDebugger::getVariables(int reference, int first, int count) {
    std::vector<KyScriptVariable> variables;
    const auto self = mPrivate;
    const KyLuaReference* found = self->inspector.find(reference);
    if (!found)
        return variables;
    const KyLuaReference origin = *found;
    KyLuaFrame frame;
    KyLuaFailure failure;
    const auto list = [&](lua_State* state) {
        if (self->findFrame(state, origin.thread, origin.level, frame) || origin.kind == Kind::eValue)
            self->inspector.list(state, reference, frame, {std::max(first, 0), count}, variables);
    };
    self->run(list, failure);
    return variables;
}

bool KyScriptDebugger::setVariable(int reference, const std::string& name, const std::string& expression,
                                   KyScriptVariable& result) {
    result = {};
    result.name = name;
    const auto self = mPrivate;
    KyLuaInspector& inspector = self->inspector;
    const KyLuaReference* found = inspector.find(reference);
    if (!found || !isStopped()) {
        result.value = found ? cNothingStopped : cNoVariable;
        return false;
    }
    const KyLuaReference origin = *found;
    const auto handle = self->engine.mHandle;
    KyLuaFrame frame;
    KyLuaEvaluation evaluation(&frame, expression);
    KyLuaFailure failure{cNoFrame, {}};
    bool isDone = false;
    const auto assign = [&](lua_State* state) {
        if (!self->findFrame(state, origin.thread, origin.level, frame))
            return;
        failure.message = cNoVariable;
        if (!inspector.push(state, reference, frame, name) || !*handle)
            return;
        evaluation.run(state);
        if (!*handle)
            return;
        failure.message = cNoFrame;
        if (origin.kind != Kind::eValue && !kyLuaFindAgain(frame))
            return;
        failure.message = cNotWritable;
        isDone = inspector.assign(state, reference, frame, name) && *handle;
        // An entry that was given nil is no more.
        if (isDone && !inspector.push(state, reference, frame, name))
            lua_pushnil(state);
        if (isDone && *handle)
            inspector.describe(state, -1, origin, result);
    };
    isDone = self->evaluateApart(assign, failure) && isDone;
    if (!isDone)
        result.value = *handle ? failure.message : cEnded;
    if (*handle)
        self->tellChange();
    return isDone;
}

bool KyScriptDebugger::evaluate(int thread, int level, const std::string& expression, KyScriptVariable& result) {
    result = {};
    result.name = expression;
    const auto self = mPrivate;
    if (thread == 0 && !isStopped())
        return self->evaluateGlobally(expression, result);
    const auto handle = self->engine.mHandle;
    KyLuaFrame frame;
    KyLuaEvaluation evaluation(thread == 0 ? nullptr : &frame, expression);
    KyLuaFailure failure;
    const auto evaluateThere = [&](lua_State* state) {
        if (thread != 0 && !self->findFrame(state, thread, level, frame)) {
            lua_pushstring(state, cNoFrame);
            lua_error(state);
        }
        evaluation.run(state);
        if (*handle)
            self->inspector.describe(state, -1, {Kind::eValue, thread, level}, result);
    };
    failure.message = cNothingStopped;
    const bool isDone = self->evaluateApart(evaluateThere, failure);
    if (!isDone)
        result.value = *handle ? failure.message : cEnded;
    if (*handle)
        self->tellChange();
    return isDone;
}

bool KyScriptDebugger::Private::evaluateGlobally(const std::string& expression, KyScriptVariable& result) {
    KyScriptRunner runner(engine);
    KyLuaEvaluation evaluation(nullptr, expression);
    const auto evaluateThere = [&](lua_State* state) {
        evaluation.run(state);
        if (!runner.getEngine())
            return;
        inspector.describe(state, -1, {}, result);
        result.reference = 0;
        inspector.clear(state);
    };
    const auto self = debugger.mPrivate;
    KyLuaFailure failure;
    bool isDone = false;
    const auto evaluateApart = [&](lua_State* state) {
        isDone = callApart(state, evaluateThere, failure);
        if (!isDone)
            runner.editFailure().message = failure.message;
    };
    const Depth depth;
    const Evaluating evaluating(*this);
    isDone = runner.run(evaluateApart) && isDone && runner.getEngine();
    if (!isDone)
        result.value = !runner.isOpen() ? cClosed : runner.getEngine() ? runner.editFailure().message : cEnded;
    return isDone;
}

void KyScriptDebugger::interrupt() {
    mPrivate->interruptedNumber = mPrivate->evaluationNumber.load();
}

lua_State* KyScriptDebugger::editStoppedThread() const {
    return mPrivate->stopState;
}

void KyScriptDebugger::Private::tellChange() {
    if (!stopState || std::exchange(isTellingChange, true))
        return;
    const auto handle = engine.mHandle;
    if (isWatched())
        showStop();
    callHost([this] { debugger.changedSignal.send(); });
    if (*handle)
        isTellingChange = false;
}

void KyScriptDebugger::attach() {
    if (++mPrivate->nbAttached > 1 || mPrivate->engine.mHasHook)
        return;
    mPrivate->engine.setHook();
    mPrivate->isHookBorrowed = true;
}

void KyScriptDebugger::detach() {
    if (mPrivate->nbAttached == 0 || --mPrivate->nbAttached > 0)
        return;
    mPrivate->isPauseWanted = false;
    mPrivate->forgetStep();
    mPrivate->engine.mStepFlag = false;
    if (std::exchange(mPrivate->isHookBorrowed, false))
        mPrivate->engine.removeHook();
}
