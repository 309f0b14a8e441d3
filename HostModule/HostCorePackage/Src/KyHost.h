// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyObject.h"

/// The running program as scripts see it, under the name `host`. Owned by the program, which scripts cannot take it
/// from: destroying it does nothing.
///
/// ```
/// print(host.FrameCount, host.FrameTime)
/// host:quit()
/// ```
class KyHost : public KyObject {
public:
    static const KyType* getType();
    static KyHost* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;
    /// Does nothing: it ends with the program.
    void destroy() override {}

    /// Frames that have been completed.
    unsigned getFrameCount() const { return mFrameCount; }
    /// Seconds from the beginning of the last completed frame to that of the one before; 0 until there were two.
    double getFrameTime() const { return mFrameTime; }
    bool isQuitting() const { return mIsQuitting; }

    /// Ends the program after the current frame; what is left of the command line does not run.
    void quit() { mIsQuitting = true; }
    /// Counts one frame that began at `now`, in microseconds of any one clock.
    void countFrame(long long now);

private:
    static constexpr long long cNoFrame = -1;

    unsigned mFrameCount = 0;
    double mFrameTime = 0;
    long long mLastFrame = cNoFrame;
    bool mIsQuitting = false;

    static const KyType* msType;
};
