// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyScriptInspection.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Which files the chunks of scripts came from, and the breakpoints of files. Paths are whole, without links and dots.
class KyScriptChunkFiles {
public:
    using Scripts = std::map<std::string, std::string>;

    /// The engine is about to run the file under the chunk name.
    void noteScript(const std::string& chunkName, const std::string& path);
    /// A main chunk is about to run. What scripts load is named as it is seen from the current directory. True for a
    /// file that was not noted under that name.
    bool noteChunk(const char* chunkName);
    /// Chunk names of the files that were noted, in alphabetical order.
    std::vector<std::string> getNames() const;
    /// Paths by chunk name, as they were given.
    const Scripts& getScripts() const { return mScripts; }
    /// Empty for a name that is none of a file. A chunk that was not noted is looked for in the current directory, then
    /// beside the scripts that were.
    const std::string& findPath(std::string_view chunkName);

    void setBreakpoints(const std::string& path, const std::vector<KyScriptBreakpoint>& breakpoints);
    /// One a line, by line.
    std::vector<KyScriptBreakpoint> getBreakpoints(const std::string& path) const;
    void clearBreakpoints() { mBreakpoints.clear(); }
    void forEachLine(const std::function<void(int)>& visit) const;
    /// The condition, empty for none, of the breakpoint in a line; null when there is no breakpoint.
    const std::string* findCondition(std::string_view chunkName, int line);

private:
    struct File {
        /// As it was noted: making it whole means asking the file system.
        std::string noted;
        std::string path;
    };

    std::string locate(const std::string& name) const;

    Scripts mScripts;
    std::map<std::string, File, std::less<>> mFiles;
    std::map<std::string, std::map<int, std::string>> mBreakpoints;
};
