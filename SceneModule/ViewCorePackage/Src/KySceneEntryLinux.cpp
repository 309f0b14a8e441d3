// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySceneEntry_p.h"

#include "KyLibraryEntry.h"

namespace {

constinit bool gExitBegun = false;
const KyExitMark gExitMark(gExitBegun);
constinit KyLibraryEntry gEntry(&kyOnSceneLoad);

[[gnu::constructor]] void attach() {
    gEntry.attach();
}
[[gnu::destructor]] void detach() {
    gEntry.detach(gExitBegun);
}

} // namespace
