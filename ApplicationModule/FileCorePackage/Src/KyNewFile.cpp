// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNewFile_p.h"

#include <random>

namespace {
constexpr int cNbAttempts = 16;
constexpr std::string_view cDigits = "0123456789abcdef";
} // namespace

KyNewFile::KyNewFile(const KyDirectory& directory, const KyDirectory::Name& name, Mode mode, const KySourceFile* model)
    : mDirectory(directory)
    , mName(name)
    , mFirstName(name) {
    if (mode == Mode::eNew) {
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
    for (int i = 0; i < 24; ++i)
        name += static_cast<KyDirectory::Name::value_type>(cDigits[random() % cDigits.size()]);
    return name;
}
