// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDirectory_p.h"

#include <QString>

/// Between Qt's paths and those of the system.
namespace KyFilePath {

/// The open directory and the name that a path leads to.
struct Place {
    KyDirectory directory;
    KyDirectory::Name name;
    /// Without following a link; eMissing when the directory is missing, too.
    KyDirectory::Kind kind = KyDirectory::Kind::eOther;
};

/// Whether the system understands exactly this path: not what the file names' encoding lacks, nor Qt's resources.
bool isExact(const QString& path);
/// Empty when it is not exact.
std::filesystem::path toNative(const QString& path);

/// A "/" at the end does not count. For an empty path, a root directory and a path that is not exact the kind is
/// eOther and the name empty.
Place find(const QString& path);

/// What the name of a file or directory is, however the path is written.
QString getName(const QString& path);
/// Names that begin with "." or "_" are not copied.
bool isPrivate(const QString& name);
} // namespace KyFilePath
