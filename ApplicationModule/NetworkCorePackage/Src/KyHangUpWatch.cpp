// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHangUpWatch_p.h"

#include "KyHttpExchange_p.h"

namespace {

/// Milliseconds; no round number, after which servers like to go on: their end is not to be taken for ours.
constexpr int cSilence = 430;
/// Milliseconds that Qt's thread is given to answer.
constexpr int cAnswer = 50;

} // namespace

KyHangUpWatch::KyHangUpWatch(QNetworkReply& reply)
    : mReply(reply) {
    mSilence.setSingleShot(true);
    QObject::connect(&reply, &QNetworkReply::readyRead, &mSilence, [this] { start(); });
    QObject::connect(&reply, &QNetworkReply::finished, &mSilence, [this] { onFinished(); });
    QObject::connect(&mSilence, &QTimer::timeout, &mSilence, [this] { look(); });
}

/// Qt misses only what comes behind a full buffer. Each signal's bytes are taken at once.
void KyHangUpWatch::start() {
    mLooked.invalidate();
    mNbReceived += mReply.bytesAvailable();
    const qint64 size = mReply.readBufferSize();
    if (size > 0 && mNbReceived >= size && KyHttpExchange::isChunked(mReply))
        mSilence.start(cSilence);
}

/// Setting the size, be it the same, makes Qt read on.
void KyHangUpWatch::look() {
    mLooked.start();
    mReply.setReadBufferSize(mReply.readBufferSize());
}

void KyHangUpWatch::onFinished() {
    mSilence.stop();
    mIsHungUp = mLooked.isValid() && !mLooked.hasExpired(cAnswer);
}
