// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDeviceManager.h"

#include <optional>
#include <string_view>

/// What a device is asked for by, written as text: "DeviceType=Joystick; VendorID=0x046D".
namespace KyDeviceParameters {

/// Nothing when a pair has no name or no equals sign, or a "VendorID" or "ProductID" is no integer of 64 bits; empty
/// pairs are passed over.
std::optional<KyDeviceManager::KyDeviceParameterVector> parse(std::string_view text);

} // namespace KyDeviceParameters
