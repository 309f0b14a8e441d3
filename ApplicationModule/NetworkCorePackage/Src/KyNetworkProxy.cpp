// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNetworkConnection.h"

#include "KyNoProxyMatcher_p.h"
#include "KySettings.h"
#include "KySystemProxy.h"

#include "KyQtText.h"

#include "KyEncryption.h"

#include <QNetworkProxyFactory>
#include <QNetworkProxyQuery>
#include <QUrl>

#include <algorithm>
#include <limits>
#include <optional>

namespace {

constexpr unsigned short cDefaultPort = 80;

/// Qt's number for a system proxy that was named without one.
constexpr unsigned short cNoPort = std::numeric_limits<unsigned short>::max();

template <class T>
bool assign(T& field, const T& value) {
    if (field == value)
        return false;
    field = value;
    return true;
}

const QString& choose(const QString& first, const QString& second) {
    return first.isEmpty() ? second : first;
}

/// The stored password, none when there is no such attribute.
std::optional<QString> readPassword(const KySettings& settings) {
    // XML cannot hold it, so that no attribute can have this value.
    const QString missing(QChar(0xFFFF));
    const QString stored =
        settings.getAttribute(KyNetworkConnection::cSettingsPath, KyNetworkConnection::cSettingsEncryptedPwd, missing);
    if (stored == missing)
        return std::nullopt;
    return KyApplication::toQString(KyEncryption::decryptString(KyApplication::toKyString(stored), KyEncryption::cKey));
}

unsigned short toPort(unsigned int port) {
    return port <= std::numeric_limits<unsigned short>::max() ? static_cast<unsigned short>(port) : 0;
}

} // namespace

void KyNetworkConnection::setHttpProxy(const QString& host, unsigned short port, const QString& user,
                                       const QString& password) {
    const bool changes[] = {assign(mProxyHost, host), assign(mProxyPort, port), assign(mProxyUser, user),
                            assign(mProxyPassword, password)};
    if (std::ranges::find(changes, true) != std::end(changes))
        Q_EMIT proxyChanged();
}

void KyNetworkConnection::setHttpProxyHost(const QString& host) {
    setHttpProxy(host, mProxyPort, mProxyUser, mProxyPassword);
}

void KyNetworkConnection::setHttpProxyPort(unsigned short port) {
    setHttpProxy(mProxyHost, port, mProxyUser, mProxyPassword);
}

void KyNetworkConnection::setHttpProxyUser(const QString& user) {
    setHttpProxy(mProxyHost, mProxyPort, user, mProxyPassword);
}

void KyNetworkConnection::setHttpProxyPassword(const QString& password) {
    setHttpProxy(mProxyHost, mProxyPort, mProxyUser, password);
}

void KyNetworkConnection::setNoProxyAddress(const QString& list) {
    QString pattern = list;
    pattern.replace(',', '|').replace(';', '|').remove(' ');
    if (pattern == mNoProxy.pattern())
        return;
    mNoProxy.setPattern(pattern);
    mNoProxyMatcher = std::make_unique<KyNoProxyMatcher>(mNoProxy);
    Q_EMIT proxyChanged();
}

QString KyNetworkConnection::getNoProxyAddress() const {
    return mNoProxy.pattern().replace('|', ',');
}

bool KyNetworkConnection::useHttpProxy(const QString& url) const {
    return !mProxyHost.isEmpty() && mProxyPort != 0 && !mNoProxyMatcher->matches(url);
}

QNetworkProxy KyNetworkConnection::toQNetworkProxy(const QString& url) const {
    if (!useHttpProxy(url))
        return QNetworkProxy(QNetworkProxy::NoProxy);
    return QNetworkProxy(QNetworkProxy::HttpCachingProxy, mProxyHost, mProxyPort, mProxyUser, mProxyPassword);
}

void KyNetworkConnection::setUseSystemProxy(bool useSystem, bool updateNoProxy) {
    mUsesSystemProxy = useSystem;
    if (!useSystem)
        return;
    const QString testUrl = getTestUrl();
    if (!takeQtProxy(testUrl, updateNoProxy) && !takeSystemProxy(testUrl, updateNoProxy))
        setHttpProxy(QString(), cDefaultPort, mProxyUser, mProxyPassword);
}

QString KyNetworkConnection::getTestUrl() const {
    return getSettings()->getAttribute(cSettingsPath, cSettingsTestUrl, "http://www.wikipedia.org/index.html");
}

bool KyNetworkConnection::takeQtProxy(const QString& testUrl, bool updateNoProxy) {
    const QNetworkProxyQuery query(QUrl(testUrl), QNetworkProxyQuery::UrlRequest);
    const QList<QNetworkProxy> proxies = QNetworkProxyFactory::systemProxyForQuery(query);
    if (proxies.isEmpty())
        return false;
    const QNetworkProxy& proxy = proxies.first();
    const bool isFound = !proxy.hostName().isEmpty();
    if (isFound)
        setHttpProxy(proxy.hostName(), proxy.port() == cNoPort ? cDefaultPort : proxy.port(),
                     choose(proxy.user(), mProxyUser), choose(proxy.password(), mProxyPassword));
    if (updateNoProxy)
        setNoProxyAddress(QString());
    return isFound;
}

bool KyNetworkConnection::takeSystemProxy(const QString& testUrl, bool updateNoProxy) {
    const auto system = KySystemProxy::read(testUrl.toStdU16String());
    if (!system)
        return false;
    if (updateNoProxy)
        setNoProxyAddress(QString::fromStdU16String(system->bypass));
    const auto address = KySystemProxy::parse(system->proxy);
    if (!address)
        return false;
    setHttpProxy(QString::fromStdU16String(address->host), address->port, mProxyUser, mProxyPassword);
    return true;
}

void KyNetworkConnection::updateDataFromSettings() {
    const KySettings& settings = *getSettings();
    const auto read = [&settings](const QString& name, const auto& value) {
        return settings.getAttribute(cSettingsPath, name, value);
    };
    const bool isInitialized = read(cSettingsInitialize, mIsInitialized);
    const QString host = read(cSettingsProxyHost, mProxyHost);
    const unsigned short port = toPort(read(cSettingsProxyPort, static_cast<unsigned int>(mProxyPort)));
    const QString user = read(cSettingsProxyUser, mProxyUser);
    const QString password = readPassword(settings).value_or(mProxyPassword);
    const QString exclude = read(cSettingsExclude, getNoProxyAddress());
    const bool usesSystem = read(cSettingsUseSystemConfig, mUsesSystemProxy);

    setHttpProxy(host, port, user, password);
    setNoProxyAddress(exclude);
    setUseSystemProxy(usesSystem, false);
    setInitialized(isInitialized);
}
