// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyEnvironment.h"
#include "KyPlatform.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

TEST(KyPlatformTest, TheSystemIsTheOneWithItsPathSeparator) {
    const bool isWindows = std::filesystem::path::preferred_separator == '\\';
    EXPECT_EQ(KyPlatform::getOsType(), isWindows ? 0 : 1);
}

TEST(KyEnvironmentTest, AVariableIsSetAndReplaced) {
    EXPECT_TRUE(setEnvironmentVariable("KY_TEST_VARIABLE", "first"));
    EXPECT_STREQ(std::getenv("KY_TEST_VARIABLE"), "first");
    EXPECT_TRUE(setEnvironmentVariable("KY_TEST_VARIABLE", "a=b c"));
    EXPECT_STREQ(std::getenv("KY_TEST_VARIABLE"), "a=b c");
}

TEST(KyEnvironmentTest, BadNamesAndZeroBytesAreRefused) {
    EXPECT_FALSE(setEnvironmentVariable("", "value"));
    EXPECT_FALSE(setEnvironmentVariable("KY=TEST", "value"));
    EXPECT_FALSE(setEnvironmentVariable(std::string("KY_ZERO\0X", 9), "value"));
    EXPECT_FALSE(setEnvironmentVariable("KY_ZERO", std::string("a\0b", 3)));
    EXPECT_EQ(std::getenv("KY_ZERO"), nullptr);
}
