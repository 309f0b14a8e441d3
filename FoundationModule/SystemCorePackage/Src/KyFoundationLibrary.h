// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

/// The foundation as a module.
class KYFOUNDATION_EXPORT KyFoundationLibrary {
public:
    KyFoundationLibrary() = delete;

    /// Registers "KyFoundation/KyFoundation" with the module manager. Calling it again does nothing;
    /// safe in a library's entry.
    static void registerModule();

    /// The module's initialiser and finaliser, called by the module manager.
    static void initialize();
    /// As initialize: for the module manager.
    static void finalize();
};
