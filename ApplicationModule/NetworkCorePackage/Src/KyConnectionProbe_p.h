// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QNetworkProxy>
#include <QNetworkReply>
#include <QString>

/// Asks for the head of a resource and waits for the answer, the thread's events running; made ready by construction.
class KyConnectionProbe {
public:
    KyConnectionProbe(const QString& url, const QNetworkProxy& proxy, unsigned int timeoutMs);

    bool isReached() const { return mIsReached; }
    /// OperationCanceledError after the time.
    QNetworkReply::NetworkError getError() const { return mError; }
    /// 0 without answer.
    int getHttpStatus() const { return mHttpStatus; }

private:
    bool mIsReached = false;
    QNetworkReply::NetworkError mError = QNetworkReply::NoError;
    int mHttpStatus = 0;
};
