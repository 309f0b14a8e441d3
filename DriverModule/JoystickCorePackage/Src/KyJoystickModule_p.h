// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// The driver as the module "KyJoystickDriver/KyJoystickDriver": it is there from initialise() to finalise().
class KyJoystickModule {
public:
    /// What the loader tells, see KyLibraryEntry: registers the module and takes it out again. A second
    /// copy of the library is reported and does neither. Always true.
    static bool onLoad(std::intptr_t handle, unsigned reason, void* reserved);
    /// Makes the driver and registers it with the device manager, which starts it. Nothing when it is there already.
    static void initialise();
    /// Ends the driver with its devices. Nothing without driver.
    static void finalise();

private:
    KyJoystickModule() = default;
};
