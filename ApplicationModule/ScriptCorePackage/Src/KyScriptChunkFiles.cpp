// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptChunkFiles_p.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace {

std::filesystem::path toPath(std::string_view text) {
    return std::u8string(text.begin(), text.end());
}

std::string toText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::filesystem::path makeAbsolute(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::path whole = std::filesystem::absolute(path, error);
    return error ? path : whole;
}

std::string makeWhole(const std::filesystem::path& path) {
    const std::filesystem::path absolute = makeAbsolute(path);
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::weakly_canonical(absolute, error);
    return toText(error ? absolute.lexically_normal() : whole);
}

bool isFile(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

} // namespace

void KyScriptChunkFiles::noteScript(const std::string& chunkName, const std::string& path) {
    mScripts[chunkName] = path;
    mFiles[chunkName] = {path, makeWhole(toPath(path))};
}

bool KyScriptChunkFiles::noteChunk(const char* chunkName) {
    if (*chunkName != '@')
        return false;
    const std::filesystem::path absolute = makeAbsolute(toPath(chunkName + 1));
    std::string noted = toText(absolute);
    File& file = mFiles[chunkName];
    if (file.noted == noted)
        return false;
    const File before = std::exchange(file, File{std::move(noted), makeWhole(absolute)});
    return (before.noted.empty() || before.path != file.path) && isFile(toPath(file.path));
}

std::vector<std::string> KyScriptChunkFiles::getNames() const {
    std::vector<std::string> names;
    for (const auto& [name, file] : mFiles)
        if (!file.noted.empty() && isFile(toPath(file.path)))
            names.push_back(name);
    return names;
}

const std::string& KyScriptChunkFiles::findPath(std::string_view chunkName) {
    static const std::string cNone;
    if (const auto found = mFiles.find(chunkName); found != mFiles.end())
        return found->second.path;
    if (!chunkName.starts_with('@'))
        return cNone;
    const std::string name(chunkName.substr(1));
    return mFiles.emplace(chunkName, File{{}, locate(name)}).first->second.path;
}

std::string KyScriptChunkFiles::locate(const std::string& name) const {
    const std::filesystem::path path = toPath(name);
    if (isFile(path))
        return makeWhole(path);
    const auto isBeside = [&path](const auto& script) { return isFile(toPath(script.second).parent_path() / path); };
    const auto found = std::ranges::find_if(mScripts, isBeside);
    return makeWhole(found == mScripts.end() ? path : toPath(found->second).parent_path() / path);
}

void KyScriptChunkFiles::setBreakpoints(const std::string& path, const std::vector<KyScriptBreakpoint>& breakpoints) {
    const std::string whole = makeWhole(toPath(path));
    mBreakpoints.erase(whole);
    for (const KyScriptBreakpoint& breakpoint : breakpoints)
        mBreakpoints[whole][breakpoint.line] = breakpoint.condition;
}

std::vector<KyScriptBreakpoint> KyScriptChunkFiles::getBreakpoints(const std::string& path) const {
    std::vector<KyScriptBreakpoint> breakpoints;
    if (const auto found = mBreakpoints.find(makeWhole(toPath(path))); found != mBreakpoints.end())
        for (const auto& [line, condition] : found->second)
            breakpoints.push_back({line, condition});
    return breakpoints;
}

void KyScriptChunkFiles::forEachLine(const std::function<void(int)>& visit) const {
    for (const auto& [path, lines] : mBreakpoints)
        for (const auto& [line, condition] : lines)
            visit(line);
}

const std::string* KyScriptChunkFiles::findCondition(std::string_view chunkName, int line) {
    if (mBreakpoints.empty())
        return nullptr;
    const auto file = mBreakpoints.find(findPath(chunkName));
    if (file == mBreakpoints.end())
        return nullptr;
    const auto found = file->second.find(line);
    return found == file->second.end() ? nullptr : &found->second;
}
