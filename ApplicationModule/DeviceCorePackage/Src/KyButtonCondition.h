// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// How a button's value is compared with the expected one.
enum KyButtonCondition : std::uint32_t { eConditionEqual, eConditionDifferent, eNbButtonConditions };
