// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

TEST(KyLibraryEntryTest, LoadingUnloadingAndExitAreToldOnAnyThread) {
    const std::string loading = "\"" KY_LOADING_PROGRAM "\" \"" KY_ENTRY_PROBE "\" ";
    const std::pair<std::string, std::string> cases[] = {
        {loading + "ococ", "(1,null,own)(0,null,own)(1,null,own)(0,null,own)closed"},
        {loading + "o", "(1,null,own)end(0,set,own)"},
        {loading + "tc", "(1,null,own)(0,null,own)closed"},
        {loading + "t", "(1,null,own)end(0,set,own)"},
        {"\"" KY_LINKED_PROGRAM "\"", "(1,set,own)main(0,set,own)"},
    };
    const std::string log = testing::TempDir() + "KyLibraryEntryTest.log";
    for (const auto& [command, told] : cases) {
        EXPECT_EQ(std::system((command + " 2> \"" + log + "\"").c_str()), 0) << command;
        std::ifstream stream(log, std::ios::binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), told) << command;
    }
    std::remove(log.c_str());
}
