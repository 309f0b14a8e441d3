// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>

/// A lock between threads, not recursive: acquiring it twice on one thread blocks for ever.
/// `lock`, `unlock` and `try_lock` make it work with the scope guards of the standard library:
///
///     const std::scoped_lock guard(mMutex);
class KyMutex {
public:
    /// Waits until the lock is free and takes it.
    void acquire() { mMutex.lock(); }
    /// Gives the lock back; only the thread that holds it may call this.
    void release() { mMutex.unlock(); }

    /// @{
    /// For std::lock_guard and the like.
    void lock() { acquire(); }
    void unlock() { release(); }
    /// @}
    /// Takes the lock when it is free; false when it is not.
    bool try_lock() { return mMutex.try_lock(); }

private:
    std::mutex mMutex;
};
