// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

/// What only the operating system knows of a file; all false when nothing is there.
namespace KyFileAccess {
bool isHidden(const std::filesystem::path& path);
bool isReadable(const std::filesystem::path& path);
bool isWritable(const std::filesystem::path& path);
bool isExecutable(const std::filesystem::path& path);
} // namespace KyFileAccess
