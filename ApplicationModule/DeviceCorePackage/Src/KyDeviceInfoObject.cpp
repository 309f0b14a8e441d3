// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeviceInfoObject.h"

#include "KyTypeBuilder.h"

#include <array>
#include <string>

const KyType* KyDeviceInfoObject::msType = nullptr;

namespace {

using Info = KyDeviceManager::KyDeviceInfoStruct;

constexpr std::array<const char*, KyDeviceManager::eNbDeviceTypes> cTypeNames{"joystick", "mouse", "keyboard", "other"};

template <auto Member>
constexpr auto cGet = [](KyDeviceInfoObject& object) { return object.getInfo().*Member; };

std::string getDeviceType(KyDeviceInfoObject& object) {
    const auto type = static_cast<std::size_t>(object.getInfo().deviceType);
    return type < cTypeNames.size() ? cTypeNames[type] : cTypeNames[KyDeviceManager::eOther];
}

bool isUsed(KyDeviceInfoObject& object) {
    return object.getInfo().device != nullptr;
}

} // namespace

void KyDeviceInfoObject::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyDeviceInfoObject>("KyDeviceInfoObject", KyObject::getType())
                 .attribute("Name", &KyDeviceInfoObject::getName)
                 .attribute("VendorID", cGet<&Info::vendorId>)
                 .attribute("ProductID", cGet<&Info::productId>)
                 .attribute("DeviceType", &getDeviceType)
                 .attribute("Path", cGet<&Info::path>)
                 .attribute("Serial", cGet<&Info::serial>)
                 .attribute("Present", cGet<&Info::isPresent>)
                 .attribute("Used", &isUsed)
                 .build();
}

void KyDeviceInfoObject::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyDeviceInfoObject::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyDeviceInfoObject::getObjectType() const {
    return getType();
}

KyDeviceInfoObject* KyDeviceInfoObject::cast(KyObject* object) {
    return kyCast<KyDeviceInfoObject>(object);
}
