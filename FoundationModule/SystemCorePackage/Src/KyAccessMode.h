// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// What others than its owner may do with a value: a channel of a device, a signal of a bound interface.
enum KyAccessMode : std::uint32_t { eAccessReadOnly, eAccessWriteOnly, eAccessReadWrite, eNbAccessModes };
