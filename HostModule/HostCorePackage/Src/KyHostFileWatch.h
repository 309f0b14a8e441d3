// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QFileSystemWatcher>
#include <QTimer>

#include <functional>
#include <map>
#include <string>

/// Tells when files change, whichever way an editor writes them: in place, by renaming a new file over the old one, or
/// by removing it first. Several changes in a row are told once, when the file has come to rest. Needs the event loop.
class KyHostFileWatch {
public:
    using Listener = std::function<void(const std::string& path)>;

    explicit KyHostFileWatch(Listener listener);

    /// A file that is not there is told when it appears.
    void addFile(const std::string& path);

private:
    /// What tells one state of a file from another.
    struct State {
        qint64 modified = -1;
        qint64 size = -1;

        bool operator==(const State& other) const = default;
    };

    static State readState(const std::string& path);
    void watchAgain(const std::string& path);
    void onTouched();
    void checkFiles();

    Listener mListener;
    std::map<std::string, State> mFiles;
    QFileSystemWatcher mWatcher;
    QTimer mRestTimer;
};
