// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostFileWatch.h"

#include <QDateTime>
#include <QFileInfo>

#include <vector>

namespace {

/// Milliseconds without a further signal after which a file counts as written.
constexpr int cRestTime = 100;
/// A file that is empty or away is probably being written: milliseconds until it is looked at again.
constexpr int cRetryTime = 250;

} // namespace

KyHostFileWatch::KyHostFileWatch(Listener listener)
    : mListener(std::move(listener)) {
    mRestTimer.setSingleShot(true);
    const auto touched = [this] { onTouched(); };
    QObject::connect(&mWatcher, &QFileSystemWatcher::fileChanged, touched);
    QObject::connect(&mWatcher, &QFileSystemWatcher::directoryChanged, touched);
    QObject::connect(&mRestTimer, &QTimer::timeout, [this] { checkFiles(); });
}

void KyHostFileWatch::addFile(const std::string& path) {
    mFiles[path] = readState(path);
    watchAgain(path);
}

KyHostFileWatch::State KyHostFileWatch::readState(const std::string& path) {
    QFileInfo file(QString::fromLocal8Bit(path.c_str()));
    file.setCaching(false);
    if (!file.exists())
        return {};
    return {file.lastModified().toMSecsSinceEpoch(), file.size()};
}

/// A file written by renaming is a new file, which the watcher has lost; its folder stays.
void KyHostFileWatch::watchAgain(const std::string& path) {
    const QFileInfo file(QString::fromLocal8Bit(path.c_str()));
    mWatcher.addPath(file.absolutePath());
    if (file.exists())
        mWatcher.addPath(file.absoluteFilePath());
}

void KyHostFileWatch::onTouched() {
    mRestTimer.start(cRestTime);
}

void KyHostFileWatch::checkFiles() {
    std::vector<std::string> changed;
    bool isUnfinished = false;
    for (auto& [path, known] : mFiles) {
        watchAgain(path);
        const State state = readState(path);
        if (state == known)
            continue;
        if (state.size <= 0) {
            isUnfinished = true;
            continue;
        }
        known = state;
        changed.push_back(path);
    }
    if (isUnfinished)
        mRestTimer.start(cRetryTime);
    for (const std::string& path : changed)
        mListener(path);
}
