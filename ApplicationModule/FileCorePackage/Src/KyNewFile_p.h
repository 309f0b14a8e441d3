// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySourceFile_p.h"

#include <functional>
#include <string_view>

/// A file in the making: until commit() it has a hidden name that nobody else uses, so that nobody sees it in part;
/// small copies alone have their own name from the start. Without commit() it is given up in the destructor, but not
/// what somebody else put under its name meanwhile.
class KyNewFile {
public:
    enum class Mode {
        eNew,     ///< not opened, or commit() fails, when something has that name
        ePrivate, ///< the same, for the user alone
        eReplace  ///< what has that name stays until commit(), and for good if that is never reached
    };

    /// The permissions are those of the model when there is one.
    KyNewFile(const KyDirectory& directory, const KyDirectory::Name& name, Mode mode,
              const KySourceFile* model = nullptr);
    KyNewFile(const KyNewFile&) = delete;
    KyNewFile& operator=(const KyNewFile&) = delete;
    ~KyNewFile();

    bool isOpened() const { return mHandle.isOpened(); }
    bool write(std::string_view bytes);
    /// Is told now and then how many bytes are copied, and says whether to go on.
    using Progress = std::function<bool(std::uint64_t)>;
    /// Appends the source. False, too, when it was not to go on.
    bool write(const KySourceFile& source, const Progress& progress);
    bool commit();

private:
    static KyDirectory::Name makeTemporaryName();

    bool create(const KySourceFile* model);
    bool rename();

    const KyDirectory& mDirectory;
    KyDirectory::Name mName;
    Mode mMode;
    /// The file's name until commit().
    KyDirectory::Name mFirstName;
    KyFileHandle mHandle;
    bool mIsPending = false;
    /// Where that is set only at the end.
    bool mIsReadOnly = false;
};
