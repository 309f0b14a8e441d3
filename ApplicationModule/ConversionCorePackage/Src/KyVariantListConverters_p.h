// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "QVariantToKyFieldConverter.h"

/// The converters of lists that every repository starts with, and that serve while there is none.
namespace KyVariantListConverters {

/// QVariantList, entry by entry; an entry that cannot be converted becomes an empty field.
QVariantToKyFieldConverter& getVariantListConverter();
/// QStringList, in the default character set.
QVariantToKyFieldConverter& getStringListConverter();

} // namespace KyVariantListConverters
