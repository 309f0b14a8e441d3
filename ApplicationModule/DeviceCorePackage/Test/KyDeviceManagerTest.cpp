// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDevice.h"
#include "KyDeviceDriver.h"
#include "KyDeviceManager.h"
#include "KyHidDetection.h"

#include "KyException.h"
#include "KyMainTaskManager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using Records = std::vector<KyHidRecord>;
using Parameters = KyDeviceManager::KyDeviceParameterVector;

Records gUnits;
std::vector<std::string> gReports;
std::vector<std::string> gEnded;

class FakeDevice : public KyDevice {
public:
    explicit FakeDevice(const std::string& name) { setName(name); }
    ~FakeDevice() override {
        gEnded.push_back(KyDevice::getName());
        onEnd();
    }
    bool execute() override {
        ++nbRuns;
        onRun();
        return true;
    }

    int nbRuns = 0;
    std::function<void()> onRun = [] {};
    std::function<void()> onEnd = [] {};
};

/// Builds a device on the first free unit that fits.
class FakeDriver : public KyDeviceDriver {
public:
    explicit FakeDriver(const std::string& name = "Fake") { setNameDeviceDriver(name); }

    void start() override {
        ++nbStarts;
        onStart();
    }
    using KyDeviceDriver::getDevice;
    const KyDevice* getDevice(const std::string& name, const Parameters& parameters) override {
        KyDeviceManager::get()->applyDeviceFilter(parameters);
        auto& infos = KyDeviceManager::get()->editDeviceInfoVector();
        const auto info = std::ranges::find(infos, true, &KyDeviceManager::KyDeviceInfoStruct::isSelected);
        if (info == infos.end())
            return nullptr;
        KyDevice* const device = info->device = new FakeDevice(name);
        registerDevice(device, false);
        return device;
    }
    FakeDevice* add(const std::string& name, bool isRunByDriver = false) {
        auto* device = new FakeDevice(name);
        registerDevice(device, isRunByDriver);
        return device;
    }
    using KyDeviceDriver::destroyAllDevices;
    using KyDeviceDriver::registerDevice;
    using KyDeviceDriver::unregisterDevice;

    int nbStarts = 0;
    std::function<void()> onStart = [] {};
};

/// A manager that finds gUnits.
class KyDeviceManagerTest : public testing::Test {
protected:
    KyDeviceManagerTest() {
        gUnits = {{"Acme", "Stick", 0x1111, 0x2222, 1, 4, "/dev/a", "1"},
                  {"Acme", "Mouse", 0x1111, 0x3333, 1, 2, "/dev/b", ""},
                  {"Logi", "Pad", 0x046D, 0xC216, 1, 5, "/dev/c", "7"}};
        gReports.clear();
        gEnded.clear();
        KyHidDetection::setSource([] { return gUnits; });
        mHandler = KyException::setReportHandler([](const std::string& text) { gReports.push_back(text); });
        KyDeviceManager::initializeClass();
        manager().registerDeviceDriver(mDriver.get());
    }
    ~KyDeviceManagerTest() override {
        mDriver.reset();
        KyDeviceManager::finalizeClass();
        KyException::setReportHandler(mHandler);
        KyHidDetection::setSource(nullptr);
    }

    static KyDeviceManager& manager() { return *KyDeviceManager::get(); }
    static std::string listSelected(const Parameters& parameters) {
        manager().applyDeviceFilter(parameters);
        std::string names;
        for (const auto& info : manager().getDeviceInfoVector())
            names += info.isSelected ? info.name + ";" : "";
        return names;
    }
    /// An asterisk for one in use, a question mark for one that is gone.
    static std::string listUnits() {
        std::string units;
        for (const auto& info : manager().getDeviceInfoVector())
            units += info.name + " " + info.path + (info.device ? "*" : "") + (info.isPresent ? ";" : "?;");
        return units;
    }

    std::unique_ptr<FakeDriver> mDriver = std::make_unique<FakeDriver>();
    KyException::ReportHandler mHandler = nullptr;
};

TEST_F(KyDeviceManagerTest, AFilterSelectsFreeUnitsThatFit) {
    const struct {
        Parameters parameters;
        std::string selected;
    } cases[] = {
        {{}, "Acme Stick;Acme Mouse;Logi Pad;"},
        {{{"DeviceType", "Joystick"}}, "Acme Stick;Logi Pad;"},
        {{{"DeviceType", "Mouse"}}, "Acme Mouse;"},
        {{{"DeviceType", "Keyboard"}}, "Acme Stick;Acme Mouse;Logi Pad;"},
        {{{"DeviceType", "Mouse"}, {"DeviceType", "keyboard"}}, "Acme Mouse;"},
        {{{"DeviceType", "Mouse"}, {"DeviceType", "Joystick"}, {"VendorID", 0x1111}}, "Acme Stick;"},
        {{{"VendorID", "4369"}}, "Acme Stick;Acme Mouse;"},
        {{{"VendorID", 0x11111}}, ""},
        {{{"VendorID", KyField()}}, ""},
        {{{"ProductID", 0x7C216}}, "Logi Pad;"},
        {{{"productid", 1}, {"Colour", 3}}, "Acme Stick;Acme Mouse;Logi Pad;"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(listSelected(test.parameters), test.selected);

    EXPECT_NE(mDriver->getDevice("stick", {}), nullptr);
    EXPECT_EQ(listSelected({}), "Acme Mouse;Logi Pad;");
}

TEST_F(KyDeviceManagerTest, DriversAreKnownOnceAndByTheirExactName) {
    FakeDriver nameless("");
    FakeDriver first("Same");
    auto second = std::make_unique<FakeDriver>("Same");
    for (KyDeviceDriver* driver : std::vector<KyDeviceDriver*>{nullptr, &nameless, &first, second.get(), &first})
        manager().registerDeviceDriver(driver);
    EXPECT_EQ(manager().getNbDeviceDrivers(), 4u);
    EXPECT_EQ(manager().editDeviceDriver(4), nullptr);
    EXPECT_EQ(manager().getDeviceDriverByName(""), &nameless);
    EXPECT_EQ(manager().getDeviceDriverByName("same"), nullptr);
    EXPECT_EQ(manager().getDeviceDriverByName("Same"), &first);
    manager().unregisterDeviceDriver(&first);
    manager().unregisterDeviceDriver(&first);
    EXPECT_EQ(manager().getDeviceDriverByName("Same"), second.get());
    second.reset();
    EXPECT_EQ(manager().getNbDeviceDrivers(), 2u);
    EXPECT_EQ(manager().getDevice("Same", "stick"), nullptr);
    EXPECT_FALSE(manager().releaseDevice("Same", nullptr));
    EXPECT_TRUE(manager().releaseDevice("", nullptr));
}

TEST_F(KyDeviceManagerTest, ADeviceRegisteredTwiceEndsWithItsSecondRelease) {
    int nbChanges = 0;
    const void* ended = nullptr;
    manager().devicesChangedSignal().connect([&] { ++nbChanges; });
    manager().deviceEndedSignal().connect([&](const KyDevice* device) { ended = device; });

    const KyDevice* device = manager().getDevice("Fake", "stick", {{"ProductID", 0xC216}});
    ASSERT_NE(device, nullptr);
    ASSERT_NE(manager().getDeviceInfo(device), nullptr);
    EXPECT_EQ(manager().getDeviceInfo(device)->name, "Logi Pad");
    mDriver->registerDevice(const_cast<KyDevice*>(device), false);
    EXPECT_EQ(device->getNbReferences(), 2u);
    ASSERT_EQ(manager().getNbDevices(), 1u);
    EXPECT_EQ(manager().getDevice(0), device);
    EXPECT_EQ(nbChanges, 1);

    EXPECT_TRUE(manager().releaseDevice("Fake", device));
    EXPECT_EQ(device->getNbReferences(), 1u);
    EXPECT_EQ(mDriver->getNbDevices(), 1u);
    EXPECT_EQ(ended, nullptr);
    EXPECT_TRUE(manager().releaseDevice("Fake", device));
    EXPECT_EQ(ended, device);
    EXPECT_EQ(nbChanges, 2);
    EXPECT_EQ(gEnded, std::vector<std::string>{"stick"});
    EXPECT_EQ(manager().getNbDevices() + mDriver->getNbDevices(), 0u);
    EXPECT_EQ(listSelected({{"ProductID", 0xC216}}), "Logi Pad;");
    EXPECT_EQ(manager().getDeviceInfo(nullptr), nullptr);
    EXPECT_TRUE(manager().releaseDevice("Fake", device));
}

TEST_F(KyDeviceManagerTest, ListenersAreToldOnceAndFindTheChangeDone) {
    const KyDevice* device = nullptr;
    std::string told;
    manager().devicesChangedSignal().connect([&] {
        told += std::to_string(gEnded.size()) + " ended, " + listUnits().substr(0, 19);
        if (const auto* info = gEnded.empty() ? nullptr : manager().getDeviceInfo(device))
            info->device->destroy();
    });
    const auto tell = [&](auto act) {
        gEnded.clear();
        told.clear();
        device = manager().getDevice("Fake", "stick");
        EXPECT_EQ(std::exchange(told, {}), "0 ended, Acme Stick /dev/a*;");
        act(const_cast<KyDevice*>(device));
        return told;
    };
    EXPECT_EQ(tell([&](KyDevice* held) { mDriver->releaseDevice(held); }), "1 ended, Acme Stick /dev/a;A");
    EXPECT_EQ(tell([&](KyDevice* held) { held->destroy(); }), "1 ended, Acme Stick /dev/a;A");
    EXPECT_EQ(tell([&](KyDevice*) { mDriver->destroyAllDevices(); }), "1 ended, Acme Stick /dev/a;A");
    EXPECT_EQ(tell([&](KyDevice* held) { mDriver->unregisterDevice(held); }), "0 ended, Acme Stick /dev/a;A");
    delete device;
}

TEST_F(KyDeviceManagerTest, OnlyItsDriverUnregistersADeviceAndLeavesTheLastReferenceToTheCaller) {
    FakeDriver other;
    mDriver->registerDevice(nullptr, false);
    FakeDevice* device = mDriver->add("stick");
    other.registerDevice(device, false);
    EXPECT_EQ(gReports.size(), 1u);
    EXPECT_EQ(other.getNbDevices(), 0u);
    device->addReference();
    EXPECT_FALSE(other.unregisterDevice(device));
    EXPECT_FALSE(mDriver->unregisterDevice(nullptr));
    EXPECT_FALSE(mDriver->unregisterDevice(device));
    EXPECT_EQ(device->getNbReferences(), 1u);
    EXPECT_TRUE(mDriver->unregisterDevice(device));
    EXPECT_EQ(device->getNbReferences(), 1u);
    EXPECT_EQ(device->getParent(), nullptr);
    EXPECT_FALSE(mDriver->unregisterDevice(device));
    device->removeReference();
    EXPECT_EQ(gEnded.size(), 1u);
}

TEST_F(KyDeviceManagerTest, DevicesRunOnceAFrameUnlessTheirDriverRunsThem) {
    FakeDevice* scheduled = mDriver->add("scheduled");
    FakeDevice* driven = mDriver->add("driven", true);
    EXPECT_EQ(manager().getNbDevices(), 2u);
    EXPECT_EQ(manager().getName(), "KyDeviceManagerTask");
    KyMainTaskManager::get().update();
    KyMainTaskManager::get().update();
    EXPECT_EQ(scheduled->nbRuns, 2);
    EXPECT_EQ(driven->nbRuns, 0);

    KyTask other;
    manager().insertTask(&other);
    EXPECT_EQ(manager().getNbDevices(), 3u);
    EXPECT_EQ(manager().editDevice(2), nullptr);
    EXPECT_EQ(manager().editDevice(3), nullptr);
}

TEST_F(KyDeviceManagerTest, DevicesAndDriversMayLeaveWhileTheyRunAndTakeOthersWithThem) {
    FakeDevice* first = mDriver->add("first");
    FakeDevice* second = mDriver->add("second");
    FakeDevice* third = mDriver->add("third");
    mDriver->add("fourth");
    first->onRun = [&] { mDriver->releaseDevice(second); };
    KyMainTaskManager::get().update();
    EXPECT_EQ(gEnded, std::vector<std::string>{"second"});
    first->onRun = [&] { mDriver.reset(); };
    first->onEnd = [&] { third->destroy(); };
    KyMainTaskManager::get().update();
    EXPECT_EQ(gEnded, (std::vector<std::string>{"second", "first", "third", "fourth"}));
    EXPECT_EQ(manager().getNbDeviceDrivers() + manager().getNbDevices(), 0u);
}

TEST_F(KyDeviceManagerTest, TheEndOfADeviceMayEndItsDriverButBringsAnEndingOneNoDevice) {
    FakeDriver* driver = mDriver.get();
    driver->add("first")->onEnd = [&] { mDriver.reset(); };
    driver->add("second");
    driver->destroyAllDevices();
    EXPECT_EQ(gEnded, (std::vector<std::string>{"first", "second"}));

    mDriver = std::make_unique<FakeDriver>();
    manager().registerDeviceDriver(driver = mDriver.get());
    FakeDevice late("late");
    driver->add("third")->onEnd = [&] {
        driver->registerDevice(&late, false);
        EXPECT_EQ(manager().getDevice("Fake", "another"), nullptr);
    };
    mDriver.reset();
    EXPECT_EQ(gEnded.back(), "third");
    EXPECT_EQ(gReports.size(), 1u);
    EXPECT_EQ(late.getNbReferences() + manager().getNbDevices(), 0u);
}

TEST_F(KyDeviceManagerTest, InitializingAgainEndsTheDevicesAndFreesTheirUnits) {
    FakeDriver second;
    FakeDriver late;
    manager().registerDeviceDriver(&second);
    const KyDevice* device = manager().getDevice("Fake", "stick");
    ASSERT_NE(device, nullptr);
    device->addReference();
    mDriver->onStart = [&] {
        manager().registerDeviceDriver(&late);
        manager().unregisterDeviceDriver(&second);
    };
    manager().initialize();
    EXPECT_EQ(gEnded.size(), 1u);
    EXPECT_EQ(mDriver->nbStarts, 1);
    EXPECT_EQ(second.nbStarts + late.nbStarts, 0);
    EXPECT_EQ(listSelected({}), "Acme Stick;Acme Mouse;Logi Pad;");
    EXPECT_NE(manager().getDevice("Fake", "again"), nullptr);
    manager().initialize();
    EXPECT_EQ(late.nbStarts, 1);
}

TEST_F(KyDeviceManagerTest, ADeviceEndedByItsLastHolderLeavesEveryList) {
    const KyDevice* device = manager().getDevice("Fake", "stick");
    ASSERT_NE(device, nullptr);
    device->addReference();
    manager().releaseDevice("Fake", device);
    device->removeReference();
    EXPECT_EQ(gEnded.size(), 1u);
    EXPECT_EQ(mDriver->getNbDevices() + manager().getNbDevices(), 0u);
    EXPECT_EQ(manager().getDeviceInfo(device), nullptr);
    EXPECT_EQ(listSelected({}), "Acme Stick;Acme Mouse;Logi Pad;");
}

TEST_F(KyDeviceManagerTest, DriversOutliveTheManagerAndDropTheirLists) {
    FakeDevice* kept = mDriver->add("kept");
    FakeDevice* released = mDriver->add("released");
    const unsigned nbTasks = KyMainTaskManager::get().getNbTasks();
    KyDeviceManager::initializeClass();
    KyDeviceManager::finalizeClass();
    KyDeviceManager::finalizeClass();
    EXPECT_EQ(KyDeviceManager::get(), nullptr);
    EXPECT_EQ(KyMainTaskManager::get().getNbTasks(), nbTasks - 1);
    EXPECT_EQ(kept->getParent(), nullptr);

    mDriver->releaseDevice(released);
    EXPECT_EQ(gEnded, std::vector<std::string>{"released"});
    const std::unique_ptr<FakeDevice> owned(mDriver->add("late"));
    mDriver->destroyAllDevices();
    EXPECT_EQ(mDriver->getNbDevices(), 0u);
    EXPECT_EQ(gEnded.size(), 1u);
    kept->destroy();
}

TEST_F(KyDeviceManagerTest, ARescanKnowsUnitsByPathThenBySerialNumber) {
    const std::string all = "Acme Stick /dev/a;Acme Mouse /dev/b;Logi Pad /dev/c;";
    const auto* first = manager().getDeviceInfoVector().data();
    EXPECT_FALSE(manager().rescanDevices());
    EXPECT_EQ(manager().getDeviceInfoVector().data(), first) << "pointers to entries hold";
    manager().detectDevices();
    EXPECT_EQ(listUnits(), all + all);
    const KyDevice* device = nullptr;
    for (int i = 0; i < 2; ++i)
        device = manager().getDevice("Fake", "pad", {{"VendorID", 0x046D}});
    manager().releaseDevice("Fake", manager().getDeviceInfoVector()[2].device);
    EXPECT_TRUE(manager().rescanDevices());
    EXPECT_EQ(listUnits(), "Acme Stick /dev/a;Acme Mouse /dev/b;Logi Pad /dev/c*;");
    manager().editDeviceInfoVector().emplace_back().name = "Own";

    const Records before = std::exchange(gUnits, {});
    EXPECT_TRUE(manager().rescanDevices());
    EXPECT_EQ(listUnits(), "Logi Pad /dev/c*?;Own ;");
    EXPECT_FALSE(manager().rescanDevices());

    // Plugged again elsewhere, where another unit of the model was in the meantime.
    gUnits = before;
    gUnits[2].path = "/dev/a";
    gUnits[0] = {"Logi", "Pad", 0x046D, 0xC216, 1, 5, "/dev/c", "8"};
    EXPECT_TRUE(manager().rescanDevices());
    EXPECT_EQ(listUnits(), "Logi Pad /dev/a*;Own ;Logi Pad /dev/c;Acme Mouse /dev/b;");
    EXPECT_EQ(manager().getDeviceInfo(device)->joystickIndex, 1u);
    EXPECT_FALSE(manager().rescanDevices());

    // Who leaves while its device is in use is not offered when the device is gone.
    gUnits.erase(gUnits.begin() + 2);
    EXPECT_TRUE(manager().rescanDevices());
    manager().releaseDevice("Fake", device);
    EXPECT_EQ(listSelected({{"VendorID", 0x046D}}), "Logi Pad;");
    EXPECT_TRUE(manager().rescanDevices());
    EXPECT_EQ(listUnits(), "Own ;Logi Pad /dev/c;Acme Mouse /dev/b;");
}

} // namespace
