// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHttpServer.h"

#include <QFile>
#include <QRandomGenerator>
#include <QThread>

#include <utility>

namespace {

QByteArray makeContent() {
    QByteArray content(3000017, 0);
    QRandomGenerator generator(1);
    for (char& byte : content)
        byte = static_cast<char>(generator.generate());
    return content;
}

} // namespace

KyHttpServer::KyHttpServer()
    : mContent(makeContent()) {
    write("www/file.bin", mContent);
    write("www/text.txt", QByteArray(200000, 't'));
    write("www/inside/index.html", "inside");
    makeCertificate("own", getAddress());
    makeCertificate("foreign", "127.0.0.1");
    write("nginx.conf", makeConfiguration());
    const QString program =
        QFile::exists("/usr/sbin/nginx") ? QStringLiteral("/usr/sbin/nginx") : QStringLiteral("nginx");
    mIsReady = launch(program, {"-p", at(""), "-e", at("error.log"), "-c", at("nginx.conf")}, mPort);
}

bool KyHttpServer::awaitRequests(const QByteArray& request, int count) const {
    for (int i = 0; i < 1000 && countRequests(request) < count; ++i)
        QThread::msleep(5);
    return countRequests(request) >= count;
}

QString KyHttpServer::makeUrl(const QString& scheme, quint16 port, const QString& path) {
    return QStringLiteral("%1://%2:%3/%4").arg(scheme, getAddress()).arg(port).arg(path);
}

void KyHttpServer::makeCertificate(const QString& name, const QString& address) const {
    QProcess tool;
    tool.start("openssl", {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                           "-days", "2", "-subj", "/CN=KyHttpServer", "-addext", "subjectAltName=IP:" + address,
                           "-keyout", at(name + ".key"), "-out", at(name + ".pem"), "-batch"});
    if (!tool.waitForFinished() || tool.exitCode() != 0)
        qFatal("openssl made no certificate: %s", tool.readAllStandardError().constData());
}

QByteArray KyHttpServer::makeConfiguration() const {
    QFile file(QStringLiteral(KY_TEST_DATA_DIR "/nginx.conf.in"));
    QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const std::pair<const char*, quint16> ports[] = {{"PORT_PLAIN", mPort},
                                                     {"PORT_TLS", mSecurePort},
                                                     {"PORT_FOREIGN", mForeignPort},
                                                     {"PORT_PROXY", mProxyPort},
                                                     {"PORT_LOCKED", mLockedProxyPort}};
    for (const auto& [name, port] : ports)
        text.replace(name, QByteArray::number(port));
    QByteArray chain;
    for (int i = 1; i <= 50; ++i)
        chain += QStringLiteral("location = /chain/%1 { return 302 %2; }\n").arg(i).arg(i - 1).toUtf8();
    return text.replace("CHAIN", chain).replace("ADDRESS", getAddress().toUtf8());
}
