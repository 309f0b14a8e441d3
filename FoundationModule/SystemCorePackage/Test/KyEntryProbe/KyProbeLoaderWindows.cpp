// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyProbeLoader.h"

#include <windows.h>

void* KyProbeLoader::open(const char* path) {
    return ::LoadLibraryA(path);
}

bool KyProbeLoader::close(void* library) {
    return ::FreeLibrary(static_cast<HMODULE>(library)) != 0;
}
