// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDeviceManager.h"

#include <algorithm>
#include <array>

/// Which units are 3D mice, by their numbers. Both drivers go by it, so that each unit has one of them; the udev rule
/// opens the same ones.
class KySpaceMouseProducts {
public:
    KySpaceMouseProducts() = delete;

    /// 3D mice that were sold under another maker's number, beside much that is none.
    static constexpr std::array<std::uint16_t, 13> cLogitechProducts{
        0xC603, 0xC605, 0xC606, 0xC621, 0xC623, 0xC625, 0xC626, 0xC627, 0xC628, 0xC629, 0xC62B, 0xC62F, 0xC640};

    static bool have(std::uint16_t vendor, std::uint16_t product) {
        return vendor == KyDeviceManager::c3DconnexionVendorID ||
               (vendor == KyDeviceManager::cLogitechVendorID &&
                std::ranges::find(cLogitechProducts, product) != cLogitechProducts.end());
    }
};
