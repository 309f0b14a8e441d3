// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModuleManager.h"

#include "KyException.h"

#include <algorithm>
#include <exception>

struct KyModuleManager::Module {
    enum State { eRegistered, eInitializing, eInitialized, eFinalizing, eNbStates };

    [[nodiscard]] bool needs(const std::string& other) const {
        return std::ranges::find(prerequisites, other) != prerequisites.end();
    }

    std::string name;
    std::vector<std::string> prerequisites;
    Function initialise = nullptr;
    Function finalise = nullptr;
    State state = eRegistered;
};

namespace {
bool callReported(KyModuleManager::Function function, const std::string& where) {
    try {
        if (function)
            function();
        return true;
    } catch (const std::exception& error) {
        KyException::create(where + error.what());
    } catch (...) {
        KyException::create(where + "unknown C++ exception");
    }
    return false;
}

bool fail(const std::string& text) {
    KyException::create("KyModuleManager::initializeModule(): " + text);
    return false;
}
} // namespace

KyModuleManager::KyModuleManager() = default;
KyModuleManager::~KyModuleManager() = default;

KyModuleManager& KyModuleManager::get() {
    static KyModuleManager& manager = *new KyModuleManager;
    return manager;
}

KyModuleManager::Module* KyModuleManager::find(std::string_view name) const {
    const auto found =
        std::ranges::find(mModules, name, [](const auto& module) -> std::string_view { return module->name; });
    return found == mModules.end() ? nullptr : found->get();
}

bool KyModuleManager::isRegistered(std::string_view name) const {
    return find(name) != nullptr;
}

bool KyModuleManager::isInitialized(std::string_view name) const {
    const Module* module = find(name);
    return module && module->state == Module::eInitialized;
}

bool KyModuleManager::registerModule(const char* name, const char* const* prerequisites, unsigned nbPrerequisites,
                                     Function initialise, Function finalise) {
    if (!name || !*name || find(name))
        return false;

    auto module = std::make_unique<Module>();
    module->name = name;
    module->initialise = initialise;
    module->finalise = finalise;
    for (unsigned i = 0; prerequisites && i < nbPrerequisites; ++i)
        if (prerequisites[i])
            module->prerequisites.emplace_back(prerequisites[i]);
    mModules.push_back(std::move(module));
    return true;
}

bool KyModuleManager::unregisterModule(const char* name) {
    Module* module = name ? find(name) : nullptr;
    if (!module || module->state == Module::eInitializing || module->state == Module::eFinalizing)
        return false;

    if (module->state == Module::eInitialized)
        finalizeModule(*module);
    std::erase_if(mModules, [module](const auto& other) { return other.get() == module; });
    return true;
}

bool KyModuleManager::initialize() {
    bool complete = true;
    // By index: an initialiser may load a library that registers another module.
    for (std::size_t i = 0; i < mModules.size(); ++i)
        complete = initializeModule(std::string(mModules[i]->name)) && complete;
    return complete;
}

bool KyModuleManager::initializeModule(std::string_view name) {
    Module* module = find(name);
    if (!module)
        return fail("unknown module \"" + std::string(name) + "\".");
    if (module->state == Module::eInitialized)
        return true;
    if (module->state != Module::eRegistered)
        return fail("the module \"" + module->name + "\" needs itself.");

    module->state = Module::eInitializing;
    const bool done =
        initializePrerequisites(*module) &&
        callReported(module->initialise, "KyModuleManager::initializeModule(): \"" + module->name + "\" failed: ");
    module->state = done ? Module::eInitialized : Module::eRegistered;
    if (done)
        mInitialized.push_back(module);
    return done;
}

bool KyModuleManager::initializePrerequisites(const Module& module) {
    return std::ranges::all_of(module.prerequisites, [this, &module](const std::string& needed) {
        if (find(needed))
            return initializeModule(needed);
        return fail("the module \"" + module.name + "\" needs \"" + needed + "\", which is not registered.");
    });
}

void KyModuleManager::finalize() {
    while (!mInitialized.empty())
        finalizeModule(*mInitialized.back());
}

void KyModuleManager::finalizeModule(Module& module) {
    module.state = Module::eFinalizing;
    finalizeDependents(module);
    std::erase(mInitialized, &module);
    callReported(module.finalise, "KyModuleManager::finalize(): \"" + module.name + "\" failed: ");
    module.state = Module::eRegistered;
}

void KyModuleManager::finalizeDependents(const Module& module) {
    const auto dependent = [&module](const Module* other) {
        return other->state == Module::eInitialized && other->needs(module.name);
    };

    for (auto found = std::find_if(mInitialized.rbegin(), mInitialized.rend(), dependent); found != mInitialized.rend();
         found = std::find_if(mInitialized.rbegin(), mInitialized.rend(), dependent))
        finalizeModule(**found);
}
