// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileUtilities.h"

#include "KyFileCopier_p.h"
#include "KySourceFile_p.h"

#include "KyLongWork.h"

namespace {

using Kind = KyDirectory::Kind;
using KyFilePath::Place;

bool createDirectories(const std::filesystem::path& path) {
    std::error_code error;
    if (path.empty() || std::filesystem::is_directory(path, error))
        return true;
    std::filesystem::create_directories(path, error);
    return std::filesystem::is_directory(path, error);
}

// Climbs from the destination; what of it does not exist yet is passed over.
bool isWithin(const std::filesystem::path& destination, const std::filesystem::path& source) {
    std::error_code error;
    std::filesystem::path path =
        std::filesystem::weakly_canonical(std::filesystem::absolute(destination, error), error);
    if (error)
        return true;
    for (; path.has_relative_path(); path = path.parent_path())
        if (std::filesystem::equivalent(path, source, error))
            return true;
    return std::filesystem::equivalent(path, source, error);
}

// The place of a file to be, in a directory that is created where it is missing. No file has a "/" at its end.
Place makePlace(const QString& path) {
    if (QDir::fromNativeSeparators(path).endsWith('/'))
        return {};
    Place place = KyFilePath::find(path);
    if (place.directory.isOpened() || place.name.empty())
        return place;
    createDirectories(KyFilePath::toNative(path).parent_path());
    return KyFilePath::find(path);
}

bool copyDirectory(const Place& place, const QString& destination, KyFileCopier& copier) {
    const auto target = KyFilePath::toNative(destination);
    const auto path = place.directory.getPath() / place.name;
    KyDirectory from(path);
    if (target.empty() || !from.isOpened() || isWithin(target, path))
        return false;
    std::error_code error;
    const bool isNew = !std::filesystem::exists(target, error);
    if (!createDirectories(target))
        return false;
    KyDirectory to(target);
    return to.isOpened() && copier.copyTree(from, to, isNew);
}

bool copyNative(const QString& source, const QString& destination, KyFileCopier& copier) {
    const Place from = KyFilePath::find(source);
    if (from.kind == Kind::eDirectory || from.kind == Kind::eDirectoryLink)
        return copyDirectory(from, destination, copier);
    if (!KySourceFile(from.directory, from.name).isOpened())
        return false;
    const Place to = makePlace(destination);
    return to.directory.isOpened() && copier.copyFile(from.directory, from.name, to.directory, to.name);
}

bool copyResource(const QString& source, const QString& destination, KyFileCopier& copier) {
    const QFileInfo info(source);
    if (!info.isDir()) {
        if (!info.isReadable())
            return false;
        const Place to = makePlace(destination);
        return to.directory.isOpened() && copier.copyResource(source, to.directory, to.name);
    }
    const auto target = KyFilePath::toNative(destination);
    if (target.empty() || !createDirectories(target))
        return false;
    KyDirectory to(target);
    return to.isOpened() && copier.copyResourceTree(source, to);
}

} // namespace

bool KyApplication::copyRecursively(const QString& source, const QString& destination, bool overwrite,
                                    KyTracker* tracker) {
    if (source.isEmpty() || destination.isEmpty())
        return false;
    KyLongWork work("Copying " + QFileInfo(source).fileName().toStdString(), tracker);
    KyTracker& progress = work.editTracker();
    if (progress.isCanceled())
        return false;
    KyFileCopier copier(overwrite, progress);
    const bool isNative = QFileInfo(source).isNativePath();
    progress.setNbSteps(1);
    progress.beginSubTask();
    const bool isComplete =
        KyFilePath::isPrivate(KyFilePath::getName(source)) ||
        (isNative ? copyNative(source, destination, copier) : copyResource(source, destination, copier));
    progress.endSubTask();
    return isComplete && !progress.isCanceled();
}
