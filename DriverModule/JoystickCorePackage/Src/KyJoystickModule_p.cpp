// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyJoystickModule_p.h"

#include "KyJoystickDriver.h"

#include "KyLibraryEntry.h"
#include "KyModuleManager.h"

#include <array>

namespace {

constexpr const char* cModuleName = "KyJoystickDriver/KyJoystickDriver";
constexpr std::array cPrerequisites{"KyApplication/KyApplication"};

/// A plain pointer: at the exit of the process the library that the driver stands on may be gone before it.
KyJoystickDriver* gDriver = nullptr;

} // namespace

bool KyJoystickModule::onLoad(std::intptr_t, unsigned reason, void* reserved) {
    if (reason == KyLibraryEntry::eProcessAttach)
        KyModuleManager::get().registerModule(cModuleName, cPrerequisites.data(),
                                              static_cast<unsigned>(cPrerequisites.size()), &initialise, &finalise);
    else if (reason == KyLibraryEntry::eProcessDetach && !reserved)
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
