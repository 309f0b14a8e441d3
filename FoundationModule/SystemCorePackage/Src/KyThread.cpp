// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyThread.h"

#include <atomic>

KyThread::ID KyThread::getCurrentThreadID() {
    // Counted rather than asked of the system, whose numbers come back when a thread has ended.
    static constinit std::atomic<ID> lastID = 0;
    thread_local const ID id = ++lastID;
    return id;
}
