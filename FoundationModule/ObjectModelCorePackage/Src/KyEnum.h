// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// One constant of a class: its name as scripts see it, and its number. The name must be a literal.
struct KyEnum {
    const char* name = nullptr;
    int value = 0;
};
