// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

// Before the headers that need its types.
#include <windows.h>

extern "C" {
#include <hidsdi.h>
}

#include <cstdlib>
#include <string>
#include <vector>

/// What the stand-ins for HID.DLL and SETUPAPI.DLL make of the environment.
///
/// KY_UNITS names files, with "|" between them, each a unit; its path is the unit's. "?" is one without a path. A file
/// reads "vendor:product|page/usage|fault|manufacturer|product|serial"; an empty text is none. Faults: "attributes",
/// "data", "nothing" (data, but none), "caps". KY_UNITS=fail makes the list itself fail.
namespace KyStandIn {

constexpr GUID cHidClass = {0x4D1E55B2, 0xF16F, 0x11CF, {0x88, 0xCB, 0x00, 0x11, 0x11, 0x00, 0x00, 0x30}};

inline std::vector<std::string> split(const std::string& text) {
    std::vector<std::string> parts(1);
    for (const char character : text) {
        if (character == '|')
            parts.emplace_back();
        else
            parts.back() += character;
    }
    return parts;
}

inline std::string getUnits() {
    const char* units = std::getenv("KY_UNITS");
    return units ? units : "";
}

} // namespace KyStandIn
