// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyField.h"

#include <QMetaType>
#include <QVariant>

#include <array>

/// The conversions of the built-in value types by kind of field and by meta-type of Qt, for a look-up without a call.
namespace KyPrimitiveTypes {

struct ToVariant {
    /// Null when there is no conversion.
    QVariant (*convert)(const KyField& field, int charSet) = nullptr;
    /// Whether some values give a null variant.
    bool mayBeNull = false;
};

/// Null when there is no conversion; never gives an empty field.
using ToField = KyField (*)(const QVariant& variant, int charSet);

extern const std::array<ToVariant, cNbBuiltInFieldTypes> cToVariant;
extern const std::array<ToField, QMetaType::QColor + 1> cToField;

inline ToVariant findToVariant(KyFieldKind kind) {
    const std::size_t index = kyFieldKindIndex(kind);
    return index < cToVariant.size() ? cToVariant[index] : ToVariant();
}

inline ToField findToField(int type) {
    const auto index = static_cast<std::size_t>(type);
    return index < cToField.size() ? cToField[index] : nullptr;
}

} // namespace KyPrimitiveTypes
