// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyURL.h"

#include <filesystem>

/// What the operations on local files ask about the current directory and those of the threads.
namespace KyResourceDirectories {
/// An absolute URL for a relative one, beside the current directory only; others come back as they are.
KyURL resolveInCurrent(const KyURL& url);
/// Whether `path` is the current directory, one that a thread has pushed, or holds one of them.
bool isInUse(const std::filesystem::path& path);
} // namespace KyResourceDirectories
