// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHttpServer.h"
#include "KyNetworkConnection.h"

#include "KyException.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

/// Answers every request with the same bytes and hangs up; with none it keeps silent for ever.
class KyRawServer : public QTcpServer {
public:
    explicit KyRawServer(const QByteArray& answer) {
        listen(QHostAddress(KyServerProcess::getAddress()));
        connect(this, &QTcpServer::newConnection, this, [this, answer] {
            QTcpSocket* const socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, socket, [socket, answer] {
                if (answer.isEmpty() || !socket->readAll().contains("\r\n\r\n"))
                    return;
                socket->write(answer);
                socket->disconnectFromHost();
            });
        });
    }
    QString getUrl(const QString& path = QStringLiteral("file.bin")) const {
        return QStringLiteral("http://%1:%2/%3").arg(serverAddress().toString()).arg(serverPort()).arg(path);
    }
};

/// A connection in its first state, a directory to load into, the server, and every message of the program.
class KyNetworkTest : public testing::Test {
protected:
    class Connection : public KyNetworkConnection {};

    struct Download {
        QNetworkReply::NetworkError error;
        QString path;
        QString text;
    };

    static void SetUpTestSuite() { msServer = std::make_unique<KyHttpServer>(); }
    static void TearDownTestSuite() { msServer.reset(); }

    KyNetworkTest() {
        for (const char* name : {"http_proxy", "https_proxy", "ftp_proxy", "all_proxy", "no_proxy"})
            qunsetenv(name);
        msMessages.clear();
        mHandler = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& text) { msMessages += text + '\n'; });
        mReportHandler = KyException::setReportHandler(
            [](const std::string& text) { msMessages += QString::fromStdString(text) + '\n'; });
    }
    ~KyNetworkTest() override {
        qInstallMessageHandler(mHandler);
        KyException::setReportHandler(mReportHandler);
    }
    void SetUp() override { ASSERT_TRUE(msServer->isReady()); }

    QString at(const QString& name) const { return mDirectory.filePath("in/" + name); }
    Download load(const QString& url, long long bufferSize = 65536, const QString& cookie = {}) {
        Download result;
        result.error = mConnection.downloadFile(url, QDir(at("")), result.path, result.text, bufferSize, cookie);
        return result;
    }
    void write(const QString& name, const QByteArray& content) const {
        QFile file(at(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    QByteArray read(const QString& name) const {
        QFile file(at(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }
    QByteArray hash(const QString& name) const { return hashOf(read(name)); }
    static QByteArray hashOf(const QByteArray& content) {
        return QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
    }
    /// Everything in the directory, and beside it.
    QString list() const {
        return QDir(at("")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).join(' ');
    }
    QString listOutside() const {
        return QDir(mDirectory.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).join(' ');
    }
    QString getRefusingUrl(const QString& path) const {
        return QStringLiteral("http://%1:%2/%3").arg(KyServerProcess::getAddress()).arg(mFreePort).arg(path);
    }

    inline static std::unique_ptr<KyHttpServer> msServer;
    inline static QString msMessages;
    const quint16 mFreePort = KyServerProcess::findFreePort();
    const QTemporaryDir mDirectory;
    const bool mIsMade = QDir(mDirectory.path()).mkdir("in");
    Connection mConnection;

private:
    QtMessageHandler mHandler;
    KyException::ReportHandler mReportHandler;
};
