// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseDriver.h"

#include "KyCompositeAxisChannel.h"
#include "KyDeviceManager.h"
#include "KyException.h"
#include "KyHidDetection.h"
#include "KyLibraryEntry.h"
#include "KyMainTaskManager.h"
#include "KyModuleManager.h"
#include "KySpaceMouseDevice_p.h"
#include "KySpaceMouseModule_p.h"

#include <gtest/gtest.h>

#include <deque>
#include <map>

namespace {

using Report = std::vector<std::uint8_t>;

/// Units that a test plugs, moves and pulls.
struct FakeBus {
    std::vector<KySpaceMouseUnit> units;
    std::map<std::string, std::deque<Report>> reports;
    std::optional<KySpaceMouseUnit> guess;
    bool refuses = false;
    int nbFinds = 0;

    void plug(const std::string& path, const std::string& serial, std::uint16_t product = 0xC626) {
        units.push_back({"Mouse " + path, path, serial, 0x256F, product, 2});
    }
    bool has(const std::string& path) const {
        return (guess && guess->path == path) ||
               std::ranges::any_of(units, [&path](const auto& unit) { return unit.path == path; });
    }
};

class FakeSource : public KySpaceMouseSource {
public:
    FakeSource(FakeBus& bus, std::string path)
        : mBus(bus)
        , mPath(std::move(path)) {}
    bool read(KySpaceMouseState& state) override {
        for (; !mBus.reports[mPath].empty(); mBus.reports[mPath].pop_front())
            KySpaceMouseReport::apply(mBus.reports[mPath].front(), state);
        return mBus.has(mPath);
    }

private:
    FakeBus& mBus;
    std::string mPath;
};

class FakeFinder : public KySpaceMouseFinder {
public:
    explicit FakeFinder(FakeBus& bus)
        : mBus(bus) {}
    std::vector<KySpaceMouseUnit> find() override {
        ++mBus.nbFinds;
        return mBus.units;
    }
    std::optional<KySpaceMouseUnit> guess() override { return mBus.guess; }
    std::unique_ptr<KySpaceMouseSource> open(const KySpaceMouseUnit& unit) override {
        return mBus.refuses ? nullptr : std::make_unique<FakeSource>(mBus, unit.path);
    }

private:
    FakeBus& mBus;
};

class KySpaceMouseDriverTest : public testing::Test {
protected:
    KySpaceMouseDriverTest() {
        KyHidDetection::setSource([] {
            return std::vector<KyHidRecord>{{"3Dconnexion", "SpaceNavigator", 0x256F, 0xC626, 1, 8, "a", ""}};
        });
        KyDeviceManager::initializeSingleton();
        KySpaceMouseDriver::Finders finders;
        finders.push_back(std::make_unique<FakeFinder>(mBus));
        finders.push_back(std::make_unique<FakeFinder>(mSecondBus));
        mDriver = std::make_unique<KySpaceMouseDriver>(std::move(finders));
        KyDeviceManager::get()->registerDeviceDriver(mDriver.get());
    }
    ~KySpaceMouseDriverTest() override {
        mDriver.reset();
        KyDeviceManager::finalizeSingleton();
        KyHidDetection::setSource(nullptr);
    }

    void frame() { KyMainTaskManager::get().update(); }
    void send(const std::string& path, const Report& report) {
        mBus.reports[path].push_back(report);
        frame();
    }
    const KyDevice* start(const std::string& path, const std::string& serial = "") {
        mBus.plug(path, serial);
        KyDeviceManager::get()->initialize();
        return KyDeviceManager::get()->getDevice("SpaceMouse", "");
    }

    FakeBus mBus;
    FakeBus mSecondBus;
    std::unique_ptr<KySpaceMouseDriver> mDriver;
};

TEST_F(KySpaceMouseDriverTest, MovesACompositeByItsChannels) {
    const KyDevice* mouse = start("a");
    ASSERT_TRUE(mouse);
    EXPECT_EQ(mouse->getName(), "Mouse a");
    EXPECT_EQ(mouse->getAxis(5).getName(), "RZ");
    EXPECT_EQ(mouse->getButton(1).getName(), "Button 1");
    KyCompositeAxisChannel speed;
    speed.setAbsolute(true);
    speed.insertMappedAxis(mouse->getAxis(2), eOperationSet);
    send("a", {1, 0, 0, 0x51, 0xFF, 0, 0});
    EXPECT_TRUE(speed.update());
    EXPECT_FLOAT_EQ(speed.getValue(), -0.5F) << "pushed away";
}

TEST_F(KySpaceMouseDriverTest, TurnsByTheTiltOfTheCap) {
    const KyDeviceOrientationChannel& rotation = start("a")->getOrientation(0);
    EXPECT_FALSE(rotation.isAbsolute());
    send("a", {2, 0, 0, 0, 0, 0x5E, 1});
    const KyQuat<float> turn = rotation.getDeltaValue();
    EXPECT_LT(turn.y, 0) << "clockwise from above";
    EXPECT_EQ(turn.x, 0);
    EXPECT_LE(turn.angle(), 0.1001F) << "a radian a second, in no more than the longest cycle";
    send("a", {2, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(rotation.getDeltaValue(), KyQuat<float>());
}

TEST_F(KySpaceMouseDriverTest, ShowsAPressShorterThanAFrame) {
    const KyDeviceButtonChannel& button = start("a")->getButton(1);
    mBus.reports["a"].push_back({3, 2});
    send("a", {3, 0});
    EXPECT_EQ(button.getValue(), 1);
    EXPECT_EQ(button.getPreviousValue(), 0);
    frame();
    EXPECT_EQ(button.getValue(), 0);
    EXPECT_EQ(button.getPreviousValue(), 1);
    frame();
    EXPECT_EQ(button.getPreviousValue(), 0) << "pushed in every cycle";
}

TEST_F(KySpaceMouseDriverTest, KeepsAHeldDeviceAtRestUntilItsUnitIsBack) {
    const KyDevice* mouse = start("a", "42");
    send("a", {1, 0x5E, 1, 0, 0, 0, 0});
    send("a", {3, 1});
    EXPECT_EQ(mouse->getAxis(0).getValue(), 1.0F);
    mBus.units.clear();
    frame();
    EXPECT_EQ(mouse->getAxis(0).getValue(), 0.0F);
    EXPECT_EQ(mouse->getButton(0).getValue(), 0);
    EXPECT_EQ(mDriver->getDevice("", {}), nullptr) << "nothing is attached";

    mBus.plug("b", "43");
    mBus.plug("c", "42");
    mDriver->lookAround();
    EXPECT_EQ(mDriver->getNbDevices(), 2U);
    send("c", {1, 0x5E, 1, 0, 0, 0, 0});
    EXPECT_EQ(mouse->getAxis(0).getValue(), 1.0F);
}

TEST_F(KySpaceMouseDriverTest, EndsADeviceThatNobodyHoldsWithItsUnit) {
    const KyDevice* mouse = start("a");
    EXPECT_EQ(mDriver->getDevice("Mouse a", {}), mouse);
    EXPECT_EQ(mouse->getNbReferences(), 3U);
    EXPECT_EQ(KyDeviceManager::get()->getDeviceInfoVector()[0].device, mouse);
    mBus.units.clear();
    frame();
    KyDeviceManager::get()->releaseDevice("SpaceMouse", mouse);
    frame();
    EXPECT_EQ(mDriver->getNbDevices(), 1U);
    KyDeviceManager::get()->releaseDevice("SpaceMouse", mouse);
    frame();
    EXPECT_EQ(mDriver->getNbDevices(), 0U);
    EXPECT_EQ(KyDeviceManager::get()->getNbDevices(), 0U);
    EXPECT_EQ(KyDeviceManager::get()->getDeviceInfoVector()[0].device, nullptr);
}

TEST_F(KySpaceMouseDriverTest, TellsOfADeviceThatIsReadyAndMayBeEndedAtOnce) {
    KyDeviceManager& manager = *KyDeviceManager::get();
    int nbTold = 0;
    manager.devicesChangedSignal().connect([&] {
        const KyDevice* mouse = nbTold++ == 0 ? manager.getDevice("SpaceMouse", "") : nullptr;
        ASSERT_EQ(mouse != nullptr, nbTold == 1);
        EXPECT_EQ(manager.getDeviceInfo(mouse), mouse ? manager.getDeviceInfoVector().data() : nullptr);
        if (mouse)
            manager.editDevice(0)->destroy();
    });
    mBus.plug("a", "");
    manager.initialize();
    EXPECT_EQ(nbTold, 2);
    EXPECT_EQ(mDriver->getNbDevices(), 0U);
}

TEST_F(KySpaceMouseDriverTest, BearsThatOneDeviceTakesAnotherAlong) {
    KyDeviceManager& manager = *KyDeviceManager::get();
    mBus.plug("a", "1");
    mBus.plug("b", "2");
    manager.initialize();
    manager.devicesChangedSignal().connect([&] {
        if (manager.getNbDevices() > 0)
            manager.editDevice(0)->destroy();
    });
    mBus.units.clear();
    frame();
    frame();
    EXPECT_EQ(manager.getNbDevices(), 0U);
}

TEST_F(KySpaceMouseDriverTest, RestsADisabledDeviceWhoseUnitIsPulledOut) {
    const KyDevice* mouse = start("a");
    send("a", {1, 0x5E, 1, 0, 0, 0, 0});
    mDriver->editDevice(0)->setEnabled(false);
    mBus.units.clear();
    frame();
    EXPECT_EQ(mouse->getAxis(0).getValue(), 0.0F);
    EXPECT_EQ(mDriver->getDevice("", {}), nullptr) << "nothing is attached";
}

TEST_F(KySpaceMouseDriverTest, EntersUnitsThatAreListedLater) {
    static const char* lastPath = "b";
    KyDeviceManager& manager = *KyDeviceManager::get();
    start("a");
    mBus.plug("b", "");
    mDriver->lookAround();
    KyHidDetection::setSource([] {
        return std::vector<KyHidRecord>{{"", "", 0x256F, 0xC626, 1, 8, "a", ""},
                                        {"", "", 0x256F, 0xC626, 1, 8, lastPath, ""}};
    });
    const auto lists = [&manager](const KyDevice* device) {
        const auto& info = manager.getDeviceInfoVector().back();
        return info.path == lastPath && info.device == device;
    };
    const KyDevice* const mouse = manager.getDevice("SpaceMouse", "");
    EXPECT_TRUE(manager.rescanDevices());
    EXPECT_TRUE(lists(mouse));
    mBus.units.pop_back();
    frame();
    mBus.plug("c", "");
    mDriver->lookAround();
    lastPath = "c";
    manager.rescanDevices();
    EXPECT_TRUE(lists(mouse)) << "plugged in elsewhere";
}

TEST_F(KySpaceMouseDriverTest, AGuessClaimsNoEntryAndGivesWayToAUnitThatIsFound) {
    KyDeviceManager& manager = *KyDeviceManager::get();
    manager.editDeviceInfoVector().push_back({});
    mBus.guess = KySpaceMouseUnit{"SpaceMouse", "", "", 0, 0, 2, true};
    manager.initialize();
    const KyDevice* const mouse = manager.getDevice("SpaceMouse", "");
    ASSERT_TRUE(mouse);
    EXPECT_EQ(manager.getDeviceInfo(mouse), nullptr);
    mSecondBus.plug("raw", "");
    mDriver->lookAround();
    EXPECT_EQ(mDriver->getNbDevices(), 1U) << "the unit would be there twice";
    mSecondBus.reports["raw"].push_back({1, 0x5E, 1, 0, 0, 0, 0});
    frame();
    EXPECT_EQ(mouse->getAxis(0).getValue(), 1.0F);
    manager.initialize();
    EXPECT_EQ(mDriver->editDevice(0)->getName(), "Mouse raw") << "not even tried";
}

TEST_F(KySpaceMouseDriverTest, GivesFreeUnitsFirstAndThenSharesThem) {
    const KyDevice* const first = start("a");
    mBus.plug("b", "");
    mDriver->lookAround();
    EXPECT_NE(mDriver->getDevice("", {}), first);
    EXPECT_EQ(mDriver->getDevice("", {}), first);
}

TEST_F(KySpaceMouseDriverTest, GivesTheFirstUnitThatFits) {
    mDriver->releaseDevice(start("a"));
    mBus.plug("b", "", 0xC635);
    mDriver->lookAround();
    const struct {
        const char* name;
        KyDeviceDriver::Parameters parameters;
        const char* found;
    } cases[] = {
        {"", {}, "Mouse a"},
        {"SpaceMouse", {}, "Mouse a"},
        {"Mouse b", {}, "Mouse b"},
        {"Mouse", {}, ""},
        {"", {{"ProductID", KyField(0x1C635)}}, "Mouse b"},
        {"", {{"VendorID", KyField(0x046D)}}, ""},
        {"", {{"VendorID", KyField(1)}, {"VendorID", KyField(0x256F)}, {"Colour", KyField(3)}}, "Mouse a"},
        {"", {{"DeviceType", KyField("Mouse")}}, ""},
        {"", {{"DeviceType", KyField("Joystick")}}, "Mouse a"},
        {"", {{"DeviceType", KyField("Keyboard")}}, "Mouse a"},
        {"", {{"DeviceType", KyField("Mouse")}, {"DeviceType", KyField("Keyboard")}}, ""},
    };
    for (const auto& [name, parameters, found] : cases) {
        const KyDevice* device = mDriver->getDevice(name, parameters);
        EXPECT_EQ(device ? device->getName() : "", found) << name;
        mDriver->releaseDevice(device);
    }
}

TEST_F(KySpaceMouseDriverTest, AsksTheSecondWayOnlyWhereTheFirstHasNothing) {
    mSecondBus.plug("raw", "");
    KyDeviceManager::get()->initialize();
    EXPECT_EQ(mDriver->getNbDevices(), 1U);
    mBus.plug("a", "");
    mDriver->lookAround();
    EXPECT_EQ(mDriver->getNbDevices(), 1U) << "the unit would be there twice";
    mSecondBus.units.clear();
    frame();
    mDriver->lookAround();
    ASSERT_EQ(mDriver->getNbDevices(), 1U);
    EXPECT_EQ(mDriver->editDevice(0)->getName(), "Mouse a");
    frame();
    EXPECT_EQ(mBus.nbFinds, 2) << "not while the other way is used, and not in each frame";
}

TEST_F(KySpaceMouseDriverTest, ReportsAUnitThatItMayNotOpenOnce) {
    static int nbReports = 0;
    const auto before = KyException::setReportHandler([](const std::string&) { ++nbReports; });
    mBus.refuses = true;
    EXPECT_EQ(start("a"), nullptr);
    mDriver->lookAround();
    KyException::setReportHandler(before);
    EXPECT_EQ(nbReports, 1);
}

TEST_F(KySpaceMouseDriverTest, ASecondCopyOfTheModuleIsReportedAndLeavesTheFirstAlone) {
    constexpr const char* cName = "KySpaceMouseDriver/KySpaceMouseDriver";
    static int nbReports = 0;
    KyModuleManager& modules = KyModuleManager::get();
    ASSERT_TRUE(modules.registerModule(cName, nullptr, 0, nullptr, nullptr)) << "the first copy";
    const auto before = KyException::setReportHandler([](const std::string&) { ++nbReports; });
    KySpaceMouseModule::onLoad(0, KyLibraryEntry::eProcessAttach, nullptr);
    KyException::setReportHandler(before);
    EXPECT_EQ(nbReports, 1);
    KySpaceMouseModule::onLoad(0, KyLibraryEntry::eProcessDetach, nullptr);
    EXPECT_TRUE(modules.unregisterModule(cName));
    KySpaceMouseModule::onLoad(0, KyLibraryEntry::eProcessAttach, nullptr);
    KySpaceMouseModule::onLoad(0, KyLibraryEntry::eProcessDetach, nullptr);
    EXPECT_FALSE(modules.isRegistered(cName));
}

TEST_F(KySpaceMouseDriverTest, ComesAndGoesWithItsModule) {
    KyDeviceManager& manager = *KyDeviceManager::get();
    mDriver.reset();
    KySpaceMouseModule::initialize();
    EXPECT_TRUE(manager.getDeviceDriverByName("SpaceMouse"));
    manager.initialize();
    KySpaceMouseModule::finalize();
    EXPECT_EQ(manager.getNbDeviceDrivers(), 0U);
    KyDeviceManager::finalizeSingleton();
    KySpaceMouseModule::initialize();
    KySpaceMouseModule::finalize();
}

} // namespace
