// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptEngine.h"

#include "KyCoroutineTable_p.h"
#include "KyLuaClass_p.h"
#include "KyLuaPrint_p.h"
#include "KyLuaStackText_p.h"
#include "KyLuaThreads_p.h"
#include "KyLuaValueTypes_p.h"
#include "KyResumeCoroutinesTask.h"
#include "KyScriptDebugger_p.h"
#include "KyScriptFile_p.h"
#include "KyScriptFunctions_p.h"
#include "KyScriptPublications_p.h"
#include "KyScriptRunner_p.h"
#include "KyScriptSandbox_p.h"

#include "KyCallSignatures.h"
#include "KyCast.h"
#include "KyDynamicObject.h"
#include "KyException.h"
#include "KyMainTaskManager.h"
#include "KyTypeBuilder.h"

#include <luabind/open.hpp>

#include <array>
#include <exception>
#include <utility>

KyScriptEngine* KyScriptEngine::msScriptEngine = nullptr;
std::vector<std::string> KyScriptEngine::msLuaKeywords;
KyScriptEngine::PrintCallback KyScriptEngine::msPrintCallback = nullptr;
const KyType* KyScriptEngine::msType = nullptr;
bool KyScriptEngine::msIsClassInitialized = false;

namespace {

/// Position and phase: coroutines see what the other tasks of the frame did.
constexpr int cTaskPosition = -1;
constexpr int cTaskPhase = 2;

constexpr unsigned cNbOwnSignals = 2;

void setRawGlobal(lua_State* state, const char* name, lua_CFunction function) {
    lua_pushstring(state, name);
    lua_pushcfunction(state, function);
    lua_rawset(state, LUA_GLOBALSINDEX);
}

int bindClassByName(lua_State* state) {
    const char* name = luaL_checkstring(state, 1);
    const KyType* type = KyType::getType(std::string_view(name));
    KyScriptEngine* engine = kyLuaEngine(state);
    lua_pushboolean(state, type && engine && kyBindLuaClass(state, *type, *engine));
    return 1;
}

} // namespace

KyScriptEngine::KyScriptEngine()
    : mHandle(std::make_shared<KyScriptEngine*>(this))
    , mPublications(std::make_unique<KyScriptPublications>(*this))
    , mFunctions(std::make_unique<KyScriptFunctions>())
    , mResumeTask(std::make_unique<KyResumeCoroutinesTask>(*this))
    , mCoroutines(std::make_unique<KyCoroutineTable>(*this))
    , mScriptDebugger(std::make_unique<KyScriptDebugger>(*this))
    , mSandbox(std::make_unique<KyScriptSandbox>(*this)) {
    resetLuaState();
    KyType::removedSignal().connect(this, &KyScriptEngine::typeRemovedSlot);
    KyMainTaskManager::get().addTask(mResumeTask.get(), cTaskPosition, cTaskPhase);
    mDebugEntity = std::make_unique<KyDynamicObject>();
}

KyScriptEngine::~KyScriptEngine() {
    notifyEnd();
    KyMainTaskManager::get().removeTask(mResumeTask.get());
    mResumeTask.reset();
    mDebugEntity.reset();
    // Also when a slot of a closing under way ends the engine: it does not come back to that.
    closeNow();
    *mHandle = nullptr;
}

KyScriptEngine& KyScriptEngine::get() {
    return *msScriptEngine;
}

void KyScriptEngine::initializeClass() {
    if (msIsClassInitialized)
        return;
    msIsClassInitialized = true;
    initializeType();
    staticInitialize();
}

void KyScriptEngine::finalizeClass() {
    if (!msIsClassInitialized)
        return;
    msIsClassInitialized = false;
    staticFinalize();
    finalizeType();
}

void KyScriptEngine::staticInitialize() {
    fillLuaKeywords();
    if (!msScriptEngine)
        msScriptEngine = new KyScriptEngine;
}

void KyScriptEngine::staticFinalize() {
    if (msScriptEngine)
        msScriptEngine->destroy();
    msScriptEngine = nullptr;
}

void KyScriptEngine::initializeType() {
    if (msType)
        return;
    KyObject::initializeType();
    msType = KyTypeBuilder<KyScriptEngine>("KyScriptEngine", KyObject::getType())
                 .factory()
                 .signal<&KyScriptEngine::boundSignal>("boundSignal")
                 .signal<&KyScriptEngine::unboundSignal>("unboundSignal")
                 .build();
    KyCallSignatures::add("KyScriptEngine", {"boundSignal(object, name)", "unboundSignal(object, name)"});
    KyCallSignatures::add(
        {}, {"bindClass(typeName: string): boolean -- Makes a type of object a class; false when there is none.",
             "class(name: string): fun(base: any) -- Begins a class of scripts: class 'Name' (Base).",
             "property(get: function, set?: function): any -- A property of a class of scripts.",
             "super(...: any) -- In a constructor of a class of scripts: the constructor of its base."});
}

void KyScriptEngine::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyScriptEngine::getType() {
    if (!msType)
        initializeType();
    return msType;
}

KyScriptEngine* KyScriptEngine::cast(KyObject* object) {
    return kyCast<KyScriptEngine>(object);
}

KyObject* KyScriptEngine::factory() {
    return new KyScriptEngine;
}

const KyType* KyScriptEngine::getObjectType() const {
    return getType();
}

KyObject* KyScriptEngine::clone() const {
    auto* copy = new KyScriptEngine;
    copy->copyFrom(const_cast<KyScriptEngine*>(this));
    return copy;
}

void KyScriptEngine::copyFrom(KyScriptEngine* other) {
    const auto instances = other->mPublications->getAll();
    for (const auto& [object, name] : instances)
        bindInstance(object, name);
}

KySignalBase* KyScriptEngine::editSignal(unsigned index) {
    if (index < cNbOwnSignals)
        return index == 0 ? &boundSignal : &unboundSignal;
    return index < getNbSignals() ? KyObject::editSignal(index - cNbOwnSignals) : nullptr;
}

const std::string& KyScriptEngine::getSignalName(unsigned index) const {
    if (index < cNbOwnSignals)
        return (index == 0 ? boundSignal : unboundSignal).getName();
    return KyObject::getSignalName(index < getNbSignals() ? index - cNbOwnSignals : index);
}

void KyScriptEngine::resetLuaState() {
    if (mIsClosing)
        return;
    const auto handle = mHandle;
    closeLuaState();
    if (!*handle)
        return;
    mState = kyOpenLuaState(mHandle);
    if (!mState)
        return KyException::create("Internal lua error : not enough memory");
    prepareLuaState();
    mSandbox->mPrivate->adoptState();
    if (mHasHook || mSandbox->isEnabled())
        installHook();
}

void KyScriptEngine::prepareLuaState() {
    KyScriptRunner runner(*this);
    const auto prepare = [](lua_State* state) {
        luaL_openlibs(state);
        setRawGlobal(state, "print", &kyLuaPrint);
        kyLuaPrepareThreads(state);
        setRawGlobal(state, "bindClass", &bindClassByName);
        luabind::open(state);
        kyBindValueTypes1(state);
        kyBindValueTypes2(state);
        kyBindValueTypes3(state);
        kyBindValueTypes4(state);
    };
    if (runner.run(prepare))
        return;
    mState.reset();
    runner.reportInternal();
}

void KyScriptEngine::closeLuaState() {
    if (!mIsClosing)
        closeNow();
}

void KyScriptEngine::closeNow() {
    mIsClosing = true;
    mScriptDebugger->mPrivate->forgetStep();
    const auto handle = mHandle;
    mPublications->withdrawAll();
    if (!*handle)
        return;
    KyLuaState state = std::exchange(mState, nullptr);
    auto functions = std::make_shared<KyScriptFunctions::Records>(mFunctions->takeAll());
    mCoroutines->clear();
    mBoundClasses.clear();
    mIsClosing = false;
    // A function that runs now may be one of them.
    if (state && KyLuaGuard::findRunning(state.get()))
        std::get_deleter<KyLuaCloser>(state)->attic.push_back(std::move(functions));
    functions.reset();
    state.reset();
}

bool KyScriptEngine::executeScript(const std::string& path) {
    const KyScriptFile file(path);
    return file.isLocal() && executeFile(file, nullptr);
}

std::vector<KyField> KyScriptEngine::executeScriptWithReturnValues(const std::string& path) {
    std::vector<KyField> results;
    const KyScriptFile file(path);
    if (file.isLocal())
        executeFile(file, &results);
    return results;
}

bool KyScriptEngine::executeFile(const KyScriptFile& file, std::vector<KyField>* results) {
    const std::string chunkName = "@" + file.getFileName();
    mScriptDebugger->mPrivate->files.noteScript(chunkName, file.getPath());
    KyScriptDebugger::Private::callHost([&] { mScriptDebugger->scriptSignal.send(chunkName, file.getPath()); });
    return KyScriptRunner(*this).executeFile(file.getFileName(), results);
}

bool KyScriptEngine::executeChunk(const std::string& chunk) {
    return KyScriptRunner(*this).execute({chunk, chunk}, nullptr);
}

bool KyScriptEngine::executeChunk(const std::string& chunk, const std::string& chunkName,
                                  const std::list<int>& breakpoints) {
    if (!breakpoints.empty())
        mScriptDebugger->mPrivate->setLines(chunkName, breakpoints);
    return KyScriptRunner(*this).execute({chunk, chunkName}, nullptr);
}

bool KyScriptEngine::executeChunktWithReturnValues(const std::string& chunk, std::vector<KyField>& results) {
    return KyScriptRunner(*this).execute({chunk, chunk}, &results);
}

bool KyScriptEngine::executeChunkAsCoroutine(const std::string& chunk) {
    return mCoroutines->launch(chunk);
}

bool KyScriptEngine::callLuaFunction(const std::string& name, const std::vector<KyField>& arguments,
                                     std::vector<KyField>& results) {
    return KyScriptRunner(*this).callGlobal(name, arguments, results);
}

bool KyScriptEngine::callLuaFunction(int reference) {
    return KyScriptRunner(*this).callReference(reference);
}

bool KyScriptEngine::checkChunkSyntax(const std::string& chunk, std::string& error) const {
    KyScriptRunner runner(const_cast<KyScriptEngine&>(*this));
    const bool isGood = runner.check({chunk, chunk});
    if (!isGood)
        error = runner.editFailure().message;
    return isGood;
}

bool KyScriptEngine::checkScriptSyntax(const std::string& path, std::string& error) const {
    KyScriptRunner runner(const_cast<KyScriptEngine&>(*this));
    const KyScriptFile file(path);
    const bool isGood = runner.checkFile(file.isLocal() ? file.getFileName() : path);
    if (!isGood)
        error = runner.editFailure().message;
    return isGood;
}

void KyScriptEngine::output(const std::string& message) {
    const KyScriptOutputScope scope;
    if (msScriptEngine)
        KyScriptDebugger::Private::callHost([&] { msScriptEngine->editDebugger().reportedSignal.send(message); });
    if (!msPrintCallback)
        return KyException::create(message);
    try {
        msPrintCallback(message);
    } catch (const std::exception& exception) {
        KyException::create(std::string("print callback : ") + exception.what());
    } catch (...) {
        KyException::create("print callback : unknown C++ exception");
    }
}

int KyScriptEngine::dumpStack(lua_State* state, const std::string& context) {
    if (!state && msScriptEngine)
        state = msScriptEngine->editLuaState();
    if (state)
        output(kyLuaStackText(state, context));
    return 0;
}

bool KyScriptEngine::assertEmptyStack(lua_State* state, const std::string& context) const {
    lua_State* const checked = state ? state : mState.get();
    const int top = checked ? lua_gettop(checked) : 0;
    if (top < 0)
        output("ALERT " + context + " !!!! you probably pop to much element from the stack");
    if (top > 0)
        dumpStack(checked, context);
    return top == 0;
}

unsigned KyScriptEngine::getNbCoroutines() const {
    return mCoroutines->size();
}

void KyScriptEngine::resumeCoroutines(double elapsedSeconds) {
    if (!isStopped())
        mCoroutines->resumeAll(elapsedSeconds);
}
