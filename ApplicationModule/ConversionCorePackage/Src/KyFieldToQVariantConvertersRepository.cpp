// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFieldToQVariantConvertersRepository.h"

#include "KyVariantListConverters_p.h"

#include "KyType.h"

#include <string>
#include <vector>

std::unique_ptr<KyFieldToQVariantConvertersRepository> KyFieldToQVariantConvertersRepository::msInstance;

KyFieldToQVariantConverter::~KyFieldToQVariantConverter() = default;

QVariantToKyFieldConverter::~QVariantToKyFieldConverter() = default;

KyFieldToQVariantConvertersRepository::KyFieldToQVariantConvertersRepository() {
    KyFieldManager::get().registerFieldType<std::vector<KyField>>("FieldList");
    KyFieldManager::get().registerFieldType<std::vector<std::string>>("StringList");
    registerConverter(QMetaType::QVariantList, &KyVariantListConverters::getVariantListConverter());
    registerConverter(QMetaType::QStringList, &KyVariantListConverters::getStringListConverter());
}

KyFieldToQVariantConvertersRepository::~KyFieldToQVariantConvertersRepository() = default;

void KyFieldToQVariantConvertersRepository::initializeSingleton() {
    if (!msInstance)
        msInstance.reset(new KyFieldToQVariantConvertersRepository);
}

void KyFieldToQVariantConvertersRepository::finalizeSingleton() {
    msInstance.reset();
}

QVariantToKyFieldConverter*
KyFieldToQVariantConvertersRepository::registerConverter(const QMetaType::Type& type,
                                                         QVariantToKyFieldConverter* converter) {
    if (converter) {
        mVariantConverters[type] = converter;
        markQtType(type);
    }
    return converter;
}

KyFieldToQVariantConverter*
KyFieldToQVariantConvertersRepository::registerConverter(const KyType* type, KyFieldToQVariantConverter* converter) {
    if (type && converter)
        mFieldConverters[type] = converter;
    return converter;
}

void KyFieldToQVariantConvertersRepository::markQtType(QMetaType::Type type) {
    if (isQtType(type))
        mQtTypes.set(type);
}

QVariantToKyFieldConverter* KyFieldToQVariantConvertersRepository::findConverter(QMetaType::Type type) const {
    const auto found = mVariantConverters.find(type);
    return found == mVariantConverters.end() ? nullptr : found->second;
}

KyFieldToQVariantConverter* KyFieldToQVariantConvertersRepository::getConverter(const KyType* type,
                                                                                bool searchParents) const {
    for (; type; type = searchParents ? type->getParent() : nullptr)
        if (const auto found = mFieldConverters.find(type); found != mFieldConverters.end())
            return found->second;
    return nullptr;
}

void KyFieldToQVariantConvertersRepository::unregisterQVariantConverter(QVariantToKyFieldConverter* converter) {
    std::erase_if(mVariantConverters, [converter](const auto& entry) { return entry.second == converter; });
    mQtTypes.reset();
    for (const auto& [type, other] : mVariantConverters)
        markQtType(type);
}

void KyFieldToQVariantConvertersRepository::unregisterKyFieldConverter(KyFieldToQVariantConverter* converter) {
    std::erase_if(mFieldConverters, [converter](const auto& entry) { return entry.second == converter; });
}
