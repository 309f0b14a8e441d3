// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySceneEntry_p.h"

#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE handle, DWORD reason, LPVOID reserved) {
    return kyOnSceneLoad(reinterpret_cast<std::intptr_t>(handle), reason, reserved);
}
