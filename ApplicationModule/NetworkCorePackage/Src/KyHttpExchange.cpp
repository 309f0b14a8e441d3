// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHttpExchange_p.h"

#include <QByteArray>
#include <QUrl>
#include <QVariant>

namespace {

/// Qt puts addresses into its texts in several encodings.
QString removeUser(QString text, const QUrl& url) {
    constexpr QUrl::ComponentFormattingOption cEncodings[] = {QUrl::PrettyDecoded, QUrl::EncodeSpaces,
                                                              QUrl::FullyEncoded, QUrl::FullyDecoded};
    for (const auto encoding : cEncodings) {
        const QString user = url.userName(encoding);
        const QString password = url.password(encoding);
        text.remove(user + ':' + password + '@').remove(':' + password + '@').remove("//" + user + '@');
    }
    return text;
}

} // namespace

KyHttpExchange::KyHttpExchange(Method method, const QNetworkRequest& request, QNetworkProxy proxy) {
    const bool isSecure = request.url().scheme() == QLatin1String("https");
    if (isSecure && proxy.type() == QNetworkProxy::HttpCachingProxy)
        proxy.setType(QNetworkProxy::HttpProxy);
    mManager.setProxy(proxy);
    mReply.reset(method == Method::eHead ? mManager.head(request) : mManager.get(request));
}

KyHttpExchange::~KyHttpExchange() = default;

int KyHttpExchange::getStatus() const {
    return mReply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

qint64 KyHttpExchange::getLength() const {
    const QVariant length = mReply->header(QNetworkRequest::ContentLengthHeader);
    return length.isValid() ? length.toLongLong() : -1;
}

bool KyHttpExchange::isChunked(const QNetworkReply& reply) {
    return reply.rawHeader("Transfer-Encoding").toLower().contains("chunked");
}

QUrl KyHttpExchange::getRedirect() const {
    return mReply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
}

QString KyHttpExchange::getErrorText() const {
    return removeUser(mReply->errorString(), mReply->url());
}
