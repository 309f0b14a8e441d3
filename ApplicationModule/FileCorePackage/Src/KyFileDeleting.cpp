// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileUtilities.h"

#include "KyFileName_p.h"
#include "KyFilePath_p.h"
#include "KyNameFilter_p.h"

#include "KyLongWork.h"

#include <algorithm>

namespace {

using Kind = KyDirectory::Kind;
using Entries = std::vector<KyDirectory::Entry>;
using KyFilePath::Place;

bool isLink(Kind kind) {
    return kind == Kind::eFileLink || kind == Kind::eDirectoryLink || kind == Kind::eOtherLink;
}

bool isRemovedAlone(Kind kind) {
    return kind == Kind::eFile || isLink(kind);
}

bool isFile(Kind kind) {
    return isRemovedAlone(kind) && kind != Kind::eDirectoryLink;
}

bool isVisible(const KyDirectory::Entry& entry) {
    return !entry.isHidden;
}

bool isDirectory(const KyDirectory::Entry& entry) {
    return entry.kind == Kind::eDirectory;
}

bool removeFiles(KyDirectory& directory, const Entries& entries, KyTracker& tracker) {
    bool isComplete = true;
    for (const KyDirectory::Entry& entry : entries) {
        if (!isRemovedAlone(entry.kind))
            continue;
        if (tracker.isCanceled())
            return false;
        isComplete &= directory.removeFile(entry.name);
        tracker.step();
    }
    return isComplete;
}

bool removeContent(KyDirectory& directory, KyTracker& tracker) {
    Entries entries;
    bool isComplete = directory.list(entries);
    std::erase_if(entries, [](const KyDirectory::Entry& entry) {
        return !isVisible(entry) || (!isDirectory(entry) && !isRemovedAlone(entry.kind));
    });
    tracker.setNbSteps(static_cast<unsigned>(entries.size()));
    isComplete &= removeFiles(directory, entries, tracker);
    for (const KyDirectory::Entry& entry : entries) {
        if (!isDirectory(entry))
            continue;
        if (tracker.isCanceled())
            return false;
        tracker.beginSubTask();
        isComplete &= directory.visit(entry.name, [&](KyDirectory& below) { return removeContent(below, tracker); });
        isComplete &= !tracker.isCanceled() && directory.removeDirectory(entry.name);
        tracker.endSubTask();
    }
    return isComplete && !tracker.isCanceled();
}

// Counts in `nbLeft` what the directory still holds.
bool removeEmptyDirectories(KyDirectory& directory, std::size_t& nbLeft) {
    Entries entries;
    bool isComplete = directory.list(entries);
    nbLeft = entries.size();
    for (const KyDirectory::Entry& entry : entries) {
        if (!isVisible(entry) || !isDirectory(entry))
            continue;
        std::size_t nbBelow = 1;
        isComplete &=
            directory.visit(entry.name, [&](KyDirectory& below) { return removeEmptyDirectories(below, nbBelow); });
        if (nbBelow != 0)
            continue;
        const bool isRemoved = directory.removeDirectory(entry.name);
        nbLeft -= isRemoved ? 1 : 0;
        isComplete &= isRemoved;
    }
    return isComplete;
}

bool removeMatching(KyDirectory& directory, const KyNameFilter& filter) {
    Entries entries;
    bool isComplete = directory.list(entries);
    for (const KyDirectory::Entry& entry : entries) {
        if (!isVisible(entry))
            continue;
        if (isFile(entry.kind) && filter.matches(KyFileName::toText(entry.name)))
            isComplete &= directory.removeFile(entry.name);
        else if (isDirectory(entry))
            isComplete &=
                directory.visit(entry.name, [&](KyDirectory& below) { return removeMatching(below, filter); });
    }
    return isComplete;
}

template <class Function>
bool visitDirectory(Place& place, const Function& function) {
    if (place.kind == Kind::eMissing)
        return true;
    return place.kind == Kind::eDirectory && place.directory.visit(place.name, function);
}

bool removeDirectory(const QString& path, bool removeSelf, KyTracker& tracker) {
    Place place = KyFilePath::find(path);
    if (removeSelf && isLink(place.kind))
        return place.directory.removeFile(place.name);
    const bool isComplete =
        visitDirectory(place, [&](KyDirectory& directory) { return removeContent(directory, tracker); });
    if (!removeSelf || tracker.isCanceled())
        return isComplete;
    return place.kind == Kind::eDirectory && place.directory.removeDirectory(place.name) && isComplete;
}

} // namespace

bool KyApplication::deleteDir(const QString& path, bool removeSelf, KyTracker* tracker) {
    KyLongWork work("Deleting " + QFileInfo(path).fileName().toStdString(), tracker);
    KyTracker& progress = work.editTracker();
    if (progress.isCanceled())
        return false;
    progress.setNbSteps(1);
    progress.beginSubTask();
    const bool isComplete = removeDirectory(path, removeSelf, progress);
    progress.endSubTask();
    return isComplete;
}

bool KyApplication::deleteEmptyDirs(const QString& path) {
    Place place = KyFilePath::find(path);
    std::size_t nbLeft = 0;
    return visitDirectory(place, [&](KyDirectory& directory) { return removeEmptyDirectories(directory, nbLeft); });
}

bool KyApplication::deleteFiles(const QString& path, const QStringList& nameFilters) {
    Place place = KyFilePath::find(path);
    const KyNameFilter filter(nameFilters, Qt::CaseInsensitive);
    return visitDirectory(place, [&](KyDirectory& directory) { return removeMatching(directory, filter); });
}

bool KyApplication::deleteFile(const QString& path) {
    const QFileInfo file(path);
    return KyFilePath::isExact(path) && !file.fileName().isEmpty() && file.dir().remove(file.fileName());
}
