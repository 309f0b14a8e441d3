// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDevice.h"
#include "KyDeviceDriver.h"
#include "KyDeviceManager.h"
#include "KyMainTaskManager.h"
#include "KyModuleManager.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

std::string read(const char* name) {
    std::ifstream file(std::string(KY_TEST_DATA_DIR) + "/" + name);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(KyWheelDriverTest, IsTheDriverOfTheDocumentation) {
    const std::string code = read("KyWheelDriver.cpp");
    const std::string shown = code.substr(code.find("#include"));
    EXPECT_NE(read("../../../docs/extending/device-driver.md").find("```cpp\n" + shown + "```"), std::string::npos);
}

TEST(KyWheelDriverTest, DoesWhatTheDocumentationSays) {
    ASSERT_TRUE(KyModuleManager::get().initializeModule("Wheel/Wheel"));
    ASSERT_TRUE(KyDeviceManager::get());
    KyDeviceManager& manager = *KyDeviceManager::get();
    const std::filesystem::path path = std::filesystem::path(testing::TempDir()) / "ky-wheel";
    KyFieldSet fields;
    fields.set("Path", KyField(path.string()));
    manager.getDeviceDriverByName("Wheel")->setCompatibleConfigurationFields(fields);
    manager.initialize();

    const KyDevice* wheel = manager.getDevice("Wheel", "");
    EXPECT_EQ(manager.getDevice("Wheel", ""), wheel);
    std::ofstream(path) << "0.5 1";
    KyMainTaskManager::get().update();
    EXPECT_EQ(wheel->getAxis(0).getValue(), 0.5F);
    EXPECT_EQ(wheel->getButton(0).getValue(), 1);
    std::filesystem::remove(path);
    KyMainTaskManager::get().update();
    EXPECT_EQ(wheel->getAxis(0).getValue(), 0.0F);
    EXPECT_EQ(wheel->getButton(0).getValue(), 0);

    manager.releaseDevice("Wheel", wheel);
    EXPECT_EQ(manager.getNbDevices(), 1U);
    manager.releaseDevice("Wheel", wheel);
    EXPECT_EQ(manager.getNbDevices(), 0U);
    KyModuleManager::get().finalize();
    EXPECT_EQ(KyDeviceManager::get(), nullptr);
}

} // namespace
