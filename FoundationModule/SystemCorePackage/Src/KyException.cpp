// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyException.h"

#include <atomic>
#include <cstdio>

namespace {
void reportToStandardError(const std::string& text) {
    // One write, so that lines of several threads do not mix.
    const std::string line = text + '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

constinit std::atomic<KyException::ReportHandler> gHandler = &reportToStandardError;
constinit thread_local bool gReporting = false;

class ReportingScope {
public:
    ReportingScope() { gReporting = true; }
    ReportingScope(const ReportingScope&) = delete;
    ReportingScope& operator=(const ReportingScope&) = delete;
    ~ReportingScope() { gReporting = false; }
};
} // namespace

void KyException::create(const std::string& text) {
    if (gReporting)
        return reportToStandardError(text);

    const ReportingScope scope;
    try {
        gHandler.load()(text);
    } catch (...) {
        reportToStandardError(text);
    }
}

KyException::ReportHandler KyException::setReportHandler(ReportHandler handler) {
    return gHandler.exchange(handler ? handler : &reportToStandardError);
}
