// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDirectory_p.h"

/// A file opened for copying it.
class KySourceFile {
public:
    /// Follows links. Anything but a file is left closed: reading a pipe might never end.
    KySourceFile(const KyDirectory& directory, const KyDirectory::Name& name);

    bool isOpened() const { return mHandle.isOpened(); }
    std::intptr_t getHandle() const { return mHandle.get(); }
    std::uint64_t getSize() const { return mSize; }
    /// As the system has them.
    unsigned getPermissions() const { return mPermissions; }

private:
    KyFileHandle mHandle;
    std::uint64_t mSize = 0;
    unsigned mPermissions = 0;
};
