// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// What the loader tells, see KyLibraryEntry: being unloaded takes the module out of the manager. Always true.
bool kyOnSceneLoad(std::intptr_t handle, unsigned reason, void* reserved);
