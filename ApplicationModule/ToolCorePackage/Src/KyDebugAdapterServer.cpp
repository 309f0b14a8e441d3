// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapterServer_p.h"

#include "KyDebugAdapterJson_p.h"

#include <QJsonDocument>
#include <QTcpSocket>

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 cReadSize = qint64(64) * 1024;
constexpr qint64 cMaxUnhandled = qint64(4) * 1024 * 1024;
constexpr qint64 cMaxUnsent = qint64(64) * 1024 * 1024;
constexpr int cNbPending = 8;
/// Milliseconds.
constexpr int cPulse = 25;
constexpr int cFarewell = 300;
/// With those that are being let go.
constexpr int cMaxSockets = 16;

} // namespace

KyDebugAdapterServer::KyDebugAdapterServer(std::function<void()> pause, std::function<void()> interrupt)
    : mPause(std::move(pause))
    , mInterrupt(std::move(interrupt)) {
    mHurry.setInterval(cPulse);
    connect(&mHurry, &QTimer::timeout, this, &KyDebugAdapterServer::hurry);
    mServer.setMaxPendingConnections(cNbPending);
    connect(&mServer, &QTcpServer::newConnection, this, &KyDebugAdapterServer::meet);
}

bool KyDebugAdapterServer::listen(quint16 port, QString& error) {
    if (!mServer.listen(QHostAddress(QHostAddress::LocalHost), port)) {
        error = mServer.errorString();
        return false;
    }
    mPort = mServer.serverPort();
    return true;
}

void KyDebugAdapterServer::close() {
    mPort = 0;
    mServer.close();
    if (QTcpSocket* socket = release()) {
        socket->disconnect(this);
        socket->disconnectFromHost();
        if (socket->state() != QAbstractSocket::UnconnectedState)
            socket->waitForDisconnected(cFarewell);
    }
    // What was answered last may not have left yet.
    for (QTcpSocket* other : findChildren<QTcpSocket*>()) {
        other->flush();
        delete other;
    }
}

void KyDebugAdapterServer::meet() {
    while (QTcpSocket* socket = mServer.nextPendingConnection()) {
        socket->setParent(this);
        if (!mSocket)
            serve(socket);
        else if (findChildren<QTcpSocket*>().size() > cMaxSockets)
            delete socket;
        else
            dismiss(socket, QStringLiteral("another client is connected, the debugger serves one at a time"));
    }
}

void KyDebugAdapterServer::serve(QTcpSocket* socket) {
    mSocket = socket;
    mReader = {};
    mFarewell = {};
    mNbWritten = 0;
    ++mClient;
    socket->setReadBufferSize(cReadSize);
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(socket, &QTcpSocket::readyRead, this, &KyDebugAdapterServer::read);
    connect(socket, &QTcpSocket::disconnected, this, &KyDebugAdapterServer::drop);
    connect(socket, &QTcpSocket::bytesWritten, this, [this](qint64 size) {
        mNbInSocket -= size;
        mNbUnsent -= size;
    });
    connected(mClient);
}

QTcpSocket* KyDebugAdapterServer::release() {
    mNbUnsent -= std::exchange(mNbInSocket, 0);
    return std::exchange(mSocket, nullptr);
}

void KyDebugAdapterServer::read() {
    std::string body;
    while (mSocket && mSocket->bytesAvailable() > 0 && mNbUnhandled < cMaxUnhandled) {
        mReader.append(mSocket->read(cReadSize).toStdString());
        while (mReader.takeMessage(body))
            tell(body);
        if (!mReader.getError().empty())
            return drop();
    }
}

void KyDebugAdapterServer::tell(const std::string& body) {
    QJsonParseError error{};
    const QJsonDocument document =
        QJsonDocument::fromJson(QByteArray::fromRawData(body.data(), static_cast<int>(body.size())), &error);
    QString text = error.error == QJsonParseError::NoError ? QString() : error.errorString();
    if (text.isEmpty() && !document.isObject())
        text = QStringLiteral("the message is no object");
    mNbUnhandled += static_cast<qint64>(body.size());
    const Patience::Urgency urgency = getUrgency(document.object());
    if (urgency == Patience::eFarewell)
        mFarewell = document.object();
    note(urgency);
    received(mClient, document.object(), text, static_cast<int>(body.size()));
}

KyDebugAdapterPatience::Urgency KyDebugAdapterServer::getUrgency(const QJsonObject& message) {
    static constexpr struct {
        const char* command;
        const char* context;
        Patience::Urgency urgency;
    } cRows[] = {
        {"pause", nullptr, Patience::ePause},
        {"disconnect", nullptr, Patience::eFarewell},
        {"evaluate", "watch", Patience::eGlance},
        {"evaluate", "hover", Patience::eGlance},
    };
    const QJsonValue command = message.value("command");
    const QJsonValue context = message.value("arguments").toObject().value("context");
    const auto* const found = std::ranges::find_if(cRows, [&](const auto& row) {
        return command == QLatin1String(row.command) && (!row.context || context == QLatin1String(row.context));
    });
    return found == std::end(cRows) ? Patience::eNbUrgencies : found->urgency;
}

void KyDebugAdapterServer::note(Patience::Urgency urgency) {
    mPatience.note(urgency, Patience::Clock::now());
    if (urgency != Patience::eNbUrgencies && !mHurry.isActive())
        mHurry.start();
}

// A script that keeps the other thread busy keeps it from reading the request.
void KyDebugAdapterServer::hurry() {
    if (!mPatience.isWaiting())
        return mHurry.stop();
    bool isOverdue = false;
    mPatience.act(Patience::Clock::now(), [&](const Patience::Lateness& late) {
        if (late.isStopDue)
            mPause();
        if (late.isInterruptionDue)
            mInterrupt();
        isOverdue = late.isFarewellOverdue;
    });
    if (isOverdue && mSocket && !mFarewell.isEmpty())
        takeLeave();
}

void KyDebugAdapterServer::takeLeave() {
    QJsonObject response = kyDebugResponse(mFarewell, {}, {});
    response["seq"] = mNbWritten + 1;
    mSocket->write(kyFrameDebugMessage(response));
    drop();
}

void KyDebugAdapterServer::noteTaken(const QJsonObject& message) {
    mPatience.noteTaken(getUrgency(message), Patience::Clock::now());
}

void KyDebugAdapterServer::noteHandled(const QJsonObject& message, int size) {
    mNbUnhandled -= size;
    mPatience.noteHandled(getUrgency(message));
    QMetaObject::invokeMethod(this, &KyDebugAdapterServer::read, Qt::QueuedConnection);
}

void KyDebugAdapterServer::drop() {
    if (QTcpSocket* socket = release()) {
        note(Patience::eFarewell);
        dismiss(socket, QString::fromStdString(mReader.getError()));
        dropped(mClient);
    }
}

void KyDebugAdapterServer::post(int client, const QJsonObject& message) {
    const QByteArray bytes = kyFrameDebugMessage(message);
    mNbUnsent += bytes.size();
    QMetaObject::invokeMethod(
        this, [this, client, bytes] { write(client, bytes); }, Qt::QueuedConnection);
}

void KyDebugAdapterServer::write(int client, const QByteArray& bytes) {
    if (!mSocket || client != mClient) {
        mNbUnsent -= bytes.size();
        return;
    }
    // A message may be longer than that itself.
    if (mNbInSocket > cMaxUnsent) {
        mNbUnsent -= bytes.size();
        return drop();
    }
    mNbInSocket += bytes.size();
    ++mNbWritten;
    mSocket->write(bytes);
}

void KyDebugAdapterServer::postEnd(int client) {
    const auto end = [this, client] {
        if (mSocket && client == mClient)
            dismiss(release(), {});
    };
    QMetaObject::invokeMethod(this, end, Qt::QueuedConnection);
}

void KyDebugAdapterServer::dismiss(QTcpSocket* socket, const QString& lastWord) {
    socket->disconnect(this);
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    if (socket->state() != QAbstractSocket::ConnectedState)
        return socket->deleteLater();
    if (!lastWord.isEmpty())
        socket->write(kyFrameDebugMessage(kyDebugOutput(QStringLiteral("important"), lastWord + '\n')));
    connect(socket, &QTcpSocket::readyRead, socket, [socket] { socket->readAll(); });
    socket->readAll();
    QTimer::singleShot(cFarewell, socket, &QObject::deleteLater);
}
