// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostErrors.h"

#include "KyQtLuaBinding.h"
#include "KyScriptEngine.h"

#include "KyException.h"

#include <cstdio>

KyHostErrors* KyHostErrors::msCurrent = nullptr;

KyHostErrors::KyHostErrors(bool printsTracebacks)
    : mPrintsTracebacks(printsTracebacks) {
    msCurrent = this;
    KyScriptEngine::setPrintCallback(&onScriptError);
    KyException::setReportHandler(&onReport);
}

KyHostErrors::~KyHostErrors() {
    KyScriptEngine::setPrintCallback(nullptr);
    KyException::setReportHandler(nullptr);
    msCurrent = nullptr;
}

void KyHostErrors::write(const std::string& message) {
    writeLine("kyhost: " + message);
}

void KyHostErrors::onScriptError(const std::string& message) {
    writeLine(message);
    if (KyQtLuaBinding::isWarning())
        return;
    ++msCurrent->mNbScriptErrors;
    if (!msCurrent->mPrintsTracebacks)
        return;
    const std::string& traceback = KyScriptEngine::get().getLastTraceback();
    if (!traceback.empty())
        writeLine(traceback);
}

void KyHostErrors::onReport(const std::string& text) {
    write(text);
}

void KyHostErrors::writeLine(const std::string& line) {
    const auto writePlainly = [&line] {
        std::fflush(stdout);
        std::fwrite(line.data(), 1, line.size(), stderr);
        std::fputc('\n', stderr);
        std::fflush(stderr);
    };
    if (msCurrent && msCurrent->mAround)
        msCurrent->mAround(writePlainly);
    else
        writePlainly();
}
