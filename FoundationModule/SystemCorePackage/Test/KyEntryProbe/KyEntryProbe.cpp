// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyEntryProbe.h"

#include "KyLoadState.h"

#include "KyEntryProbeExport.h"

#include <cstdio>
#include <memory>
#include <string>

bool onProbeEntry(std::intptr_t handle, unsigned reason, void* reserved) {
    const auto own = KyLoadState::getModuleHandle(reinterpret_cast<const void*>(&onProbeEntry));
    std::fprintf(stderr, "(%u,%s,%s)", reason, reserved ? "set" : "null",
                 handle != 0 && handle == own ? "own" : "foreign");
    return true;
}

// A static with a destructor and a shared pointer: what keeps libraries of real life from unloading.
KYENTRYPROBE_EXPORT std::size_t getProbeLength() {
    static const auto text = std::make_shared<std::string>("probe");
    return text->size();
}
