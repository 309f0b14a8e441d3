// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include <memory>

/// How long the device itself works on what is drawn between begin() and end(). The answer comes some frames later,
/// nobody waits for it. Frames for which no query is free are left out.
///
/// ```
/// timer.begin();
/// canvas->render(context);
/// timer.end();
/// std::printf("%.1f ms", timer.getMilliseconds());
/// ```
class KYSCENE_EXPORT KyGpuTimer {
public:
    KyGpuTimer();
    /// With the context current in which it measured, else its queries end with that.
    ~KyGpuTimer();
    KyGpuTimer(const KyGpuTimer&) = delete;
    KyGpuTimer& operator=(const KyGpuTimer&) = delete;

    /// Nothing without a context that can measure; no other query of elapsed time may be under way.
    void begin();
    /// Ends what begin() began; nothing when that measured nothing.
    void end();
    /// Of the last frame that is known; negative while none is.
    double getMilliseconds() const { return mMilliseconds; }

private:
    struct Queries;

    void collect();

    std::unique_ptr<Queries> mQueries;
    double mMilliseconds = -1.0;
};
