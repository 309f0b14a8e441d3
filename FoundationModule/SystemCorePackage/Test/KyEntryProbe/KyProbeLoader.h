// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// Loads and unloads a shared library as the running program does it.
namespace KyProbeLoader {
/// Null when it cannot be loaded.
void* open(const char* path);
/// False when the library does not take it.
bool close(void* library);
} // namespace KyProbeLoader
