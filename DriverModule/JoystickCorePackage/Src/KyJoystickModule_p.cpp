// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyJoystickModule_p.h"

#include "KyJoystickDriver.h"

#include "KyException.h"
#include "KyLibraryEntry.h"
#include "KyModuleManager.h"

#include <array>
#include <string>
#include <utility>

namespace {

constexpr const char* cModuleName = "KyJoystickDriver/KyJoystickDriver";
constexpr std::array cPrerequisites{"KyApplication/KyApplication"};

/// A plain pointer: at the exit of the process the library that the driver stands on may be gone before it.
KyJoystickDriver* gDriver = nullptr;
/// False in a second copy of this library: the module is the first one's.
bool gIsRegistered = false;

void registerModule() {
    gIsRegistered = KyModuleManager::get().registerModule(cModuleName, cPrerequisites.data(),
                                                          static_cast<unsigned>(cPrerequisites.size()),
                                                          &KyJoystickModule::initialise, &KyJoystickModule::finalise);
    if (!gIsRegistered)
        KyException::create(std::string("KyJoystickModule::onLoad(): another copy of the driver \"") + cModuleName +
                            "\" is loaded already, this one stays unused.");
}

} // namespace

bool KyJoystickModule::onLoad(std::intptr_t, unsigned reason, void* reserved) {
    if (reason == KyLibraryEntry::eProcessAttach)
        registerModule();
    else if (reason == KyLibraryEntry::eProcessDetach && !reserved && std::exchange(gIsRegistered, false))
        KyModuleManager::get().unregisterModule(cModuleName);
    return true;
}

void KyJoystickModule::initialise() {
    if (gDriver)
        return;
    gDriver = new KyJoystickDriver;
    if (KyDeviceManager* manager = KyDeviceManager::get())
        manager->registerDeviceDriver(gDriver);
}

void KyJoystickModule::finalise() {
    delete gDriver;
    gDriver = nullptr;
}
