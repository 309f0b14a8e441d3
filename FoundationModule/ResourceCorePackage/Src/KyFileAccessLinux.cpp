// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileAccess_p.h"

#include "KyLocalPath_p.h"

#include <unistd.h>

bool KyFileAccess::isHidden(const std::filesystem::path& path) {
    return path.filename().native().starts_with('.') && KyLocalPath::exists(path);
}

bool KyFileAccess::isReadable(const std::filesystem::path& path) {
    return ::access(path.c_str(), R_OK) == 0;
}

bool KyFileAccess::isWritable(const std::filesystem::path& path) {
    return ::access(path.c_str(), W_OK) == 0;
}

bool KyFileAccess::isExecutable(const std::filesystem::path& path) {
    return ::access(path.c_str(), X_OK) == 0;
}
