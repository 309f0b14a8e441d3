// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFilePath_p.h"

#include <QFileInfo>
#include <QString>

#include <functional>
#include <string_view>

class KyNewFile;
class KySourceFile;
class KyTracker;

/// Copies files and trees into open directories, by one rule for what exists already.
class KyFileCopier {
public:
    /// The tracker stays the caller's. Large files take steps of their own in it.
    KyFileCopier(bool overwrites, KyTracker& tracker);

    bool copyFile(const KyDirectory& from, const KyDirectory::Name& name, const KyDirectory& to,
                  const KyDirectory::Name& newName);
    /// What `from` holds into `to`, except private entries. A new directory gets the permissions of `from`.
    bool copyTree(KyDirectory& from, KyDirectory& to, bool isNew);
    /// The same for what Qt finds under a path without there being a file: its resources.
    bool copyResource(const QString& path, const KyDirectory& to, const KyDirectory::Name& newName);
    bool copyResourceTree(const QString& path, KyDirectory& to);
    bool writeFile(std::string_view bytes, const KyDirectory& to, const KyDirectory::Name& newName);

private:
    using Check = std::function<bool()>;
    using Writer = std::function<bool(KyNewFile&)>;

    bool make(const KyDirectory& to, const KyDirectory::Name& newName, const KySourceFile* model, const Check& isOther,
              const Writer& write);
    bool copyEntries(KyDirectory& from, KyDirectory& to);
    bool copyEntry(KyDirectory& from, const KyDirectory::Entry& entry, KyDirectory& to);
    bool copyResourceEntry(const QFileInfo& entry, KyDirectory& to);

    bool mOverwrites;
    KyTracker& mTracker;
};
