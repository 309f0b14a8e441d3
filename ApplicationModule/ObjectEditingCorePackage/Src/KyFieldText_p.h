// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyField.h"

#include <string>
#include <string_view>

/// Fields as people read and type them: numbers with as few digits as give the same number again, lists with ";"
/// between their elements (a ";" or "\" of an element has a "\" in front).
struct KyFieldText {
    static std::string format(const KyField& field);
    /// Parses into the type of `like`. False, and `result` unchanged, for a text that is no such value or beyond the
    /// largest one.
    static bool parse(std::string_view text, const KyField& like, KyField& result);
    /// Whether the field's own text gives the field again.
    static bool isParsable(const KyField& field);
    /// As ==, but a value that is no number is the same as another.
    static bool areSame(const KyField& field, const KyField& other);
    /// Published name or name, and class; "none" for null.
    static std::string describe(KyObject* object);
};
