// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {
// What a child process wrote to standard error.
std::string runChild(const std::string& command) {
    const auto log =
        std::filesystem::temp_directory_path() /
        (std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + ".KyLibraryEntry.log");
    EXPECT_EQ(std::system((command + " 2> \"" + log.string() + "\"").c_str()), 0);
    std::string text;
    {
        std::ifstream stream(log, std::ios::binary);
        text.assign(std::istreambuf_iterator<char>(stream), {});
    }
    std::filesystem::remove(log);
    return text;
}

std::string runLoading(const std::string& steps) {
    return runChild("\"" KY_LOADING_PROGRAM "\" \"" KY_ENTRY_PROBE "\" " + steps);
}
} // namespace

TEST(KyLibraryEntryTest, LoadingAndUnloadingIsToldWithNull) {
    EXPECT_EQ(runLoading("oc"), "(1,null,own)(0,null,own)closed");
}

TEST(KyLibraryEntryTest, ALibraryLoadedAgainIsToldAgain) {
    EXPECT_EQ(runLoading("ococ"), "(1,null,own)(0,null,own)(1,null,own)(0,null,own)closed");
}

TEST(KyLibraryEntryTest, ExitWithALoadedLibraryIsToldWithReserved) {
    EXPECT_EQ(runLoading("o"), "(1,null,own)end(0,set,own)");
}

TEST(KyLibraryEntryTest, ALoadOnAnotherThreadIsALoadByTheProgram) {
    EXPECT_EQ(runLoading("tc"), "(1,null,own)(0,null,own)closed");
    EXPECT_EQ(runLoading("t"), "(1,null,own)end(0,set,own)");
}

TEST(KyLibraryEntryTest, ALinkedLibraryEndsWithTheProcess) {
    EXPECT_EQ(runChild("\"" KY_LINKED_PROGRAM "\""), "(1,set,own)main(0,set,own)");
}
