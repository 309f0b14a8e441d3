// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class KyScriptEngine;
class KyType;

/// What scripts may use up. A run is what the host starts: a chunk, a script, a call, the slot of a signal, or one
/// resumption of a coroutine by the frame. Each may be 0: there is nothing then but what is said below.
struct KyScriptLimits {
    /// Bytes of the Lua state, with the classes bound in it. A run that begins with a full state gets up to 4 MiB more,
    /// so that a chunk can clean up.
    std::size_t memory = std::size_t{64} << 20;
    /// Bytes that the process may grow by from enable() on, for what scripts make outside Lua (objects, their texts and
    /// meshes); also counts what the host makes. A run that begins above gets up to 4 MiB more than there is then,
    /// after a collection, so that what was left behind does not end all further scripts; many such runs add up. 0 for
    /// no limit, as on systems that do not tell.
    std::size_t processMemory = std::size_t{1} << 30;
    /// Instructions of Lua a run; long work of library functions and calls of methods count as well.
    std::uint64_t instructions = 100'000'000;
    /// Seconds a run, by the wall clock, 1e9 at most. Time at breakpoints does not count. With 0 nothing runs; negative
    /// ones and NaN are taken for 0.
    double seconds = 2;
    /// Bytes that a run may print, with the errors of the slots in it and what KyException and Qt report on its thread.
    std::size_t output = std::size_t{1} << 20;
    /// Bytes of an error message and of a traceback; longer ones are cut.
    std::size_t message = std::size_t{16} << 10;
    /// Objects made by scripts that are alive at a time.
    std::size_t objects = 100'000;
};

/// The wall around scripts that nobody has read: of the engine that owns it (KyScriptEngine::editSandbox), nothing
/// before enable(). A script that takes too much, or reaches for what it has not, ends with an error on the engine's
/// output, whatever it wraps in pcall, and the engine goes on with the next one. One thread, that of the engine.
///
/// **Withheld:** All that nobody has reviewed. Scripts have the globals and the types of one list each: values, the
/// functions of Lua and of objects that change memory only, and types that do no more; what is entered or registered
/// later is not among them until somebody puts it there. So there is no `debug`, `io`, `package`, `require`, `module`,
/// `dofile`, `loadfile`, `newproxy`, `string.dump`, of `os` all but time, clock, date and difftime; no `class` of
/// luabind, whose finalizers nothing can stop; no `Resource`, `ResourceInformation`, `openUrl`, `loadUi`, application
/// object and Qt classes but the values `QString` and `QUrl`. Types that reach files, network, windows (but Ky2DView),
/// pixels, shaders or engines cannot be made (isTypeWithheld), and methods that do, open devices, quit the host or
/// cancel its work cannot be called, also not of objects that the host has published (isMemberWithheld). Bytecode is
/// refused everywhere, from the host as well. Scripts destroy only objects that scripts have made.
///
/// **What is the host's own:** Scripts use what its types declare, attributes, methods and signals, of objects that it
/// has published (KyScriptEngine::bindInstance), and of all objects of types that it gives away (allowType), which
/// they can also make. Other objects of its types they can hold and hand on, and use what reviewed types above them
/// declare. Functions that it has bound (KyScriptEngine::bindFunction) are theirs, and so are functions of Lua, values
/// and plain tables among the globals; C functions, classes of luabind and foreign userdata are taken away by enable()
/// unless named before (allowGlobal), and so is each global that leads to one: by keys and values of tables, however
/// deep, by their metatables, and by the environments of functions of Lua. `debug`, `io` and `package` are emptied as
/// well, also where the host holds them. What the host enters later stays until enable() is called again.
///
/// **Locked:** metatables of texts, instances and values read as "locked"; methods of texts (`("x"):rep(3)`) are those
/// of the library whatever scripts do to `string`. `setfenv` leaves the thread alone, and `collectgarbage` collects and
/// counts, no more.
///
/// **Bounded:** what KyScriptLimits says. Patterns, `string.rep`, `string.gsub`, `table.sort` and the like are versions
/// that count what they do; patterns nest 200 levels, spheres and the like have 512 segments, texts for objects 1 MiB
/// and calls of methods 64 arguments at most. The clock is looked at before every call of a method or of a value that
/// can be large, before every writing and every eighth reading of an attribute, and while a text is compiled. Slots
/// that scripts connected run bounded also where the collector or a method sends the signal. When the coroutines of a
/// frame have used up a run's seconds between them, the rest waits for the next frame and comes first there.
///
/// **Not promised:** A single call of a bound method runs to its end and may take what it takes. Scripts while another
/// stands still at a breakpoint, and the expressions of the debugger, are not bounded in time. Messages that drivers
/// write by themselves, and those of Qt outside of runs, are not counted. Graphics memory and what drawing costs are
/// not counted. Functions of Lua and coroutines of the host do what they do: nobody looks into their locals and
/// upvalues, and what calls a script back shows it its environment. What the host puts into classes and globals of the
/// list stays there. Whoever reaches an object reaches its attributes, neighbours and children: the host publishes what
/// it would give away. Scripts of one state are not kept from each other. They can tell the time.
///
/// ```
/// KyLuaBinder::bind();
/// KyQtLuaBinding::bind();
/// KyScriptEngine::get().editSandbox().enable();
/// KyScriptEngine::get().executeChunk("while true do end"); // output: sandbox: more than 100000000 instructions
/// ```
class KYAPPLICATION_EXPORT KyScriptSandbox {
public:
    /// Made by the engine.
    explicit KyScriptSandbox(KyScriptEngine& engine);
    KyScriptSandbox(const KyScriptSandbox&) = delete;
    KyScriptSandbox& operator=(const KyScriptSandbox&) = delete;
    ~KyScriptSandbox();

    /// Withholds, locks and bounds from now on, through every reset of the state. To be called again after the host has
    /// entered further functions or bindings; it then takes the new limits. False while scripts run, without a state,
    /// and when it failed, which is reported: no script is to be run then.
    ///
    /// There is no way back but an engine of its own: what has been withheld from a state cannot be given back to it.
    bool enable(const KyScriptLimits& limits = {});
    /// True after the first enable() that succeeded.
    bool isEnabled() const;
    /// Those of the last enable().
    const KyScriptLimits& getLimits() const;

    /// Bytes of the Lua state now; 0 before enable().
    std::size_t getUsedMemory() const;
    /// What the last run used up, or the present one so far.
    std::uint64_t getNbInstructions() const;
    /// Whether the last run, or the present one, was ended for using up too much.
    bool isExhausted() const;

    /// Gives a type of the host away. Types that derive from it are asked for each. From the next call of a script on.
    void allowType(const KyType& type);
    /// Whether allowType was called for it.
    bool isTypeAllowed(const KyType& type) const;
    /// Leaves a global that the host has entered by itself in its place, in every later enable().
    void allowGlobal(const std::string& name);

    /// Whether somebody has decided what scripts in a sandbox may do with the type; nothing, unless the host allows it,
    /// for all others.
    static bool isTypeReviewed(const KyType& type);
    /// Whether scripts in a sandbox cannot make objects of the type, unless the host allows it.
    static bool isTypeWithheld(const KyType& type);
    /// Whether scripts in a sandbox can never call that method of the type, or write that attribute.
    static bool isMemberWithheld(const KyType& type, std::string_view name);

    struct Private;

private:
    friend class KyScriptDebugger;
    friend class KyScriptEngine;
    friend class KyScriptPublications;
    friend class KyScriptRunner;

    std::unique_ptr<Private> mPrivate;
};
