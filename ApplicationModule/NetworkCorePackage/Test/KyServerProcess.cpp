// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyServerProcess.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>

#include <csignal>

#include <sys/prctl.h>

namespace {

bool canConnect(quint16 port) {
    QTcpSocket socket;
    socket.setProxy(QNetworkProxy::NoProxy);
    socket.connectToHost(QHostAddress(KyServerProcess::getAddress()), port);
    return socket.waitForConnected(100);
}

} // namespace

QString KyServerProcess::getAddress() {
    const qint64 id = QCoreApplication::applicationPid();
    return QStringLiteral("127.%1.%2.%3").arg(1 + id / 62500 % 250).arg(1 + id / 250 % 250).arg(1 + id % 250);
}

quint16 KyServerProcess::findFreePort() {
    QTcpServer server;
    server.listen(QHostAddress(getAddress()));
    return server.serverPort();
}

KyServerProcess::KyServerProcess() {
    setProcessChannelMode(QProcess::MergedChannels);
    setStandardOutputFile(at("output.log"));
}

KyServerProcess::~KyServerProcess() {
    kill();
    waitForFinished();
}

void KyServerProcess::setupChildProcess() {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
}

bool KyServerProcess::launch(const QString& program, const QStringList& arguments, quint16 port) {
    start(program, arguments);
    QElapsedTimer timer;
    timer.start();
    bool isConnected = false;
    while (!isConnected && timer.elapsed() < 20000 && (state() != NotRunning)) {
        waitForFinished(5);
        isConnected = canConnect(port);
    }
    if (!isConnected)
        qWarning("%s: %s", qPrintable(program), read("output.log").constData());
    return isConnected;
}

void KyServerProcess::write(const QString& name, const QByteArray& content) const {
    QDir().mkpath(QFileInfo(at(name)).path());
    QFile file(at(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("no room for the server's files");
}

QByteArray KyServerProcess::read(const QString& name) const {
    QFile file(at(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
