// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Tells on standard error what the library's entry was told: reason, whether the reserved argument
/// was null, whether the handle is this library's.
bool onProbeEntry(std::intptr_t handle, unsigned reason, void* reserved);
