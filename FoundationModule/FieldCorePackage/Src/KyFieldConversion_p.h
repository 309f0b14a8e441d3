// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyField.h"

#include <string_view>

/// Conversions between kinds of fields, from a table over pairs of built-in kinds.
class KyFieldConversion {
public:
    static bool convert(const KyField& field, KyFieldKind kind, KyField& result);
    static bool parse(std::string_view text, KyFieldKind kind, KyField& result);
    /// Booleans, integers and floating-point numbers.
    static bool isNumeric(KyFieldKind kind);

private:
    static bool convertToEnumerated(const KyField& field, const KyFieldType& type, KyField& result);
    static bool convertList(const KyField& field, const KyFieldType& type, KyField& result);
};
