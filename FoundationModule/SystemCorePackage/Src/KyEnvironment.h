// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <string>

/// Sets an environment variable of this process, seen by `getenv` and by processes started later.
/// Name and value are UTF-8. False, and nothing changes, for an empty name and for a name with
/// "=" or a zero byte in either. An empty value removes the variable on Windows.
KYFOUNDATION_EXPORT bool setEnvironmentVariable(const std::string& name, const std::string& value);
