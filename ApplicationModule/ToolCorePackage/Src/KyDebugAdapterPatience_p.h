// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <array>
#include <chrono>
#include <mutex>

/// How long the client of the debug adapter has waited for what must not wait for ever: to pause, to leave, to look at
/// a value in passing. In any thread.
///
/// ```
/// patience.note(KyDebugAdapterPatience::ePause, now); // it has come
/// patience.act(later, [](const KyDebugAdapterPatience::Lateness& late) { ... });
/// patience.noteTaken(KyDebugAdapterPatience::ePause, now);
/// ```
class KYAPPLICATION_EXPORT KyDebugAdapterPatience {
public:
    using Clock = std::chrono::steady_clock;
    enum Urgency { ePause, eFarewell, eGlance, eNbUrgencies };

    /// What has waited too long.
    struct Lateness {
        /// A script that runs on keeps the client waiting, and may be stopped.
        bool isStopDue = false;
        /// An evaluation that goes on keeps it waiting.
        bool isInterruptionDue = false;
        /// It has waited so long to leave that nobody will see to it.
        bool isFarewellOverdue = false;
    };

    /// Before a request is carried out, it waits for so long behind others.
    static constexpr std::chrono::milliseconds cPatience{50};
    static constexpr std::chrono::milliseconds cLongPatience{1000};
    /// For a glance that is being taken.
    static constexpr std::chrono::milliseconds cGlancePatience{2000};

    /// Something has come; eNbUrgencies, which may wait, is nothing.
    void note(Urgency urgency, Clock::time_point now);
    /// Its turn has come: a glance begins, all else waits no longer.
    void noteTaken(Urgency urgency, Clock::time_point now);
    /// It has been done.
    void noteHandled(Urgency urgency);
    /// Whether scripts may be stopped for the client.
    void setStopping(bool isStopping);
    bool isWaiting(Urgency urgency) const;
    bool isWaiting() const;

    /// Tells the action what is late. Nothing that waits is taken, and no glance ends, while it acts.
    template <class Action>
    void act(Clock::time_point now, Action action) const {
        const std::scoped_lock lock(mMutex);
        action(getLateness(now));
    }

private:
    struct Queue {
        int count = 0;
        /// When the one came that waits, or the one before it was taken.
        Clock::time_point since;
    };

    Lateness getLateness(Clock::time_point now) const;
    bool isLate(Urgency urgency, Clock::time_point now, std::chrono::milliseconds patience) const;

    mutable std::mutex mMutex;
    std::array<Queue, eNbUrgencies> mQueues;
    /// Of the glance under way.
    Clock::time_point mDeadline = Clock::time_point::max();
    bool mIsStopping = false;
};
