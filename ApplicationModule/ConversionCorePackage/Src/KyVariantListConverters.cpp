// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyVariantListConverters_p.h"

#include "KyQtText.h"
#include "KyQtVariant.h"

#include <QVariant>

#include <vector>

namespace {

class VariantListConverter : public QVariantToKyFieldConverter {
public:
    KyField toKyField(const QVariant& variant) override {
        std::vector<KyField> entries;
        for (const QVariant& entry : variant.toList())
            entries.push_back(KyApplication::toKyField(entry));
        return KyField(std::move(entries));
    }
};

class StringListConverter : public QVariantToKyFieldConverter {
public:
    KyField toKyField(const QVariant& variant) override {
        return KyField(KyApplication::toKyStringVector(variant.toStringList()));
    }
};

} // namespace

QVariantToKyFieldConverter& KyVariantListConverters::getVariantListConverter() {
    static VariantListConverter cConverter;
    return cConverter;
}

QVariantToKyFieldConverter& KyVariantListConverters::getStringListConverter() {
    static StringListConverter cConverter;
    return cConverter;
}
