// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>

#include <functional>
#include <optional>

class KyHost;
class KyHostStage;
class KyHostSurface;

/// The frames of the program. Each runs the main task manager, which resumes the coroutines, and draws when something
/// has changed.
///
/// Coroutines see real time. In a window frames follow the display; without one they come sixty times a second, as on a
/// display, so that 120 frames are two seconds of animation; but nobody waits where no coroutine does. One needs Qt's
/// event loop and stands on the thread that runs it.
class KyHostLoop {
public:
    struct Limits {
        /// Frames after which to end.
        std::optional<int> nbFrames;
        /// End when no coroutine waits and no download of a script is on its way.
        bool endsWithCoroutines = false;
        /// Somebody may give more to do at any time: keep the pace of a display.
        bool isOpenEnded = false;
    };

    /// A null surface draws nothing.
    KyHostLoop(KyHost& host, KyHostStage& stage, KyHostSurface* surface, const Limits& limits);

    /// Runs frames until a limit is reached, the host quits or the surface is closed.
    void run();
    /// Limits that hold from now on.
    void setLimits(const Limits& limits) { mLimits = limits; }
    /// How what the scripts of a frame printed gets to standard output, where flushing alone does not do.
    void setFlush(std::function<void()> flush) { mFlush = std::move(flush); }
    /// Draws what has changed, between frames or in one that does not go on.
    void redraw();
    /// In the middle of something long: draws what has changed and lets events through, but no frame runs.
    void processEvents();
    /// Whether no frame follows any more.
    bool hasEnded() const { return mIsOver; }
    /// Ends at once if the host quits, else soon runs a frame.
    void wake();

private:
    void runFrame();
    void onDrawn();
    void scheduleNext(bool waitsForDisplay);
    void startTimerUntilDue();
    bool isOver() const;
    bool isPaced() const;

    KyHost& mHost;
    KyHostStage& mStage;
    KyHostSurface* mSurface;
    Limits mLimits;
    std::function<void()> mFlush;
    QTimer mTimer;
    /// Microseconds at which the next frame is due.
    long long mDue = 0;
    bool mIsWaitingForDisplay = false;
    bool mIsRunningFrame = false;
    bool mIsOver = false;
};
