// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string_view>

/// A shader program that the library brings.
struct KyProgramSource {
    std::string_view name;
    std::string_view text;
};

std::span<const KyProgramSource> kyGetProgramSources();
