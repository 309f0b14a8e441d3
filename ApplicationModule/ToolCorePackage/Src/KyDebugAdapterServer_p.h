// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDebugAdapterReader_p.h"

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QTcpServer>
#include <QTimer>

#include <array>
#include <atomic>
#include <chrono>
#include <functional>

class QTcpSocket;

/// The connections of the debug adapter. It lives in a thread of its own, so that a client is heard, and hears, while a
/// script keeps the engine's thread busy: what it says is told by signals; a pause that nobody takes up is carried out
/// from here, and an evaluation is interrupted that keeps a pause or the client's end from being taken up, or that has
/// lasted too long for a glance. What is said to a client that is gone is dropped.
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
    void noteDrop() { --mNbWaiting[eFarewell]; }
    /// Whether pauses are carried out.
    void setPausing(bool isPausing) { mIsPausing = isPausing; }
    /// Whether a pause was received that was not taken yet.
    bool isPauseComing() const { return mNbWaiting[ePause] > 0; }

Q_SIGNALS:
    /// Clients are numbered from 1. All are sent in the order of events.
    void connected(int client);
    /// `error` tells why the message, which is empty then, could not be read.
    void received(int client, const QJsonObject& message, const QString& error, int size);
    void dropped(int client);

private:
    using Clock = std::chrono::steady_clock;
    /// What must not wait for ever: to pause, to leave, to look at a value in passing.
    enum Urgency { ePause, eFarewell, eGlance, eNbUrgencies };

    /// eNbUrgencies for what may wait.
    static Urgency getUrgency(const QJsonObject& message);
    void note(Urgency urgency);
    void hurry();
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
    /// Glances count until they are handled, the others until they are taken.
    std::array<std::atomic<int>, eNbUrgencies> mNbWaiting{};
    /// Of the glance under way.
    std::atomic<Clock::time_point> mDeadline = Clock::time_point::max();
    std::atomic<bool> mIsPausing = false;
};
