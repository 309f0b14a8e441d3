// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyOrientationObject.h"

#include "KyChannelAccess_p.h"

#include "KyTypeBuilder.h"

const KyType* KyOrientationObject::msType = nullptr;

namespace {

using Orientation = KyDeviceOrientationChannel;

template <auto Getter>
constexpr auto cGet = &KyChannelAccess::get<KyOrientationObject, Getter>;
template <class Value, auto Setter>
constexpr auto cSet = &KyChannelAccess::set<KyOrientationObject, Value, Setter>;

} // namespace

void KyOrientationObject::initializeType() {
    if (msType)
        return;
    KyChannelObject::initializeType();
    msType = KyTypeBuilder<KyOrientationObject>("KyOrientationObject", KyChannelObject::getType())
                 .attribute("Value", cGet<&Orientation::getValue>, cSet<KyQuat<float>, &Orientation::setValue>)
                 .attribute("DeltaValue", cGet<&Orientation::getDeltaValue>)
                 .attribute("Absolute", cGet<&Orientation::isAbsolute>, cSet<bool, &Orientation::setAbsolute>)
                 .build();
}

void KyOrientationObject::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyOrientationObject::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyOrientationObject::getObjectType() const {
    return getType();
}

KyOrientationObject* KyOrientationObject::cast(KyObject* object) {
    return kyCast<KyOrientationObject>(object);
}
