// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptRunner_p.h"

#include "KyCoroutineTable_p.h"
#include "KyLuaConverters_p.h"
#include "KyScriptDebugger_p.h"
#include "KyScriptEngine.h"
#include "KyScriptFile_p.h"
#include "KyScriptSandbox_p.h"

#include "KyException.h"

#include <QString>

#include <atomic>
#include <utility>

namespace {

/// At host level, in a sandbox.
constinit thread_local KyScriptRunner* gLoggedRunner = nullptr;
constinit std::atomic<KyException::ReportHandler> gFormerHandler = nullptr;
constinit std::atomic<QtMessageHandler> gFormerQtHandler = nullptr;

/// Raw: scripts may have put metatables on the globals.
void pushGlobal(lua_State* state, const std::string& name) {
    lua_pushlstring(state, name.data(), name.size());
    lua_rawget(state, LUA_GLOBALSINDEX);
}

void raiseUnless(lua_State* state, bool loaded) {
    if (!loaded)
        lua_error(state);
}

void load(lua_State* state, const KyScriptSource& source) {
    kyCheckLuaText(state, source.text, source.name.c_str());
    raiseUnless(state, KyScriptSandbox::Private::load(state, source.text, source.name.c_str()) == 0);
}

void appendResults(lua_State* state, int nbResults, std::vector<KyField>& results) {
    luaL_checkstack(state, LUA_MINSTACK, "too many results");
    const int first = lua_gettop(state) - nbResults + 1;
    for (int i = 0; i < nbResults; ++i)
        results.push_back(kyLuaCheckField(state, first + i));
}

void pushArguments(lua_State* state, const std::vector<KyField>& arguments) {
    const auto count = arguments.size();
    if (count > LUAI_MAXCSTACK)
        luaL_error(state, "stack overflow (too many arguments)");
    luaL_checkstack(state, static_cast<int>(count) + LUA_MINSTACK, "too many arguments");
    for (const KyField& argument : arguments)
        kyLuaPushField(state, argument);
}

} // namespace

KyScriptRunner::KyScriptRunner(KyScriptEngine& engine)
    : mHandle(engine.mHandle)
    , mGuard(engine.mState) {
    if (!isOpen())
        return;
    KyScriptDebugger::Private& debugger = *engine.mScriptDebugger->mPrivate;
    KyScriptSandbox::Private& sandbox = *engine.mSandbox->mPrivate;
    ++debugger.nbRuns;
    mMemory = sandbox.findMemory(mGuard.getMainState());
    if (!isHostLevel())
        return;
    engine.mCoroutines->dropFailedThread(getState());
    debugger.beginRun();
    sandbox.beginRun(getState());
    if (mMemory)
        beginLog();
}

KyScriptRunner::~KyScriptRunner() {
    endLog();
    KyScriptEngine* const engine = getEngine();
    if (!engine || !isOpen())
        return;
    KyScriptDebugger::Private& debugger = *engine->mScriptDebugger->mPrivate;
    --debugger.nbRuns;
    if (!isHostLevel())
        return;
    debugger.endRun(getState());
    engine->mSandbox->mPrivate->endRun(getState());
}

/// The handler stands only while scripts run, since hosts set their own at any time.
void KyScriptRunner::beginLog() {
    mIsLogged = true;
    mOuter = std::exchange(gLoggedRunner, this);
    if (const auto former = KyException::setReportHandler(&log); former != &log)
        gFormerHandler = former;
    if (const auto former = qInstallMessageHandler(&logQt); former != &logQt)
        gFormerQtHandler = former;
}

void KyScriptRunner::endLog() {
    if (!mIsLogged)
        return;
    gLoggedRunner = mOuter;
    if (mOuter)
        return;
    if (const auto present = KyException::setReportHandler(gFormerHandler); present != &log)
        KyException::setReportHandler(present);
    if (const auto present = qInstallMessageHandler(gFormerQtHandler); present != &logQt)
        qInstallMessageHandler(present);
}

void KyScriptRunner::log(const std::string& text) {
    const KyException::ReportHandler former = gFormerHandler;
    // Another thread may report before the first run has noted it; what is reported in here goes to standard error.
    if (!former)
        return KyException::create(text);
    KyScriptEngine* const engine = gLoggedRunner ? gLoggedRunner->getEngine() : nullptr;
    if (!engine)
        return former(text);
    KyScriptSandbox::Private& sandbox = *engine->mSandbox->mPrivate;
    const std::string message = sandbox.cutMessage(text);
    if (sandbox.admitOutput(message.size() + 1))
        former(message);
}

void KyScriptRunner::logQt(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    const QtMessageHandler former = gFormerQtHandler;
    KyScriptEngine* const engine = gLoggedRunner ? gLoggedRunner->getEngine() : nullptr;
    const bool isAdmitted = !engine || type == QtFatalMsg ||
                            engine->mSandbox->mPrivate->admitOutput(static_cast<std::size_t>(text.size()) + 1);
    if (!isAdmitted || !former)
        return;
    // The host's handler may report it once more.
    const KyScriptOutputScope scope;
    former(type, context, text);
}

KyScriptOutputScope::KyScriptOutputScope()
    : mRunner(std::exchange(gLoggedRunner, nullptr)) {}

KyScriptOutputScope::~KyScriptOutputScope() {
    gLoggedRunner = mRunner;
}

bool KyScriptRunner::beginSlice() {
    KyScriptEngine* const engine = isHostLevel() && mMemory ? getEngine() : nullptr;
    if (!engine)
        return true;
    KyScriptSandbox::Private& sandbox = *engine->mSandbox->mPrivate;
    if (sandbox.isFrameOver())
        return false;
    sandbox.beginSlice(getState());
    return true;
}

int KyScriptRunner::resume(lua_State* thread, int nbArguments) {
    lua_setlevel(getState(), thread);
    mGuard.enterThread(thread);
    const int status = mMemory ? mMemory->resume(thread, nbArguments) : lua_resume(thread, nbArguments);
    mGuard.leaveThread();
    return status;
}

bool KyScriptRunner::makeRoom(lua_State* thread) const {
    return (mMemory ? mMemory->makeRoom(thread, 1) : lua_checkstack(thread, 1)) != 0;
}

lua_State* KyScriptRunner::pushOwnThread(lua_State* state) {
    lua_State* const thread = lua_newthread(state);
    lua_setlevel(state, thread);
    return thread;
}

bool KyScriptRunner::isCurrent() const {
    const KyScriptEngine* engine = getEngine();
    return engine && engine->mState.get() == mGuard.getMainState();
}

void KyScriptRunner::keepFailure() {
    KyScriptEngine* const engine = getEngine();
    if (!engine)
        return;
    engine->mSandbox->mPrivate->trim(mFailure);
    engine->mLastTraceback = mFailure.traceback;
}

/// The outermost failure of a run is always told.
bool KyScriptRunner::isReportAdmitted() const {
    KyScriptEngine* const engine = mMemory && !isHostLevel() ? getEngine() : nullptr;
    return !engine || engine->mSandbox->mPrivate->admitReport(mFailure.message.size() + 1);
}

void KyScriptRunner::report() {
    keepFailure();
    if (isReportAdmitted())
        KyScriptEngine::output(mFailure.message);
}

void KyScriptRunner::reportInternal() {
    keepFailure();
    if (!isReportAdmitted())
        return;
    const KyScriptOutputScope scope;
    KyException::create("Internal lua error : " + mFailure.message);
}

bool KyScriptRunner::execute(const KyScriptSource& source, std::vector<KyField>* results) {
    return executeLoaded([&source](lua_State* state) { load(state, source); }, results);
}

bool KyScriptRunner::executeFile(const std::string& fileName, std::vector<KyField>* results) {
    std::string buffer;
    return executeLoaded([&](lua_State* state) { raiseUnless(state, kyLoadLuaFile(state, fileName, buffer)); },
                         results);
}

bool KyScriptRunner::check(const KyScriptSource& source) {
    return run([&source](lua_State* state) { load(state, source); });
}

bool KyScriptRunner::checkFile(const std::string& fileName) {
    std::string buffer;
    return run([&](lua_State* state) { raiseUnless(state, kyLoadLuaFile(state, fileName, buffer)); });
}

template <class Load>
bool KyScriptRunner::executeLoaded(Load load, std::vector<KyField>* results) {
    if (!isOpen())
        return false;
    collectHostThreads();
    std::vector<KyField> converted;
    const bool succeeded = run([&](lua_State* state) {
        load(state);
        lua_call(state, 0, LUA_MULTRET);
        finishResults(state, results ? &converted : nullptr);
    });
    if (!mPrintError.empty())
        KyScriptEngine::output(mPrintError);
    if (!succeeded)
        report();
    else if (results)
        results->insert(results->end(), std::make_move_iterator(converted.begin()),
                        std::make_move_iterator(converted.end()));
    return succeeded;
}

void KyScriptRunner::finishResults(lua_State* state, std::vector<KyField>* results) {
    const int nbResults = lua_gettop(state);
    if (isCurrent())
        registerCoroutines(state, nbResults);
    const KyScriptEngine* engine = getEngine();
    if (engine && engine->areReturnValuesOutput() && nbResults > 0)
        printResults(state, nbResults);
    if (results)
        appendResults(state, nbResults, *results);
}

void KyScriptRunner::collectHostThreads() {
    const int top = isHostLevel() ? lua_gettop(getState()) : 0;
    for (int i = 1; i <= top; ++i)
        mHostThreads.push_back(lua_tothread(getState(), i));
}

/// Counts stack indices from the bottom, so what the host has there comes first.
void KyScriptRunner::registerCoroutines(lua_State* state, int nbResults) {
    KyCoroutineTable& coroutines = *getEngine()->mCoroutines;
    const int nbOfHost = static_cast<int>(mHostThreads.size());
    for (int i = 1; i <= nbResults; ++i) {
        if (i > nbOfHost)
            coroutines.add(state, i - nbOfHost);
        else if (lua_State* thread = mHostThreads[static_cast<std::size_t>(i - 1)])
            coroutines.addThread(state, thread);
    }
}

void KyScriptRunner::printResults(lua_State* state, int nbResults) {
    if (!lua_checkstack(state, nbResults + LUA_MINSTACK)) {
        mPrintError = "stack overflow (too many results to print)";
        return;
    }
    pushGlobal(state, "print");
    if (lua_isfunction(state, -1)) {
        for (int i = 1; i <= nbResults; ++i)
            lua_pushvalue(state, i);
        if (lua_pcall(state, nbResults, 0, 0) != 0)
            kyLuaErrorText(state, -1, mPrintError);
    }
    lua_settop(state, nbResults);
}

bool KyScriptRunner::callGlobal(const std::string& name, const std::vector<KyField>& arguments,
                                std::vector<KyField>& results) {
    if (!isOpen())
        return false;
    if (isHostLevel())
        lua_settop(getState(), 0);
    bool isFunction = false;
    std::vector<KyField> converted;
    const bool succeeded = run([&](lua_State* state) {
        pushGlobal(state, name);
        isFunction = lua_isfunction(state, -1);
        if (!isFunction)
            return;
        pushArguments(state, arguments);
        lua_call(state, static_cast<int>(arguments.size()), LUA_MULTRET);
        appendResults(state, lua_gettop(state), converted);
    });
    if (isHostLevel())
        lua_settop(getState(), 0);
    if (!succeeded)
        report();
    if (!succeeded || !isFunction)
        return false;
    results.insert(results.end(), std::make_move_iterator(converted.begin()), std::make_move_iterator(converted.end()));
    return true;
}

bool KyScriptRunner::callReference(int reference) {
    if (!isOpen())
        return false;
    bool isFunction = false;
    const bool succeeded = run([&](lua_State* state) {
        lua_rawgeti(state, LUA_REGISTRYINDEX, reference);
        isFunction = lua_isfunction(state, -1);
        if (isFunction)
            lua_call(state, 0, 0);
    });
    if (!succeeded)
        report();
    return succeeded && isFunction;
}
