// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyProbeLoader.h"

#include <dlfcn.h>

void* KyProbeLoader::open(const char* path) {
    return ::dlopen(path, RTLD_NOW);
}

bool KyProbeLoader::close(void* library) {
    return ::dlclose(library) == 0;
}
