// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNetworkConnection.h"

#include "KyConnectionProbe_p.h"
#include "KyDownload_p.h"
#include "KyNoProxyMatcher_p.h"

#include <array>
#include <cstddef>

const QString KyNetworkConnection::cSettingsPath = QStringLiteral("Proxy");
const QString KyNetworkConnection::cSettingsInitialize = QStringLiteral("initialize");
const QString KyNetworkConnection::cSettingsProxyHost = QStringLiteral("host");
const QString KyNetworkConnection::cSettingsProxyPort = QStringLiteral("port");
const QString KyNetworkConnection::cSettingsProxyUser = QStringLiteral("user");
const QString KyNetworkConnection::cSettingsEncryptedPwd = QStringLiteral("passwd");
const QString KyNetworkConnection::cSettingsExclude = QStringLiteral("exclude");
const QString KyNetworkConnection::cSettingsUseSystemConfig = QStringLiteral("useSystemConfiguration");
const QString KyNetworkConnection::cSettingsTestUrl = QStringLiteral("testURL");

namespace {

constexpr std::array cStateTexts{QT_TRANSLATE_NOOP("KyNetworkConnection", "Connection: Busy"),
                                 QT_TRANSLATE_NOOP("KyNetworkConnection", "Connection: Ready"),
                                 QT_TRANSLATE_NOOP("KyNetworkConnection", "Connection: Failed"),
                                 QT_TRANSLATE_NOOP("KyNetworkConnection", "Connection: Authentication required"),
                                 QT_TRANSLATE_NOOP("KyNetworkConnection", "Connection: Unkown error")};

} // namespace

KyNetworkConnection::KyNetworkConnection()
    : mNoProxy(QStringLiteral("localhost"))
    , mNoProxyMatcher(std::make_unique<KyNoProxyMatcher>(mNoProxy)) {}

KyNetworkConnection::~KyNetworkConnection() = default;

KyNetworkConnection& KyNetworkConnection::get() {
    static KyNetworkConnection connection;
    return connection;
}

const QString& KyNetworkConnection::getStateString(KyConnectionState state) {
    // In the language of the call.
    static std::array<QString, cStateTexts.size()> texts;
    const auto number = static_cast<long long>(state) - static_cast<long long>(KyConnectionState::Busy);
    const auto last = static_cast<long long>(texts.size()) - 1;
    const auto index = static_cast<std::size_t>(number >= 0 && number < last ? number : last);
    texts[index] = tr(cStateTexts[index]);
    return texts[index];
}

template <class Change>
void KyNetworkConnection::changeState(Change change) {
    const KyConnectionState before = getState();
    change();
    if (getState() != before)
        Q_EMIT stateChanged();
}

void KyNetworkConnection::setState(KyConnectionState state, const QString& message) {
    changeState([&] {
        mState = state;
        mUserMessage = message;
    });
}

KyConnectionState KyNetworkConnection::getState() const {
    return isBusy() ? KyConnectionState::Busy : mState;
}

const QString& KyNetworkConnection::getStateString() const {
    return getStateString(getState());
}

QString KyNetworkConnection::getUserMessage() const {
    return isBusy() ? QString() : mUserMessage;
}

void KyNetworkConnection::incBusy() {
    changeState([this] { ++mNbBusy; });
}

void KyNetworkConnection::decBusy() {
    if (mNbBusy > 0)
        changeState([this] { --mNbBusy; });
}

bool KyNetworkConnection::tryConnection(unsigned int timeoutMs, const QString& url, int* networkError,
                                        int* httpStatus) {
    const KyConnectionProbe probe(url, toQNetworkProxy(url), timeoutMs);
    if (networkError)
        *networkError = probe.getError();
    if (httpStatus)
        *httpStatus = probe.getHttpStatus();
    return probe.isReached();
}

QNetworkReply::NetworkError KyNetworkConnection::downloadFile(const QString& url, const QDir& directory,
                                                              QString& filePath, QString& errorString,
                                                              long long readBufferSize, const QString& cookie) {
    if (mDownload) {
        errorString = tr("Another download is in progress.");
        return QNetworkReply::OperationCanceledError;
    }
    KyDownload download(*this, directory, readBufferSize, cookie.toLatin1());
    mDownload = &download;
    const QNetworkReply::NetworkError error = download.run(url);
    mDownload = nullptr;
    if (!download.getFilePath().isEmpty())
        filePath = download.getFilePath();
    if (error != QNetworkReply::NoError)
        errorString = download.getErrorText();
    return error;
}

void KyNetworkConnection::cancelDownload() {
    if (mDownload)
        mDownload->cancel();
}

void KyNetworkConnection::downloadReadyRead() {
    auto* const reply = qobject_cast<QNetworkReply*>(sender());
    if (reply && mDownload)
        mDownload->receive(*reply);
}
