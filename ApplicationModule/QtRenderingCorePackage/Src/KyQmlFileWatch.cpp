// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlFileWatch_p.h"

#include <QFileInfo>

namespace {

constexpr int cPauseAfterChange = 50;
constexpr int cPauseWhileMissing = 250;

} // namespace

KyQmlFileWatch::KyQmlFileWatch(std::function<void(const QString&)> onChanged)
    : mOnChanged(std::move(onChanged)) {
    mPause.setSingleShot(true);
    QObject::connect(&mPause, &QTimer::timeout, &mPause, [this] { onPauseOver(); });
}

void KyQmlFileWatch::setFile(const QString& file) {
    if (file == mFile)
        return;
    mFile = file;
    mPause.stop();
    mWatcher.reset();
    if (file.isEmpty())
        return;
    mWatcher = std::make_unique<QFileSystemWatcher>();
    QObject::connect(mWatcher.get(), &QFileSystemWatcher::fileChanged, &mPause,
                     [this] { mPause.start(cPauseAfterChange); });
    if (!watchAgain())
        mPause.start(cPauseWhileMissing);
}

bool KyQmlFileWatch::watchAgain() {
    if (!QFileInfo::exists(mFile))
        return false;
    // A file that was replaced is no longer the one that is watched, and the watcher has dropped it.
    return mWatcher->files().contains(mFile) || mWatcher->addPath(mFile);
}

void KyQmlFileWatch::onPauseOver() {
    if (!watchAgain()) {
        mPause.start(cPauseWhileMissing);
        return;
    }
    const QString file = mFile;
    mOnChanged(file);
}
