// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>

/// Tells when a file has changed, whether it was written in place, replaced by another one or removed and written anew,
/// or whether a folder or a link on the way to it was. Tells a moment after the last change, when a slow writer has
/// probably finished, and only while the file is there.
///
/// ```
/// KyQmlFileWatch watch([this](const QString& path) { load(path); });
/// watch.setFile("/data/panel.qml");
/// ```
class KyQmlFileWatch {
public:
    explicit KyQmlFileWatch(std::function<void(const QString&)> onChanged);

    const QString& getFile() const { return mFile; }
    /// Empty for none.
    void setFile(const QString& file);

private:
    /// What tells one state of a file from another.
    struct State {
        bool exists = false;
        QDateTime modified;
        /// Also when a file is put in place that was written long ago.
        QDateTime changed;
        qint64 size = 0;
        QString target;

        bool operator==(const State&) const = default;
    };

    static State readState(const QString& path);
    void watchAgain();
    void onFileChanged();
    void onFolderChanged();
    void onPauseOver();

    std::function<void(const QString&)> mOnChanged;
    QString mFile;
    State mKnown;
    bool mIsTouched = false;
    /// Each one takes a handle of the system, so only while a file is watched.
    std::unique_ptr<QFileSystemWatcher> mWatcher;
    QTimer mPause;
};
