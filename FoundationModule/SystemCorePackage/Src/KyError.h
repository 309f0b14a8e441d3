// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <string>

/// Second name of the run-time error report, for misuse by the caller rather than for failures
/// of the surroundings. It goes the same way as `KyException`.
class KYFOUNDATION_EXPORT KyError {
public:
    KyError() = delete;

    /// Reports through the handler of `KyException` and returns.
    static void create(const std::string& text);
};
