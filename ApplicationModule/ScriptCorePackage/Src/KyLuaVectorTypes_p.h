// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaValueHolder_p.h"

#include <string>
#include <vector>

/// The sequence of integers that scripts know as "IntVector".
struct KyLuaIntVector {
    std::vector<int> numbers;

    bool operator==(const KyLuaIntVector&) const = default;
    /// The numbers, separated by blanks.
    std::string toString() const;
};

template <>
inline constexpr bool cIsLuaValue<KyLuaIntVector> = true;
