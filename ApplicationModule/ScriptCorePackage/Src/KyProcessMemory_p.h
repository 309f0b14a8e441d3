// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// Bytes of memory that the process has in use; 0 when the system does not tell. Takes some microseconds.
std::size_t kyGetProcessMemory();
