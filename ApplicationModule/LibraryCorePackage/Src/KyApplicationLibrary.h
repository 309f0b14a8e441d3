// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <cstdint>

/// The library as a module: registered when the operating system loads it, initialised and finalised by the module
/// manager. Never instantiated; not thread-safe, everything runs on the thread that loads the library and drives the
/// module manager.
///
/// A host that links the library has nothing to register:
///
/// ```
/// KyModuleManager::get().initialize();
/// KyScriptEngine::get().executeScript("start.lua");
/// KyModuleManager::get().finalize();
/// ```
class KYAPPLICATION_EXPORT KyApplicationLibrary {
public:
    /// Enters the library and its two prerequisites in the module manager. Calling it again does nothing.
    static void registerModule();
    /// Takes the library out of the module manager, finalising it first. It can not be registered again in this load.
    static void unregisterModule();
    /// Creates every class record, singleton and registration of the library, in a fixed order. Nothing while
    /// initialised. A QCoreApplication should exist.
    static void initialize();
    /// Undoes initialize(). Nothing unless initialised; initialize() may follow again.
    static void finalize();

    /// What the loader tells: see KyLibraryEntry. Always true.
    static bool onLoad(std::intptr_t handle, unsigned reason, void* reserved);

    /// The library's module handle, on Linux its address; set on every call of the entry.
    static std::intptr_t msHInstance;
    /// True once registerModule was called.
    static bool msRegistered;

private:
    KyApplicationLibrary() = default;

    static bool msIsInitialized;
};
