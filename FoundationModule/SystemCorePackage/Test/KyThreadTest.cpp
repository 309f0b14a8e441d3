// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyThread.h"

#include <gtest/gtest.h>

#include <set>
#include <thread>

TEST(KyThreadTest, AThreadKeepsItsNumberAndSharesItWithNone) {
    const auto own = KyThread::getCurrentThreadID();
    std::set<KyThread::ID> seen = {0, own};
    for (int i = 0; i < 8; ++i)
        std::thread([&] {
            EXPECT_TRUE(seen.insert(KyThread::getCurrentThreadID()).second);
            EXPECT_FALSE(seen.insert(KyThread::getCurrentThreadID()).second);
        }).join();
    EXPECT_EQ(KyThread::getCurrentThreadID(), own);
}
