// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

/// What the program runs on.
class KYFOUNDATION_EXPORT KyPlatform {
public:
    /// The numbers are seen by scripts and stay as they are.
    enum OsType : int { eWindows = 0, eLinux = 1, eNbOsTypes };

    KyPlatform() = delete;

    /// A value of `OsType`.
    static int getOsType();
};
