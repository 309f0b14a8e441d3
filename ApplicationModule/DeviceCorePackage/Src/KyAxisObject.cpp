// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyAxisObject.h"

#include "KyChannelAccess_p.h"

#include "KyTypeBuilder.h"

const KyType* KyAxisObject::msType = nullptr;

namespace {

using Axis = KyDeviceAxisChannel;

template <auto Getter>
constexpr auto cGet = &KyChannelAccess::get<KyAxisObject, Getter>;
template <auto Setter>
constexpr auto cSet = &KyChannelAccess::set<KyAxisObject, float, Setter>;

bool setClampMode(KyAxisObject& object, std::int32_t mode) {
    if (mode < 0 || mode >= static_cast<std::int32_t>(eNbClampModes))
        return false;
    KyChannelAccess::set<KyAxisObject, KyAxisClampMode, &Axis::setClampMode>(object,
                                                                             static_cast<KyAxisClampMode>(mode));
    return true;
}

} // namespace

void KyAxisObject::initializeType() {
    if (msType)
        return;
    KyChannelObject::initializeType();
    msType = KyTypeBuilder<KyAxisObject>("KyAxisObject", KyChannelObject::getType())
                 .attribute("Value", cGet<&Axis::getValue>, cSet<&Axis::setValue>)
                 .attribute("Minimum", cGet<&Axis::getMinimum>, cSet<&Axis::setMinimum>)
                 .attribute("Maximum", cGet<&Axis::getMaximum>, cSet<&Axis::setMaximum>)
                 .attribute("StepFactor", cGet<&Axis::getStepFactor>, cSet<&Axis::setStepFactor>)
                 .attribute("DeadZoneWidth", cGet<&Axis::getDeadZoneWidth>, cSet<&Axis::setDeadZoneWidth>)
                 .attribute("DeadZoneValue", cGet<&Axis::getDeadZoneValue>, cSet<&Axis::setDeadZoneValue>)
                 .attribute("Absolute", cGet<&Axis::isAbsolute>,
                            &KyChannelAccess::set<KyAxisObject, bool, &Axis::setAbsolute>)
                 .attribute("ClampMode", cGet<&Axis::getClampMode>, &setClampMode)
                 .enumeration({{"eClampNone", eClampNone},
                               {"eClampAll", eClampAll},
                               {"eClampOutput", eClampOutput},
                               {"eNbClampModes", eNbClampModes}})
                 .build();
}

void KyAxisObject::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyAxisObject::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyAxisObject::getObjectType() const {
    return getType();
}

KyAxisObject* KyAxisObject::cast(KyObject* object) {
    return kyCast<KyAxisObject>(object);
}
