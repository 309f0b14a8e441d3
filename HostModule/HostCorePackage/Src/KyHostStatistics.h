// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHostOverlay.h"

#include "KyDrawStatistics.h"
#include "KyGpuTimer.h"
#include "KyTask.h"

#include <QString>

#include <array>
#include <cstddef>

class KyHostStage;

/// How fast frames come and what is in them, in a corner of the view: the last frames as a graph, and numbers. What is
/// hidden measures nothing; what is shown is painted a few times a second, so that a view that stands still is drawn
/// that often.
class KyHostStatistics : private KyTask {
public:
    /// Of the graph.
    static constexpr std::size_t cNbFrames = 120;

    explicit KyHostStatistics(KyHostStage& stage);
    ~KyHostStatistics() override;

    bool isShown() const { return mOverlay.isShown(); }
    void setShown(bool isShown);

private:
    /// Milliseconds.
    struct Frame {
        double length = 0.0;
        /// What of it went into drawing; nothing where nothing had changed.
        double drawing = 0.0;
        double gpu = 0.0;
    };

    bool execute() override;
    void beginDrawing();
    void endDrawing();
    void paint(QPainter& painter) const;
    void paintGraph(QPainter& painter) const;
    void paintNumbers(QPainter& painter) const;
    /// The last but `index`, which is below mNbKnown.
    const Frame& getFrame(std::size_t index) const;
    double getMean(double Frame::*time) const;
    QString describeFrames() const;
    QString describeDrawing() const;

    KyHostStage& mStage;
    KyHostOverlay mOverlay;
    /// The oldest first from mNext on.
    std::array<Frame, cNbFrames> mFrames{};
    std::size_t mNext = 0;
    std::size_t mNbKnown = 0;
    /// Microseconds of KyTimer.
    long long mLastFrame = 0;
    long long mLastPainting = 0;
    long long mDrawingBegin = 0;
    KyDrawStatistics mBefore;
    KyDrawStatistics mDrawn;
    /// What the frame under way has taken so far.
    Frame mFrame;
    KyGpuTimer mGpuTimer;
};
