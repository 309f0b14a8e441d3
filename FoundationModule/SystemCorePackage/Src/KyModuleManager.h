// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The modules of the process: each library registers its initialiser and finaliser under a name
/// with the names of the modules that it needs, and the host initialises them all in order.
///
/// Registering only records, so that it is safe inside a library's entry, where the loader's lock
/// is held. The manager is never destroyed: entries and destructors of libraries may call it until
/// the very end. It is for one thread, the one that loads the libraries and runs the host.
///
///     const char* const cNeeded[] = {"KyFoundation/KyFoundation"};
///     KyModuleManager::get().registerModule("My/Module", cNeeded, 1, &initialise, &finalise);
///     KyModuleManager::get().initialize();
class KYFOUNDATION_EXPORT KyModuleManager {
public:
    /// Begins or ends a module.
    using Function = void (*)();

    KyModuleManager(const KyModuleManager&) = delete;
    KyModuleManager& operator=(const KyModuleManager&) = delete;

    /// The one manager of the process.
    static KyModuleManager& get();

    /// True after registerModule, before it is forgotten.
    [[nodiscard]] bool isRegistered(std::string_view name) const;
    /// True between its beginning and its end.
    [[nodiscard]] bool isInitialized(std::string_view name) const;

    /// Records a module; the texts are copied, either function may be null. False when the name is
    /// null, empty or already there.
    bool registerModule(const char* name, const char* const* prerequisites, unsigned nbPrerequisites,
                        Function initialise, Function finalise);

    /// Forgets a module. When it is initialised it is finalised first, and before it every
    /// initialised module that needs it. False when the name is unknown or the module is just being
    /// initialised.
    bool unregisterModule(const char* name);

    /// Initialises every registered module; one that fails does not keep the others from it.
    /// False when any failed.
    bool initialize();

    /// Initialises a module after its prerequisites; true when it is initialised already. An unknown
    /// module, a missing prerequisite, a cycle and an initialiser that throws are reported, and
    /// false is returned.
    bool initializeModule(std::string_view name);

    /// Finalises all initialised modules in the reverse order of their initialisation; they stay
    /// registered and may be initialised again.
    void finalize();

private:
    struct Module;

    KyModuleManager();
    ~KyModuleManager();

    [[nodiscard]] Module* find(std::string_view name) const;
    bool initializePrerequisites(const Module& module);
    void finalizeModule(Module& module);
    void finalizeDependents(const Module& module);

    std::vector<std::unique_ptr<Module>> mModules;
    std::vector<Module*> mInitialized;
};
