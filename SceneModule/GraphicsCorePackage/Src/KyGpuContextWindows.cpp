// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGpuName_p.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

void* kyGetCurrentGpuHandle() {
    return wglGetCurrentContext();
}
