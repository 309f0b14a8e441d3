// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyResource.h"

#include "KyLocalPath_p.h"
#include "KyLongWork.h"
#include "KyResourceDirectories_p.h"

#include <fstream>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {
bool isPlainDirectory(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(fs::symlink_status(path, error));
}

bool isRoot(const fs::path& path) {
    std::error_code error;
    const auto canonical = fs::canonical(path, error);
    return error || canonical == canonical.root_path();
}

// The directory that a URL names by its path: without one it would mean the current directory, and a "." behind a link
// what the link points to.
fs::path getNamedDirectory(const KyURL& url) {
    if (url.getPath().empty())
        return {};
    const auto path = KyLocalPath::fromTarget(url).lexically_normal();
    return path.has_filename() || !path.has_relative_path() ? path : path.parent_path();
}

// What a directory holds, as far as it can be removed; links are not followed.
void removeContent(const fs::path& directory, KyTracker& tracker) {
    std::error_code error;
    std::vector<fs::path> entries;
    for (fs::directory_iterator entry(directory, error); !error && entry != fs::directory_iterator();
         entry.increment(error))
        entries.push_back(entry->path());
    tracker.setNbSteps(static_cast<unsigned>(entries.size()));
    for (const fs::path& entry : entries) {
        if (tracker.isCanceled())
            return;
        tracker.beginSubTask();
        if (isPlainDirectory(entry))
            removeContent(entry, tracker);
        if (!tracker.isCanceled())
            fs::remove(entry, error);
        tracker.endSubTask();
    }
}

// Step by step where somebody watches, who may cancel it; what the steps leave is removed as a whole.
void removeTree(const fs::path& path) {
    const std::u8string name = path.filename().u8string();
    KyLongWork work("Deleting " + std::string(name.begin(), name.end()));
    if (work.isTold())
        removeContent(path, work.editTracker());
    std::error_code error;
    if (!work.editTracker().isCanceled())
        fs::remove_all(path, error);
}

// Both ends of a copy or a renaming, when there is something to move and room for it.
struct Transfer {
    Transfer(fs::path fromPath, const KyURL& toURL)
        : from(std::move(fromPath))
        , to(KyLocalPath::fromTarget(toURL)) {}

    [[nodiscard]] bool isPossible() const {
        return !to.empty() && KyLocalPath::exists(from) && !isPlainDirectory(from) && !KyLocalPath::exists(to);
    }

    fs::path from;
    fs::path to;
};
} // namespace

bool KyResource::existDirectory(const KyURL& url) {
    std::error_code error;
    return fs::is_directory(KyLocalPath::fromURL(url), error);
}

bool KyResource::existFile(const KyURL& url) {
    std::error_code error;
    const auto path = KyLocalPath::fromURL(url);
    return fs::exists(path, error) && !fs::is_directory(path, error);
}

bool KyResource::createDirectory(const KyURL& url) {
    std::error_code error;
    const auto path = KyLocalPath::fromTarget(url);
    return !path.empty() && fs::create_directory(path, error) && !error;
}

bool KyResource::createDirectoryHierarchy(const KyURL& url) {
    std::error_code error;
    const auto path = KyLocalPath::fromTarget(url);
    if (path.empty())
        return false;
    fs::create_directories(path, error);
    return !error && fs::is_directory(path, error);
}

bool KyResource::deleteDirectory(const KyURL& url) {
    const auto path = getNamedDirectory(url);
    if (path.empty() || !isPlainDirectory(path) || isRoot(path) || KyResourceDirectories::isInUse(path))
        return false;
    removeTree(path);
    return !KyLocalPath::exists(path);
}

bool KyResource::createFile(const KyURL& url) {
    const auto path = KyLocalPath::fromTarget(url);
    if (path.empty() || KyLocalPath::exists(path))
        return false;
    return std::filebuf().open(path, std::ios_base::out | std::ios_base::binary) != nullptr;
}

bool KyResource::copyFile(const KyURL& from, const KyURL& to) {
    const Transfer transfer(KyLocalPath::fromURL(from), to);
    std::error_code error;
    return transfer.isPossible() && fs::copy_file(transfer.from, transfer.to, error) && !error;
}

bool KyResource::renameFile(const KyURL& from, const KyURL& to) {
    const Transfer transfer(KyLocalPath::fromTarget(from), to);
    if (!transfer.isPossible())
        return false;
    std::error_code error;
    fs::rename(transfer.from, transfer.to, error);
    return !error;
}

bool KyResource::deleteFile(const KyURL& url) {
    const auto path = KyLocalPath::fromTarget(url);
    if (path.empty() || isPlainDirectory(path))
        return false;
    std::error_code error;
    return fs::remove(path, error) && !error;
}
