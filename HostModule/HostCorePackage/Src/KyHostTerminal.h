// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// What stands behind the standard streams. Implemented per platform.
class KyHostTerminal {
public:
    KyHostTerminal() = delete;

    /// Whether a person reads standard error as it comes.
    static bool isErrorRead();
};
