// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDeviceManager.h"

#include "KyObject.h"
#include "KyReferenceCounted.h"

#include <utility>

/// What was known of a unit of the machine when it was asked for; see KyDeviceManagerObject::getInfo. It does not
/// change when the unit does.
///
///     local unit = devices:getInfo(0)
///     print(unit.Name, unit.VendorID, unit.ProductID, unit.DeviceType, unit.Path, unit.Serial, unit.Present,
///     unit.Used)
class KYAPPLICATION_EXPORT KyDeviceInfoObject : public KyObject, public KyReferenceCounted {
public:
    static const KyType* getType();
    static KyDeviceInfoObject* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// A copy of the entry as it is now.
    explicit KyDeviceInfoObject(KyDeviceManager::KyDeviceInfoStruct info)
        : mInfo(std::move(info)) {}

    const std::string& getName() const override { return mInfo.name; }
    /// Its device may have ended since.
    const KyDeviceManager::KyDeviceInfoStruct& getInfo() const { return mInfo; }

private:
    KyDeviceManager::KyDeviceInfoStruct mInfo;

    static const KyType* msType;
};
