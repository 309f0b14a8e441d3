// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// The library's converter for objects of all classes, as the repository knows it.
class KyObjectConverterEntry {
public:
    /// Enters one converter in both directions. The repository must exist.
    static void enter();
    /// Takes it out of both, where the repository still exists, and ends it, with its bindings.
    static void withdraw();
};
