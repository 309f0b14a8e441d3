// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

/// A server on loopback that says the same to everybody; what it was told to hold back only when it is asked to go on.
class KyAnsweringServer : public QTcpServer {
public:
    explicit KyAnsweringServer(const QByteArray& answer, const QByteArray& rest = {})
        : mRest(rest) {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this, answer] {
            mSocket = nextPendingConnection();
            connect(mSocket, &QTcpSocket::readyRead, this, [this, answer] {
                heard += mSocket->readAll();
                if (!mRest.isEmpty())
                    return writeSlowly(answer);
                mSocket->write(answer);
                mSocket->disconnectFromHost();
            });
        });
    }

    static QByteArray makeHead(const char* status, int length) {
        return QByteArray("HTTP/1.1 ") + status + "\r\nContent-Length: " + QByteArray::number(length) + "\r\n\r\n";
    }
    QString getUrl() const { return "http://127.0.0.1:" + QString::number(serverPort()) + "/"; }
    void goOn() {
        mSocket->write(mRest);
        mSocket->disconnectFromHost();
    }

    QByteArray heard;

private:
    /// Qt tells of progress only when something comes, and ten times a second at most.
    void writeSlowly(const QByteArray& answer) {
        constexpr int cPause = 150;
        mSocket->write(answer.chopped(1));
        QTimer::singleShot(cPause, mSocket, [this, last = answer.right(1)] { mSocket->write(last); });
    }

    QByteArray mRest;
    QTcpSocket* mSocket = nullptr;
};
