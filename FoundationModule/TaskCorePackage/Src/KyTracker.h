// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <atomic>
#include <functional>
#include <vector>

/// Progress and cancellation of a long operation. Sub-tasks nest: each takes the share of one step of the task around
/// it. One thread works and reports; any may cancel.
///
/// ```
/// tracker.setNbSteps(files.size());
/// for (const auto& file : files) {
///     if (tracker.isCanceled())
///         return false;
///     copy(file);
///     tracker.step();
/// }
/// ```
class KYFOUNDATION_EXPORT KyTracker {
public:
    /// Gets the progress, 0 to 1.
    using Listener = std::function<void(double)>;

    KyTracker();

    /// True after cancel(), in the work's copy too.
    bool isCanceled() const { return mIsCanceled.value; }
    /// From then on progress stays where it is, and the listener is not called any more.
    void cancel() { mIsCanceled.value = true; }

    /// The steps begun with setNbSteps are counted within the innermost sub-task.
    void beginSubTask();
    /// Completes one step of the task around; nothing at the outermost.
    void endSubTask();
    /// Number of steps of the current task, at least 1.
    void setNbSteps(unsigned count);
    /// Completes one of the steps; nothing beyond the last.
    void step();
    /// Calls the listener though no step is done: the work goes on.
    void touch() { publish(); }

    /// 0 to 1, never going back.
    double getProgress() const { return mProgress; }
    /// Called whenever the progress grew; an empty one for none.
    void setListener(Listener listener) { mListener = std::move(listener); }

private:
    struct Level {
        double begin;
        double size;
        unsigned nbSteps;
        unsigned nbDone;
    };

    /// Can be copied, unlike what it holds.
    struct Flag {
        Flag() = default;
        Flag(const Flag& other)
            : value(other.value.load()) {}
        Flag& operator=(const Flag& other) {
            value = other.value.load();
            return *this;
        }

        std::atomic<bool> value = false;
    };

    void publish();

    std::vector<Level> mLevels;
    double mProgress = 0;
    Flag mIsCanceled;
    Listener mListener;
};
