// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyScriptCatalogue.h"

#include <string_view>

/// Gives everything of the catalogue that is called the names that its registration tells, and lists in `unnamed` what
/// has none and what fits nothing. Overloads that differ by parameters at the end become one call.
void kyNameScriptCatalogue(KyScriptCatalogue& catalogue);

/// Makes one call of those that go on where another ends: f(a), f(a, b) and f(a, b, c) become f(a, b?, c?).
void kyJoinScriptCalls(std::vector<KyScriptCall>& calls);
