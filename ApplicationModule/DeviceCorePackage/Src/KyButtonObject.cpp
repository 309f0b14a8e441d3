// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyButtonObject.h"

#include "KyChannelAccess_p.h"

#include "KyTypeBuilder.h"

#include <cstdint>
#include <limits>

const KyType* KyButtonObject::msType = nullptr;

namespace {

using Button = KyDeviceButtonChannel;

template <auto Getter>
constexpr auto cGet = &KyChannelAccess::get<KyButtonObject, Getter>;

template <auto Setter>
bool set(KyButtonObject& object, std::int32_t value) {
    if (value < 0 || value > std::numeric_limits<std::uint8_t>::max())
        return false;
    KyChannelAccess::set<KyButtonObject, std::uint8_t, Setter>(object, static_cast<std::uint8_t>(value));
    return true;
}

} // namespace

void KyButtonObject::initializeType() {
    if (msType)
        return;
    KyChannelObject::initializeType();
    msType = KyTypeBuilder<KyButtonObject>("KyButtonObject", KyChannelObject::getType())
                 .attribute("Value", cGet<&Button::getValue>, &set<&Button::setValue>)
                 .attribute("PreviousValue", cGet<&Button::getPreviousValue>)
                 .attribute("NbValues", cGet<&Button::getNbValues>, &set<&Button::setNbValues>)
                 .build();
}

void KyButtonObject::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyButtonObject::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyButtonObject::getObjectType() const {
    return getType();
}

KyButtonObject* KyButtonObject::cast(KyObject* object) {
    return kyCast<KyButtonObject>(object);
}
