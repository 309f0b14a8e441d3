// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLoadState.h"

#include "KyEntryProbeExport.h"

#include <windows.h>

#include <cstdio>
#include <memory>
#include <string>

// Tells on standard error what the library's entry was told.
extern "C" BOOL WINAPI DllMain(HINSTANCE handle, DWORD reason, LPVOID reserved) {
    const auto own = KyLoadState::getModuleHandle(reinterpret_cast<const void*>(&DllMain));
    std::fprintf(stderr, "(%lu,%s,%s)", reason, reserved ? "set" : "null",
                 reinterpret_cast<std::intptr_t>(handle) == own ? "own" : "foreign");
    std::fflush(stderr);
    return TRUE;
}

KYENTRYPROBE_EXPORT std::size_t getProbeLength() {
    static const auto text = std::make_shared<std::string>("probe");
    return text->size();
}
