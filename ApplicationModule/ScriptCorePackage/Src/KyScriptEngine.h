// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyFunction.h"
#include "KyObject.h"
#include "KySignal.h"

#include <atomic>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

struct lua_Debug;
struct lua_State;
class KyCoroutineTable;
class KyDynamicObject;
class KyLuaDebugger;
class KyResumeCoroutinesTask;
class KyScriptDebugger;
class KyScriptFile;
class KyScriptFunctions;
class KyScriptPublications;
class KyScriptSandbox;

/// Owns the Lua 5.1 state of the process: runs script files and chunks, publishes objects of the object model as
/// globals, calls global Lua functions with fields, and resumes waiting coroutines every frame.
///
/// Made by initializeClass and reached by get(). Used from one thread, that of the main task manager. Operations may be
/// called from inside scripts, from slots and from the print callback: what runs then is not disturbed, and a state
/// that is closed or reset meanwhile lives on until the running script ends. Nothing that a script does throws or ends
/// the process; errors go as Lua's text to output(), the traceback of the last one stays in getLastTraceback().
///
/// ```
/// KyScriptEngine& engine = KyScriptEngine::get();
/// engine.bindInstance(&lamp, "lamp");
/// engine.executeChunk("lamp.Power = 2");
/// ```
class KYAPPLICATION_EXPORT KyScriptEngine : public KyObject, public KyHasSlots {
public:
    /// A C function of Lua.
    using LuaFunction = int (*)(lua_State*);
    /// Gets what output() is given.
    using PrintCallback = void (*)(const std::string& message);

    /// What bindInstance, bindFunction and unbindInstance return.
    enum BindResult { eInternalError = -2, eInvalidArgument = -1, eAlreadyBound = 0, eBound = 1 };

    /// Makes a further engine with a state of its own; get() stays the first.
    KyScriptEngine();
    KyScriptEngine(const KyScriptEngine&) = delete;
    KyScriptEngine& operator=(const KyScriptEngine&) = delete;
    ~KyScriptEngine() override;

    /// The engine made by initializeClass, which must have been called.
    static KyScriptEngine& get();
    /// As get(), null when there is none.
    static KyScriptEngine* find() { return msScriptEngine; }

    static void initializeClass();
    static void finalizeClass();
    static void initializeType();
    static void finalizeType();
    static const KyType* getType();
    static KyScriptEngine* cast(KyObject* object);
    static KyObject* factory();
    const KyType* getObjectType() const override;

    /// A further engine with the same instances published under the same names.
    KyObject* clone() const override;

    /// "boundSignal", "unboundSignal", then those of KyObject.
    KySignalBase* editSignal(unsigned index) override;
    const std::string& getSignalName(unsigned index) const override;
    using KyObject::editSignal;

    /// The main thread of the state, null once closed. For the Lua C interface only: a host must not use a luabind of
    /// its own on it. Code that a host runs on it directly counts as not running for the engine's operations.
    lua_State* editLuaState() { return mState.get(); }
    /// Closes the state and opens a new one, as after construction: publications, functions, class bindings and
    /// coroutines are gone, the debug hook stays. KyLuaBinder::bind, KyQtLuaBinding::bind and the sandbox must be
    /// called again.
    void resetLuaState();
    /// Withdraws every publication with its signal, deletes the bound functions and closes the state, at once or when
    /// the script that runs has ended. Operations fail until resetLuaState.
    void closeLuaState();

    /// Runs a file, given as a URL or a local path, with its directory as current directory. False when it is not
    /// local, or after the error went to output().
    bool executeScript(const std::string& path);
    /// As executeScript; the script's results, none on failure. See KyLuaBinder::checkField.
    std::vector<KyField> executeScriptWithReturnValues(const std::string& path);
    /// Runs a text, whole: bytes behind a zero are not dropped in silence.
    bool executeChunk(const std::string& chunk);
    /// With a name for messages and the debugger; "@" in front marks a file name. A list of breakpoint lines that is
    /// not empty replaces the breakpoints of that name.
    bool executeChunk(const std::string& chunk, const std::string& chunkName, const std::list<int>& breakpoints);
    /// Appends the chunk's results.
    bool executeChunktWithReturnValues(const std::string& chunk, std::vector<KyField>& results);
    /// Runs a chunk up to its first yield; it goes on every frame, its yield returning the seconds gone by. True when
    /// it yielded or ended. After an error its thread stays on the stack until the next operation.
    bool executeChunkAsCoroutine(const std::string& chunk);
    /// Calls a global function and appends its results. False when there is none, or after an error. Clears the Lua
    /// stack unless scripts are running.
    bool callLuaFunction(const std::string& name, const std::vector<KyField>& arguments, std::vector<KyField>& results);
    /// Calls a function of the Lua registry without arguments.
    bool callLuaFunction(int reference);
    /// Loads without running; `error` is Lua's message, unchanged on success.
    bool checkChunkSyntax(const std::string& chunk, std::string& error) const;
    /// As checkChunkSyntax, for a file.
    bool checkScriptSyntax(const std::string& path, std::string& error) const;

    /// Sets a global, whatever its name and the metatable of _G. Integers beyond 2^53 lose digits. Errors go to
    /// output().
    void setLuaVariable(const std::string& name, const KyField& value);
    /// Sets the global to nil.
    void removeLuaVariable(const std::string& name);

    /// Publishes an object, which stays the host's, as a global; it is withdrawn when the object ends or its name is
    /// taken by another. 1; 0 when it is published already; -1 for null, a bad name or a keyword; -2 for an internal
    /// error.
    int bindInstance(KyObject* object, const std::string& name);
    /// 1, or -1 when it is not published.
    int unbindInstance(KyObject* object);
    int unbindInstance(const std::string& name);
    /// `name` is unchanged when it is not published.
    bool isInstanceBound(KyObject* object, std::string& name) const;
    /// Null when nothing is published under the name.
    KyObject* getInstance(const std::string& name) const;
    /// Publishes a function, owned by the engine from result 1 on. Several under one name are overloads, the best
    /// fitting is called. 0 for the same pointer again; -1 for null, a bad name or a keyword; -2 for an internal error.
    int bindFunction(const std::string& name, KyFunction* function);
    /// The functions bound under the name, null when there are none.
    const std::vector<const KyFunction*>* findFunctions(std::string_view name) const;
    /// Makes the type a Lua class, with its parents. False when it is bound already or not everything of it could be.
    bool bindClass(const KyType& type);
    /// Binds every class of the type registry that is not bound yet.
    void bindAllClasses();
    /// In the present state.
    bool isClassBound(const KyType& type) const;
    /// Called by the class binding for each class that it binds in the present state.
    void addBoundClass(const KyType& type);
    /// Name of the bound class of that C++ type; false, and `name` unchanged, when there is none.
    bool getBoundTypeName(const std::type_info* type, std::string& name) const;

    /// @{
    /// What makes an object for a script, the default at the start; classes bound with null have nothing that does.
    void setInstanceCreator(LuaFunction creator) { mInstanceCreator = creator; }
    LuaFunction getInstanceCreator() const { return mInstanceCreator; }
    /// @}
    /// Null leaves the creator to report the failure.
    void setInstanceCreatorFallback(LuaFunction fallback) { mInstanceCreatorFallback = fallback; }
    LuaFunction getInstanceCreatorFallback() const { return mInstanceCreatorFallback; }
    /// @{
    /// What ends an object for a script, the default at the start; classes bound with null have nothing that does.
    void setInstanceDestructor(LuaFunction destructor) { mInstanceDestructor = destructor; }
    LuaFunction getInstanceDestructor() const { return mInstanceDestructor; }
    /// @}
    /// Lua C functions, with the class's type record as first upvalue.
    static int defaultInstanceCreator(lua_State* state);
    /// @{
    /// See defaultInstanceCreator.
    static int defaultInstanceDestructor(lua_State* state);
    static int defaultInstanceGarbageCollection(lua_State* state);
    static int fallbackCreatorConstructor(lua_State* state);
    static int fallbackCreatorFail(lua_State* state);
    /// @}
    /// The object that the best fitting constructor makes from the arguments at index 2 and above; false when none
    /// fits.
    static bool findAndCallConstructor(lua_State* state, const KyType* type, KyField& result);

    /// Null sends errors to KyException::create.
    static void setPrintCallback(PrintCallback callback) { msPrintCallback = callback; }
    /// Sends a line to the print callback, or without one to KyException::create.
    static void output(const std::string& message);
    /// Whether the results of every chunk and script are printed by the scripts' print.
    void setReturnValuesOutput(bool areOutput) { mAreReturnValuesOutput = areOutput; }
    /// See setReturnValuesOutput.
    bool areReturnValuesOutput() const { return mAreReturnValuesOutput; }
    /// Where the last error of a chunk, a call or a coroutine happened, innermost call first; empty when there was
    /// none.
    const std::string& getLastTraceback() const { return mLastTraceback; }
    /// Writes the stack to output(); a null state is the single engine's. Returns 0.
    static int dumpStack(lua_State* state, const std::string& context);
    /// True for an empty stack; reports one that is not. A null state is the engine's own.
    bool assertEmptyStack(lua_State* state, const std::string& context) const;
    /// Names that cannot be published.
    static const std::vector<std::string>& getLuaKeywords() { return msLuaKeywords; }

    /// Number of waiting coroutines; one registered twice counts twice.
    unsigned getNbCoroutines() const;
    /// Resumes every waiting coroutine once with the seconds gone by; those that end or fail are taken out.
    void resumeCoroutines(double elapsedSeconds);

    /// Installs the debug hook on the state and on every waiting coroutine; it stays through resetLuaState.
    void setHook();
    /// Takes the debug hook off again.
    void removeHook();
    /// The debug hook. At a breakpoint, and after step(), a script stops at a line: "break" goes to the standard
    /// output, the debugger's wait() is called over and over until resume() or step(), then "resume" follows.
    static void hook(lua_State* state, lua_Debug* record);
    /// Lets a stopped script run on. Any thread.
    void resume() { mResumeFlag = true; }
    /// Stops at the next line. Any thread.
    void step() { mStepFlag = true; }
    /// Whether a script stops at that line.
    bool needToBreak(const std::string& chunkName, int line) const;
    /// Forgets all breakpoints of the chunk.
    void clearBreakpoints(const std::string& chunkName);
    /// Files the local variables of the function of the record, or the globals, as attributes of the debug entity.
    void getLocalVariables(lua_State* state, lua_Debug* record);
    /// See getLocalVariables.
    void getGlobalVariables(lua_State* state, lua_Debug* record);
    /// Not owned; null is allowed at any time.
    void setLuaDebugger(KyLuaDebugger* debugger) { mDebugger = debugger; }
    KyLuaDebugger* getLuaDebugger() const { return mDebugger; }
    /// Breakpoints with conditions, further steps, frames and variables of scripts that stand still.
    KyScriptDebugger& editDebugger() { return *mScriptDebugger; }
    /// Whether a script of this engine stands still.
    bool isStopped() const;
    /// Bounds what scripts may reach and use up; nothing before KyScriptSandbox::enable.
    KyScriptSandbox& editSandbox() { return *mSandbox; }
    /// Holds the debugger's parameters as attributes; null while the engine ends. They are brought up to date where
    /// somebody can see them: when a script stops, at every line and call while the entity's modified signal is
    /// connected, and by this call itself, also from inside a script. A run that nobody looked at leaves its last line,
    /// source and calls here and the present globals, but no locals.
    KyDynamicObject* getDebugEntity() const;
    /// The parameter of that name in a category such as "category=Locals;", made as an empty text when it is not there.
    const KyAttributeInterface* getOrCreateLuaDebuggerParameter(const std::string& name, const std::string& category);
    /// Null for a value of no type.
    const KyAttributeInterface* addOrEditLuaDebuggerParameter(const std::string& name, const KyField& value,
                                                              const std::string& category);

    /// Sent after an object has been published or withdrawn, with its name.
    KySignal<KyObject*, const std::string&> boundSignal{"boundSignal"};
    /// See boundSignal.
    KySignal<KyObject*, const std::string&> unboundSignal{"unboundSignal"};

private:
    friend class KyScriptDebugger;
    friend class KyScriptPublications;
    friend class KyScriptRunner;
    friend class KyScriptSandbox;

    static void staticInitialize();
    static void staticFinalize();
    static void fillLuaKeywords();

    void copyFrom(KyScriptEngine* other);
    void prepareLuaState();
    void installHook();
    void closeNow();
    bool executeFile(const KyScriptFile& file, std::vector<KyField>* results);
    bool hasBreakpoint(std::string_view chunkName, int line) const;
    void fileLocals(lua_State* state, lua_State* thread, const lua_Debug& record);
    void fileVariables(const std::map<std::string, KyField, std::less<>>& variables, const std::string& category);
    void typeRemovedSlot(const KyType* type);

    std::shared_ptr<KyScriptEngine*> mHandle;
    std::shared_ptr<lua_State> mState;
    std::unique_ptr<KyScriptPublications> mPublications;
    std::unique_ptr<KyScriptFunctions> mFunctions;
    LuaFunction mInstanceCreator = &defaultInstanceCreator;
    LuaFunction mInstanceCreatorFallback = &fallbackCreatorConstructor;
    LuaFunction mInstanceDestructor = &defaultInstanceDestructor;
    std::unique_ptr<KyResumeCoroutinesTask> mResumeTask;
    std::unique_ptr<KyCoroutineTable> mCoroutines;
    std::vector<const KyType*> mBoundClasses;
    bool mAreReturnValuesOutput = false;
    bool mIsClosing = false;
    bool mHasHook = false;
    std::map<std::string, std::list<int>, std::less<>> mBreakpoints;
    std::unique_ptr<KyScriptDebugger> mScriptDebugger;
    std::unique_ptr<KyScriptSandbox> mSandbox;
    std::unique_ptr<KyDynamicObject> mDebugEntity;
    KyLuaDebugger* mDebugger = nullptr;
    std::atomic<bool> mResumeFlag = false;
    std::atomic<bool> mStepFlag = false;
    std::string mLastTraceback;

    static KyScriptEngine* msScriptEngine;
    static std::vector<std::string> msLuaKeywords;
    static PrintCallback msPrintCallback;
    static const KyType* msType;
    static bool msIsClassInitialized;
};
