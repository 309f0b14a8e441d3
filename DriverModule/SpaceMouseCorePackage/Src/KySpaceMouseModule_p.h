// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// The driver as a module: registered when the library is loaded. Its initialisation enters the driver in the device
/// manager, its finalisation ends it.
class KySpaceMouseModule {
public:
    KySpaceMouseModule() = delete;

    static void initialize();
    static void finalize();
    /// What the loader tells: see KyLibraryEntry. A second copy of the library is reported and stays out. Always true.
    static bool onLoad(std::intptr_t handle, unsigned reason, void* reserved);
};
