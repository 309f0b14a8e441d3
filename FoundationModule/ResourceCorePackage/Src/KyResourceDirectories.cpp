// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyResourceDirectories_p.h"

#include "KyLocalPath_p.h"
#include "KyResource.h"

#include "KyMutex.h"

#include <algorithm>
#include <map>
#include <vector>

namespace fs = std::filesystem;

namespace {
std::vector<fs::path>& getDirectoryStack() {
    static std::vector<fs::path> stack;
    return stack;
}

struct ThreadDirectories {
    KyMutex mutex;
    std::map<KyThread::ID, std::vector<KyURL>> stacks;
};

ThreadDirectories& getThreadDirectories() {
    static ThreadDirectories directories;
    return directories;
}

bool changeDirectory(const KyURL& directory) {
    const auto path = KyLocalPath::fromTarget(directory);
    std::error_code error;
    if (path.empty())
        return false;
    fs::current_path(path, error);
    return !error;
}

KyURL asDirectory(KyURL url) {
    if (!url.getPath().ends_with('/'))
        url.setPath(url.getPath() + '/');
    return url;
}

bool isThere(const KyURL& url) {
    return KyLocalPath::exists(KyLocalPath::fromText(url.getLocalPath()));
}

// The directories that relative URLs are resolved against, of all threads.
std::vector<fs::path> getUsedDirectories() {
    std::vector<fs::path> result{KyLocalPath::fromText(KyResource::getCurrentDirectory().getLocalPath())};
    auto& directories = getThreadDirectories();
    const std::scoped_lock guard(directories.mutex);
    for (const auto& [thread, stack] : directories.stacks)
        for (const KyURL& directory : stack)
            result.push_back(KyLocalPath::fromText(directory.getLocalPath()));
    return result;
}

bool holds(const fs::path& outer, const fs::path& directory) {
    std::error_code error;
    fs::path inner = fs::weakly_canonical(directory, error);
    while (!fs::equivalent(outer, inner, error)) {
        if (inner == inner.parent_path())
            return false;
        inner = inner.parent_path();
    }
    return true;
}
} // namespace

KyURL KyResourceDirectories::resolveInCurrent(const KyURL& url) {
    return url.isRelative() && !url.isEmpty() ? url.getAbsoluteURL(KyResource::getCurrentDirectory()) : url;
}

bool KyResourceDirectories::isInUse(const fs::path& path) {
    const auto used = getUsedDirectories();
    return std::ranges::any_of(used, [&](const fs::path& directory) { return holds(path, directory); });
}

KyURL KyResource::resolve(const KyURL& url) {
    if (!url.isRelative() || url.isEmpty())
        return url;
    KyURL inCurrent = KyResourceDirectories::resolveInCurrent(url);
    const KyURL threadDirectory = getThreadDirectory();
    if (threadDirectory.isEmpty())
        return inCurrent;
    KyURL inThread = url.getAbsoluteURL(threadDirectory);
    return !isThere(inThread) && isThere(inCurrent) ? inCurrent : inThread;
}

bool KyResource::pushCurrentDirectory(const std::string& directory) {
    std::error_code error;
    auto before = fs::current_path(error);
    if (error || !changeDirectory(KyURL(directory, KyURL::eLocalPath)))
        return false;
    getDirectoryStack().push_back(std::move(before));
    return true;
}

bool KyResource::popCurrentDirectory() {
    auto& stack = getDirectoryStack();
    if (stack.empty())
        return false;
    std::error_code error;
    fs::current_path(stack.back(), error);
    stack.pop_back();
    return !error;
}

bool KyResource::setCurrentDirectory(const KyURL& directory) {
    return changeDirectory(directory);
}

KyURL KyResource::getCurrentDirectory() {
    std::error_code error;
    const auto path = fs::current_path(error);
    KyURL url;
    if (!error && url.fromLocalPath(KyLocalPath::toText(path)))
        return asDirectory(url);
    return {};
}

bool KyResource::pushThreadDirectory(KyThread::ID thread, const std::string& directory) {
    return pushThreadDirectory(KyURL(directory, KyURL::eLocalPath), thread);
}

bool KyResource::pushThreadDirectory(const KyURL& directory, KyThread::ID thread) {
    if (directory.isEmpty())
        return false;
    KyURL absolute = asDirectory(directory.getAbsoluteURL(getCurrentDirectory()));
    auto& directories = getThreadDirectories();
    const std::scoped_lock guard(directories.mutex);
    directories.stacks[thread].push_back(std::move(absolute));
    return true;
}

bool KyResource::popThreadDirectory(KyThread::ID thread) {
    auto& directories = getThreadDirectories();
    const std::scoped_lock guard(directories.mutex);
    const auto found = directories.stacks.find(thread);
    if (found == directories.stacks.end())
        return false;
    found->second.pop_back();
    if (found->second.empty())
        directories.stacks.erase(found);
    return true;
}

KyURL KyResource::getThreadDirectory(KyThread::ID thread) {
    auto& directories = getThreadDirectories();
    const std::scoped_lock guard(directories.mutex);
    const auto found = directories.stacks.find(thread);
    return found == directories.stacks.end() ? KyURL() : found->second.back();
}
