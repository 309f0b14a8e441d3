// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileUtilities.h"

#include "KyFileCopier_p.h"

#include "KyResource.h"
#include "KyTracker.h"

#include <QStandardPaths>

namespace {

using KyFilePath::Place;

bool isWritable(const QString& directory) {
    return QDir().mkpath(directory) && QFileInfo(directory).isWritable();
}

// Empty when no location can be written.
QString makeFilesDirectory() {
    const QStringList locations = QStandardPaths::standardLocations(QStandardPaths::AppLocalDataLocation);
    if (locations.isEmpty())
        return {};
    if (isWritable(locations.last()))
        return locations.last();
    return isWritable(locations.first()) ? locations.first() : QString();
}

// Empty for bytes that are no text, so that no other file is meant.
QString toText(const std::string& bytes) {
    const QString text = QString::fromStdString(bytes);
    return text.toStdString() == bytes ? text : QString();
}

// A decoded name may be anything, also a way out of the directory.
bool isFileName(const QString& name) {
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..") && !name.contains('/') &&
           !name.contains('\\') && KyFilePath::isExact(name);
}

bool copyAsset(const KyURL& asset, const KyDirectory& directory, const KyDirectory::Name& name) {
    KyTracker none;
    KyFileCopier copier(true, none);
    std::string path;
    if (asset.getLocalPath(path)) {
        const Place place = KyFilePath::find(toText(path));
        return copier.copyFile(place.directory, place.name, directory, name);
    }
    std::string bytes;
    return KyResource::readBytes(asset, bytes) && copier.writeFile(bytes, directory, name);
}

} // namespace

bool KyApplication::getExternalFilesDir(QString& path) {
    const QStringList locations = QStandardPaths::standardLocations(QStandardPaths::AppLocalDataLocation);
    path = locations.isEmpty() ? QString() : locations.last();
    return !locations.isEmpty();
}

bool KyApplication::copyAssetToExternalFilesDir(const KyURL& asset, KyURL& copied) {
    const QString name = toText(asset.getFileName());
    if (!isFileName(name))
        return false;
    const QString directory = makeFilesDirectory();
    const KyDirectory target(KyFilePath::toNative(directory));
    if (!target.isOpened() || !copyAsset(KyResource::resolve(asset), target, KyFilePath::toNative(name).native()))
        return false;
    copied = KyURL(QDir(directory).filePath(name).toStdString(), KyURL::eLocalPath);
    return true;
}
