// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyObjectConverterEntry_p.h"

#include "KyFieldToQVariantConvertersRepository.h"
#include "KyObjectToQVariantConverter.h"

#include "KyObject.h"

#include <memory>

namespace {

std::unique_ptr<KyObjectToQVariantConverter> gObjectConverter;

} // namespace

void KyObjectConverterEntry::enter() {
    gObjectConverter = std::make_unique<KyObjectToQVariantConverter>();
    KyFieldToQVariantConvertersRepository* repository = KyFieldToQVariantConvertersRepository::get();
    repository->registerConverter(KyObject::getType(), gObjectConverter.get());
    repository->registerConverter(QMetaType::QObjectStar, gObjectConverter.get());
}

void KyObjectConverterEntry::withdraw() {
    KyFieldToQVariantConvertersRepository* repository = KyFieldToQVariantConvertersRepository::get();
    if (repository) {
        repository->unregisterKyFieldConverter(gObjectConverter.get());
        repository->unregisterQVariantConverter(gObjectConverter.get());
    }
    gObjectConverter.reset();
}
