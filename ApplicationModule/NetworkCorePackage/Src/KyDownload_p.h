// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDownloadFile_p.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QNetworkReply>
#include <QSet>
#include <QString>
#include <QUrl>

#include <memory>
#include <optional>

class KyHttpExchange;
class KyNetworkConnection;

/// One call of KyNetworkConnection::downloadFile: a request, and one more for each redirect that is followed.
class KyDownload {
    Q_DECLARE_TR_FUNCTIONS(KyNetworkConnection)
public:
    using Error = QNetworkReply::NetworkError;

    KyDownload(KyNetworkConnection& connection, const QDir& directory, qint64 readBufferSize, const QByteArray& cookie);
    KyDownload(const KyDownload&) = delete;
    KyDownload& operator=(const KyDownload&) = delete;
    ~KyDownload();

    /// Waits, the thread's events running.
    Error run(const QString& url);
    /// Writes what the reply has got, or drops it where it is not for the file.
    void receive(QNetworkReply& reply);
    void cancel();

    /// Empty until a file could be opened.
    const QString& getFilePath() const { return mFilePath; }
    const QString& getErrorText() const { return mErrorText; }

private:
    /// What one request came to; none when it goes on at mUrl.
    using Result = std::optional<Error>;

    /// Why there is no need to wait any longer.
    enum class Stop { eNone, eCancelled, eFileBroken };

    /// What the answer's body is for; known once it begins.
    enum class Body { eUnknown, eWanted, eUnwanted };

    Result load();
    void startExchange();
    void wait(QNetworkReply& reply);
    void stop(Stop reason);
    Result finish(QNetworkReply& reply);
    Result judge();
    Result follow();
    Error fail(Error error, const QString& text);
    bool isWhole() const;
    /// Whether a body in chunks has come to nothing, and a file is there that it would empty.
    bool isEmptyForFile() const;
    bool isFollowed(const QUrl& redirect) const;
    Body classifyBody() const;

    KyNetworkConnection& mConnection;
    const QDir mDirectory;
    const qint64 mReadBufferSize;
    const QByteArray mCookie;
    QEventLoop mLoop;
    KyDownloadFile mFile;
    std::unique_ptr<KyHttpExchange> mExchange;
    QUrl mUrl;
    /// The address as it was given, with which redirects are compared.
    QString mUrlText;
    QSet<QUrl> mRequested;
    Body mBody = Body::eUnknown;
    Stop mStop = Stop::eNone;
    bool mIsHungUp = false;
    QString mFilePath;
    QString mErrorText;
};
