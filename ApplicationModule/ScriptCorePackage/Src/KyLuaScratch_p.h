// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyField.h"

#include <cstddef>
#include <span>

/// Fields for a C function that may run out of Lua's memory while it uses them: raising jumps over its frame, and what
/// is in these fields then ends with the KyLuaGuard around it. They are reused, so taking them allocates nothing as a
/// rule.
class KyLuaScratch {
public:
    explicit KyLuaScratch(std::size_t nbFields);
    ~KyLuaScratch();
    KyLuaScratch(const KyLuaScratch&) = delete;
    KyLuaScratch& operator=(const KyLuaScratch&) = delete;

    /// Empty at first.
    std::span<KyField> getFields() const { return mFields; }

    /// Number of scratches in use, jumped over ones included.
    static std::size_t getDepth();
    /// Ends those above the depth.
    static void unwind(std::size_t depth);

private:
    std::span<KyField> mFields;
    std::size_t mDepth;
};
