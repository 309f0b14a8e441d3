// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapterPatience_p.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Patience = KyDebugAdapterPatience;

Patience::Clock::time_point at(int milliseconds) {
    return Patience::Clock::time_point(std::chrono::milliseconds(milliseconds));
}

/// Of a stop, an interruption and a farewell in place of others, those that are due.
std::string describe(const Patience& patience, int milliseconds) {
    std::string text;
    patience.act(at(milliseconds), [&](const Patience::Lateness& late) {
        text = std::string(late.isStopDue ? "stop " : "") + (late.isInterruptionDue ? "interrupt " : "") +
               (late.isFarewellOverdue ? "leave" : "");
    });
    return text;
}

} // namespace

TEST(KyDebugAdapterPatienceTest, WhatWaitsIsHelpedWhenItHasWaitedItself) {
    Patience patience;
    patience.note(Patience::eGlance, at(0));
    patience.note(Patience::ePause, at(100));
    EXPECT_EQ(describe(patience, 149), "");
    EXPECT_EQ(describe(patience, 150), "interrupt ") << "nothing may be stopped";
    patience.setStopping(true);
    EXPECT_EQ(describe(patience, 150), "stop interrupt ");
    patience.note(Patience::ePause, at(180));
    patience.noteTaken(Patience::ePause, at(200));
    EXPECT_EQ(describe(patience, 240), "") << "the next waits behind the one that is taken";
    EXPECT_EQ(describe(patience, 250), "stop interrupt ");
    patience.noteTaken(Patience::ePause, at(300));
    EXPECT_EQ(describe(patience, 9000), "");
    EXPECT_TRUE(patience.isWaiting() && !patience.isWaiting(Patience::ePause));

    patience.noteTaken(Patience::eGlance, at(10000));
    EXPECT_EQ(describe(patience, 12000), "");
    EXPECT_EQ(describe(patience, 12001), "interrupt ");
    patience.noteHandled(Patience::eGlance);
    EXPECT_EQ(describe(patience, 20000), "");
    patience.note(Patience::eFarewell, at(20000));
    EXPECT_EQ(describe(patience, 20999), "stop interrupt ");
    EXPECT_EQ(describe(patience, 21000), "stop interrupt leave");
    patience.note(Patience::eNbUrgencies, at(0));
    patience.noteTaken(Patience::eFarewell, at(0));
    EXPECT_FALSE(patience.isWaiting());
}
