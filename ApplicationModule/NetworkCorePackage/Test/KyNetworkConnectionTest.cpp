// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNetworkFixture.h"

#include "KySettings.h"
#include "KySystemProxy.h"

#include "KyQtText.h"

#include "KyEncryption.h"

#include <QSignalSpy>

#include <tuple>

namespace {

/// Without a server.
class KyNetworkConnectionTest : public KyNetworkTest {
protected:
    static void SetUpTestSuite() {}
    static void TearDownTestSuite() {}
    void SetUp() override {}

    void setSetting(const QString& name, const QString& value) {
        mConnection.editSettings()->setAttribute(KyNetworkConnection::cSettingsPath, name, value);
    }
    /// "user:password@host:port exceptions".
    QString describe() const {
        return QStringLiteral("%1:%2@%3:%4 %5")
            .arg(mConnection.getHttpProxyUser(), mConnection.getHttpProxyPassword(), mConnection.getHttpProxyHost())
            .arg(mConnection.getHttpProxyPort())
            .arg(mConnection.getNoProxyAddress());
    }
    static QString encrypt(const QString& text) {
        return KyApplication::toQString(
            KyEncryption::encryptString(KyApplication::toKyString(text), KyEncryption::cKey));
    }

    QSignalSpy mProxyChanges{&mConnection, &KyNetworkConnection::proxyChanged};
    QSignalSpy mStateChanges{&mConnection, &KyNetworkConnection::stateChanged};
};

TEST_F(KyNetworkConnectionTest, OneConnectionServesTheProcessAndNamesItsStates) {
    EXPECT_EQ(&KyNetworkConnection::get(), &KyNetworkConnection::get());
    EXPECT_EQ(describe(), ":@:80 localhost");
    EXPECT_TRUE(mConnection.getUseSystemProxy() && mConnection.allowNegotiations());
    EXPECT_FALSE(mConnection.allowSSLUnsafe() || mConnection.isInitialized() || mConnection.isBusy());
    QString texts;
    for (int state = -2; state <= 3; ++state)
        texts += KyNetworkConnection::getStateString(static_cast<KyConnectionState>(state)).section(": ", 1) + '|';
    EXPECT_EQ(texts, "Unkown error|Busy|Ready|Failed|Authentication required|Unkown error|");
}

TEST_F(KyNetworkConnectionTest, ObserversHearOfEffectiveStatesOnly) {
    const auto expect = [this](KyConnectionState state, const QString& message, int nbSignals) {
        EXPECT_EQ(mConnection.getState(), state);
        EXPECT_EQ(mConnection.getUserMessage(), message);
        EXPECT_EQ(mStateChanges.count(), nbSignals);
    };
    mConnection.decBusy();
    expect(KyConnectionState::Ready, "", 0);
    mConnection.setState(KyConnectionState::Ready, "new words");
    expect(KyConnectionState::Ready, "new words", 0);
    mConnection.incBusy();
    mConnection.incBusy();
    expect(KyConnectionState::Busy, "", 1);
    mConnection.setState(KyConnectionState::Failed, "broken");
    mConnection.decBusy();
    expect(KyConnectionState::Busy, "", 1);
    mConnection.decBusy();
    mConnection.decBusy();
    expect(KyConnectionState::Failed, "broken", 2);
    EXPECT_EQ(mConnection.getStateString(), "Connection: Failed");
}

TEST_F(KyNetworkConnectionTest, AProxyChangesOnce) {
    mConnection.setHttpProxy("h", 1, "u", "p");
    mConnection.setHttpProxy("h", 1, "u", "p");
    EXPECT_EQ(mProxyChanges.count(), 1);
    mConnection.setHttpProxyHost("i");
    mConnection.setHttpProxyPort(2);
    mConnection.setHttpProxyUser("v");
    mConnection.setHttpProxyPassword("q");
    mConnection.setHttpProxyPassword("q");
    EXPECT_EQ(mProxyChanges.count(), 5);
    EXPECT_EQ(describe(), "v:q@i:2 localhost");
}

TEST_F(KyNetworkConnectionTest, ExceptionsAreSearchedForWhatTheyAre) {
    using Row = std::tuple<const char*, const char*, const char*>;
    const Row rows[] = {
        {"localhost", "http://a/localhost/b", "http://a/b"},
        {"one, two; three", "http://two/", "http://four/"},
        {"", "", "http://localhost/"},
        {"localhost; 127.0.0.1;", "http://127.0.0.1/", "http://a/"},
        {";,;", "", "http://a/"},
        {"localhost,*.corp.example", "http://x.corp.example/", "http://corp/"},
        {"localhost,*.corp.example", "http://localhost/", "http://example/"},
        {"[::1]", "http://[::1]:80/", "http://a:80/"},
        {"[fe80::1%eth0]:80", "http://[fe80::1%eth0]:80/", "http://a:80/"},
        {"<local>", "http://intranet/a.b", "http://www.example/"},
        {"<local>,10\\.", "http://10.1.2.3/", "http://[::1]/"},
        {"(one|two)$,", "http://a/two", "http://two/b"},
        {"x[|]y,", "http://a/x|y", "http://a/xy"},
        {"a\\|b,c;", "http://c/", "http://b/"},
        {"[x,yy", "http://a/[x", "http://a/x"},
        {".*", "http://a/", ""},
        {"Case", "http://Case/", "http://case/"},
    };
    mConnection.setHttpProxy("proxy", 8080, "u", "p");
    for (const auto& [list, direct, proxied] : rows) {
        mConnection.setNoProxyAddress(list);
        EXPECT_TRUE(*direct == 0 || !mConnection.useHttpProxy(direct)) << list;
        EXPECT_TRUE(*proxied == 0 || mConnection.useHttpProxy(proxied)) << list;
    }
    mConnection.setNoProxyAddress("(a*)\\1\\1b");
    EXPECT_TRUE(mConnection.useHttpProxy("http://" + QString(20000, 'a') + "/b")) << "only the beginning is searched";
    mConnection.setNoProxyAddress("one, two; three");
    EXPECT_EQ(mConnection.getNoProxyAddress(), "one,two,three");
    const int nbChanges = mProxyChanges.count();
    mConnection.setNoProxyAddress("one ;two,three");
    EXPECT_EQ(mProxyChanges.count(), nbChanges);
}

TEST_F(KyNetworkConnectionTest, AProxyIsACachingOneOrNone) {
    using Proxy = QNetworkProxy;
    mConnection.setHttpProxy("proxy", 8080, "u", "p");
    EXPECT_EQ(mConnection.toQNetworkProxy("https://a/"), Proxy(Proxy::HttpCachingProxy, "proxy", 8080, "u", "p"));
    EXPECT_EQ(mConnection.toQNetworkProxy("http://localhost/"), Proxy(Proxy::NoProxy));
    mConnection.setHttpProxyPort(0);
    EXPECT_FALSE(mConnection.useHttpProxy("http://a/"));
    mConnection.setHttpProxy("", 80, "u", "p");
    EXPECT_EQ(mConnection.toQNetworkProxy("http://a/"), Proxy(Proxy::NoProxy));
}

TEST_F(KyNetworkConnectionTest, SettingsAreReadWithTheValuesOfNowForDefaults) {
    mConnection.setUseSystemProxy(false, false);
    mConnection.setHttpProxy("h", 1, "u", "p");
    mConnection.updateDataFromSettings();
    EXPECT_EQ(describe(), "u:p@h:1 localhost");
    const std::tuple<QString, QString, const char*> rows[] = {
        {"host", "proxy", "u:p@proxy:1 localhost"},
        {"port", "8080", "u:p@proxy:8080 localhost"},
        {"port", "70000", "u:p@proxy:0 localhost"},
        {"port", "x", "u:p@proxy:0 localhost"},
        {"user", "me", "me:p@proxy:0 localhost"},
        {"passwd", encrypt("s\u00e9same"), "me:s\u00e9same@proxy:0 localhost"},
        {"exclude", "a; b", "me:s\u00e9same@proxy:0 a,b"},
        {"passwd", "nonsense", "me:@proxy:0 a,b"},
    };
    for (const auto& [name, value, description] : rows) {
        setSetting(name, value);
        mConnection.updateDataFromSettings();
        EXPECT_EQ(describe(), description);
    }
    setSetting("initialize", "true");
    setSetting("useSystemConfiguration", "true");
    mConnection.updateDataFromSettings();
    EXPECT_TRUE(mConnection.isInitialized() && mConnection.getUseSystemProxy());
    EXPECT_EQ(describe(), "me:@:80 a,b");
}

TEST_F(KyNetworkConnectionTest, TheSystemsProxyIsTaken) {
    const std::tuple<const char*, bool, const char*> rows[] = {
        {"http://h:8080", false, "u:p@h:8080 localhost"},
        {"http://h", false, "u:p@h:80 localhost"},
        {"http://v:q@h:3128", true, "v:q@h:3128 "},
        {"", false, "u:p@:80 localhost"},
    };
    for (const auto& [variable, updateNoProxy, description] : rows) {
        qputenv("http_proxy", variable);
        mConnection.setHttpProxy("old", 1, "u", "p");
        mConnection.setNoProxyAddress("localhost");
        mConnection.setUseSystemProxy(true, updateNoProxy);
        EXPECT_EQ(describe(), description) << variable;
    }
    mConnection.setHttpProxy("old", 1, "u", "p");
    mProxyChanges.clear();
    mConnection.setUseSystemProxy(false, true);
    EXPECT_EQ(describe(), "u:p@old:1 localhost");
    qunsetenv("http_proxy");
    mConnection.setHttpProxy("", 80, "u", "p");
    mConnection.setUseSystemProxy(true, false);
    EXPECT_EQ(mProxyChanges.count(), 1);
}

TEST(KySystemProxyTest, AProxyTextIsAHostAndAPort) {
    const QStringList rows =
        QString("proxy:8080=proxy 8080|a:1:2=a 2|http:a:1;https:b:2=http 2|a:65535=a 65535|a:65536=|"
                "a:99999999999=|a:x=|a:=|a: 1=|a=|:8080=|=")
            .split('|');
    for (const QString& row : rows) {
        const auto address = KySystemProxy::parse(row.section('=', 0, 0).toStdU16String());
        const QString found =
            address ? QString("%1 %2").arg(QString::fromStdU16String(address->host)).arg(address->port) : QString();
        EXPECT_EQ(found, row.section('=', 1)) << row.toStdString();
    }
}

} // namespace
