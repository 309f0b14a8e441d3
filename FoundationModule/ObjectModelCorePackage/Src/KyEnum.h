// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// One constant of a class: its name as scripts see it, and its number. The name must be a literal.
struct KyEnum {
    /// As scripts write it; lives as long as the table.
    const char* name = nullptr;
    /// The number behind it.
    int value = 0;
};
