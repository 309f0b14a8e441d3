// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyField.h"

class QVariant;

/// Turns the variants of one Qt meta-type into fields. Registered by meta-type at
/// KyFieldToQVariantConvertersRepository, which does not own it.
class KYAPPLICATION_EXPORT QVariantToKyFieldConverter {
public:
    /// Empty when the variant cannot be converted.
    virtual KyField toKyField(const QVariant& variant) = 0;
    virtual ~QVariantToKyFieldConverter();

    QVariantToKyFieldConverter() = default;
    QVariantToKyFieldConverter(const QVariantToKyFieldConverter&) = default;
    QVariantToKyFieldConverter& operator=(const QVariantToKyFieldConverter&) = default;
};
