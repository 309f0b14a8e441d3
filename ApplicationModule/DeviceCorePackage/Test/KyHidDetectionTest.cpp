// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeviceManager.h"
#include "KyHidDetection.h"
#include "KyHidReportDescriptor_p.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

void PrintTo(const KyHidUsage& usage, std::ostream* stream) {
    *stream << usage.page << "/" << usage.usage;
}

namespace {

constexpr const char* cFakedBus = "KY_FAKED_BUS";

struct FakeUnit {
    std::string id, manufacturer, product, serial, descriptor;
};

/// What udev and the kernel tell of a unit on a USB port of its own.
std::string describe(const FakeUnit& unit, int number) {
    const std::string n = std::to_string(number);
    const std::string port = "/devices/usb1/1-" + n;
    const std::string node = "0003:" + unit.id + ".000" + n;
    return "P: " + port + "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nA: manufacturer=" + unit.manufacturer +
           "\nA: product=" + unit.product + "\nA: bcdDevice=0100\n\nP: " + port + "/1-" + n +
           ":1.0\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_interface\nA: bInterfaceNumber=00\n\nP: " + port + "/1-" + n +
           ":1.0/" + node + "\nE: SUBSYSTEM=hid\nE: HID_ID=0003:0000" + unit.id.substr(0, 4) + ":0000" +
           unit.id.substr(5) + "\nE: HID_NAME=x\nE: HID_UNIQ=" + unit.serial +
           "\nH: report_descriptor=" + unit.descriptor + "\n\nP: " + port + "/1-" + n + ":1.0/" + node +
           "/hidraw/hidraw" + n + "\nN: hidraw" + n + "\nE: SUBSYSTEM=hidraw\nE: DEVNAME=/dev/hidraw" + n +
           "\nL: device=../../../" + node + "\n\n";
}

/// The running test on a faked bus with these units, in a process of its own. True in that process, where it looks;
/// the one that started it takes over the outcome.
bool isOnFakedBus(const std::vector<FakeUnit>& units) {
    if (std::getenv(cFakedBus))
        return true;
    const std::string file = testing::TempDir() + "KyFakedBus.umockdev";
    std::ofstream stream(file);
    for (int number = 0; const FakeUnit& unit : units)
        stream << describe(unit, number++);
    stream.close();
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    const std::string command = std::string(cFakedBus) + "=1 ASAN_OPTIONS=verify_asan_link_order=0 umockdev-run -d " +
                                file + " -- " + program + " --gtest_filter=" + test->test_suite_name() + "." +
                                test->name();
    EXPECT_EQ(std::system(command.c_str()), 0);
    std::remove(file.c_str());
    return false;
}

std::string toText(const KyHidRecord& record) {
    std::ostringstream text;
    text << record.manufacturer << "|" << record.product << "|" << record.serial << "|" << record.path << std::hex
         << "|" << record.vendorId << ":" << record.productId << "|" << record.usagePage << "/" << record.usage;
    return text.str();
}

TEST(KyHidDetection, OutermostCollectionsOfABusAreRecords) {
    if (std::system("umockdev-run --version >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "umockdev-run is not installed: there is no bus to fake";
    // A pad whose sticks are a collection of their own, a mouse and a keyboard in one, garbage.
    if (!isOnFakedBus({{"046D:C216", "Logi", "Pad", "S7", "05010905A1010901A100C0C0"},
                       {"1111:2222", "Acme", "Caf\xC3\xA9", "", "05010902A101C00906A101C0"},
                       {"3333:4444", "", "", "", "A5FE"}}))
        return;
    std::vector<std::string> texts;
    std::ranges::transform(KyHidDetection::detect(), std::back_inserter(texts), toText);
    EXPECT_EQ(texts, (std::vector<std::string>{
                         "Logi|Pad|S7|/dev/hidraw0|46d:c216|1/5", "Acme|Caf\xE9||/dev/hidraw1|1111:2222|1/2",
                         "Acme|Caf\xE9||/dev/hidraw1|1111:2222|1/6", "|||/dev/hidraw2|3333:4444|0/0"}));
}

TEST(KyHidDetection, TextsKeepTheLowByteOf128CharactersUpToTheFirstZero) {
    EXPECT_EQ(KyHidDetection::narrow(nullptr), "");
    EXPECT_EQ(KyHidDetection::narrow(L"Space\u20ACNavi\u00E9"), "Space\xACNavi\xE9");
    EXPECT_EQ(KyHidDetection::narrow(L"ab\u0100cd"), "ab");
    EXPECT_EQ(KyHidDetection::narrow(std::wstring(200, L'x').c_str()), std::string(128, 'x'));
}

TEST(KyHidDetection, TheUsageTellsTheTypeAndJoysticksAreCountedWithout3DMice) {
    using Manager = KyDeviceManager;
    const std::vector<std::array<std::uint16_t, 3>> units{
        {1, 1, 1}, {1, 1, 2},      {1, 1, 3},      {1, 1, 4},      {Manager::cSpaceNavigatorProductID, 1, 8},
        {1, 1, 5}, {0xC628, 1, 8}, {0xC62F, 1, 8}, {0xC216, 1, 5}, {1, 1, 6},
        {1, 1, 7}, {1, 12, 4},     {1, 0, 0}};
    static std::vector<KyHidRecord> records;
    records.clear();
    for (const std::uint16_t vendor : {Manager::c3DconnexionVendorID, Manager::cLogitechVendorID, std::uint16_t{1}})
        for (const auto& [product, page, usage] : units)
            records.push_back({"M", "P", vendor, product, page, usage, "", ""});
    const auto before = KyHidDetection::setSource([] { return records; });
    Manager::initializeClass();
    std::string types;
    std::string indices;
    for (const auto& info : Manager::get()->getDeviceInfoVector()) {
        types += std::to_string(info.deviceType);
        indices += info.joystickIndex == 0xFFFFFFFF ? "-" : std::to_string(info.joystickIndex);
    }
    EXPECT_EQ(types, "1130000002333"
                     "1130000002333"
                     "1130000002333");
    EXPECT_EQ(indices, "---0-1--2----"
                       "---3-4--5----"
                       "---67891011----");
    EXPECT_EQ(Manager::get()->getDeviceInfoVector().back().name, "M P");
    Manager::finalizeClass();
    KyHidDetection::setSource(before);
}

TEST(KyHidReportDescriptor, OnlyOutermostCollectionsCount) {
    const struct {
        const char* what;
        std::vector<std::uint8_t> bytes;
        std::vector<KyHidUsage> usages;
    } cases[] = {
        {"nothing", {}, {}},
        {"a pad with nested sticks", {5, 1, 9, 5, 0xA1, 1, 9, 1, 0xA1, 0, 9, 0x30, 0x81, 2, 0xC0, 0xC0}, {{1, 5}}},
        {"two", {5, 1, 9, 2, 0xA1, 1, 0xC0, 9, 6, 0xA1, 1, 0xC0}, {{1, 2}, {1, 6}}},
        {"a usage with its page", {5, 1, 0x0B, 4, 0, 12, 0, 0xA1, 1}, {{12, 4}}},
        {"a page of two bytes", {6, 0x34, 0x12, 10, 0x78, 0x56, 0xA1, 1}, {{0x1234, 0x5678}}},
        {"a page after the usage", {9, 4, 5, 1, 0xA1, 1}, {{1, 4}}},
        {"two usages", {5, 1, 9, 4, 9, 5, 0xA1, 1}, {{1, 4}}},
        {"a usage of another item", {5, 1, 9, 4, 0x81, 2, 0xA1, 1}, {{1, 0}}},
        {"a page kept and brought back", {5, 1, 0xA4, 5, 9, 0xB4, 9, 4, 0xA1, 1}, {{1, 4}}},
        {"nothing to bring back", {5, 1, 0xB4, 9, 4, 0xA1, 1}, {{1, 4}}},
        {"ends without a beginning", {0xC0, 0xC0, 5, 1, 9, 4, 0xA1, 1}, {{1, 4}}},
        {"a long item that looks like one", {5, 1, 0xFE, 4, 0xA0, 9, 4, 0xA1, 1, 9, 5, 0xA1, 1}, {{1, 5}}},
        {"a long item cut short", {5, 1, 9, 4, 0xA1, 1, 0xC0, 0xFE, 9, 0, 0xA1, 1}, {{1, 4}}},
        {"a collection cut short", {5, 1, 9, 4, 0xA1}, {}},
    };
    for (const auto& test : cases)
        EXPECT_EQ(KyHidReportDescriptor::getOutermostUsages(test.bytes), test.usages) << test.what;
}

} // namespace
