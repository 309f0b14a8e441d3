// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFilePath_p.h"

#include "KyFileName_p.h"

#include <QDir>
#include <QFileInfo>

namespace {

// Only the system knows where ".." leads behind a link.
QString resolveDots(const QString& path) {
    const QString name = path.mid(path.lastIndexOf('/') + 1);
    return name == QLatin1String(".") || name == QLatin1String("..") ? QFileInfo(path).canonicalFilePath() : path;
}

QString removeEndingSlashes(QString path) {
    while (path.endsWith('/'))
        path.chop(1);
    return path;
}

bool isRoot(const QString& path) {
    return QDir(QDir::cleanPath(QFileInfo(path).absoluteFilePath())).isRoot();
}

} // namespace

bool KyFilePath::isExact(const QString& path) {
    return !path.isEmpty() && !path.contains(QChar(0)) && QFileInfo(path).isNativePath() &&
           KyFileName::toText(KyFileName::fromText(path)) == path;
}

std::filesystem::path KyFilePath::toNative(const QString& path) {
    if (!isExact(path))
        return {};
    return KyFileName::fromText(path);
}

KyFilePath::Place KyFilePath::find(const QString& path) {
    const QString plain = resolveDots(removeEndingSlashes(QDir::fromNativeSeparators(path)));
    if (!isExact(plain) || isRoot(plain))
        return {};
    const auto native = toNative(plain);
    const auto parent = native.has_parent_path() ? native.parent_path() : std::filesystem::path(".");
    Place place{KyDirectory(parent), native.filename().native()};
    if (place.directory.isOpened()) {
        place.kind = place.directory.getKind(place.name);
        return place;
    }
    std::error_code error;
    if (!std::filesystem::exists(std::filesystem::symlink_status(native, error)) &&
        std::filesystem::status_known(std::filesystem::symlink_status(native, error)))
        place.kind = KyDirectory::Kind::eMissing;
    return place;
}

QString KyFilePath::getName(const QString& path) {
    return QFileInfo(QDir::cleanPath(QFileInfo(path).absoluteFilePath())).fileName();
}

bool KyFilePath::isPrivate(const QString& name) {
    return name.startsWith('.') || name.startsWith('_');
}
