// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDownload_p.h"

#include "KyDownloadName_p.h"
#include "KyHangUpWatch_p.h"
#include "KyHttpExchange_p.h"
#include "KyNetworkConnection.h"

#include <QNetworkRequest>

#include <algorithm>
#include <iterator>

namespace {

constexpr int cFirstStatusWithContent = 200;
constexpr int cFirstErrorStatus = 400;
/// No content, reset, a part of it, not modified: none is the resource that was asked for.
constexpr int cStatusesWithoutContent[] = {204, 205, 206, 304};

/// 0 is that of what is not HTTP.
bool hasContent(int status, bool isHttp) {
    return (status == 0 && !isHttp) ||
           (status >= cFirstStatusWithContent &&
            std::ranges::find(cStatusesWithoutContent, status) == std::end(cStatusesWithoutContent));
}

/// What follows would be a header of its own.
QByteArray cutAtControl(const QByteArray& value) {
    const auto* const end = std::ranges::find_if(value, [](char c) { return (c >= 0 && c < ' ') || c == '\x7f'; });
    return value.left(static_cast<int>(end - value.begin()));
}

bool isHttp(const QUrl& url) {
    return url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
}

/// Not QDir::filePath: a name with a colon can be a resource or a search path to it, which lies elsewhere.
QString makePath(const QDir& directory, const QString& name) {
    const QString path = directory.path();
    return path.endsWith('/') ? path + name : path + '/' + name;
}

} // namespace

KyDownload::KyDownload(KyNetworkConnection& connection, const QDir& directory, qint64 readBufferSize,
                       const QByteArray& cookie)
    : mConnection(connection)
    , mDirectory(directory)
    , mReadBufferSize(std::max<qint64>(readBufferSize, 0))
    , mCookie(cutAtControl(cookie)) {}

KyDownload::~KyDownload() = default;

KyDownload::Error KyDownload::run(const QString& url) {
    mUrl = QUrl(url);
    mUrlText = url;
    Result result;
    while (!result)
        result = load();
    return *result;
}

KyDownload::Result KyDownload::load() {
    const QString path = makePath(mDirectory, KyDownloadName::get(mUrl));
    if (!mFile.open(path))
        return fail(QNetworkReply::OperationCanceledError, tr("Unable to open %1 for writing.").arg(path));
    startExchange();
    QNetworkReply& reply = mExchange->editReply();
    wait(reply);
    mFilePath = mFile.getPath();
    const Result result = finish(reply);
    mExchange.reset();
    return result;
}

void KyDownload::startExchange() {
    mBody = Body::eUnknown;
    // The part after "#" is not sent.
    mRequested.insert(mUrl.adjusted(QUrl::RemoveFragment));
    QNetworkRequest request(mUrl);
    request.setPriority(QNetworkRequest::HighPriority);
    if (!mCookie.isEmpty())
        request.setRawHeader("Cookie", mCookie);
    const QNetworkProxy proxy = mConnection.toQNetworkProxy(mUrlText);
    mExchange = std::make_unique<KyHttpExchange>(KyHttpExchange::Method::eGet, request, proxy);
}

void KyDownload::wait(QNetworkReply& reply) {
    reply.setReadBufferSize(mReadBufferSize);
    const KyHangUpWatch watch(reply);
    QObject::connect(&reply, &QNetworkReply::downloadProgress, &mConnection, [this](qint64 received, qint64 total) {
        Q_EMIT mConnection.downloadProgress(received, std::max<qint64>(total, -1));
    });
    QObject::connect(&reply, SIGNAL(readyRead()), &mConnection, SLOT(downloadReadyRead()));
    QObject::connect(&reply, &QNetworkReply::finished, &mLoop, &QEventLoop::quit);
    if (!reply.isFinished() && mStop == Stop::eNone)
        mLoop.exec();
    mIsHungUp = watch.isHungUp();
    reply.disconnect(&mConnection);
}

void KyDownload::stop(Stop reason) {
    mStop = reason;
    mLoop.quit();
}

void KyDownload::cancel() {
    stop(Stop::eCancelled);
}

void KyDownload::receive(QNetworkReply& reply) {
    if (mStop != Stop::eNone)
        return;
    if (mBody == Body::eUnknown)
        mBody = classifyBody();
    if (mBody == Body::eUnwanted)
        reply.skip(reply.bytesAvailable());
    else if (!mFile.write(reply))
        stop(Stop::eFileBroken);
}

KyDownload::Result KyDownload::finish(QNetworkReply& reply) {
    if (reply.isFinished())
        receive(reply);
    else if (mStop == Stop::eNone)
        mStop = Stop::eCancelled; // The program is asked to quit.
    if (mStop == Stop::eCancelled) {
        mFile.remove();
        return fail(QNetworkReply::OperationCanceledError, tr("The download was cancelled."));
    }
    return judge();
}

KyDownload::Result KyDownload::judge() {
    const Error error = mExchange->getError();
    const bool isWanted = error == QNetworkReply::NoError && mBody == Body::eWanted;
    const bool isDoubtful = isWanted && isEmptyForFile();
    const bool isGood = isWanted && !isDoubtful && isWhole();
    const bool isStored = mStop == Stop::eNone && (!isGood || mFile.overwrite()) && mFile.close();
    if (!isStored)
        return fail(QNetworkReply::OperationCanceledError, mFile.getErrorText());
    const int status = mExchange->getStatus();
    const bool hasAnswer = status != 0 || error == QNetworkReply::NoError;
    if (hasAnswer && (isDoubtful || !hasContent(status, isHttp(mUrl))))
        return fail(QNetworkReply::UnknownContentError,
                    tr("The server answered without the whole content (status %1).").arg(status));
    if (error != QNetworkReply::NoError)
        return fail(error, mExchange->getErrorText());
    if (isWanted && !isGood)
        return fail(QNetworkReply::RemoteHostClosedError, tr("The connection was closed before the end."));
    return follow();
}

KyDownload::Result KyDownload::follow() {
    const QUrl redirect = mExchange->getRedirect();
    if (!isFollowed(redirect))
        return QNetworkReply::NoError;
    mFile.remove();
    mUrl = mUrl.resolved(redirect);
    mUrlText = mUrl.toString();
    if (!mUrl.isValid() || mUrlText.isEmpty())
        return fail(QNetworkReply::ProtocolUnknownError, tr("The server redirects to what is no address."));
    if (mRequested.contains(mUrl.adjusted(QUrl::RemoveFragment)))
        return fail(QNetworkReply::TooManyRedirectsError, tr("The server redirects in a circle."));
    if (!isHttp(mUrl))
        return fail(QNetworkReply::InsecureRedirectError,
                    tr("The server redirects to an address of \"%1\".").arg(mUrl.scheme()));
    return std::nullopt;
}

KyDownload::Error KyDownload::fail(Error error, const QString& text) {
    mErrorText = text;
    return error;
}

// Qt takes a body for whole when the connection was closed together with its last bytes.
bool KyDownload::isWhole() const {
    return !mIsHungUp && mFile.getNbWritten() >= mExchange->getLength();
}

// Qt takes a body in chunks for whole as well when the size of a chunk is no number.
bool KyDownload::isEmptyForFile() const {
    return mFile.isForeign() && KyHttpExchange::isChunked(mExchange->editReply());
}

bool KyDownload::isFollowed(const QUrl& redirect) const {
    return !redirect.isEmpty() && redirect.toString() != mUrlText;
}

KyDownload::Body KyDownload::classifyBody() const {
    // What was there before is worth more than the page of an error.
    const int status = mExchange->getStatus();
    const bool isKept = status >= cFirstErrorStatus && mFile.isForeign();
    const bool isWanted = hasContent(status, isHttp(mUrl)) && !isKept && !isFollowed(mExchange->getRedirect());
    return isWanted ? Body::eWanted : Body::eUnwanted;
}
