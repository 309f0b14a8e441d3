// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyChildProgramWindows.h"
#include "KyHidDetection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// Whose HID.DLL and SETUPAPI.DLL are the stand-ins, which lie beside the program.
class KyHidDetectionWindowsTest : public testing::Test {
protected:
    void SetUp() override {
        fs::remove_all(mRoot);
        fs::create_directories(mRoot);
        for (const fs::path file : {KY_HID_LISTING, KY_HID_STAND_IN, KY_SETUP_STAND_IN})
            fs::copy_file(file, mRoot / file.filename());
    }
    void TearDown() override { fs::remove_all(mRoot); }

    [[nodiscard]] std::string write(const std::string& name, const std::string& text) const {
        fs::create_directories((mRoot / name).parent_path());
        std::ofstream(mRoot / name, std::ios::binary) << text;
        return (mRoot / name).string();
    }

    /// The other libraries are found in the folder that it starts in.
    [[nodiscard]] KyChildProgram list(const std::string& units) const {
        const std::string program = (mRoot / fs::path(KY_HID_LISTING).filename()).string();
        return KyChildProgram('"' + program + '"', {{"KY_UNITS", units}},
                              fs::path(KY_HID_LISTING).parent_path().string());
    }

    fs::path mRoot = fs::temp_directory_path() / "KyHidDetectionWindowsTest";
};

/// Without the line ends' carriage returns.
std::string toText(const KyChildProgram& program) {
    std::string text = program.getText();
    std::erase(text, '\r');
    return text;
}

/// Makes the library forget one of its functions: another name, and the order of names is kept.
void hideFunction(const fs::path& library, const std::string& name) {
    std::ifstream input(library, std::ios::binary);
    std::string bytes(std::istreambuf_iterator<char>(input), {});
    input.close();
    const std::size_t at = bytes.find('\0' + name + '\0');
    ASSERT_NE(at, std::string::npos) << name;
    ++bytes[at + name.size()];
    std::ofstream(library, std::ios::binary) << bytes;
}

} // namespace

TEST(KyHidDetection, FindsTheMouseAndTheKeyboardOfTheSystem) {
    std::vector<KyHidRecord> records = KyHidDetection::detect();
    const auto isThere = [&](unsigned product, unsigned usage) {
        return std::ranges::any_of(records, [&](const KyHidRecord& record) {
            return record.vendorId == 0x845E && record.productId == product && record.usagePage == 1 &&
                   record.usage == usage && record.path.starts_with("\\\\?\\hid#");
        });
    };
    EXPECT_TRUE(isThere(1, 2));
    EXPECT_TRUE(isThere(2, 6));
}

TEST_F(KyHidDetectionWindowsTest, WhateverFailsCostsNoMoreThanItsPart) {
    const std::string longText(200, 'x');
    const struct {
        const char* name;
        std::string unit;
        std::string record;
    } cases[] = {
        {"space mouse", "256F:C62E|1/8||3Dconnexion|SpaceMouse|S7", "3Dconnexion|SpaceMouse|S7|256f:c62e|1/8|"},
        {"texts", "046D:C216|1/5||||", "|||46d:c216|1/5|"},
        {"accent", "046D:C216|1/4|||Caf\xE9|", "|Caf\xE9||46d:c216|1/4|"},
        {"long text", "1:2|1/4||" + longText + "||", longText.substr(0, 128) + "|||1:2|1/4|"},
        {"attributes", "1:2|1/4|attributes|M|P|S", ""},
        {"data", "1:2|1/4|data|M|P|S", "M|P|S|1:2|0/0|"},
        {"nothing", "1:2|1/4|nothing|M|P|S", "M|P|S|1:2|0/0|"},
        {"caps", "1:2|1/4|caps|M|P|S", "M|P|S|1:2|0/0|"},
        {"kept by the system", "1:2|1/6||M|P|S", "M|P|S|1:2|1/6|"},
        {"last", "FFFF:FFFF|ff00/ffff||M|P|S", "M|P|S|ffff:ffff|ff00/ffff|"},
    };
    std::string units = "?|" + (mRoot / "missing").string();
    std::string expected = "listing\n";
    for (const auto& test : cases) {
        const std::string path = write(test.name, test.unit);
        units += '|' + path;
        if (!test.record.empty())
            expected += test.record + path + '\n';
    }
    units += '|' + write(std::string(120, 'd') + '/' + std::string(120, 'f'), "1:2|1/4||M|P|S");
    const HANDLE kept = ::CreateFileA((mRoot / "kept by the system").string().c_str(), GENERIC_READ, FILE_SHARE_READ,
                                      nullptr, OPEN_EXISTING, 0, nullptr);
    const KyChildProgram program = list(units);
    EXPECT_TRUE(program.hasSucceeded());
    EXPECT_EQ(toText(program), expected);
    ::CloseHandle(kept);
}

TEST_F(KyHidDetectionWindowsTest, NoUnitsAreFoundWhereTheListCannotBeHad) {
    const KyChildProgram program = list("fail");
    EXPECT_TRUE(program.hasSucceeded());
    EXPECT_EQ(toText(program), "listing\n");
}

TEST_F(KyHidDetectionWindowsTest, AMissingFunctionEndsTheProcessWhileTheLibraryIsLoaded) {
    for (const char* name :
         {"HidD_FreePreparsedData", "HidD_GetAttributes", "HidD_GetHidGuid", "HidD_GetManufacturerString",
          "HidD_GetPreparsedData", "HidD_GetProductString", "HidD_GetSerialNumberString", "HidP_GetCaps"}) {
        const fs::path library = mRoot / fs::path(KY_HID_STAND_IN).filename();
        fs::copy_file(KY_HID_STAND_IN, library, fs::copy_options::overwrite_existing);
        hideFunction(library, name);
        const KyChildProgram program = list("");
        EXPECT_FALSE(program.hasSucceeded()) << name;
        EXPECT_NE(program.getText().find("KyHidDetectionWindows.cpp: GetProcAddress failed!"), std::string::npos)
            << name << ": " << program.getText();
        EXPECT_EQ(program.getText().find("listing"), std::string::npos) << name;
    }
}

TEST_F(KyHidDetectionWindowsTest, NoHostCatchesWhatALibraryThatItLoadsThrows) {
    hideFunction(mRoot / fs::path(KY_HID_STAND_IN).filename(), "HidP_GetCaps");
    const fs::path program = mRoot / fs::path(KY_LOADING_PROGRAM).filename();
    fs::copy_file(KY_LOADING_PROGRAM, program);
    const KyChildProgram child('"' + program.string() + "\" " KY_WINDOWS_CORE " o", {},
                               fs::path(KY_WINDOWS_CORE).parent_path().string());
    EXPECT_FALSE(child.hasSucceeded());
    EXPECT_NE(child.getText().find("GetProcAddress failed!"), std::string::npos) << child.getText();
    EXPECT_EQ(child.getText().find("caught"), std::string::npos);
}
