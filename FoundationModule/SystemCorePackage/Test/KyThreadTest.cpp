// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyMutex.h"
#include "KyThread.h"

#include <gtest/gtest.h>

#include <mutex>
#include <set>
#include <thread>
#include <vector>

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

TEST(KyMutexTest, OnlyOneThreadHoldsIt) {
    KyMutex mutex;
    int count = 0;
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([&] {
                for (int step = 0; step < 5000; ++step) {
                    const std::scoped_lock guard(mutex);
                    ++count;
                }
            });
    }
    EXPECT_EQ(count, 20000);
}

TEST(KyMutexTest, AcquiredMeansNotFreeForOthers) {
    KyMutex mutex;
    const auto tryElsewhere = [&mutex] {
        bool taken = false;
        std::thread([&] {
            taken = mutex.try_lock();
            if (taken)
                mutex.release();
        }).join();
        return taken;
    };
    mutex.acquire();
    EXPECT_FALSE(tryElsewhere());
    mutex.release();
    EXPECT_TRUE(tryElsewhere());
}
