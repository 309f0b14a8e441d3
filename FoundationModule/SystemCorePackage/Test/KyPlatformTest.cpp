// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyEnvironment.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

TEST(KyEnvironmentTest, AVariableIsReplacedAndBadNamesAndZeroBytesAreRefused) {
    EXPECT_TRUE(setEnvironmentVariable("KY_TEST_VARIABLE", "first"));
    EXPECT_TRUE(setEnvironmentVariable("KY_TEST_VARIABLE", "a=b c"));
    EXPECT_STREQ(std::getenv("KY_TEST_VARIABLE"), "a=b c");
    EXPECT_FALSE(setEnvironmentVariable("", "value"));
    EXPECT_FALSE(setEnvironmentVariable("KY=TEST", "value"));
    EXPECT_FALSE(setEnvironmentVariable(std::string("KY_ZERO\0X", 9), "value"));
    EXPECT_FALSE(setEnvironmentVariable("KY_ZERO", std::string("a\0b", 3)));
    EXPECT_EQ(std::getenv("KY_ZERO"), nullptr);
}
