// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyServerProcess.h"

#include <QByteArray>

/// nginx with the answers that the tests ask for, plain and by TLS, and as a forward proxy with and without password.
class KyHttpServer : public KyServerProcess {
public:
    KyHttpServer();

    bool isReady() const { return mIsReady; }
    QString getUrl(const QString& path) const { return makeUrl("http", mPort, path); }
    QString getSecureUrl(const QString& path) const { return makeUrl("https", mSecurePort, path); }
    /// With the certificate of somebody else.
    QString getForeignUrl(const QString& path) const { return makeUrl("https", mForeignPort, path); }
    quint16 getProxyPort() const { return mProxyPort; }
    quint16 getLockedProxyPort() const { return mLockedProxyPort; }
    /// What /file.bin holds.
    const QByteArray& getContent() const { return mContent; }
    /// How often such a request came, to the server itself or to one of the proxies.
    int countRequests(const QByteArray& request) const { return read("access.log").count(request); }
    /// Whether it came that often; the server writes a moment after it answered.
    bool awaitRequests(const QByteArray& request, int count) const;

private:
    static QString makeUrl(const QString& scheme, quint16 port, const QString& path);
    void makeCertificate(const QString& name, const QString& address) const;
    QByteArray makeConfiguration() const;

    const quint16 mPort = findFreePort();
    const quint16 mSecurePort = findFreePort();
    const quint16 mForeignPort = findFreePort();
    const quint16 mProxyPort = findFreePort();
    const quint16 mLockedProxyPort = findFreePort();
    QByteArray mContent;
    bool mIsReady = false;
};
