// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDownloadFile_p.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <utility>

bool KyDownloadFile::open(const QString& path) {
    const QFileInfo info(path);
    mFile.setFileName(path);
    mNbWritten = 0;
    mIsForeign = info.exists();
    // A link may lead out of the directory, and opening a pipe may wait for ever.
    const bool isRefused = info.isSymbolicLink() || (mIsForeign && !info.isFile());
    return !isRefused && mFile.open(QIODevice::WriteOnly | QIODevice::Append);
}

bool KyDownloadFile::write(QIODevice& source) {
    std::array<char, 65536> block;
    for (qint64 size = source.bytesAvailable(); size > 0; size = source.bytesAvailable()) {
        size = source.read(block.data(), std::min(size, static_cast<qint64>(block.size())));
        if (size <= 0)
            return true;
        if (!overwrite() || mFile.write(block.data(), size) != size)
            return false;
        mNbWritten += size;
    }
    return true;
}

bool KyDownloadFile::overwrite() {
    const bool isForeign = std::exchange(mIsForeign, false);
    return !isForeign || (mFile.resize(0) && mFile.seek(0));
}

bool KyDownloadFile::close() {
    const bool isWritten = mFile.flush();
    // What could not be flushed would be tried again, and reported in place of the first error.
    if (isWritten)
        mFile.close();
    return isWritten;
}

void KyDownloadFile::remove() {
    if (mIsForeign)
        mFile.close();
    else
        mFile.remove();
}
