// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyEnvironment.h"

#include <cstdlib>
#include <filesystem>

namespace {
std::wstring toWide(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end())).wstring();
}
} // namespace

bool setEnvironmentVariable(const std::string& name, const std::string& value) {
    const auto hasZero = [](const std::string& text) { return text.find('\0') != std::string::npos; };
    if (name.empty() || name.find('=') != std::string::npos || hasZero(name) || hasZero(value))
        return false;

    try {
        // The run-time library's call: it also changes the copy that getenv reads.
        return ::_wputenv_s(toWide(name).c_str(), toWide(value).c_str()) == 0;
    } catch (...) {
        return false;
    }
}
