// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyAttributeInterface.h"

KyAttributeInterface::~KyAttributeInterface() = default;

const KyFieldType* KyAttributeInterface::getEnumeration() const {
    return nullptr;
}

const KyType* KyAttributeInterface::getObjectType() const {
    return nullptr;
}

const std::string& KyAttributeInterface::getMetadata(std::string_view key) const {
    static const std::string none;
    const auto found = mMetadata.find(key);
    return found == mMetadata.end() ? none : found->second;
}

void KyAttributeInterface::setMetadata(std::string key, std::string value) {
    mMetadata.insert_or_assign(std::move(key), std::move(value));
}

bool KyAttributeInterface::getNbValues(const KyObject&, unsigned& count) const {
    count = 1;
    return true;
}

bool KyAttributeInterface::addValue(KyObject&, unsigned, const KyField&) const {
    return false;
}

bool KyAttributeInterface::removeValue(KyObject&, unsigned) const {
    return false;
}
