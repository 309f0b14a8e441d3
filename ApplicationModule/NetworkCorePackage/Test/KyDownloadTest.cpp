// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNetworkFixture.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTimer>

#include <tuple>
#include <utility>
#include <vector>

#include <sys/stat.h>

namespace {

using Reply = QNetworkReply;

class KyDownloadTest : public KyNetworkTest {
protected:
    void useProxy(quint16 port, const QString& password) {
        mConnection.setHttpProxy(KyServerProcess::getAddress(), port, password.isEmpty() ? "" : "user", password);
        mConnection.setNoProxyAddress("");
    }
    /// Runs when the first bytes are here.
    template <class Action>
    void onProgress(Action action) {
        QObject::connect(&mConnection, &KyNetworkConnection::downloadProgress, &mConnection,
                         [this, action](qint64 received) {
                             if (received > 0 && !std::exchange(mIsDone, true))
                                 action();
                         });
    }

    /// Takes the server's certificate for one of a known authority, for the rest of the case.
    static void trust(const char* certificate) {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.addCaCertificate(QSslCertificate(msServer->read(certificate)));
        QSslConfiguration::setDefaultConfiguration(configuration);
    }
    ~KyDownloadTest() override { QSslConfiguration::setDefaultConfiguration(mSslConfiguration); }

    const QSslConfiguration mSslConfiguration = QSslConfiguration::defaultConfiguration();
    bool mIsDone = false;
};

TEST_F(KyDownloadTest, AnswersBecomeFilesOrErrors) {
    struct Row {
        const char* path;
        Reply::NetworkError error;
        const char* name;
        QByteArray content;
    };
    const QByteArray& content = msServer->getContent();
    const QByteArray text(200000, 't');
    const std::vector<Row> rows = {
        {"file.bin", Reply::NoError, "file.bin", content},
        {"file.bin?version=2/3#part", Reply::NoError, "file.bin", content},
        {"inside/", Reply::NoError, "index", "inside"},
        {"gzip/text.txt", Reply::NoError, "text.txt", text},
        {"empty", Reply::NoError, "empty", ""},
        {"to/absolute", Reply::NoError, "file.bin", content},
        {"to/relative", Reply::NoError, "file.bin", content},
        {"chain/50", Reply::NoError, "file.bin", content},
        {"to/itself", Reply::NoError, "itself", "none"},
        {"to/itself-relative", Reply::TooManyRedirectsError, "", ""},
        {"to/fragment", Reply::TooManyRedirectsError, "", ""},
        {"to/circle-a", Reply::TooManyRedirectsError, "", ""},
        {"to/disk", Reply::InsecureRedirectError, "", ""},
        {"to/ftp", Reply::InsecureRedirectError, "", ""},
        {"to/data", Reply::InsecureRedirectError, "", ""},
        {"401", Reply::AuthenticationRequiredError, "401", "none"},
        {"404", Reply::ContentNotFoundError, "404", "not here"},
        {"500", Reply::InternalServerError, "500", "none"},
        {"dropped", Reply::RemoteHostClosedError, "dropped", ""},
        {"truncated", Reply::RemoteHostClosedError, "truncated", "short"},
        {"late", Reply::NoError, "late", "late"},
        {"encoding", Reply::NoError, "encoding", "gzip, deflate"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        const Download result = load(msServer->getUrl(row.path));
        EXPECT_EQ(result.error, row.error) << result.text.toStdString();
        EXPECT_EQ(result.text.isEmpty(), row.error == Reply::NoError);
        EXPECT_EQ(list(), row.name);
        // Pages that the server words itself only have to be there.
        const bool isThere = row.content == "none" ? !read(row.name).isEmpty() : hash(row.name) == hashOf(row.content);
        EXPECT_TRUE(*row.name == 0 || (isThere && result.path == at(row.name)));
        QFile::remove(at(row.name));
    }
    EXPECT_FALSE(mConnection.isDownloading());
    EXPECT_TRUE(msServer->awaitRequests("\"GET /chain/", 51));
    EXPECT_EQ(msServer->countRequests("\"GET /gzip/"), 1);
    // What was there before gives way to nothing but the resource, or a part of it.
    for (const Row& row : rows) {
        const QString asked = QUrl(msServer->getUrl(row.path)).fileName();
        if (asked.isEmpty() || row.content == "none")
            continue;
        write(asked, "old");
        load(msServer->getUrl(row.path));
        const bool isNew = asked == row.name && (row.error == Reply::NoError || row.content == "short");
        EXPECT_EQ(hash(asked), hashOf(isNew ? row.content : "old")) << row.path;
    }
}

TEST_F(KyDownloadTest, NamesNeverLeaveTheDirectory) {
    // An address's path and the name that comes of it.
    QStringList rows = QString("=index a/=index a/b=b a%2Fb=b ..=index a/..%2F..%2Fb=b %2E%2E=index ..%2F..=index "
                               "%2E=index a%5C..%5Cb=b ..%5C..=index a%5C=index a%2F=index %2e%2e%5cb=b :x=:x "
                               "place:x=place:x ~=~ a%00b=a_b ..%00=.._ ...=... %FF%FE=\uFFFD\uFFFD "
                               "%E2%80%AE=\u202E")
                           .split(' ');
    rows << "with%20blank=with blank" << QString(300, 'x') + '=';
    QDir::setSearchPaths("place", {mDirectory.path()});
    for (const QString& row : rows) {
        SCOPED_TRACE(row.toStdString());
        const QString name = row.section('=', 1);
        const Download result = load(getRefusingUrl(row.section('=', 0, 0)));
        EXPECT_EQ(result.error, name.isEmpty() ? Reply::OperationCanceledError : Reply::ConnectionRefusedError);
        EXPECT_EQ(result.path, name.isEmpty() ? "" : at(name));
        EXPECT_EQ(list(), name);
        EXPECT_EQ(listOutside(), "in");
        QFile::remove(at(name));
    }
    for (const char* url : {"no.scheme/a/b", "//host/b", "b", "ht!tp:/b", "unknown://a/b"}) {
        EXPECT_NE(load(url).error, Reply::NoError) << url;
        EXPECT_EQ(list() + listOutside(), "bin") << url;
    }
}

TEST_F(KyDownloadTest, WhatCannotBeWrittenIsNotAskedFor) {
    QDir(at("")).mkdir("file.bin");
    write("target", "old");
    ASSERT_TRUE(QFile::link("target", at("linked")) && QFile::link("../missing", at("dangling")));
    ASSERT_EQ(::mkfifo(at("pipe").toLocal8Bit(), 0600), 0);
    const std::pair<QString, const char*> rows[] = {{at(""), "file.bin"},  {at("missing"), "file.bin"},
                                                    {"/proc", "file.bin"}, {at(""), "linked"},
                                                    {at(""), "dangling"},  {at(""), "pipe"}};
    for (const auto& [directory, name] : rows) {
        QString path = "before";
        QString text;
        const QString url = msServer->getUrl(QString("%1?never").arg(name));
        EXPECT_EQ(mConnection.downloadFile(url, QDir(directory), path, text, 0, ""), Reply::OperationCanceledError);
        EXPECT_EQ(text, "Unable to open " + QDir::cleanPath(directory) + '/' + name + " for writing.");
        EXPECT_EQ(path, "before");
        const QFileInfo there(directory + '/' + name);
        EXPECT_TRUE(directory != at("") || there.isSymbolicLink() || there.exists()) << name;
    }
    EXPECT_EQ(read("target") + listOutside().toUtf8(), "oldin");
    EXPECT_EQ(msServer->countRequests("?never"), 0);
}

TEST_F(KyDownloadTest, OnlyAWholeResourceReplacesAFile) {
    const QByteArray good = "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbody";
    const QByteArray answers[] = {"0 Odd\r\nContent-Length: 4\r\n\r\nbody",
                                  "101 Switching\r\nUpgrade: x\r\nConnection: upgrade\r\n\r\nxx",
                                  "102 Processing\r\n\r\n" + good,
                                  "204 No Content\r\n\r\n",
                                  "205 Reset\r\nContent-Length: 0\r\n\r\n",
                                  "206 Part\r\nContent-Range: bytes 0-3/9\r\nContent-Length: 4\r\n\r\nbody",
                                  "304 Not Modified\r\n\r\n",
                                  "304 Not Modified\r\nContent-Length: 100\r\n\r\n",
                                  "200 OK\r\nTransfer-Encoding: chunked\r\n\r\nnone\r\nbody\r\n0\r\n\r\n",
                                  "302 Found\r\nLocation: http://[bad\r\nContent-Length: 0\r\n\r\n"};
    write("file.bin", "old");
    for (const QByteArray& answer : answers) {
        KyRawServer server("HTTP/1.1 " + answer);
        const Download result = load(server.getUrl());
        EXPECT_EQ(result.error, answer.startsWith("302") ? Reply::ProtocolUnknownError : Reply::UnknownContentError)
            << answer.constData();
        EXPECT_FALSE(result.text.isEmpty());
        EXPECT_EQ(read("file.bin"), "old") << answer.constData();
        EXPECT_EQ(list(), "file.bin");
    }
}

TEST_F(KyDownloadTest, ProgressAndCookieAccompanyADownloadWithAnyReadBuffer) {
    const qint64 size = msServer->getContent().size();
    std::pair<qint64, qint64> last;
    QObject::connect(&mConnection, &KyNetworkConnection::downloadProgress, &mConnection,
                     [&last](qint64 received, qint64 total) {
                         last = {received, total};
                     });
    for (const long long bufferSize : {-5LL, 0LL, 1024LL, 65536LL, 1LL << 40}) {
        EXPECT_EQ(load(msServer->getUrl("file.bin"), bufferSize).error, Reply::NoError);
        EXPECT_EQ(hash("file.bin"), hashOf(msServer->getContent())) << bufferSize;
        EXPECT_EQ(std::exchange(last, {}), std::pair(size, size));
    }
    EXPECT_EQ(load(msServer->getUrl("cookie"), 0, "taste=s\u00fc\u00df").error, Reply::NoError);
    EXPECT_EQ(read("cookie"), "taste=s\xfc\xdf");
    EXPECT_EQ(load(msServer->getUrl("cookie"), 0, "taste=x\r\nX: y").error, Reply::NoError);
    EXPECT_EQ(read("cookie"), "taste=x");
    KyRawServer negative("HTTP/1.1 200 OK\r\nContent-Length: -5\r\n\r\nbody");
    load(negative.getUrl());
    EXPECT_GE(last.second, -1);
}

TEST_F(KyDownloadTest, ASecondDownloadInsideOfAnotherIsRefused) {
    Download second{};
    onProgress([&] {
        EXPECT_TRUE(mConnection.isDownloading());
        second = load(msServer->getUrl("text.txt?second"));
    });
    EXPECT_EQ(load(msServer->getUrl("file.bin")).error, Reply::NoError);
    EXPECT_EQ(second.error, Reply::OperationCanceledError);
    EXPECT_TRUE(!second.text.isEmpty() && second.path.isEmpty());
    EXPECT_EQ(hash("file.bin"), hashOf(msServer->getContent()));
    EXPECT_EQ(list(), "file.bin");
    EXPECT_EQ(msServer->countRequests("second"), 0);
}

TEST_F(KyDownloadTest, ACancelledDownloadLeavesNothing) {
    mConnection.cancelDownload();
    onProgress([this] { mConnection.cancelDownload(); });
    QElapsedTimer timer;
    timer.start();
    const Download result = load(msServer->getUrl("slow/file.bin"));
    EXPECT_EQ(result.error, Reply::OperationCanceledError);
    EXPECT_FALSE(result.text.isEmpty());
    EXPECT_EQ(list(), "");
    EXPECT_LT(timer.elapsed(), 5000) << "the whole file takes 7 s";
    EXPECT_EQ(load(msServer->getUrl("file.bin")).error, Reply::NoError);

    KyRawServer silent("");
    write("file.bin", "old");
    QTimer::singleShot(50, [this] { mConnection.cancelDownload(); });
    EXPECT_EQ(load(silent.getUrl()).error, Reply::OperationCanceledError);
    EXPECT_EQ(read("file.bin"), "old");

    QTimer::singleShot(0, [&] {
        QTimer::singleShot(50, [] { QCoreApplication::quit(); });
        EXPECT_EQ(load(silent.getUrl()).error, Reply::OperationCanceledError) << "a program that quits";
    });
    QCoreApplication::exec();
}

TEST_F(KyDownloadTest, BrokenAnswersAreErrors) {
    const QByteArray head = "HTTP/1.1 200 OK\r\n";
    struct Row {
        const char* name;
        QByteArray answer;
        bool isGood;
        QByteArray content;
    };
    const QByteArray body(1000000, 'b');
    std::vector<Row> rows = {
        {"too much", head + "Content-Length: 4\r\n\r\nbodybody", true, "body"},
        {"no length", head + "\r\n" + body, true, body},
        {"chunks", head + "Transfer-Encoding: chunked\r\n\r\n4\r\nbody\r\n0\r\n\r\n", true, "body"},
        {"encoded all the same", head + "Content-Encoding: deflate\r\n\r\n" + qCompress(body).mid(4), true, body},
        {"no HTTP", "SSH-2.0-x\r\n\r\n", false, ""},
        {"a megabyte of headers", head + "X: " + QByteArray(1 << 20, 'x') + "\r\nContent-Length: 4\r\n\r\nbody", true,
         "body"},
        {"many headers", head + QByteArray("X: y\r\n").repeated(5000) + "Content-Length: 4\r\n\r\nbody", true, "body"},
    };
    for (int tenth = 0; tenth < 10; ++tenth)
        rows.push_back({"a part", head + "Content-Length: 1000000\r\n\r\n" + body.left(tenth * 100000), false,
                        body.left(tenth * 100000)});
    for (const Row& row : rows) {
        KyRawServer server(row.answer);
        const Download result = load(server.getUrl(), 0);
        EXPECT_EQ(result.error == Reply::NoError, row.isGood) << row.name << result.error;
        EXPECT_EQ(result.text.isEmpty(), row.isGood) << row.name;
        EXPECT_EQ(hash("file.bin"), hashOf(row.content)) << row.name << read("file.bin").size();
        QFile::remove(at("file.bin"));
    }
}

TEST_F(KyDownloadTest, AClosedConnectionIsNoticedWhenNothingElseTellsIt) {
    const QByteArray body(300000, 'b');
    KyRawServer server("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n493e0\r\n" + body + "\r\n");
    QTimer::singleShot(20000, &mConnection, [this] { mConnection.cancelDownload(); });
    for (const long long bufferSize : {1024LL, 65536LL}) {
        EXPECT_EQ(load(server.getUrl(), bufferSize).error, Reply::RemoteHostClosedError) << bufferSize;
        EXPECT_EQ(hash("file.bin"), hashOf(body));
    }
}

TEST_F(KyDownloadTest, CertificatesAreChecked) {
    EXPECT_EQ(load(msServer->getSecureUrl("file.bin")).error, Reply::SslHandshakeFailedError);
    trust("own.pem");
    EXPECT_EQ(load(msServer->getSecureUrl("file.bin")).error, Reply::NoError);
    EXPECT_EQ(hash("file.bin"), hashOf(msServer->getContent()));
    trust("foreign.pem");
    write("text.txt", "old");
    EXPECT_EQ(load(msServer->getForeignUrl("text.txt")).error, Reply::SslHandshakeFailedError);
    EXPECT_EQ(read("text.txt"), "old");
}

TEST_F(KyDownloadTest, ProxiesAreAsked) {
    using Row = std::tuple<quint16, const char*, Reply::NetworkError>;
    const Row rows[] = {{msServer->getProxyPort(), "", Reply::NoError},
                        {msServer->getLockedProxyPort(), "Sesam123", Reply::NoError},
                        {msServer->getLockedProxyPort(), "Sesam124", Reply::ProxyAuthenticationRequiredError},
                        {msServer->getLockedProxyPort(), "", Reply::ProxyAuthenticationRequiredError},
                        {mFreePort, "Sesam123", Reply::ConnectionRefusedError}};
    for (const auto& [port, password, error] : rows) {
        const int nbRequests = msServer->countRequests("proxied GET");
        useProxy(port, password);
        EXPECT_EQ(load(msServer->getUrl("file.bin")).error, error) << port << password;
        EXPECT_TRUE(port == mFreePort || msServer->awaitRequests("proxied GET", nbRequests + 1));
        EXPECT_TRUE(error != Reply::NoError || hash("file.bin") == hashOf(msServer->getContent()));
    }
    mConnection.setNoProxyAddress(KyServerProcess::getAddress());
    EXPECT_EQ(load(msServer->getUrl("file.bin")).error, Reply::NoError);
    EXPECT_FALSE(msMessages.contains("Sesam"));
}

TEST_F(KyDownloadTest, SecureAddressesGoThroughATunnel) {
    KyServerProcess proxy;
    const quint16 port = KyServerProcess::findFreePort();
    proxy.write("tinyproxy.conf", "Port " + QByteArray::number(port) + "\nListen " +
                                      KyServerProcess::getAddress().toUtf8() +
                                      "\nTimeout 60\nBasicAuth user Sesam123\nLogFile \"" +
                                      proxy.at("tiny.log").toUtf8() + "\"\nLogLevel Connect\n");
    ASSERT_TRUE(proxy.launch("tinyproxy", {"-d", "-c", proxy.at("tinyproxy.conf")}, port));
    trust("own.pem");
    useProxy(port, "Sesam123");
    EXPECT_EQ(load(msServer->getSecureUrl("file.bin")).error, Reply::NoError);
    EXPECT_EQ(hash("file.bin"), hashOf(msServer->getContent()));
    EXPECT_TRUE(proxy.read("tiny.log").contains("CONNECT " + KyServerProcess::getAddress().toUtf8()));
    EXPECT_TRUE(mConnection.tryConnection(5000, msServer->getSecureUrl("file.bin"), nullptr, nullptr));
    useProxy(port, "wrong");
    EXPECT_NE(load(msServer->getSecureUrl("file.bin")).error, Reply::NoError);
}

TEST_F(KyDownloadTest, PasswordsAppearNowhere) {
    const auto withUser = [](QString url, const QString& user) { return url.replace("//", "//" + user + '@'); };
    EXPECT_EQ(load(withUser(msServer->getUrl("locked"), "user:Sesam123")).error, Reply::NoError);
    QString texts;
    for (const char* user : {"user:Secret1", "user:Sec%20ret1", "Secret1", "u:Secret1%40x", "u:Secret1%2F"}) {
        for (const char* path : {"locked", "404", "500", "dropped", "to/404", "to/circle-a", "to/disk"})
            texts += load(withUser(msServer->getUrl(path), user)).text + '\n';
        texts += load(withUser(getRefusingUrl("x"), user)).text + load(withUser("unknown://a/b", user)).text +
                 load(withUser("http://no such host/x", user)).text + load(withUser("file:///missing", user)).text;
    }
    EXPECT_TRUE(texts.contains("not found", Qt::CaseInsensitive)) << texts.toStdString();
    EXPECT_FALSE(texts.contains(QRegExp("Sec|Sesam|ret1"))) << texts.toStdString();
    EXPECT_EQ(msMessages, "");
}

TEST_F(KyDownloadTest, AProbeTellsWhatItFound) {
    KyRawServer silent("");
    using Row = std::tuple<QString, unsigned int, bool, int, int>;
    const Row rows[] = {{msServer->getUrl("file.bin"), 20000, true, 0, 200},
                        {msServer->getUrl("to/absolute"), 20000, true, 0, 302},
                        {msServer->getUrl("404"), 4000000000U, false, 203, 404},
                        {msServer->getUrl("500"), 20000, false, 401, 500},
                        {msServer->getUrl("file.bin"), 0, false, 5, 0},
                        {getRefusingUrl("x"), 20000, false, 1, 0},
                        {silent.getUrl(), 150, false, 5, 0},
                        {"", 20000, false, 301, 0}};
    int nbTurns = 0;
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &mConnection,
                     [&nbTurns] { ++nbTurns; });
    for (const auto& [url, timeout, isReached, error, status] : rows) {
        SCOPED_TRACE(url.toStdString());
        std::pair found(-1, -1);
        QElapsedTimer timer;
        timer.start();
        EXPECT_EQ(mConnection.tryConnection(timeout, url, &found.first, &found.second), isReached);
        EXPECT_EQ(found, std::pair(error, status));
        EXPECT_TRUE(url != silent.getUrl() || timer.elapsed() >= 150);
    }
    EXPECT_LT(nbTurns, 1000) << "waiting takes the whole processor";
    EXPECT_TRUE(mConnection.tryConnection(20000, msServer->getUrl("file.bin"), nullptr, nullptr));
}

} // namespace
