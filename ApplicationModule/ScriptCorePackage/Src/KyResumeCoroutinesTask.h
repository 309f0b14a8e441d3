// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyTask.h"
#include "KyTimer.h"

#include <cstdint>

class KyScriptEngine;

/// Resumes the coroutines of its engine once a frame with the time since the last frame. Owned by the engine.
class KYAPPLICATION_EXPORT KyResumeCoroutinesTask : public KyTask {
public:
    /// The engine outlives the task.
    explicit KyResumeCoroutinesTask(KyScriptEngine& engine);

    bool execute() override;

    /// Seconds since the last call, in whole milliseconds; the rest counts in the next one. -0.001 the first time.
    double takeElapsedTime();
    /// The time until now counts for nothing.
    void skipElapsedTime();

private:
    static constexpr std::int64_t cNoReference = -1;

    KyScriptEngine& mEngine;
    KyTimer mTimer;
    /// On the timer, microseconds.
    std::int64_t mReference = cNoReference;
};
