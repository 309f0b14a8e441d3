// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTestChannels.h"

#include "KyBoundDevice.h"
#include "KyChannelReference.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace {

const KyQuatf cQuarter(KyVec3f(0, 0, 1), 1.5707963F);
const KyQuatf cNotFinite(0, 0, 0, std::numeric_limits<float>::quiet_NaN());
const KyQuatf cTilt(KyVec3f(1, 0, 0), 0.5F);

struct EndingDevice : KyDevice {
    explicit EndingDevice(int& nbEnds)
        : mNbEnds(nbEnds) {}
    ~EndingDevice() override { ++mNbEnds; }
    int& mNbEnds;
};

struct WindowDevice : KyBoundDevice {
    using KyBoundDevice::getWindowId;
    int nbChanges = 0;

private:
    void windowChanged() override { ++nbChanges; }
};

TEST(KyDevice, StartsWithClosedAndDisabledChannels) {
    KyTestDevice device(1, 1, 1);
    device.setNbAxis(2);
    const KyDeviceAxisChannel& added = device.getAxis(1);
    EXPECT_EQ(added.getName(), "No name");
    EXPECT_EQ(added.getAccessMode(), eAccessReadOnly);
    EXPECT_FALSE(added.isEnabled());
    EXPECT_EQ(device.getButton(0).getNbValues(), 2);
    EXPECT_EQ(device.getOrientation(0).getValue(), KyQuatf());
    EXPECT_EQ(device.getName(), "Unnamed");
}

TEST(KyDevice, EnablesAllChannelsAtOnce) {
    KyTestDevice device(2, 2, 2);
    for (const bool enabled : {false, true, true}) {
        device.setEnabled(enabled);
        for (unsigned i = 0; i < 2; ++i) {
            EXPECT_EQ(device.getAxis(i).isEnabled(), enabled);
            EXPECT_EQ(device.getButton(i).isEnabled(), enabled);
            EXPECT_EQ(device.getOrientation(i).isEnabled(), enabled);
            device.editAxis(i).disable();
        }
    }
}

TEST(KyDevice, GivesItsChannelsNamesModesAndReadings) {
    KyTestDevice device(2, 2, 2);
    device.setAxisName(1, "Turn");
    device.setButtonName(1, "Fire");
    device.setOrientationName(1, "Head");
    device.setAxisAccessMode(1, eAccessReadWrite);
    device.setButtonAccessMode(1, eAccessWriteOnly);
    device.setOrientationAccessMode(1, eAccessReadWrite);
    device.setAxisAbsoluteValue(1, 0.5F);
    device.setAxisDeltaValue(1, 1);
    device.setOrientationValue(1, cQuarter);
    EXPECT_EQ(device.getAxis(1).getName() + device.getButton(1).getName() + device.getOrientation(1).getName(),
              "TurnFireHead");
    EXPECT_EQ(device.getAxis(1).getAccessMode(), eAccessReadWrite);
    EXPECT_EQ(device.getButton(1).getAccessMode(), eAccessWriteOnly);
    EXPECT_EQ(device.getOrientation(1).getAccessMode(), eAccessReadWrite);
    EXPECT_FLOAT_EQ(device.getAxis(1).getValue(), 0.6F);
    EXPECT_EQ(device.getOrientation(1).getDeltaValue(), cQuarter);
    EXPECT_EQ(device.getAxis(0).getValue(), 0.0F);
}

TEST(KyDevice, OnlyItsDriverPressesAButton) {
    KyTestDevice device(0, 1, 0);
    KyDeviceButtonChannel& button = device.editButton(0);
    button.setValue(1);
    EXPECT_EQ(button.getValue(), 0);
    device.setButtonAccessMode(0, eAccessWriteOnly);
    button.setValue(1);
    EXPECT_EQ(button.getValue() * 10 + button.getPreviousValue(), 10);
    device.setButtonValue(0, 3);
    EXPECT_EQ(button.getValue() * 10 + button.getPreviousValue(), 31);
    device.setButtonValue(0, 3);
    EXPECT_EQ(button.getPreviousValue(), 3);
}

TEST(KyDevice, TurnsARelativeOrientationInItsOwnFrame) {
    KyTestDevice device(0, 0, 1);
    KyDeviceOrientationChannel& orientation = device.editOrientation(0);
    orientation.setValue(cQuarter);
    EXPECT_EQ(orientation.getValue(), KyQuatf());
    device.setOrientationValue(0, cQuarter);
    device.setOrientationAccessMode(0, eAccessWriteOnly);
    orientation.setValue(cTilt);
    EXPECT_EQ(orientation.getValue(), cQuarter * cTilt);
    EXPECT_EQ(orientation.getDeltaValue(), cTilt);
    device.setOrientationValue(0, cNotFinite);
    EXPECT_EQ(orientation.getValue(), cQuarter * cTilt);
    orientation.setAbsolute(true);
    device.setOrientationValue(0, cQuarter);
    device.setOrientationValue(0, cNotFinite);
    EXPECT_EQ(orientation.getValue(), cQuarter);
    EXPECT_EQ(orientation.getDeltaValue(), cTilt);
}

TEST(KyDevice, EndsWithItsLastReference) {
    int nbEnds = 0;
    auto* device = new EndingDevice(nbEnds);
    device->addReference();
    device->addReference();
    device->removeReference();
    EXPECT_EQ(nbEnds, 0);
    device->removeReference();
    EXPECT_EQ(nbEnds, 1);
    (new EndingDevice(nbEnds))->destroy();
    EXPECT_EQ(nbEnds, 2);
}

TEST(KyDevice, CopiesChannelsAndNameOnly) {
    KyTestDevice device(1, 1, 1);
    device.setName("Pad");
    device.setAxisValue(0, 0.5F);
    device.addReference();
    const KyTestDevice copy(device);
    EXPECT_EQ(copy.getNbReferences(), 0U);
    EXPECT_EQ(copy.getAxis(0).getValue(), 0.5F);
    KyTestDevice other(3, 0, 0);
    other.KyTask::setName("Task");
    other.addReference();
    other.addReference();
    other = device;
    EXPECT_EQ(other.getNbReferences(), 2U);
    EXPECT_EQ(other.KyTask::getName(), "Task");
    EXPECT_EQ(other.getName(), "Pad");
    EXPECT_EQ(other.getNbAxis() + other.getNbButtons() + other.getNbOrientations(), 3U);
}

TEST(KyChannelReference, FollowsAChannelAndLearnsOfItsEnd) {
    auto device = std::make_unique<KyTestDevice>(2, 0, 0);
    const KyChannelReference<KyDeviceAxisChannel> first(device->editAxis(0)), last(device->editAxis(1));
    const KyDeviceAxisChannel copy(device->getAxis(0));
    device->setNbAxis(1000);
    EXPECT_EQ(first.get(), &device->getAxis(0));
    EXPECT_EQ(last.get(), &device->getAxis(1));
    device->setNbAxis(1);
    EXPECT_EQ(last.get(), nullptr);
    *device = KyTestDevice(1, 0, 0);
    EXPECT_EQ(first.get(), &device->getAxis(0));
    device.reset();
    EXPECT_EQ(first.get(), nullptr);
    EXPECT_EQ(KyChannelReference<KyDeviceAxisChannel>().get(), nullptr);
}

TEST(KyBoundDevice, TellsOfEveryOtherWindow) {
    int windows[2];
    WindowDevice device;
    EXPECT_EQ(device.getWindowId(), nullptr);
    for (void* window : {static_cast<void*>(nullptr), static_cast<void*>(&windows[0]), static_cast<void*>(&windows[0]),
                         static_cast<void*>(&windows[1]), static_cast<void*>(nullptr)}) {
        device.bindToWindow(window);
        EXPECT_EQ(device.getWindowId(), window);
    }
    EXPECT_EQ(device.nbChanges, 3);
    device.bindToWindow(&windows[0]);
    const WindowDevice copy(device);
    EXPECT_EQ(copy.getWindowId(), nullptr);
}

} // namespace
