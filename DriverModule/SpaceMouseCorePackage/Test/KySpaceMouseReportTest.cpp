// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySpaceMouseReport_p.h"

#include "KyHidDetection.h"
#include "KySpaceMouseHid_p.h"
#include "KySpaceMouseProducts_p.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using Axes = std::array<float, KySpaceMouseState::eNbAxes>;

struct ReportCase {
    const char* what;
    std::vector<std::uint8_t> bytes;
    bool isUsed;
    Axes axes;
    std::uint32_t buttons = 0;
    std::vector<std::uint8_t> before = {};
};

constexpr Axes cRest{};

const std::vector<ReportCase> cReports{
    {"to the right", {1, 0x5E, 1, 0, 0, 0, 0}, true, {1}},
    {"towards the user is z", {1, 0, 0, 0xAF, 0, 0, 0}, true, {0, 0, 0.5F}},
    {"down is against y", {1, 0, 0, 0, 0, 0xAF, 0}, true, {0, -0.5F, 0}},
    {"lifted, negative", {1, 0, 0, 0, 0, 0x51, 0xFF}, true, {0, 0.5F, 0}},
    {"turned", {2, 35, 0, 70, 0, 105, 0}, true, {0, 0, 0, 0.1F, -0.3F, 0.2F}},
    {"moved and turned", {1, 35, 0, 0, 0, 0, 0, 70, 0, 0, 0, 0, 0}, true, {0.1F, 0, 0, 0.2F, 0, 0}},
    {"padded", {1, 35, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, true, {0.1F, 0, 0, 0.2F}, 0, {2, 70, 0, 0, 0, 0, 0}},
    {"turn cut short", {1, 35, 0, 0, 0, 0, 0, 70, 0, 0, 0, 0}, true, {0.1F}},
    {"beyond the end", {1, 0xFF, 0x7F, 0, 0x80, 0, 0x80}, true, {1, 1, -1}},
    {"buttons of one byte", {3, 0x02}, true, cRest, 2},
    {"buttons of more than four bytes", {3, 1, 0, 0, 0x80, 0xFF}, true, cRest, 0x80000001},
    {"nothing", {}, false, cRest},
    {"number alone", {1}, false, cRest},
    {"buttons without bits", {3}, false, cRest},
    {"move cut short", {1, 1, 1, 1, 1, 1}, false, cRest},
    {"turn without its end", {2, 1, 1, 1, 1, 1}, false, cRest},
    {"other number", {23, 1, 1, 1, 1, 1, 1}, false, cRest},
};

TEST(KySpaceMouseReportTest, ReadsWhatUnitsSendInTheCamerasFrame) {
    for (const ReportCase& report : cReports) {
        KySpaceMouseState state;
        KySpaceMouseReport::apply(report.before, state);
        EXPECT_EQ(KySpaceMouseReport::apply(report.bytes, state), report.isUsed) << report.what;
        EXPECT_EQ(state.axes, report.axes) << report.what;
        EXPECT_EQ(state.buttons, report.buttons) << report.what;
    }
}

TEST(KySpaceMouseReportTest, KeepsPressesUntilTheyAreTaken) {
    KySpaceMouseState state;
    state.setButton(31, true);
    state.setButton(32, true);
    state.setButton(31, false);
    EXPECT_EQ(state.buttons, 0U);
    EXPECT_EQ(state.pressed, 0x80000000U);
}

TEST(KySpaceMouseReportTest, KnowsTheMiceAmongTheUnits) {
    const auto isMouse = [](std::uint16_t vendor, std::uint16_t product, std::uint16_t page, std::uint16_t usage) {
        return KySpaceMouseHid::isSpaceMouse({"", "", vendor, product, page, usage, "", ""});
    };
    EXPECT_TRUE(isMouse(0x256F, 0xC62E, 1, 8));
    for (const std::uint16_t product : KySpaceMouseProducts::cLogitechProducts)
        EXPECT_TRUE(isMouse(0x046D, product, 1, 8)) << product;
    EXPECT_FALSE(isMouse(0x046D, 0xC216, 1, 8)) << "another product of that maker";
    EXPECT_FALSE(isMouse(0x256F, 0xC650, 1, 2)) << "a plain mouse";
    EXPECT_FALSE(isMouse(0x256F, 0xC62E, 12, 8)) << "its second interface";
    EXPECT_FALSE(isMouse(0x1234, 0xC626, 1, 8));
}

TEST(KySpaceMouseReportTest, TheRuleOfTheSystemOpensTheMiceThatAreKnown) {
    std::ifstream file(KY_TEST_DATA_DIR "/../../../packaging/linux/70-kyapplication-devices.rules");
    const std::string rules(std::istreambuf_iterator<char>(file), {});
    for (const std::uint16_t product : KySpaceMouseProducts::cLogitechProducts) {
        char pattern[32];
        std::snprintf(pattern, sizeof pattern, "*:046D:%04X.*", unsigned{product});
        EXPECT_NE(rules.find(pattern), std::string::npos) << pattern;
    }
    EXPECT_NE(rules.find("*:046D:C62F.*"), std::string::npos) << "counted by the manager as a 3D mouse";
}

} // namespace
