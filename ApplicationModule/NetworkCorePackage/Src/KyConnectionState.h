// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// How the last network operation of the program went, as people are told.
enum class KyConnectionState : int {
    /// Never stored: what is told while an operation is in progress.
    Busy = -1,
    Ready = 0,
    Failed = 1,
    AuthenticationRequired = 2
};
