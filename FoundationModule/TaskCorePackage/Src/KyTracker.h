// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

#include <functional>
#include <vector>

/// Progress and cancellation of a long operation. Sub-tasks nest: each takes the share of one step of the task around
/// it.
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
    using Listener = std::function<void(double)>;

    KyTracker();

    bool isCanceled() const { return mIsCanceled; }
    void cancel() { mIsCanceled = true; }

    /// The steps begun with setNbSteps are counted within the innermost sub-task.
    void beginSubTask();
    /// Completes one step of the task around; nothing at the outermost.
    void endSubTask();
    /// Number of steps of the current task, at least 1.
    void setNbSteps(unsigned count);
    void step();

    /// 0 to 1, never going back.
    double getProgress() const { return mProgress; }
    void setListener(Listener listener) { mListener = std::move(listener); }

private:
    struct Level {
        double begin;
        double size;
        unsigned nbSteps;
        unsigned nbDone;
    };

    void publish();

    std::vector<Level> mLevels;
    double mProgress = 0;
    bool mIsCanceled = false;
    Listener mListener;
};
