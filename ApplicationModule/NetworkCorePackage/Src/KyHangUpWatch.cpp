// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHangUpWatch_p.h"

#include "KyHttpExchange_p.h"

#include <algorithm>

namespace {

/// Milliseconds; beside whole seconds, after which servers like to go on: their end is not to be taken for ours.
constexpr int cSilence = 1730;
/// Milliseconds that Qt's thread is given to answer.
constexpr int cAnswer = 100;
constexpr int cLongestSilence = 600000;

} // namespace

KyHangUpWatch::KyHangUpWatch(QNetworkReply& reply)
    : mReply(reply) {
    mSilence.setSingleShot(true);
    QObject::connect(&reply, &QNetworkReply::metaDataChanged, &mSilence, [this] { start(); });
    QObject::connect(&reply, &QNetworkReply::readyRead, &mSilence, [this] { start(); });
    QObject::connect(&reply, &QNetworkReply::finished, &mSilence, [this] { onFinished(); });
    QObject::connect(&mSilence, &QTimer::timeout, &mSilence, [this] { look(); });
}

void KyHangUpWatch::start() {
    mLooked.invalidate();
    if (mReply.readBufferSize() > 0 && KyHttpExchange::isChunked(mReply))
        mSilence.start(cSilence);
}

/// Setting the size, be it the same, makes Qt read on.
void KyHangUpWatch::look() {
    mLooked.start();
    mReply.setReadBufferSize(mReply.readBufferSize());
    mSilence.start(std::min(2 * mSilence.interval(), cLongestSilence));
}

void KyHangUpWatch::onFinished() {
    mSilence.stop();
    mIsHungUp = mLooked.isValid() && !mLooked.hasExpired(cAnswer);
}
