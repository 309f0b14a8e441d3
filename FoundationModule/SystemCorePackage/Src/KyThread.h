// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

/// Identity of threads.
class KYFOUNDATION_EXPORT KyThread {
public:
    /// Comparable and hashable; 0 names no thread, and a number is never given twice.
    using ID = unsigned long;

    KyThread() = delete;

    /// The calling thread's number, the same for its whole life.
    static ID getCurrentThreadID();
};
