// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapterServer_p.h"

#include "KyDebugAdapterJson_p.h"

#include <QJsonDocument>
#include <QTcpSocket>

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 cReadSize = 64 * 1024;
constexpr qint64 cMaxUnhandled = 4 * 1024 * 1024;
constexpr qint64 cMaxUnsent = 64 * 1024 * 1024;
constexpr int cNbPending = 8;
/// Milliseconds.
constexpr int cPatience = 50;
constexpr int cFarewell = 300;
constexpr std::chrono::seconds cGlancePatience{2};
/// With those that are being let go.
constexpr int cMaxSockets = 16;

} // namespace

KyDebugAdapterServer::KyDebugAdapterServer(std::function<void()> pause, std::function<void()> interrupt)
    : mPause(std::move(pause))
    , mInterrupt(std::move(interrupt)) {
    mHurry.setInterval(cPatience);
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
    note(getUrgency(document.object()));
    received(mClient, document.object(), text, static_cast<int>(body.size()));
}

KyDebugAdapterServer::Urgency KyDebugAdapterServer::getUrgency(const QJsonObject& message) {
    static constexpr struct {
        const char* command;
        const char* context;
        Urgency urgency;
    } cRows[] = {
        {"pause", nullptr, ePause},
        {"disconnect", nullptr, eFarewell},
        {"evaluate", "watch", eGlance},
        {"evaluate", "hover", eGlance},
    };
    const QJsonValue command = message.value("command");
    const QJsonValue context = message.value("arguments").toObject().value("context");
    const auto* const found = std::ranges::find_if(cRows, [&](const auto& row) {
        return command == QLatin1String(row.command) && (!row.context || context == QLatin1String(row.context));
    });
    return found == std::end(cRows) ? eNbUrgencies : found->urgency;
}

void KyDebugAdapterServer::note(Urgency urgency) {
    if (urgency == eNbUrgencies)
        return;
    ++mNbWaiting[urgency];
    if (!mHurry.isActive())
        mHurry.start();
}

// A script that keeps the other thread busy keeps it from reading the request.
void KyDebugAdapterServer::hurry() {
    if (std::ranges::all_of(mNbWaiting, [](const std::atomic<int>& count) { return count <= 0; }))
        return mHurry.stop();
    if (mNbWaiting[ePause] > 0 && mIsPausing)
        mPause();
    if (mNbWaiting[ePause] > 0 || mNbWaiting[eFarewell] > 0 || Clock::now() > mDeadline.load())
        mInterrupt();
}

void KyDebugAdapterServer::noteTaken(const QJsonObject& message) {
    const Urgency urgency = getUrgency(message);
    if (urgency == eGlance)
        mDeadline = Clock::now() + cGlancePatience;
    else if (urgency != eNbUrgencies)
        --mNbWaiting[urgency];
}

void KyDebugAdapterServer::noteHandled(const QJsonObject& message, int size) {
    mNbUnhandled -= size;
    if (getUrgency(message) == eGlance) {
        mDeadline = Clock::time_point::max();
        --mNbWaiting[eGlance];
    }
    QMetaObject::invokeMethod(this, &KyDebugAdapterServer::read, Qt::QueuedConnection);
}

void KyDebugAdapterServer::drop() {
    if (QTcpSocket* socket = release()) {
        note(eFarewell);
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
