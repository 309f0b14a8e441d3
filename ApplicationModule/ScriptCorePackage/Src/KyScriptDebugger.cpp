// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptDebugger.h"

#include "KyLuaEvaluation_p.h"
#include "KyLuaThreads_p.h"
#include "KyScriptDebugger_p.h"
#include "KyScriptEngine.h"
#include "KyScriptRunner_p.h"

#include <algorithm>

namespace {

constexpr char cNothingStopped[] = "no script stands still";
constexpr char cNoFrame[] = "no such frame";
constexpr char cNoVariable[] = "no such variable";
constexpr char cNotWritable[] = "the variable cannot be written";

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
    : mPrivate(std::make_unique<Private>(engine, *this)) {}

KyScriptDebugger::~KyScriptDebugger() = default;

void KyScriptDebugger::Private::setLines(const std::string& chunkName, const std::list<int>& newLines) {
    std::erase_if(conditions, [&chunkName](const auto& entry) { return entry.first.first == chunkName; });
    if (newLines.empty())
        engine.mBreakpoints.erase(chunkName);
    else
        engine.mBreakpoints[chunkName] = newLines;
    findLines();
}

void KyScriptDebugger::Private::findLines() {
    lines.reset();
    for (const auto& entry : engine.mBreakpoints)
        for (const int line : entry.second)
            lines.set(static_cast<std::size_t>(line) % lines.size());
}

void KyScriptDebugger::setBreakpoints(const std::string& chunkName,
                                      const std::vector<KyScriptBreakpoint>& breakpoints) {
    std::list<int> lines;
    for (const KyScriptBreakpoint& breakpoint : breakpoints)
        lines.push_back(breakpoint.line);
    mPrivate->setLines(chunkName, lines);
    for (const KyScriptBreakpoint& breakpoint : breakpoints)
        if (!breakpoint.condition.empty())
            mPrivate->conditions[{chunkName, breakpoint.line}] = breakpoint.condition;
}

std::vector<KyScriptBreakpoint> KyScriptDebugger::getBreakpoints(const std::string& chunkName) const {
    std::vector<KyScriptBreakpoint> breakpoints;
    const auto found = mPrivate->engine.mBreakpoints.find(chunkName);
    if (found == mPrivate->engine.mBreakpoints.end())
        return breakpoints;
    for (const int line : found->second) {
        const auto condition = mPrivate->conditions.find({chunkName, line});
        breakpoints.push_back({line, condition == mPrivate->conditions.end() ? "" : condition->second});
    }
    return breakpoints;
}

void KyScriptDebugger::clearBreakpoints() {
    mPrivate->engine.mBreakpoints.clear();
    mPrivate->conditions.clear();
    mPrivate->findLines();
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

int KyScriptDebugger::Private::getHiddenLevels(lua_State* thread) const {
    return thread == stopThread ? kyLuaNbLevels(thread) - stopNbLevels + stopLevel : 0;
}

int KyScriptDebugger::Private::getNbTold(lua_State* thread) const {
    const int nbHidden = getHiddenLevels(thread);
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
    return frame.thread && level >= 0 && level < getNbTold(frame.thread) &&
           lua_getstack(frame.thread, level + getHiddenLevels(frame.thread), &frame.record) != 0;
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
        const int nbHidden = mPrivate->getHiddenLevels(frame.thread);
        const int nbTold = mPrivate->getNbTold(frame.thread);
        const int last = count > 0 && count < nbTold - first ? first + count : nbTold;
        for (int level = first; level < last; ++level) {
            lua_getstack(frame.thread, level + nbHidden, &frame.record);
            frames.emplace_back().level = level;
            kyLuaDescribeFrame(frame, frames.back());
        }
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
    const KyLuaReference* found = mPrivate->inspector.find(reference);
    if (!found)
        return variables;
    const KyLuaReference origin = *found;
    KyLuaFrame frame;
    KyLuaFailure failure;
    const auto list = [&](lua_State* state) {
        if (mPrivate->findFrame(state, origin.thread, origin.level, frame) || origin.kind == Kind::eValue)
            mPrivate->inspector.list(state, reference, frame, {std::max(first, 0), count}, variables);
    };
    mPrivate->run(list, failure);
    return variables;
}

bool KyScriptDebugger::setVariable(int reference, const std::string& name, const std::string& expression,
                                   KyScriptVariable& result) {
    result = {};
    result.name = name;
    const KyLuaReference* found = mPrivate->inspector.find(reference);
    if (!found || !isStopped()) {
        result.value = found ? cNothingStopped : cNoVariable;
        return false;
    }
    const KyLuaReference origin = *found;
    KyLuaFrame frame;
    KyLuaEvaluation evaluation(&frame, expression);
    KyLuaFailure failure{cNoFrame, {}};
    bool isDone = false;
    const auto assign = [&](lua_State* state) {
        if (!mPrivate->findFrame(state, origin.thread, origin.level, frame))
            return;
        KyLuaInspector& inspector = mPrivate->inspector;
        failure.message = cNoVariable;
        if (!inspector.push(state, reference, frame, name))
            return;
        evaluation.run(state);
        failure.message = cNotWritable;
        isDone = inspector.assign(state, reference, frame, name);
        // An entry that was given nil is no more.
        if (isDone && !inspector.push(state, reference, frame, name))
            lua_pushnil(state);
        if (isDone)
            inspector.describe(state, -1, origin, result);
    };
    isDone = mPrivate->run(assign, failure) && isDone;
    if (!isDone)
        result.value = failure.message;
    return isDone;
}

bool KyScriptDebugger::evaluate(int thread, int level, const std::string& expression, KyScriptVariable& result) {
    result = {};
    result.name = expression;
    if (thread == 0 && !isStopped())
        return mPrivate->evaluateGlobally(expression, result);
    KyLuaFrame frame;
    KyLuaEvaluation evaluation(thread == 0 ? nullptr : &frame, expression);
    KyLuaFailure failure;
    const auto evaluateThere = [&](lua_State* state) {
        if (thread != 0 && !mPrivate->findFrame(state, thread, level, frame)) {
            lua_pushstring(state, cNoFrame);
            lua_error(state);
        }
        evaluation.run(state);
        mPrivate->inspector.describe(state, -1, {Kind::eValue, thread, level}, result);
    };
    failure.message = cNothingStopped;
    const bool isDone = mPrivate->run(evaluateThere, failure);
    if (!isDone)
        result.value = failure.message;
    return isDone;
}

bool KyScriptDebugger::Private::evaluateGlobally(const std::string& expression, KyScriptVariable& result) {
    KyScriptRunner runner(engine);
    KyLuaEvaluation evaluation(nullptr, expression);
    const auto evaluateThere = [&](lua_State* state) {
        evaluation.run(state);
        inspector.describe(state, -1, {}, result);
        result.reference = 0;
        inspector.clear(state);
    };
    const Depth depth;
    const bool isDone = runner.run(evaluateThere);
    if (!isDone)
        result.value = runner.editFailure().message;
    return isDone;
}

std::string KyScriptDebugger::getScriptPath(const std::string& chunkName) const {
    const auto found = mPrivate->scriptPaths.find(chunkName);
    return found == mPrivate->scriptPaths.end() ? std::string() : found->second;
}

std::string KyScriptDebugger::makeChunkName(const std::string& path) {
    return "@" + path.substr(path.find_last_of("/\\") + 1);
}
