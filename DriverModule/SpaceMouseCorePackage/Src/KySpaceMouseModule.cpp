// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseModule_p.h"

#include "KySpaceMouseDriver.h"

#include "KyDeviceManager.h"

#include "KyLibraryEntry.h"
#include "KyModuleManager.h"

#include <memory>

namespace {

constexpr const char* cModuleName = "KySpaceMouseDriver/KySpaceMouseDriver";
constexpr const char* cPrerequisites[] = {"KyApplication/KyApplication"};

std::unique_ptr<KySpaceMouseDriver> gDriver;

} // namespace

void KySpaceMouseModule::initialize() {
    gDriver = std::make_unique<KySpaceMouseDriver>();
    if (KyDeviceManager* manager = KyDeviceManager::get())
        manager->registerDeviceDriver(gDriver.get());
}

void KySpaceMouseModule::finalize() {
    if (KyDeviceManager* manager = KyDeviceManager::get())
        manager->unregisterDeviceDriver(gDriver.get());
    gDriver.reset();
}

bool KySpaceMouseModule::onLoad(std::intptr_t, unsigned reason, void* reserved) {
    if (reason == KyLibraryEntry::eProcessAttach)
        KyModuleManager::get().registerModule(cModuleName, cPrerequisites, 1, &initialize, &finalize);
    else if (reason == KyLibraryEntry::eProcessDetach && !reserved)
        KyModuleManager::get().unregisterModule(cModuleName);
    return true;
}
