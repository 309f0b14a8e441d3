// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlFileWatch_p.h"

#include <QFileInfo>
#include <QStringList>

#include <utility>

namespace {

constexpr int cPauseAfterChange = 50;
constexpr int cPauseWhileMissing = 250;

/// The file and the folders on the way to it, any of which may be replaced.
QStringList getWay(const QString& path) {
    QStringList way{path};
    for (QString folder = QFileInfo(path).absolutePath(); folder != way.last();
         folder = QFileInfo(folder).absolutePath())
        way.append(folder);
    return way;
}

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
    mIsTouched = false;
    mPause.stop();
    mWatcher.reset();
    if (file.isEmpty())
        return;
    mWatcher = std::make_unique<QFileSystemWatcher>();
    QObject::connect(mWatcher.get(), &QFileSystemWatcher::fileChanged, &mPause, [this] { onFileChanged(); });
    QObject::connect(mWatcher.get(), &QFileSystemWatcher::directoryChanged, &mPause, [this] { onFolderChanged(); });
    watchAgain();
    mKnown = readState(file);
    if (!mKnown.exists)
        mPause.start(cPauseWhileMissing);
}

KyQmlFileWatch::State KyQmlFileWatch::readState(const QString& path) {
    const QFileInfo file(path);
    if (!file.exists())
        return {};
    return {true, file.lastModified(), file.metadataChangeTime(), file.size(), file.canonicalFilePath()};
}

/// What was replaced is no longer what is watched, though the watcher may still know the path.
void KyQmlFileWatch::watchAgain() {
    for (const QString& path : getWay(mFile)) {
        mWatcher->removePath(path);
        if (QFileInfo(path).isReadable())
            mWatcher->addPath(path);
    }
}

void KyQmlFileWatch::onFileChanged() {
    mIsTouched = true;
    mPause.start(cPauseAfterChange);
}

/// In a busy folder the pause would never be over if it began anew.
void KyQmlFileWatch::onFolderChanged() {
    if (!mPause.isActive())
        mPause.start(cPauseAfterChange);
}

void KyQmlFileWatch::onPauseOver() {
    watchAgain();
    const State state = readState(mFile);
    if (!state.exists) {
        mKnown = state;
        mPause.start(cPauseWhileMissing);
        return;
    }
    const bool isChanged = state != std::exchange(mKnown, state);
    if (!std::exchange(mIsTouched, false) && !isChanged)
        return;
    const QString file = mFile;
    mOnChanged(file);
}
