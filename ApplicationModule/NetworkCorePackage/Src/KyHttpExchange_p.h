// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QString>

#include <memory>

/// One request with a manager of its own, and its answer; what is still going on when it ends is aborted. It is to end
/// outside of the reply's signals: both objects go at once, as deferred deletion would keep those of a long chain, each
/// with its thread, until the caller's event loop goes on.
class KyHttpExchange {
public:
    enum class Method { eHead, eGet };

    /// A caching proxy is used as a tunnel for https, which it cannot carry otherwise.
    KyHttpExchange(Method method, const QNetworkRequest& request, QNetworkProxy proxy);
    KyHttpExchange(const KyHttpExchange&) = delete;
    KyHttpExchange& operator=(const KyHttpExchange&) = delete;
    ~KyHttpExchange();

    QNetworkReply& editReply() { return *mReply; }
    QNetworkReply::NetworkError getError() const { return mReply->error(); }
    /// 0 without answer.
    int getStatus() const;
    /// -1 when the server does not tell it, or for a body that Qt decodes.
    qint64 getLength() const;
    /// Known with the headers.
    static bool isChunked(const QNetworkReply& reply);
    /// As the server wrote it, so that it may be relative; empty without redirect.
    QUrl getRedirect() const;
    /// Without what the address tells of the user.
    QString getErrorText() const;

private:
    QNetworkAccessManager mManager;
    std::unique_ptr<QNetworkReply> mReply;
};
