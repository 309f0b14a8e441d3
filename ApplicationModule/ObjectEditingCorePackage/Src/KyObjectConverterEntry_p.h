// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// The library's converter for objects of all classes, as the repository knows it. The repository must exist.
class KyObjectConverterEntry {
public:
    /// Enters one converter in both directions.
    static void enter();
    /// Takes it out of both and ends it, with its bindings.
    static void withdraw();
};
