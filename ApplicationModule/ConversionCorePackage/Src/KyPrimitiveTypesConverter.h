// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyField.h"

#include <QVariant>

/// The built-in value types between fields and Qt variants: numbers, booleans, texts, colours, URLs, rectangles and
/// 2-vectors of doubles, times and dates. For any field or variant use `toQVariant` and `toKyField` of KyQtVariant.h,
/// which also know the registered converters and fall back to texts.
class KYAPPLICATION_EXPORT KyPrimitiveTypesConverter {
public:
    KyPrimitiveTypesConverter() = delete;

    /// Integers become 64-bit ones, floating numbers doubles, date and time local time; any other kind, also an
    /// enumerated one, gives an invalid variant. Texts are decoded from the character set.
    static QVariant toQVariant(const KyField& field, int charSet = 0);
    /// All integers become int, those beyond 32 bits without their upper bits; a double that is not finite becomes 0.
    /// Texts are encoded in the character set. Any other type gives an empty field.
    static KyField toKyField(const QVariant& variant, int charSet = 0);
};
