// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyChannelObject.h"

#include "KyTypeBuilder.h"

const KyType* KyChannelObject::msType = nullptr;

namespace {

std::int32_t getAccessMode(KyChannelObject& object) {
    const KyDeviceChannel* channel = object.editChannel();
    return static_cast<std::int32_t>(channel ? channel->getAccessMode() : eAccessReadOnly);
}

bool isEnabled(KyChannelObject& object) {
    const KyDeviceChannel* channel = object.editChannel();
    return channel && channel->isEnabled();
}

void setEnabled(KyChannelObject& object, bool enabled) {
    if (KyDeviceChannel* channel = object.editChannel())
        channel->setEnabled(enabled);
}

} // namespace

const std::string& KyChannelObject::getName() const {
    const KyDeviceChannel* channel = editChannel();
    return channel ? channel->getName() : KyObject::getName();
}

void KyChannelObject::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyChannelObject>("KyChannelObject", KyObject::getType())
                 .attribute("Name", &KyChannelObject::getName)
                 .attribute("AccessMode", &::getAccessMode)
                 .attribute("Enabled", &::isEnabled, &::setEnabled)
                 .attribute("Valid", &KyChannelObject::isValid)
                 .enumeration({{"eAccessReadOnly", eAccessReadOnly},
                               {"eAccessWriteOnly", eAccessWriteOnly},
                               {"eAccessReadWrite", eAccessReadWrite},
                               {"eNbAccessModes", eNbAccessModes}})
                 .build();
}

void KyChannelObject::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyChannelObject::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyChannelObject::getObjectType() const {
    return getType();
}

KyChannelObject* KyChannelObject::cast(KyObject* object) {
    return kyCast<KyChannelObject>(object);
}
