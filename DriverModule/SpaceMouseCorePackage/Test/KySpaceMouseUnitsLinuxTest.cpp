// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseDriver.h"

#include "KyDevice.h"
#include "KyDeviceManager.h"
#include "KyMainTaskManager.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>

namespace {

namespace fs = std::filesystem;

/// The driver among the units that this program was started with.
class KySpaceMouseUnitsLinuxTest : public testing::Test {
protected:
    KySpaceMouseUnitsLinuxTest() {
        KyDeviceManager::initializeSingleton();
        KyDeviceManager::get()->registerDeviceDriver(mDriver.get());
        KyDeviceManager::get()->initialize();
    }
    ~KySpaceMouseUnitsLinuxTest() override {
        mDriver.reset();
        KyDeviceManager::finalizeSingleton();
    }

    template <class Condition>
    static bool runUntil(const Condition& condition) {
        for (int i = 0; i < 1000 && !condition(); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            KyMainTaskManager::get().update();
        }
        return condition();
    }

    /// Both ways must read this from the same motion of the cap.
    static void expectReadings(const KyDevice& mouse) {
        constexpr float cExpected[] = {100, -350, 70, 105, -76, 42};
        ASSERT_TRUE(runUntil([&mouse] { return mouse.getButton(0).getValue() == 1; }));
        for (unsigned i = 0; i < 6; ++i)
            EXPECT_NEAR(mouse.getAxis(i).getValue(), cExpected[i] / 350, 0.003) << mouse.getAxis(i).getName();
    }

    std::unique_ptr<KySpaceMouseDriver> mDriver = std::make_unique<KySpaceMouseDriver>();
};

TEST_F(KySpaceMouseUnitsLinuxTest, DISABLED_RawReports) {
    const KyDevice* mouse = KyDeviceManager::get()->getDevice("SpaceMouse", "3Dconnexion SpaceNavigator");
    ASSERT_TRUE(mouse);
    EXPECT_EQ(KyDeviceManager::get()->getDeviceInfo(mouse)->serial, "42");
    expectReadings(*mouse);
}

TEST_F(KySpaceMouseUnitsLinuxTest, DISABLED_Daemon) {
    const KyDevice* mouse = nullptr;
    ASSERT_TRUE(runUntil([&] {
        mDriver->lookAround();
        mouse = KyDeviceManager::get()->getDevice("SpaceMouse", "", {{"ProductID", KyField(0xC626)}});
        return mouse != nullptr;
    }));
    expectReadings(*mouse);
    EXPECT_TRUE(runUntil([mouse] { return mouse->getAxis(0).getValue() == 0; })) << "the daemon ends";
    EXPECT_EQ(mDriver->getDevice("", {}), nullptr);
}

std::string quoteData(const char* name) {
    return std::string("'") + KY_TEST_DATA_DIR + "/" + name + "'";
}

/// This program again, with one case.
std::string makeCommand(const char* test) {
    return "'" + fs::read_symlink("/proc/self/exe").string() +
           "' --gtest_also_run_disabled_tests --gtest_filter=*DISABLED_" + test;
}

bool isMissing(const char* program) {
    return std::system((std::string("command -v ") + program + " > /dev/null").c_str()) != 0;
}

class KySpaceMouseFakedUnitsLinuxTest : public testing::Test {
protected:
    void SetUp() override {
        if (isMissing("umockdev-run"))
            GTEST_SKIP() << "umockdev-run is not installed: no units can be faked";
    }
};

TEST_F(KySpaceMouseFakedUnitsLinuxTest, AreReadFromTheirReports) {
    const std::string command =
        "SPNAV_SOCKET=/nowhere ASAN_OPTIONS=verify_asan_link_order=0 umockdev-run -d " +
        quoteData("navigator-hid.umockdev") + " -i /dev/hidraw0=" + quoteData("navigator-hid.ioctl") +
        " -s /dev/hidraw0=" + quoteData("navigator-hid.script") + " -- " + makeCommand("RawReports");
    EXPECT_EQ(std::system(command.c_str()), 0);
}

TEST_F(KySpaceMouseFakedUnitsLinuxTest, AreReadThroughTheDaemon) {
    if (isMissing("spacenavd"))
        GTEST_SKIP() << "spacenavd is not installed";
    const fs::path folder = fs::path(testing::TempDir()) / "ky-spacenavd";
    fs::create_directories(folder / "run");
    std::ofstream(folder / "settings") << "repeat-interval = -1\n";
    const std::string command = "cd '" + folder.string() + "' && rm -f run/* && { timeout 3 umockdev-run -d " +
                                quoteData("navigator-input.umockdev") +
                                " -i /dev/input/event9=" + quoteData("navigator-input.ioctl") +
                                " -e /dev/input/event9=" + quoteData("navigator-input.events") +
                                " -- spacenavd -d -c \"$PWD/settings\" -l \"$PWD/log\" > output 2>&1 & } && "
                                "SPNAV_SOCKET=\"$PWD/run/spnav.sock\" " +
                                makeCommand("Daemon") + "; result=$?; wait; exit $result";
    EXPECT_EQ(std::system(command.c_str()), 0);
    fs::remove_all(folder);
}

} // namespace
