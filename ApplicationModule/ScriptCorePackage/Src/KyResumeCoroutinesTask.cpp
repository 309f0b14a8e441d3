// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyResumeCoroutinesTask.h"

#include "KyScriptEngine.h"

namespace {

constexpr std::int64_t cMicrosecondsPerMillisecond = 1000;
constexpr double cSecondsPerMillisecond = 0.001;
constexpr double cNoElapsedTime = -0.001;

} // namespace

KyResumeCoroutinesTask::KyResumeCoroutinesTask(KyScriptEngine& engine)
    : KyTask("KyResumeCoroutinesTask")
    , mEngine(engine) {
    mTimer.start();
}

bool KyResumeCoroutinesTask::execute() {
    const double elapsed = takeElapsedTime();
    const bool hasCoroutines = mEngine.getNbCoroutines() > 0;
    mEngine.resumeCoroutines(elapsed);
    return hasCoroutines;
}

double KyResumeCoroutinesTask::takeElapsedTime() {
    const std::int64_t now = mTimer.getPreciseElapsedTime();
    if (mReference == cNoReference) {
        mReference = now;
        return cNoElapsedTime;
    }
    const std::int64_t milliseconds = (now - mReference) / cMicrosecondsPerMillisecond;
    mReference += milliseconds * cMicrosecondsPerMillisecond;
    return static_cast<double>(milliseconds) * cSecondsPerMillisecond;
}

void KyResumeCoroutinesTask::skipElapsedTime() {
    if (mReference != cNoReference)
        mReference = mTimer.getPreciseElapsedTime();
}
