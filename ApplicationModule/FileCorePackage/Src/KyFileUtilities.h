// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QList>
#include <QString>
#include <QStringList>

class KyTracker;
class KyURL;
class QFile;

/// Chores with files and directories: copying, deleting and listing trees, temporary files, unpacking, opening.
///
/// Nothing throws and nothing is reported: the result tells. What was done before a failure stays done. Any thread may
/// call; a call works in the thread that calls it until it is finished. Where a tracker can be given and is not, the
/// work is told by KyProgress, where the person may cancel it.
///
/// ```
/// KyTracker tracker;
/// if (!KyApplication::copyRecursively("assets", "export/assets", true, &tracker))
///     KyApplication::deleteDir("export/assets", true);
/// ```
///
/// Links. A recursion never enters a symbolic link or junction: deleting removes the link and leaves what it leads to,
/// copying copies the file that a link leads to and skips links to directories, listing reports a link as one entry.
/// The functions that delete take a path that is itself a link as the link, the others as what it leads to.
///
/// Hidden entries (on Linux names that begin with ".") are neither listed nor copied nor deleted unless a filter asks
/// for them.
///
/// Deleting and copying walk from one open directory to the next by name, refusing links: a directory that somebody
/// replaces by a link meanwhile is not entered, and one that is moved elsewhere is not followed upwards again. Only the
/// directories above the given path are looked up as the path says. On Windows the open directories can not be renamed
/// until the call is through with them. A tree may be 2000 levels deep; what lies deeper is left, with the result
/// false.
///
/// Names. On Linux a name may hold bytes that no text stands for. Such entries are copied and deleted with the tree
/// they are in, exactly as they are named, and they match the filter "*"; they can not be listed. A path that can not
/// be expressed in the file system's encoding is refused, so that no other file is meant.
namespace KyApplication {

/// What the functions that return `int` return.
enum FileResult : int {
    eSuccess = 0,
    eDirectoryNotCreated = -1001,
    eFileNotOpened = -1002,
    eArchiveToolFailed = -1015,
    eArchiveNotRemoved = -1016
};

/// Copies a file, or a directory with all that is in it, to the path `destination`, creating the directories on the
/// way. Sources may be in Qt's resources. Files and directories whose names begin with "." or "_" are private: they are
/// skipped, with success. Pipes, sockets and devices in a tree are skipped too. Permissions of files and, on Linux, of
/// new directories are taken over, times not.
///
/// What exists is replaced only with `overwrite`, and only when its replacement is complete; a file never replaces a
/// directory, nor a directory a file or a link. False, and nothing touched, for a source that can not be opened, a file
/// onto itself or to a path with "/" at its end, a directory into itself, and an empty path. When an entry of a
/// directory fails the others are copied all the same, and the result is false.
///
/// Progress runs over the entries, in files of many megabytes over their content; the tracker can be canceled from its
/// listener any time. Then the result is false and no file is there in part.
KYAPPLICATION_EXPORT bool copyRecursively(const QString& source, const QString& destination, bool overwrite = false,
                                          KyTracker* tracker = nullptr);

/// Deletes what a directory holds and, with `removeSelf`, the directory. Failures do not stop it and make the result
/// false. Hidden entries, pipes, sockets and devices stay, and the directory with them.
///
/// A link is removed with `removeSelf`, else refused. Without `removeSelf` a path where nothing is gives true. False,
/// and nothing touched, for an empty path and a root directory.
///
/// Each level announces one step per file and one, a sub-task, per subdirectory. Once the tracker is canceled nothing
/// more is deleted and the result is false.
KYAPPLICATION_EXPORT bool deleteDir(const QString& path, bool removeSelf = true, KyTracker* tracker = nullptr);

/// Removes the directories below `path` that hold nothing, or nothing but such directories; `path` itself stays. A
/// directory that holds hidden entries or links is left, which is no failure. False when a directory could not be read
/// or removed, and for an empty path, a root directory, a link and a file.
KYAPPLICATION_EXPORT bool deleteEmptyDirs(const QString& path);

/// Removes one file or link. False for directories, and when nothing is there.
KYAPPLICATION_EXPORT bool deleteFile(const QString& path);

/// Removes the files and links to files that match one of the wildcards, or all when there are none, in `path` and all
/// directories below. Directories and links to them stay. Case does not matter. False when a removal failed, and for an
/// empty path, a root directory, a link and a file.
KYAPPLICATION_EXPORT bool deleteFiles(const QString& path, const QStringList& nameFilters = {});

/// The entries of a directory that match the wildcards and filters, sorted; with `recursive` followed by those of its
/// subdirectories, one after the other. Subdirectories are entered whatever they are called; they are reported when the
/// filters ask for QDir::Dirs (those that match) or QDir::AllDirs (all). Paths begin with `path`.
KYAPPLICATION_EXPORT QStringList listEntries(const QString& path, bool recursive = false,
                                             const QStringList& nameFilters = {},
                                             QDir::Filters filters = QDir::Files | QDir::NoDotAndDotDot,
                                             QDir::SortFlags sort = QDir::Name | QDir::IgnoreCase);
/// As above, with what is known of each entry.
KYAPPLICATION_EXPORT QList<QFileInfo> listEntriesInfo(const QString& path, bool recursive = false,
                                                      const QStringList& nameFilters = {},
                                                      QDir::Filters filters = QDir::Files | QDir::NoDotAndDotDot,
                                                      QDir::SortFlags sort = QDir::Name | QDir::IgnoreCase);

/// Changes the path of something that exists, were it a link to nothing, so that nothing is there: "report.tar.gz"
/// becomes "report_1.tar.gz" or the first higher number that is free; without "." in the name, or with one at its
/// beginning, the number goes to the end. False, and the path unchanged, when there is none, also because the name gets
/// too long.
KYAPPLICATION_EXPORT bool setUniqueFilename(QString& path);

/// Writes a new file in the system's temporary directory and returns its path; it stays until somebody removes it. Its
/// name is six random letters and the file name of `nameHint`, at most the last 100 characters of it. Empty when not
/// every byte could be written.
KYAPPLICATION_EXPORT QString saveToTemp(const QByteArray& data, const QString& nameHint = {});

/// Writes the content of a file, typically one in Qt's resources, as saveToTemp() does. Empty when it can not be read.
KYAPPLICATION_EXPORT QString unembed(const QString& path);

/// Unpacks a 7-Zip archive beside itself, replacing what is there, and removes the archive. Waits for the tool, without
/// limit: "7za.exe" on Windows, elsewhere the first of 7za, 7zz, 7z and 7zr that is found. The tool can not ask
/// anything; archives with a password fail.
///
/// The tracker, when given, is one step. Its listener is called many times a second while the tool works, so that it
/// can cancel; that ends the tool, and what it unpacked stays.
///
/// eArchiveToolFailed when the tool is missing, fails or is ended, and for a path with "*" or "?" in it;
/// eArchiveNotRemoved when only the removal failed.
KYAPPLICATION_EXPORT int extract7z(const QFileInfo& archive, KyTracker* tracker = nullptr);

/// Opens a file for writing, empty, creating its directories. With eSuccess the caller owns `*file`; with
/// eFileNotOpened it is null (nothing is done when `file` is), with eDirectoryNotCreated, also for a path that can not
/// be expressed, as it was.
KYAPPLICATION_EXPORT int openFile(const QString& path, QFile** file);

/// The last of the application's data directories, on Linux mostly one of the system that an ordinary user can not
/// create. False, and empty, when there are none.
KYAPPLICATION_EXPORT bool getExternalFilesDir(QString& path);

/// Copies a file of any scheme that the resource layer reads into the directory of getExternalFilesDir(), or when that
/// can not be written into the first of the data directories, under the file name of its URL. An older copy is replaced
/// once the new one is complete. `copied` is set on success only. False for a directory, for a URL without a file name,
/// and for a file that is there already itself.
KYAPPLICATION_EXPORT bool copyAssetToExternalFilesDir(const KyURL& asset, KyURL& copied);

} // namespace KyApplication
