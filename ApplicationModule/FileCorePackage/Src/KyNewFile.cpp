// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNewFile_p.h"

#include <random>

namespace {
constexpr int cNbAttempts = 16;
// Small files are written in no time, while renaming them would more than double the time of a tree.
constexpr std::uint64_t cMinSizeHidden = std::uint64_t{256} << 10;
// Of eight digits.
constexpr int cNbWords = 3;
constexpr std::string_view cDigits = "0123456789abcdef";
} // namespace

KyNewFile::KyNewFile(const KyDirectory& directory, const KyDirectory::Name& name, Mode mode, const KySourceFile* model)
    : mDirectory(directory)
    , mName(name)
    , mMode(mode) {
    if (mode == Mode::eNew && model && model->getSize() < cMinSizeHidden) {
        mFirstName = name;
        mIsPending = create(model);
        return;
    }
    for (int attempt = 0; attempt < cNbAttempts && !mIsPending; ++attempt) {
        mFirstName = makeTemporaryName();
        mIsPending = create(model);
    }
}

KyDirectory::Name KyNewFile::makeTemporaryName() {
    std::random_device random;
    KyDirectory::Name name(1, '.');
    for (int i = 0; i < cNbWords; ++i)
        for (std::uint32_t word = random(), digit = 0; digit < 8; ++digit, word >>= 4)
            name += static_cast<KyDirectory::Name::value_type>(cDigits[word % cDigits.size()]);
    return name;
}

bool KyNewFile::commit() {
    if (!mHandle.close())
        return false;
    if (mFirstName != mName)
        return rename();
    mIsPending = false;
    return true;
}
