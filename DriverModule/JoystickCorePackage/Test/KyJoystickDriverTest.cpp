// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyJoystickModule_p.h"
#include "KyJoystickTesting.h"

#include "KyException.h"
#include "KyLibraryEntry.h"
#include "KyModuleManager.h"

#include <csignal>
#include <tuple>
#include <utility>

namespace {

TEST_F(KyJoystickDriverTest, APadHasTheChannelsOfTheStandardPad) {
    const FakeUnit unit(SDL_JOYSTICK_TYPE_GAMECONTROLLER);
    runFrame();
    const KyDevice* const pad = manager().getDevice(0);
    ASSERT_TRUE(pad && pad->getNbAxis() == 6 && pad->getNbButtons() == 15);
    constexpr Sint16 cReadings[] = {SDL_JOYSTICK_AXIS_MIN, SDL_JOYSTICK_AXIS_MAX, 0, -16384,
                                    SDL_JOYSTICK_AXIS_MIN, SDL_JOYSTICK_AXIS_MAX};
    constexpr std::pair<const char*, float> cAxes[] = {{"LeftX", -1},     {"LeftY", 1},       {"RightX", 0},
                                                       {"RightY", -0.5F}, {"LeftTrigger", 0}, {"RightTrigger", 1}};
    for (int i = 0; i < 6; ++i)
        SDL_JoystickSetVirtualAxis(unit.get(), i, cReadings[i]);
    SDL_JoystickSetVirtualButton(unit.get(), 14, 1);
    runFrame();
    for (unsigned i = 0; i < 6; ++i) {
        const KyDeviceAxisChannel& axis = pad->getAxis(i);
        EXPECT_EQ(axis.getName(), cAxes[i].first);
        EXPECT_FLOAT_EQ(axis.getValue(), cAxes[i].second) << axis.getName();
        EXPECT_TRUE(axis.isEnabled() && axis.getAccessMode() == eAccessReadOnly);
    }
    EXPECT_EQ(pad->getButton(14).getName(), "DPadRight");
    EXPECT_EQ(pad->getAxis(4).getMinimum(), 0);
    EXPECT_EQ(pad->getButton(14).getValue(), 1);
    EXPECT_EQ(pad->getButton(14).getPreviousValue(), 0);
    runFrame();
    EXPECT_EQ(pad->getButton(14).getPreviousValue(), 1) << "a held button is reported in every frame";
}

TEST_F(KyJoystickDriverTest, AStickHasNumberedChannelsAndHatsThatTurnClockwise) {
    const FakeUnit unit(SDL_JOYSTICK_TYPE_FLIGHT_STICK);
    runFrame();
    const KyDevice* const stick = manager().getDevice(0);
    ASSERT_TRUE(stick && stick->getNbAxis() == 6 && stick->getNbButtons() == 17);
    EXPECT_EQ(stick->getAxis(5).getName(), "Axis 5");
    EXPECT_EQ(stick->getButton(16).getName(), "Hat 1");
    EXPECT_EQ(stick->getButton(16).getNbValues(), 9);
    constexpr std::pair<Uint8, int> cHats[] = {{1, 1}, {3, 2}, {2, 3}, {6, 4}, {4, 5},  {12, 6},
                                               {8, 7}, {9, 8}, {0, 0}, {5, 0}, {15, 0}, {0xF2, 3}};
    for (const auto& [raw, value] : cHats) {
        SDL_JoystickSetVirtualHat(unit.get(), 1, raw);
        runFrame();
        EXPECT_EQ(stick->getButton(16).getValue(), value) << int{raw};
    }
    SDL_JoystickSetVirtualAxis(unit.get(), 5, SDL_JOYSTICK_AXIS_MIN);
    runFrame();
    EXPECT_EQ(stick->getAxis(5).getValue(), -1);
}

TEST_F(KyJoystickDriverTest, AUnitThatVanishesEndsItsDeviceUnlessAClientHoldsIt) {
    auto unit = std::make_unique<FakeUnit>(SDL_JOYSTICK_TYPE_GAMECONTROLLER);
    const FakeUnit other(SDL_JOYSTICK_TYPE_FLIGHT_STICK, "Other");
    const KyDevice* const pad = ask({}, "Fake");
    ASSERT_TRUE(pad);
    EXPECT_EQ(manager().getNbDevices(), 2U);
    SDL_JoystickSetVirtualAxis(unit->get(), 0, SDL_JOYSTICK_AXIS_MAX);
    SDL_JoystickSetVirtualButton(unit->get(), 0, 1);
    runFrame();
    unit.reset();
    runFrame();
    EXPECT_EQ(pad->getAxis(0).getValue(), 0);
    EXPECT_EQ(pad->getButton(0).getValue(), 0);
    EXPECT_EQ(pad->getButton(0).getPreviousValue(), 1) << "the release is seen";
    EXPECT_FALSE(ask({}, "Fake"));

    unit = std::make_unique<FakeUnit>(SDL_JOYSTICK_TYPE_GAMECONTROLLER);
    runFrame();
    SDL_JoystickSetVirtualButton(unit->get(), 0, 1);
    runFrame();
    EXPECT_EQ(pad->getButton(0).getValue(), 1) << "back again";
    EXPECT_EQ(manager().getNbDevices(), 2U);

    unit.reset();
    runFrame();
    manager().releaseDevice("Joystick", pad);
    runFrame();
    EXPECT_EQ(manager().getNbDevices(), 1U);
}

TEST_F(KyJoystickDriverTest, ADisabledDeviceWhoseUnitVanishesIsAtRestToo) {
    auto unit = std::make_unique<FakeUnit>(SDL_JOYSTICK_TYPE_GAMECONTROLLER);
    const KyDevice* const pad = ask();
    SDL_JoystickSetVirtualAxis(unit->get(), 0, SDL_JOYSTICK_AXIS_MAX);
    runFrame();
    EXPECT_EQ(pad->getAxis(0).getValue(), 1);
    mDriver->editDevice(0)->setEnabled(false);
    unit.reset();
    runFrame();
    EXPECT_EQ(pad->getAxis(0).getValue(), 0);
}

TEST_F(KyJoystickDriverTest, AUnitThatIsListedLaterIsEntered) {
    static const char* path = "one";
    KyHidDetection::setSource([] { return std::vector<KyHidRecord>{{"Fake", "Pad", 0x1234, 0x5678, 1, 5, path, ""}}; });
    auto unit = std::make_unique<FakeUnit>(SDL_JOYSTICK_TYPE_GAMECONTROLLER);
    const KyDevice* const pad = ask();
    manager().rescanDevices();
    EXPECT_EQ(manager().getDeviceInfoVector().back().device, pad);
    path = "another";
    manager().rescanDevices();
    EXPECT_EQ(manager().getDeviceInfoVector().back().path, path);
    EXPECT_EQ(manager().getDeviceInfoVector().back().device, pad) << "plugged in elsewhere";
}

TEST_F(KyJoystickDriverTest, The3DMiceAreLeftToTheirDriver) {
    constexpr std::pair<Uint16, bool> cProducts[] = {{0xC603, false}, {0xC62A, true}, {0xC62F, false}, {0xC640, false}};
    for (const auto& [product, isStick] : cProducts) {
        const FakeUnit unit(SDL_JOYSTICK_TYPE_FLIGHT_STICK, "Fake", KyDeviceManager::cLogitechVendorID, product);
        runFrame();
        EXPECT_EQ(mDriver->getNbDevices() == 1, isStick) << product;
    }
}

TEST_F(KyJoystickDriverTest, ClientsGetFreeUnitsFirstAndThenShareThem) {
    const FakeUnit first(SDL_JOYSTICK_TYPE_GAMECONTROLLER);
    const FakeUnit second(SDL_JOYSTICK_TYPE_GAMECONTROLLER);
    const KyDevice* const a = ask();
    const KyDevice* const b = ask();
    EXPECT_NE(a, b);
    EXPECT_EQ(ask(), a);
    EXPECT_EQ(a->getNbReferences(), 3U);
    for (int i = 0; i < 3; ++i)
        manager().releaseDevice("Joystick", a);
    runFrame();
    EXPECT_EQ(mDriver->getNbDevices(), 1U) << "given back once too often";
    EXPECT_TRUE(ask());
    EXPECT_EQ(mDriver->getNbDevices(), 2U);
}

TEST_F(KyJoystickDriverTest, ParametersAndNamesChooseTheUnit) {
    const FakeUnit unit(SDL_JOYSTICK_TYPE_GAMECONTROLLER);
    const FakeUnit mouse3D(SDL_JOYSTICK_TYPE_UNKNOWN, "Fake", KyDeviceManager::c3DconnexionVendorID,
                           KyDeviceManager::cSpaceMouseWirelessProductID);
    const std::tuple<KyDeviceDriver::Parameters, const char*, bool> cQuestions[] = {
        {{}, "", true},
        {{}, "Fake", true},
        {{}, "fake", false},
        {{{"DeviceType", "Joystick"}, {"VendorID", 0x1234}, {"ProductID", 0x15678}}, "", true},
        {{{"DeviceType", "Mouse"}}, "", false},
        {{{"ProductID", 1}}, "", false},
        {{{"VendorID", 1}, {"VendorID", 0x1234}}, "", true},
        {{{"VendorID", int{KyDeviceManager::c3DconnexionVendorID}}}, "", false}};
    for (const bool isListed : {false, true}) {
        if (isListed) {
            for (const auto type : {KyDeviceManager::eKeyboard, KyDeviceManager::eJoystick})
                manager().editDeviceInfoVector().push_back({"", 0x1234, 0x5678, type, false, "", 0, nullptr, "", ""});
            manager().initialize();
            EXPECT_EQ(manager().getDeviceInfo(mDriver->getDevice(0)), &manager().getDeviceInfoVector()[1]);
        }
        for (const auto& [parameters, name, isFound] : cQuestions)
            EXPECT_EQ(ask(parameters, name) != nullptr, isFound) << name << parameters.size();
        EXPECT_EQ(mDriver->getNbDevices(), 1U);
    }
    mDriver.reset();
    EXPECT_FALSE(manager().getDeviceInfoVector()[1].device);
}

TEST_F(KyJoystickDriverTest, TheDriverMayUnregisterWhileItsDevicesChange) {
    manager().devicesChangedSignal().connect([this] { manager().unregisterDeviceDriver(mDriver.get()); });
    const FakeUnit unit(SDL_JOYSTICK_TYPE_GAMECONTROLLER);
    runFrame();
    EXPECT_EQ(manager().getNbDeviceDrivers(), 0U);
    EXPECT_EQ(manager().getNbDevices(), 1U);
    mDriver.reset();
    EXPECT_EQ(manager().getNbDevices(), 0U);
}

TEST_F(KyJoystickDriverTest, NothingButTheJoysticksIsTaken) {
    const FakeUnit unit(SDL_JOYSTICK_TYPE_GAMECONTROLLER);
    for (const Sint16 value : {Sint16{1000}, Sint16{2000}}) {
        runFrame();
        SDL_JoystickSetVirtualAxis(unit.get(), 0, value);
    }
    runFrame();
    EXPECT_EQ(SDL_PeepEvents(nullptr, 0, SDL_PEEKEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT), 0);
    EXPECT_FALSE(SDL_WasInit(SDL_INIT_VIDEO));
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_DFL);
    mDriver.reset();
    EXPECT_FALSE(SDL_WasInit(SDL_INIT_JOYSTICK));
}

TEST(KyJoystickModuleTest, ASecondCopyIsReportedAndLeavesTheFirstAlone) {
    constexpr const char* cName = "KyJoystickDriver/KyJoystickDriver";
    static int nbReports = 0;
    KyModuleManager& modules = KyModuleManager::get();
    ASSERT_TRUE(modules.registerModule(cName, nullptr, 0, nullptr, nullptr)) << "the first copy";
    const auto before = KyException::setReportHandler([](const std::string&) { ++nbReports; });
    KyJoystickModule::onLoad(0, KyLibraryEntry::eProcessAttach, nullptr);
    KyException::setReportHandler(before);
    EXPECT_EQ(nbReports, 1);
    KyJoystickModule::onLoad(0, KyLibraryEntry::eProcessDetach, nullptr);
    EXPECT_TRUE(modules.unregisterModule(cName));
    KyJoystickModule::onLoad(0, KyLibraryEntry::eProcessAttach, nullptr);
    KyJoystickModule::onLoad(0, KyLibraryEntry::eProcessDetach, nullptr);
    EXPECT_FALSE(modules.isRegistered(cName));
}

TEST(KyJoystickModuleTest, TheModuleBearsThatThereIsNoManager) {
    ASSERT_FALSE(KyDeviceManager::get());
    KyJoystickModule::initialise();
    KyJoystickModule::finalise();
    KyJoystickModule::finalise();
    KyDeviceManager::initializeSingleton();
    for (int i = 0; i < 2; ++i)
        KyJoystickModule::initialise();
    EXPECT_EQ(KyDeviceManager::get()->getNbDeviceDrivers(), 1U);
    KyDeviceDriver* const driver = KyDeviceManager::get()->getDeviceDriverByName("Joystick");
    ASSERT_TRUE(driver);
    driver->start();
    const FakeUnit unit(SDL_JOYSTICK_TYPE_GAMECONTROLLER);
    const KyDevice* const pad = driver->getDevice("", {});
    ASSERT_TRUE(pad);
    KyDeviceManager::finalizeSingleton();
    runFrame();
    EXPECT_FALSE(driver->getDevice("", {}));
    KyJoystickModule::finalise();
    EXPECT_FALSE(SDL_WasInit(SDL_INIT_JOYSTICK));
    EXPECT_EQ(pad->getNbReferences(), 1U);
    pad->removeReference();
}

} // namespace
