// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <cstdint>

/// A stop watch on the monotonic clock, which no change of the wall clock moves. Paused time does not count.
/// Both delta operations share one reference, taken by the first call after `start()`.
///
///     KyTimer timer;
///     timer.start();
///     timer.getPreciseDeltaTime();   // -1, takes the reference
///     timer.getPreciseDeltaTime();   // microseconds since the line above
class KYFOUNDATION_EXPORT KyTimer {
public:
    /// What the delta operations return when there is no reference yet.
    static constexpr std::int64_t cNoReference = -1;

    /// Monotonic, from an arbitrary origin.
    static std::int64_t getCurrentUS();
    /// Milliseconds of a clock that never goes back.
    static std::int64_t getCurrentMS();

    /// Begins at 0 and forgets the reference.
    void start();
    /// Stops the time; nothing happens when it does not run.
    void pause();
    /// Goes on after `pause()`; nothing happens when it runs or was never started.
    void resume();

    /// Milliseconds since `start()`, limited to int; 0 when never started.
    int getElapsedTime() const;
    /// Microseconds since `start()`; 0 when never started.
    std::int64_t getPreciseElapsedTime() const;
    /// Whole milliseconds since the last call; the rest counts in the next one. -1 when there is no reference.
    int getDeltaTime();
    /// Microseconds since the last call; -1 when there is no reference.
    std::int64_t getPreciseDeltaTime();

    /// Whether both were started, paused and asked for their last difference at the same times.
    bool operator==(const KyTimer& other) const = default;

private:
    enum State : std::int32_t { eIdle, eRunning, ePaused, eNbStates };

    /// False, having taken the reference now, when there was none.
    bool hasReference();

    std::int64_t mOrigin = 0;
    std::int64_t mPausedElapsed = 0;
    std::int64_t mReference = cNoReference;
    State mState = eIdle;
};
