// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileAccess_p.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cwctype>
#include <string_view>

namespace {
constexpr std::array<std::wstring_view, 4> cProgramExtensions = {L".exe", L".com", L".bat", L".cmd"};

bool hasAttribute(const std::filesystem::path& path, DWORD attribute) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute) != 0;
}

bool isThere(const std::filesystem::path& path) {
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}
} // namespace

bool KyFileAccess::isHidden(const std::filesystem::path& path) {
    return hasAttribute(path, FILE_ATTRIBUTE_HIDDEN);
}

bool KyFileAccess::isReadable(const std::filesystem::path& path) {
    return isThere(path);
}

bool KyFileAccess::isWritable(const std::filesystem::path& path) {
    return isThere(path) && !hasAttribute(path, FILE_ATTRIBUTE_READONLY);
}

bool KyFileAccess::isExecutable(const std::filesystem::path& path) {
    std::wstring extension = path.extension().native();
    std::ranges::transform(extension, extension.begin(),
                           [](wchar_t c) { return static_cast<wchar_t>(std::towlower(c)); });
    return isThere(path) && std::ranges::find(cProgramExtensions, extension) != cProgramExtensions.end();
}
