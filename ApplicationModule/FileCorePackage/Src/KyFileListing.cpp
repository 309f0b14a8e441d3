// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileUtilities.h"

#include "KyFilePath_p.h"
#include "KyNameFilter_p.h"

namespace {

class Listing {
public:
    Listing(bool recursive, const QStringList& nameFilters, QDir::Filters filters, QDir::SortFlags sort)
        : mIsRecursive(recursive)
        , mWildcards(nameFilters)
        , mNameFilter(nameFilters, filters & QDir::CaseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive)
        , mFilters(filters == QDir::NoFilter ? QDir::Filters(QDir::AllEntries) : filters)
        , mSort(sort) {}

    void add(const QDir& directory) {
        // QDir::AllDirs, unlike QDir::Dirs, leaves out no directory because of its name.
        const QFileInfoList entries = directory.entryInfoList(mWildcards, mFilters | QDir::AllDirs, mSort);
        for (const QFileInfo& entry : entries)
            if (isAsked(entry))
                mEntries.append(entry);
        if (!mIsRecursive)
            return;
        for (const QFileInfo& entry : entries)
            if (isEntered(entry))
                add(QDir(directory.filePath(entry.fileName())));
    }

    const QList<QFileInfo>& getEntries() const { return mEntries; }

private:
    bool isAsked(const QFileInfo& entry) const {
        if (!entry.isDir() || mFilters.testFlag(QDir::AllDirs))
            return true;
        return mFilters.testFlag(QDir::Dirs) && mNameFilter.matches(entry.fileName());
    }

    static bool isEntered(const QFileInfo& entry) {
        const QString name = entry.fileName();
        return entry.isDir() && name != QLatin1String(".") && name != QLatin1String("..") && !entry.isSymbolicLink() &&
               !entry.isJunction();
    }

    bool mIsRecursive;
    QStringList mWildcards;
    KyNameFilter mNameFilter;
    QDir::Filters mFilters;
    QDir::SortFlags mSort;
    QList<QFileInfo> mEntries;
};

} // namespace

QList<QFileInfo> KyApplication::listEntriesInfo(const QString& path, bool recursive, const QStringList& nameFilters,
                                                QDir::Filters filters, QDir::SortFlags sort) {
    if (!path.isEmpty() && QFileInfo(path).isNativePath() && !KyFilePath::isExact(path))
        return {};
    Listing listing(recursive, nameFilters, filters, sort);
    listing.add(QDir(path));
    return listing.getEntries();
}

QStringList KyApplication::listEntries(const QString& path, bool recursive, const QStringList& nameFilters,
                                       QDir::Filters filters, QDir::SortFlags sort) {
    QStringList paths;
    for (const QFileInfo& entry : listEntriesInfo(path, recursive, nameFilters, filters, sort))
        paths.append(entry.filePath());
    return paths;
}
