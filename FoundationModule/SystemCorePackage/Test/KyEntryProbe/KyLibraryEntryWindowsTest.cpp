// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyChildProgramWindows.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

TEST(KyLibraryEntryTest, LoadingUnloadingAndExitAreToldOnAnyThread) {
    const std::string loading = KY_LOADING_PROGRAM " " KY_ENTRY_PROBE " ";
    const std::pair<std::string, std::string> cases[] = {
        {loading + "ococ", "(1,null,own)(0,null,own)(1,null,own)(0,null,own)closed"},
        {loading + "o", "(1,null,own)end(0,set,own)"},
        {loading + "tc", "(1,null,own)(3,null,own)(0,null,own)closed"},
        {loading + "t", "(1,null,own)(3,null,own)end(0,set,own)"},
        {loading + "ok", "(1,null,own)"},
        {KY_LINKED_PROGRAM, "(1,set,own)main(0,set,own)"},
    };
    for (const auto& [command, told] : cases) {
        const KyChildProgram program(command);
        EXPECT_TRUE(program.hasSucceeded()) << command;
        EXPECT_EQ(program.getText(), told) << command;
    }
}

TEST(KyLibraryEntryTest, AnExceptionOfAStaticObjectEndsTheProcessUncaught) {
    const KyChildProgram program(KY_LOADING_PROGRAM " " KY_FAILING_PROBE " o");
    EXPECT_FALSE(program.hasSucceeded());
    EXPECT_NE(program.getText().find("no life"), std::string::npos) << program.getText();
    for (const char* text : {"caught", "end", "closed"})
        EXPECT_EQ(program.getText().find(text), std::string::npos) << program.getText();
}
