// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapterSources_p.h"

#include "KyScriptDebugger.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

using Breakpoints = std::vector<KyScriptBreakpoint>;

QString makeAbsolute(const QString& path) {
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

QString identify(const QString& path) {
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? makeAbsolute(path) : canonical;
}

/// The present breakpoints with the client's exchanged for others. `lines` are those of the client. A line that
/// somebody else has taken stays theirs.
Breakpoints exchange(Breakpoints present, std::set<int>& lines, const Breakpoints& wanted) {
    std::erase_if(present, [&lines](const KyScriptBreakpoint& breakpoint) { return lines.contains(breakpoint.line); });
    lines.clear();
    const auto nbOthers = static_cast<std::ptrdiff_t>(present.size());
    for (const KyScriptBreakpoint& breakpoint : wanted) {
        const auto end = present.begin() + nbOthers;
        const bool isTaken = std::find_if(present.begin(), end, [&](const KyScriptBreakpoint& other) {
                                 return other.line == breakpoint.line;
                             }) != end;
        if (!isTaken && lines.insert(breakpoint.line).second)
            present.push_back(breakpoint);
    }
    return present;
}

} // namespace

void KyDebugAdapterSources::setBreakpoints(const QString& path, const Breakpoints& breakpoints) {
    const QString identity = identify(path);
    File& file = mFiles[identity];
    file.path = QFileInfo(path).isRelative() ? makeAbsolute(path) : path;
    place(identity.toStdString(), file, breakpoints);
}

void KyDebugAdapterSources::place(const std::string& path, File& file, const Breakpoints& breakpoints) {
    mDebugger.setFileBreakpoints(path, exchange(mDebugger.getFileBreakpoints(path), file.lines, breakpoints));
}

void KyDebugAdapterSources::setChunkBreakpoints(const std::string& chunkName, const Breakpoints& breakpoints) {
    mDebugger.setBreakpoints(chunkName, exchange(mDebugger.getBreakpoints(chunkName), mChunks[chunkName], breakpoints));
}

void KyDebugAdapterSources::clear() {
    for (auto& [identity, file] : mFiles)
        place(identity.toStdString(), file, {});
    for (auto& [chunkName, lines] : mChunks)
        setChunkBreakpoints(chunkName, {});
    mFiles.clear();
    mChunks.clear();
}

bool KyDebugAdapterSources::holds(const std::string& chunkName, int line) const {
    const auto chunk = mChunks.find(chunkName);
    const auto file = mFiles.find(identify(QString::fromStdString(mDebugger.findFile(chunkName))));
    return (chunk != mChunks.end() && chunk->second.contains(line)) ||
           (file != mFiles.end() && file->second.lines.contains(line));
}

QString KyDebugAdapterSources::findPath(const std::string& chunkName) const {
    const QString path = QString::fromStdString(mDebugger.findFile(chunkName));
    if (path.isEmpty() || !QFileInfo::exists(path))
        return {};
    const auto found = mFiles.find(identify(path));
    return found == mFiles.end() ? path : found->second.path;
}

int KyDebugAdapterSources::getReference(const std::string& chunkName) {
    if (chunkName.empty() || chunkName.front() == '@' || chunkName.front() == '=')
        return 0;
    const auto found = std::ranges::find(mTexts, chunkName);
    const auto number = static_cast<int>(found - mTexts.begin()) + 1;
    if (found == mTexts.end())
        mTexts.push_back(chunkName);
    return number;
}

const std::string* KyDebugAdapterSources::findText(int reference) const {
    const auto nbTexts = static_cast<int>(mTexts.size());
    return reference > 0 && reference <= nbTexts ? &mTexts[static_cast<std::size_t>(reference) - 1] : nullptr;
}
