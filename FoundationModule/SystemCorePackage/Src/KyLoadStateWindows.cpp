// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLoadState.h"

#include <windows.h>

bool KyLoadState::wasLoadedWithProgram() {
    return false;
}

std::intptr_t KyLoadState::getModuleHandle(const void* address) {
    HMODULE handle = nullptr;
    const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!::GetModuleHandleExW(flags, static_cast<LPCWSTR>(address), &handle))
        return 0;
    return reinterpret_cast<std::intptr_t>(handle);
}
