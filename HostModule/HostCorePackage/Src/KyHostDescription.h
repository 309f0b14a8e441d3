// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHostOptions.h"

#include <string>

/// Writes what the scripts of the host see at this moment: classes, functions and globals.
class KyHostDescription {
public:
    KyHostDescription() = delete;

    /// The folder of annotations, the reference, or both, as the options name them. False, and one line in `error`,
    /// when one cannot be written.
    static bool write(const KyHostOptions& options, std::string& error);
};
