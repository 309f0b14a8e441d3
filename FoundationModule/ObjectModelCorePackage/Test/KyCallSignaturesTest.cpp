// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCallSignatures.h"

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

} // namespace

TEST(KyCallSignaturesTest, LinesAreKeptByOwnerAndFunctionInTheirOrder) {
    KyCallSignatures::add("KyLamp", {"blink(seconds)", "dim(share)", "blink(count, seconds)"});
    KyCallSignatures::add({}, {"blink(everything)"});
    EXPECT_EQ(Lines({"blink(seconds)", "blink(count, seconds)"}), KyCallSignatures::find("KyLamp", "blink"));
    EXPECT_EQ(Lines({"blink(everything)"}), KyCallSignatures::find({}, "blink"));
    EXPECT_EQ(Lines(), KyCallSignatures::find("KyLamp", "blin"));
    EXPECT_EQ(Lines(), KyCallSignatures::find("KyLam", "pblink"));
}

TEST(KyCallSignaturesTest, SayingItAgainReplacesTheFunctionsNamedOnly) {
    for (int i = 0; i < 2; ++i)
        KyCallSignatures::add("KyFan", {"turn(angle)", "turn(x, y)", "stop(seconds)"});
    EXPECT_EQ(2u, KyCallSignatures::find("KyFan", "turn").size());
    KyCallSignatures::add("KyFan", {"turn(degrees)"});
    EXPECT_EQ(Lines({"turn(degrees)"}), KyCallSignatures::find("KyFan", "turn"));
    EXPECT_EQ(Lines({"stop(seconds)"}), KyCallSignatures::find("KyFan", "stop"));
}
