// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptDebugger.h"

#include "KyScriptDebugger_p.h"
#include "KyScriptEngine.h"

void KyScriptDebugger::Private::setLines(const std::string& chunkName, const std::list<int>& newLines) {
    std::erase_if(conditions, [&chunkName](const auto& entry) { return entry.first.first == chunkName; });
    if (newLines.empty())
        engine.mBreakpoints.erase(chunkName);
    else
        engine.mBreakpoints[chunkName] = newLines;
    findLines();
}

void KyScriptDebugger::Private::findLines() {
    lines.reset();
    for (const auto& entry : engine.mBreakpoints)
        for (const int line : entry.second)
            noteLine(line);
    files.forEachLine([this](int line) { noteLine(line); });
}

void KyScriptDebugger::setBreakpoints(const std::string& chunkName,
                                      const std::vector<KyScriptBreakpoint>& breakpoints) {
    std::list<int> lines;
    for (const KyScriptBreakpoint& breakpoint : breakpoints)
        lines.push_back(breakpoint.line);
    mPrivate->setLines(chunkName, lines);
    for (const KyScriptBreakpoint& breakpoint : breakpoints)
        if (!breakpoint.condition.empty())
            mPrivate->conditions[{chunkName, breakpoint.line}] = breakpoint.condition;
}

std::vector<KyScriptBreakpoint> KyScriptDebugger::getBreakpoints(const std::string& chunkName) const {
    std::vector<KyScriptBreakpoint> breakpoints;
    const auto found = mPrivate->engine.mBreakpoints.find(chunkName);
    if (found == mPrivate->engine.mBreakpoints.end())
        return breakpoints;
    for (const int line : found->second) {
        const auto condition = mPrivate->conditions.find({chunkName, line});
        breakpoints.push_back({line, condition == mPrivate->conditions.end() ? "" : condition->second});
    }
    return breakpoints;
}

void KyScriptDebugger::clearBreakpoints() {
    mPrivate->engine.mBreakpoints.clear();
    mPrivate->conditions.clear();
    mPrivate->files.clearBreakpoints();
    mPrivate->findLines();
}

void KyScriptDebugger::setFileBreakpoints(const std::string& path, const std::vector<KyScriptBreakpoint>& breakpoints) {
    mPrivate->files.setBreakpoints(path, breakpoints);
    mPrivate->findLines();
}

std::vector<KyScriptBreakpoint> KyScriptDebugger::getFileBreakpoints(const std::string& path) const {
    return mPrivate->files.getBreakpoints(path);
}

std::string KyScriptDebugger::findFile(const std::string& chunkName) const {
    return mPrivate->files.findPath(chunkName);
}

std::string KyScriptDebugger::getScriptPath(const std::string& chunkName) const {
    const auto& scripts = mPrivate->files.getScripts();
    const auto found = scripts.find(chunkName);
    return found == scripts.end() ? std::string() : found->second;
}

std::string KyScriptDebugger::makeChunkName(const std::string& path) {
    return "@" + path.substr(path.find_last_of("/\\") + 1);
}

std::vector<std::string> KyScriptDebugger::getScripts() const {
    return mPrivate->files.getNames();
}
