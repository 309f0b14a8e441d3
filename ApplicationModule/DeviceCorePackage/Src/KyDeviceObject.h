// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyAxisObject.h"
#include "KyButtonObject.h"
#include "KyOrientationObject.h"

#include "KyHolder.h"

#include <string_view>
#include <vector>

class KyDevice;

/// A device as scripts see it: one object for each device, made by KyDeviceManagerObject and held by it until the
/// device ends. It keeps the device alive for nobody: once that has ended, or the device manager has, it is not valid
/// and empty, and says so as a modified "Valid". Channels are objects too, the same ones at every reading. Main thread.
///
///     local pad = devices:findDevice("Wireless Controller")
///     local x = pad and pad:findAxis("LeftX")
///     for i = 0, #pad.Buttons - 1 do print(pad.Buttons[i].Name, pad.Buttons[i].Value) end
class KYAPPLICATION_EXPORT KyDeviceObject : public KyObject, public KyReferenceCounted {
public:
    static const KyType* getType();
    static KyDeviceObject* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    KyDeviceObject(const KyDeviceObject&) = delete;
    KyDeviceObject& operator=(const KyDeviceObject&) = delete;

    /// The device's; empty when it is gone.
    const std::string& getName() const override;
    /// False once the device is gone.
    bool isValid() const { return editDevice() != nullptr; }
    /// Null when it is gone.
    KyDevice* editDevice() const { return mWatch.isConnected() ? mDevice : nullptr; }
    /// False when the device is switched off, or gone.
    bool isEnabled() const;
    /// The device's channels too.
    void setEnabled(bool enabled);

    /// @{
    /// 0 when the device is gone.
    unsigned getNbAxes() const;
    unsigned getNbButtons() const;
    unsigned getNbOrientations() const;
    /// @}
    /// Null when out of range, here and below.
    KyAxisObject* getAxis(unsigned index);
    /// See getAxis.
    KyButtonObject* getButton(unsigned index);
    /// See getAxis.
    KyOrientationObject* getOrientation(unsigned index);
    /// The first of exactly that name; null when there is none, here and below.
    KyAxisObject* findAxis(std::string_view name);
    /// See findAxis.
    KyButtonObject* findButton(std::string_view name);
    /// See findAxis.
    KyOrientationObject* findOrientation(std::string_view name);

private:
    friend class KyDeviceManagerObject;

    /// The connection breaks when nobody would tell that the device ends.
    KyDeviceObject(KyDevice& device, const KyConnection& watch)
        : mDevice(&device)
        , mWatch(watch) {}
    void forgetDevice();

    KyDevice* mDevice;
    KyConnection mWatch;
    std::vector<KyHolder<KyAxisObject>> mAxes;
    std::vector<KyHolder<KyButtonObject>> mButtons;
    std::vector<KyHolder<KyOrientationObject>> mOrientations;

    static const KyType* msType;
};
