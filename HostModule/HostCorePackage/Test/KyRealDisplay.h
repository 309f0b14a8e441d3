// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <string>

/// An X server of the test's own, without hardware, so that nobody's pointer is moved and no other window is in the
/// way. Everything that it writes is in a folder that goes with it.
class KyRealDisplay {
public:
    static constexpr int cWidth = 1024;
    static constexpr int cHeight = 768;

    /// Starts it, a screen in memory with pointer and keyboard, and waits until it takes clients.
    KyRealDisplay();
    ~KyRealDisplay();

    /// Empty when it runs, else why it does not.
    const std::string& getError() const { return mError; }
    /// The value of DISPLAY.
    const QString& getName() const { return mName; }

private:
    QTemporaryDir mFolder;
    QProcess mServer;
    QString mName;
    std::string mError;
};
