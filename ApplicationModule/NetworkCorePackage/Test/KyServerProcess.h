// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// A server program on the loopback, with a folder of its own; both are gone with this, the program also with the test.
/// Each test process has an address of its own, so that those that run at the same time find different servers.
class KyServerProcess : public QProcess {
public:
    /// "127.x.y.z".
    static QString getAddress();
    /// One that nobody listens on.
    static quint16 findFreePort();

    KyServerProcess();
    ~KyServerProcess() override;

    /// Starts the program and waits until it takes connections at the port.
    bool launch(const QString& program, const QStringList& arguments, quint16 port);
    QString at(const QString& name) const { return mDirectory.filePath(name); }
    void write(const QString& name, const QByteArray& content) const;
    QByteArray read(const QString& name) const;

protected:
    void setupChildProcess() override;

private:
    const QTemporaryDir mDirectory;
};
