// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyApplicationLibrary.h"

#include "KySceneLibrary.h"

#include "KyFoundationLibrary.h"
#include "KyLibraryEntry.h"
#include "KyModuleManager.h"

#include <array>

// What happens while the library is being loaded: apart from the rest, which needs Qt.

std::intptr_t KyApplicationLibrary::msHInstance = 0;
bool KyApplicationLibrary::msRegistered = false;

namespace {

constexpr const char* cModuleName = "KyApplication/KyApplication";
constexpr std::array cPrerequisites{"KyFoundation/KyFoundation", "KyScene/KyScene"};

} // namespace

void KyApplicationLibrary::registerModule() {
    if (msRegistered)
        return;
    KyFoundationLibrary::registerModule();
    KySceneLibrary::registerModule();
    KyModuleManager::get().registerModule(cModuleName, cPrerequisites.data(),
                                          static_cast<unsigned>(cPrerequisites.size()), &initialize, &finalize);
    msRegistered = true;
}

void KyApplicationLibrary::unregisterModule() {
    KyModuleManager::get().unregisterModule(cModuleName);
}

bool KyApplicationLibrary::onLoad(std::intptr_t handle, unsigned reason, void* reserved) {
    msHInstance = handle;
    if (reason == KyLibraryEntry::eProcessAttach)
        registerModule();
    else if (reason == KyLibraryEntry::eProcessDetach && !reserved)
        unregisterModule();
    return true;
}
