// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseModule_p.h"

#include "KySpaceMouseDriver.h"

#include "KyDeviceManager.h"

#include "KyException.h"
#include "KyLibraryEntry.h"
#include "KyModuleManager.h"

#include <memory>
#include <string>
#include <utility>

namespace {

constexpr const char* cModuleName = "KySpaceMouseDriver/KySpaceMouseDriver";
constexpr const char* cPrerequisites[] = {"KyApplication/KyApplication"};

std::unique_ptr<KySpaceMouseDriver> gDriver;
/// False in a second copy of this library: the module is the first one's.
bool gIsRegistered = false;

void registerModule() {
    gIsRegistered = KyModuleManager::get().registerModule(
        cModuleName, cPrerequisites, 1, &KySpaceMouseModule::initialize, &KySpaceMouseModule::finalize);
    if (!gIsRegistered)
        KyException::create(std::string("KySpaceMouseModule::onLoad(): another copy of the driver \"") + cModuleName +
                            "\" is loaded already, this one stays unused.");
}

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
        registerModule();
    else if (reason == KyLibraryEntry::eProcessDetach && !reserved && std::exchange(gIsRegistered, false))
        KyModuleManager::get().unregisterModule(cModuleName);
    return true;
}
