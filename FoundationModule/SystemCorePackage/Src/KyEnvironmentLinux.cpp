// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyEnvironment.h"

#include <cstdlib>

bool setEnvironmentVariable(const std::string& name, const std::string& value) {
    const auto hasZero = [](const std::string& text) { return text.find('\0') != std::string::npos; };
    if (hasZero(name) || hasZero(value))
        return false;
    return ::setenv(name.c_str(), value.c_str(), 1) == 0;
}
