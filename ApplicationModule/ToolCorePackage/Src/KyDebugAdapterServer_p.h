// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDebugAdapterPatience_p.h"
#include "KyDebugAdapterReader_p.h"

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QTcpServer>
#include <QTimer>

#include <atomic>
#include <functional>

class QTcpSocket;

/// The connections of the debug adapter. It lives in a thread of its own, so that a client is heard, and hears, while a
/// script keeps the engine's thread busy: what it says is told by signals. From here a script is stopped that keeps a
/// pause or the client's end from being taken up, and an evaluation interrupted that does, or that has lasted too long
/// for a glance; a client that cannot leave even so is answered and let go. What is said to a client that is gone is
/// dropped.
///
/// It reads no further while what was told waits for an answer beyond a limit, so its memory is bounded.
class KyDebugAdapterServer : public QObject {
    Q_OBJECT

public:
    /// Both are called in the thread of this.
    KyDebugAdapterServer(std::function<void()> pause, std::function<void()> interrupt);

    // In its own thread.
    bool listen(quint16 port, QString& error);
    void close();

    // In any thread.
    quint16 getPort() const { return mPort; }
    /// Sends a message to a client.
    void post(int client, const QJsonObject& message);
    /// Number of bytes that clients have not taken yet.
    qint64 getNbUnsent() const { return mNbUnsent; }
    /// Lets a client go after all that was posted to it.
    void postEnd(int client);
    /// Before each message received is handled.
    void noteTaken(const QJsonObject& message);
    /// After it, with its size.
    void noteHandled(const QJsonObject& message, int size);
    /// When dropped() has been heard.
    void noteDrop() { mPatience.noteTaken(Patience::eFarewell, Patience::Clock::now()); }
    /// Whether scripts may be stopped for the client.
    void setStopping(bool isStopping) { mPatience.setStopping(isStopping); }
    /// Whether a pause, or the client's end, was heard of that was not taken yet.
    bool isStopComing() const {
        return mPatience.isWaiting(Patience::ePause) || mPatience.isWaiting(Patience::eFarewell);
    }

Q_SIGNALS:
    /// Clients are numbered from 1. All are sent in the order of events.
    void connected(int client);
    /// `error` tells why the message, which is empty then, could not be read.
    void received(int client, const QJsonObject& message, const QString& error, int size);
    void dropped(int client);

private:
    using Patience = KyDebugAdapterPatience;

    /// eNbUrgencies for what may wait.
    static Patience::Urgency getUrgency(const QJsonObject& message);
    void note(Patience::Urgency urgency);
    void hurry();
    /// Answers the client that wants to leave, in the place of the engine's thread, and lets it go.
    void takeLeave();
    void meet();
    void serve(QTcpSocket* socket);
    void read();
    void tell(const std::string& body);
    void drop();
    /// The client's socket, which it is no longer.
    QTcpSocket* release();
    void write(int client, const QByteArray& bytes);
    /// Says a last word and closes, reading on for a moment: what a peer still sends would make it lose that word.
    void dismiss(QTcpSocket* socket, const QString& lastWord);

    std::function<void()> mPause;
    std::function<void()> mInterrupt;
    QTimer mHurry{this};
    QTcpServer mServer{this};
    QTcpSocket* mSocket = nullptr;
    int mClient = 0;
    qint64 mNbInSocket = 0;
    KyDebugAdapterReader mReader;
    std::atomic<quint16> mPort = 0;
    std::atomic<qint64> mNbUnsent = 0;
    std::atomic<qint64> mNbUnhandled = 0;
    Patience mPatience;
    /// The client's request to leave; empty while there is none.
    QJsonObject mFarewell;
    /// Messages written to the client, which are numbered from 1.
    int mNbWritten = 0;
};
