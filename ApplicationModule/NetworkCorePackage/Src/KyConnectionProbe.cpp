// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyConnectionProbe_p.h"

#include "KyHttpExchange_p.h"

#include <QEventLoop>
#include <QTimer>
#include <QUrl>

#include <algorithm>
#include <limits>

namespace {

/// Until the reply has finished, for at most that long, or until the program is asked to quit.
void wait(QNetworkReply& reply, unsigned int timeoutMs) {
    constexpr unsigned int cMax = std::numeric_limits<int>::max();
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start(static_cast<int>(std::min(timeoutMs, cMax)));
    if (!reply.isFinished())
        loop.exec();
}

} // namespace

KyConnectionProbe::KyConnectionProbe(const QString& url, const QNetworkProxy& proxy, unsigned int timeoutMs) {
    KyHttpExchange exchange(KyHttpExchange::Method::eHead, QNetworkRequest(QUrl(url)), proxy);
    QNetworkReply& reply = exchange.editReply();
    wait(reply, timeoutMs);
    const bool isFinished = reply.isFinished();
    if (!isFinished)
        reply.abort();
    mError = exchange.getError();
    mHttpStatus = exchange.getStatus();
    mIsReached = isFinished && mError == QNetworkReply::NoError;
}
