// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLibraryEntry.h"

#include "KyEntryProbeExport.h"

#include <cstdio>
#include <memory>
#include <string>

namespace {
// Tells on standard error what the library's entry was told.
bool onProbeEntry(std::intptr_t handle, unsigned reason, void* reserved) {
    const auto own = KyLoadState::getModuleHandle(reinterpret_cast<const void*>(&onProbeEntry));
    std::fprintf(stderr, "(%u,%s,%s)", reason, reserved ? "set" : "null",
                 handle != 0 && handle == own ? "own" : "foreign");
    return true;
}

constinit bool gExitBegun = false;
const KyExitMark gExitMark(gExitBegun);
constinit KyLibraryEntry gEntry(&onProbeEntry);

[[gnu::constructor]] void attach() {
    gEntry.attach();
}

[[gnu::destructor]] void detach() {
    gEntry.detach(gExitBegun);
}
} // namespace

// A static with a destructor and a shared pointer: what keeps libraries of real life from unloading.
KYENTRYPROBE_EXPORT std::size_t getProbeLength() {
    static const auto text = std::make_shared<std::string>("probe");
    return text->size();
}
