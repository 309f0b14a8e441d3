// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyScriptInspection.h"

#include <vector>

class KyScriptDebugger;

/// What a scope, table or object of a script holds, as much of it as is shown at once: a table of a million entries,
/// or of texts of many megabytes, is neither made nor sent as a whole.
///
/// ```
/// const KyScriptListing listing = KyScriptListing::make(debugger, scope.reference);
/// ```
struct KYAPPLICATION_EXPORT KyScriptListing {
    /// Entries of a listing.
    static constexpr int cMaxVariables = 10000;
    /// Bytes of their names and values together.
    static constexpr int cMaxSize = 4 << 20;

    /// The entries from number `first` on, at most `count` where it is above 0. As KyScriptDebugger::getVariables, a
    /// wrong reference lists nothing. In the debugger's thread.
    static KyScriptListing make(KyScriptDebugger& debugger, int reference, int first = 0, int count = 0);

    /// In the debugger's order.
    std::vector<KyScriptVariable> variables;
    /// Whether some were left out because of the size.
    bool isTooLarge = false;
};
