// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBenchmark.h"

#include "KyServerProcess.h"

#include "KyNetworkConnection.h"

#include <QEventLoop>
#include <QFile>
#include <QNetworkAccessManager>
#include <QProcess>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr qint64 cSize = qint64(1) << 30;
constexpr qint64 cReadBufferSize = 65536;

void check(bool isDone, const char* what) {
    if (isDone)
        return;
    std::fprintf(stderr, "kybench: %s failed\n", what);
    std::exit(1);
}

constexpr char cConfiguration[] = R"(
daemon off; master_process off; pid nginx.pid; error_log error.log;
events { }
http {
  access_log off; sendfile on; root .;
  client_body_temp_path body; proxy_temp_path proxy; fastcgi_temp_path fcgi; uwsgi_temp_path uwsgi; scgi_temp_path scgi;
  server { listen ADDRESS:PORT; }
}
)";

/// A server with a large file, and a place for what is loaded, in memory where that is possible.
struct Site {
    Site() {
        QFile file(server.at("large.bin"));
        check(file.open(QIODevice::WriteOnly) && file.resize(cSize), "making a large file");
        server.write("nginx.conf", QByteArray(cConfiguration)
                                       .replace("ADDRESS", KyServerProcess::getAddress().toUtf8())
                                       .replace("PORT", QByteArray::number(port)));
        check(server.launch("/usr/sbin/nginx",
                            {"-p", server.at(""), "-e", server.at("error.log"), "-c", server.at("nginx.conf")}, port),
              "starting nginx");
    }

    const quint16 port = KyServerProcess::findFreePort();
    KyServerProcess server;
    const QString url = QStringLiteral("http://%1:%2/large.bin").arg(KyServerProcess::getAddress()).arg(port);
    const QTemporaryDir directory{QFileInfo("/dev/shm").isWritable() ? "/dev/shm/kybench-XXXXXX"
                                                                     : QDir::tempPath() + "/kybench-XXXXXX"};
};

void checkFile(const QString& path) {
    check(QFileInfo(path).size() == cSize && QFile::remove(path), "loading a file");
}

void load(const Site& site) {
    QString path;
    QString error;
    KyNetworkConnection::get().downloadFile(site.url, QDir(site.directory.path()), path, error, cReadBufferSize, "");
    checkFile(path);
}

/// As Qt's own documentation does it.
void loadWithQt(const Site& site) {
    QFile file(site.directory.filePath("peer.bin"));
    check(file.open(QIODevice::WriteOnly), "opening a file");
    QNetworkAccessManager manager;
    const std::unique_ptr<QNetworkReply> reply(manager.get(QNetworkRequest(QUrl(site.url))));
    reply->setReadBufferSize(cReadBufferSize);
    QEventLoop loop;
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &file, [&] { file.write(reply->readAll()); });
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    file.write(reply->readAll());
    file.close();
    checkFile(file.fileName());
}

void loadWithCurl(const Site& site) {
    const QString path = site.directory.filePath("peer.bin");
    check(QProcess::execute("curl", {"--silent", "--noproxy", "*", "--output", path, site.url}) == 0, "curl");
    checkFile(path);
}

template <void (*load)(const Site&)>
std::function<void(long)> repeat(const std::shared_ptr<Site>& site) {
    return [site](long count) {
        for (long i = 0; i < count; ++i)
            load(*site);
    };
}

template <void (*loadPeer)(const Site&)>
KyBenchmarkSides prepare() {
    const auto site = std::make_shared<Site>();
    return {repeat<&load>(site), repeat<loadPeer>(site), site};
}

} // namespace

std::vector<KyBenchmark> getNetworkBenchmarks() {
    using Gate = KyBenchmark::Gate;
    return {
        {"download of 1 GiB", "bare QNetworkReply, same buffer, to a file", 1.03, Gate::eTime, 1,
         &prepare<&loadWithQt>},
        {"download of 1 GiB, by itself", "curl", 1.5, Gate::eTime, 1, &prepare<&loadWithCurl>},
    };
}
