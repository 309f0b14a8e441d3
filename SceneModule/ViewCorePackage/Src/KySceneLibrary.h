// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

/// The scene library as a module.
class KYSCENE_EXPORT KySceneLibrary {
public:
    KySceneLibrary() = delete;

    /// Registers "KyScene/KyScene", which needs "KyFoundation/KyFoundation". Calling it again does nothing; safe in a
    /// library's entry.
    static void registerModule();

    /// The module's initialiser and finaliser, called by the module manager: the type records of the library.
    static void initialize();
    /// Ends what initialize began; nothing when it did not.
    static void finalize();
};
