// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <cstdint>

/// How a shared library came into the process. `KyLibraryEntry` asks it.
class KYFOUNDATION_EXPORT KyLoadState {
public:
    KyLoadState() = delete;

    /// To be called inside a constructor function of the library in question, and only there: true
    /// when that library is loaded together with the program (linked or preloaded), so that it can
    /// never be unloaded; false when the running program loads it. A library that the constructor
    /// of a linked library loads counts as linked. Always false on Windows, where the loader itself
    /// says it to `DllMain`.
    static bool wasLoadedWithProgram();

    /// The library that holds the address: its base address on Linux, its module handle on Windows;
    /// 0 when there is none.
    static std::intptr_t getModuleHandle(const void* address);
};
