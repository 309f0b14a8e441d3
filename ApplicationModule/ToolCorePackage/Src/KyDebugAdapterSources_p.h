// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyScriptInspection.h"

#include <QString>

#include <map>
#include <set>
#include <string>
#include <vector>

class KyScriptDebugger;

/// What the client of the debug adapter calls files, and the engine chunks: paths to chunk names and back, and the
/// breakpoints of the client beside those of others.
class KyDebugAdapterSources {
public:
    explicit KyDebugAdapterSources(KyScriptDebugger& debugger)
        : mDebugger(debugger) {}

    /// Replaces the client's breakpoints in a file, whatever way its path is written. Those of others stay.
    void setBreakpoints(const QString& path, const std::vector<KyScriptBreakpoint>& breakpoints);
    /// The same for a chunk that is no file.
    void setChunkBreakpoints(const std::string& chunkName, const std::vector<KyScriptBreakpoint>& breakpoints);
    /// Removes all breakpoints of the client.
    void clear();

    /// Whether the client has a breakpoint there.
    bool holds(const std::string& chunkName, int line) const;

    /// The file of a chunk, as the client writes it; empty when there is none.
    QString findPath(const std::string& chunkName) const;

    /// Number of a chunk that is no file, from 1; 0 for one whose text is not kept.
    int getReference(const std::string& chunkName);
    /// The text of such a chunk, which is its name; null for a wrong number.
    const std::string* findText(int reference) const;

private:
    struct File {
        /// As the client writes it, but whole.
        QString path;
        std::set<int> lines;
    };

    void place(const std::string& path, File& file, const std::vector<KyScriptBreakpoint>& breakpoints);

    KyScriptDebugger& mDebugger;
    /// By their paths without links.
    std::map<QString, File> mFiles;
    /// Lines with breakpoints of the client, by chunk name.
    std::map<std::string, std::set<int>> mChunks;
    std::vector<std::string> mTexts;
};
