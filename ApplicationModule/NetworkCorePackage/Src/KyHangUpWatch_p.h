// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QNetworkReply>
#include <QTimer>

/// Notices that the connection of a chunked reply was closed before the last chunk, which Qt may miss with a limited
/// read buffer: the reply would never finish. Once nothing has come for a while Qt is made to look at the connection;
/// a reply that finishes upon that had lost it.
class KyHangUpWatch {
public:
    explicit KyHangUpWatch(QNetworkReply& reply);
    KyHangUpWatch(const KyHangUpWatch&) = delete;
    KyHangUpWatch& operator=(const KyHangUpWatch&) = delete;
    ~KyHangUpWatch() = default;

    /// Of the reply that has just finished.
    bool isHungUp() const { return mIsHungUp; }

private:
    void start();
    void look();
    void onFinished();

    QNetworkReply& mReply;
    QTimer mSilence;
    QElapsedTimer mLooked;
    qint64 mNbReceived = 0;
    bool mIsHungUp = false;
};
