// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <QVariant>

class KyField;

/// Turns the fields that hold objects of one class into Qt variants. Registered by class at
/// KyFieldToQVariantConvertersRepository, which does not own it.
class KYAPPLICATION_EXPORT KyFieldToQVariantConverter {
public:
    /// Invalid when the field cannot be converted.
    virtual QVariant toQVariant(const KyField& field) = 0;
    virtual ~KyFieldToQVariantConverter();

    KyFieldToQVariantConverter() = default;
    KyFieldToQVariantConverter(const KyFieldToQVariantConverter&) = default;
    KyFieldToQVariantConverter& operator=(const KyFieldToQVariantConverter&) = default;
};
