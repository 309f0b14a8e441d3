// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyURL.h"

#include <filesystem>
#include <string>

/// Between URLs and paths of the file system.
namespace KyLocalPath {
/// The path of a URL after `KyResource::resolve`, without "/" at its end; empty when it is not local.
std::filesystem::path fromURL(const KyURL& url);
/// As `fromURL`, but a relative URL is taken from the current directory only: for what is changed.
std::filesystem::path fromTarget(const KyURL& url);
/// From UTF-8; empty when the system cannot express it.
std::filesystem::path fromText(const std::string& text);
/// In UTF-8 with "/".
std::string toText(const std::filesystem::path& path);
/// Whether something is there, a dangling link included.
bool exists(const std::filesystem::path& path);
} // namespace KyLocalPath
