// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostPrompt.h"

#include "KyHost.h"
#include "KyHostCompletion.h"

#include "KyScriptEngine.h"

#include <QDir>
#include <QStandardPaths>

#include <cstdio>

namespace {

constexpr const char* cPrompt = "> ";
constexpr const char* cContinuedPrompt = ">> ";
constexpr const char* cChunkName = "=stdin";

std::string getHistoryPath() {
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    folder.mkpath(".");
    return folder.filePath("history").toLocal8Bit().toStdString();
}

/// "=1+1" is a short way to write "return 1+1".
std::string expandEquals(const std::string& line) {
    return line.starts_with('=') ? "return " + line.substr(1) : line;
}

} // namespace

KyHostPrompt::KyHostPrompt(KyHost& host, Listeners listeners)
    : mHost(host)
    , mListeners(std::move(listeners))
    , mInput({[this](const std::string& line) { return onLine(line); }, [this] { onInterrupt(); }, [this] { onEnd(); },
              &KyHostCompletion::complete}) {
    if (mInput.isTerminal())
        mInput.keepHistory(getHistoryPath());
    mInput.setPrompt(cPrompt);
}

bool KyHostPrompt::onLine(const std::string& line) {
    mInput.addHistory(line);
    mChunk = mChunk.empty() ? expandEquals(line) : mChunk + "\n" + line;
    const KyScriptEngine& engine = KyScriptEngine::get();
    const std::string expression = "return " + mChunk;
    std::string error;
    if (engine.checkChunkSyntax(expression, error)) {
        execute(expression);
    } else if (!engine.checkChunkSyntax(mChunk, error) && isIncomplete(error)) {
        mInput.setPrompt(cContinuedPrompt);
        return true;
    } else {
        execute(mChunk);
    }
    mChunk.clear();
    mInput.setPrompt(cPrompt);
    return !mHost.isQuitting();
}

void KyHostPrompt::onInterrupt() {
    mChunk.clear();
    mInput.setPrompt(cPrompt);
}

void KyHostPrompt::onEnd() {
    if (!mChunk.empty())
        execute(mChunk);
    mChunk.clear();
    if (mInput.isTerminal())
        mHost.quit();
    mListeners.ended();
}

bool KyHostPrompt::isIncomplete(const std::string& error) const {
    return error.ends_with("'<eof>'");
}

void KyHostPrompt::execute(const std::string& chunk) {
    KyScriptEngine& engine = KyScriptEngine::get();
    const bool printedBefore = engine.areReturnValuesOutput();
    engine.setReturnValuesOutput(true);
    const bool succeeded = engine.executeChunk(chunk, cChunkName, {});
    engine.setReturnValuesOutput(printedBefore);
    std::fflush(stdout);
    mListeners.lineRan(succeeded);
}
