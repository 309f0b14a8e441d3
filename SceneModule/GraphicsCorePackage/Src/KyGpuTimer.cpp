// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGpuTimer.h"

#include "KyGpuName_p.h"

#include "KyTimer.h"

#include <epoxy/gl.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace {

constexpr std::size_t cNbQueries = 4;
constexpr double cMillisecondsPerNanosecond = 1e-6;
constexpr GLuint64 cNanosecondsPerMicrosecond = 1000;

bool canMeasure() {
    return kyGetCurrentGpuHandle() && (epoxy_gl_version() >= 33 || epoxy_has_gl_extension("GL_ARB_timer_query")) &&
           epoxy_is_desktop_gl();
}

} // namespace

/// A ring: the oldest is read first. Queries are not shared between contexts.
struct KyGpuTimer::Queries {
    KyGpuContext context = kyGetCurrentGpuContext();
    std::array<GLuint, cNbQueries> names{};
    /// Microseconds of KyTimer at which they began.
    std::array<std::int64_t, cNbQueries> begins{};
    std::size_t first = 0;
    std::size_t nbWaiting = 0;
    bool isMeasuring = false;

    Queries() { glGenQueries(cNbQueries, names.data()); }
    ~Queries() {
        if (isCurrent())
            glDeleteQueries(cNbQueries, names.data());
    }
    Queries(const Queries&) = delete;
    Queries& operator=(const Queries&) = delete;

    bool isCurrent() const { return context.handle && context == kyGetCurrentGpuContext(); }
};

KyGpuTimer::KyGpuTimer() = default;

KyGpuTimer::~KyGpuTimer() = default;

void KyGpuTimer::begin() {
    if (!canMeasure())
        return;
    if (!mQueries || !mQueries->isCurrent())
        mQueries = std::make_unique<Queries>();
    collect();
    Queries& queries = *mQueries;
    if (queries.nbWaiting == cNbQueries)
        return;
    const std::size_t next = (queries.first + queries.nbWaiting) % cNbQueries;
    queries.begins[next] = KyTimer::getCurrentUS();
    glBeginQuery(GL_TIME_ELAPSED, queries.names[next]);
    queries.isMeasuring = true;
}

void KyGpuTimer::end() {
    if (!mQueries || !mQueries->isMeasuring || !mQueries->isCurrent())
        return;
    glEndQuery(GL_TIME_ELAPSED);
    mQueries->isMeasuring = false;
    ++mQueries->nbWaiting;
}

void KyGpuTimer::collect() {
    Queries& queries = *mQueries;
    while (queries.nbWaiting > 0) {
        const GLuint name = queries.names[queries.first];
        GLint isKnown = 0;
        glGetQueryObjectiv(name, GL_QUERY_RESULT_AVAILABLE, &isKnown);
        if (!isKnown)
            return;
        GLuint64 elapsed = 0;
        glGetQueryObjectui64v(name, GL_QUERY_RESULT, &elapsed);
        // Some drivers give the time of day where a frame was begun but not drawn.
        const auto passed = static_cast<GLuint64>(KyTimer::getCurrentUS() - queries.begins[queries.first]);
        if (elapsed / cNanosecondsPerMicrosecond <= passed)
            mMilliseconds = static_cast<double>(elapsed) * cMillisecondsPerNanosecond;
        queries.first = (queries.first + 1) % cNbQueries;
        --queries.nbWaiting;
    }
}
