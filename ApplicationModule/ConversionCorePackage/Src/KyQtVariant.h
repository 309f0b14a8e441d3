// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyField.h"

#include <QVariant>

/// Any field to a Qt variant and back, in the default character set. Both work before the library is initialised, then
/// with the built-in converters only.
namespace KyApplication {

/// The built-in value types first (KyPrimitiveTypesConverter), then the converter registered for the class of the
/// object held or for its nearest parent; else a 64-bit integer when the field converts to one, such as an enumerated
/// value; else the field's text. Invalid for an empty field and for KyInvalidField.
KYAPPLICATION_EXPORT QVariant toQVariant(const KyField& field);

/// The converter registered for the meta-type first, where pointers to classes of QObject fall back to that of
/// QObjectStar; then the built-in value types; else the variant's text as a text field. Empty for a null variant and
/// for one that has no text. A point at the origin and an empty rectangle are values, not null.
KYAPPLICATION_EXPORT KyField toKyField(const QVariant& variant);

} // namespace KyApplication
