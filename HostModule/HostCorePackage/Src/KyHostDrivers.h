// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// The drivers of input devices: modules that register themselves when they are loaded, so that must be done before the
/// modules are initialised. They stay loaded until the program ends.
class KyHostDrivers {
public:
    /// Every module of the folder that stands in a fixed place beside the program; a missing folder has none. What
    /// cannot be loaded is reported, and the others are loaded all the same.
    static void loadInstalled();
    /// Reports why, and gives false, when the file is no module that can be loaded.
    static bool load(const std::string& path);
    /// Once the modules are initialised: the drivers take up what is plugged in.
    static void start();

    /// What is plugged in, and the devices with their channels and what they read, for a person.
    static std::string describeDevices();
};
