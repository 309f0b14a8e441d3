// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyNetworkConnectionObject.h"

#include "KyNetworkConnection.h"

#include "KyQtLuaBinding.h"
#include "KyQtText.h"
#include "KyScriptEngine.h"
#include "KyScriptRunner_p.h"

#include "KyCallSignatures.h"
#include "KyCast.h"
#include "KyHolder.h"
#include "KyTypeBuilder.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

using KyApplication::toKyString;
using KyApplication::toQString;

KyNetworkConnectionObject* KyNetworkConnectionObject::msInstance = nullptr;
const KyType* KyNetworkConnectionObject::msType = nullptr;

namespace {

constexpr long long cReadBufferSize = 65536;
/// Milliseconds after which to look again whether scripts still run.
constexpr int cPause = 10;

KyNetworkConnection& getConnection() {
    return KyNetworkConnection::get();
}

/// A download waits in an event loop of its own: a script below it could not go on before its end.
bool isScriptRunning() {
    KyScriptEngine* const engine = KyScriptEngine::find();
    if (!engine)
        return false;
    const KyScriptRunner runner(*engine);
    return runner.isOpen() && !runner.isHostLevel();
}

std::string makeAbsolute(const std::string& directory) {
    const QDir base(QString::fromStdString(KyQtLuaBinding::getDataPath()));
    return toKyString(QDir::cleanPath(QDir(base.absolutePath()).absoluteFilePath(toQString(directory))));
}

QString getCancelledText() {
    return QCoreApplication::translate("KyNetworkConnectionObject", "The download was cancelled.");
}

KyConnectionState toState(int networkError) {
    const bool wantsUser = networkError == QNetworkReply::AuthenticationRequiredError ||
                           networkError == QNetworkReply::ProxyAuthenticationRequiredError;
    if (networkError == QNetworkReply::NoError)
        return KyConnectionState::Ready;
    return wantsUser ? KyConnectionState::AuthenticationRequired : KyConnectionState::Failed;
}

} // namespace

KyNetworkConnectionObject::KyNetworkConnectionObject() {
    listen();
}

KyNetworkConnectionObject::~KyNetworkConnectionObject() = default;

KyNetworkConnectionObject* KyNetworkConnectionObject::get() {
    if (!msInstance) {
        msInstance = new KyNetworkConnectionObject;
        msInstance->addReference();
    }
    return msInstance;
}

void KyNetworkConnectionObject::finalizeClass() {
    if (KyNetworkConnectionObject* const given = std::exchange(msInstance, nullptr)) {
        given->abandon();
        given->mReceiver.reset();
        given->removeReference();
    }
    finalizeType();
}

void KyNetworkConnectionObject::listen() {
    mReceiver = std::make_unique<QObject>();
    KyNetworkConnection* const connection = &getConnection();
    QObject::connect(connection, &KyNetworkConnection::downloadProgress, mReceiver.get(),
                     [this](qint64 received, qint64 total) { onProgress(received, total); });
    QObject::connect(connection, &KyNetworkConnection::proxyChanged, mReceiver.get(), [this] { onProxyChanged(); });
    QObject::connect(connection, &KyNetworkConnection::stateChanged, mReceiver.get(), [this] { onStateChanged(); });
}

/// One that the program runs for itself is none of the scripts' business.
void KyNetworkConnectionObject::onProgress(long long received, long long total) {
    if (!mRunning || mRunning->isCancelled)
        return;
    const KyHolder<KyNetworkConnectionObject> keep(this);
    mReceived = received;
    mTotal = total;
    notifyModified("Received");
    notifyModified("Total");
    downloadProgress.send(received, total);
}

void KyNetworkConnectionObject::onProxyChanged() {
    const KyHolder<KyNetworkConnectionObject> keep(this);
    for (const char* name : {"ProxyHost", "ProxyPort", "ProxyUser", "NoProxy"})
        notifyModified(name);
    proxyChanged.send();
}

void KyNetworkConnectionObject::onStateChanged() {
    const KyHolder<KyNetworkConnectionObject> keep(this);
    for (const char* name : {"State", "Message", "Busy"})
        notifyModified(name);
    stateChanged.send();
}

std::string KyNetworkConnectionObject::getState() const {
    return toKyString(getConnection().getStateString());
}

std::string KyNetworkConnectionObject::getMessage() const {
    return toKyString(getConnection().getUserMessage());
}

bool KyNetworkConnectionObject::isBusy() const {
    return getConnection().isBusy();
}

std::string KyNetworkConnectionObject::getProxyHost() const {
    return toKyString(getConnection().getHttpProxyHost());
}

void KyNetworkConnectionObject::setProxyHost(const std::string& host) {
    getConnection().setHttpProxyHost(toQString(host));
}

int KyNetworkConnectionObject::getProxyPort() const {
    return getConnection().getHttpProxyPort();
}

void KyNetworkConnectionObject::setProxyPort(int port) {
    if (port >= 0 && port <= std::numeric_limits<unsigned short>::max())
        getConnection().setHttpProxyPort(static_cast<unsigned short>(port));
}

std::string KyNetworkConnectionObject::getProxyUser() const {
    return toKyString(getConnection().getHttpProxyUser());
}

void KyNetworkConnectionObject::setProxyUser(const std::string& user) {
    getConnection().setHttpProxyUser(toQString(user));
}

void KyNetworkConnectionObject::setProxyPassword(const std::string& password) {
    getConnection().setHttpProxyPassword(toQString(password));
}

std::string KyNetworkConnectionObject::getNoProxy() const {
    return toKyString(getConnection().getNoProxyAddress());
}

void KyNetworkConnectionObject::setNoProxy(const std::string& list) {
    getConnection().setNoProxyAddress(toQString(list));
}

bool KyNetworkConnectionObject::getUseSystemProxy() const {
    return getConnection().getUseSystemProxy();
}

void KyNetworkConnectionObject::setUseSystemProxy(bool usesSystem) {
    getConnection().setUseSystemProxy(usesSystem, false);
}

bool KyNetworkConnectionObject::tryConnection(int timeoutMs, const std::string& url) {
    KyNetworkConnection& connection = getConnection();
    int error = QNetworkReply::NoError;
    connection.incBusy();
    const bool isReached =
        connection.tryConnection(static_cast<unsigned>(std::max(timeoutMs, 0)), toQString(url), &error, nullptr);
    connection.setState(toState(error), QString());
    connection.decBusy();
    return isReached;
}

KyNetworkConnectionObject::Request* KyNetworkConnectionObject::editRequest() {
    if (mNext)
        return &*mNext;
    return mRunning ? &*mRunning : nullptr;
}

bool KyNetworkConnectionObject::download(const std::string& url, const std::string& directory) {
    const bool isOurs = mRunning && mRunning->isCancelled;
    if (!mReceiver || mNext || (mRunning && !isOurs) || (getConnection().isDownloading() && !isOurs))
        return false;
    mNext = Request{url, makeAbsolute(directory)};
    mReceived = 0;
    mTotal = -1;
    notifyModified("Downloading");
    startLater(0);
    return true;
}

void KyNetworkConnectionObject::cancel() {
    Request* const request = editRequest();
    if (!request)
        return;
    request->isCancelled = true;
    if (!mNext)
        getConnection().cancelDownload();
}

void KyNetworkConnectionObject::abandon() {
    cancel();
    for (std::optional<Request>* request : {&mNext, &mRunning})
        if (*request)
            (*request)->isAbandoned = true;
}

void KyNetworkConnectionObject::startLater(int milliseconds) {
    QTimer::singleShot(milliseconds, mReceiver.get(), [this] { start(); });
}

/// A cancelled download may still be on its way out below this.
void KyNetworkConnectionObject::start() {
    if (!mNext)
        return;
    if (mRunning || isScriptRunning())
        return startLater(cPause);
    const KyHolder<KyNetworkConnectionObject> keep(this);
    mRunning = std::exchange(mNext, std::nullopt);
    std::string path;
    std::string error = toKyString(getCancelledText());
    if (!mRunning->isCancelled)
        load(path, error);
    finish(path, error);
}

void KyNetworkConnectionObject::load(std::string& path, std::string& error) {
    KyNetworkConnection& connection = getConnection();
    QString file;
    QString text;
    QNetworkReply::NetworkError code = QNetworkReply::OperationCanceledError;
    connection.incBusy();
    // Listeners of the state may have cancelled it.
    if (!mRunning->isCancelled)
        code = connection.downloadFile(toQString(mRunning->url), QDir(toQString(mRunning->directory)), file, text,
                                       cReadBufferSize, QString());
    const bool isCancelled = mRunning->isCancelled && code != QNetworkReply::NoError;
    connection.setState(isCancelled ? KyConnectionState::Ready : toState(code), isCancelled ? QString() : text);
    connection.decBusy();
    if (code == QNetworkReply::NoError)
        path = toKyString(file);
    if (!isCancelled)
        error = toKyString(text);
}

void KyNetworkConnectionObject::finish(const std::string& path, const std::string& error) {
    const bool isAbandoned = mRunning->isAbandoned;
    mRunning.reset();
    notifyModified("Downloading");
    if (!isAbandoned)
        downloadFinished.send(path, error);
}

void KyNetworkConnectionObject::initializeType() {
    if (msType)
        return;
    using M = KyNetworkConnectionObject;
    KyObject::initializeType();
    msType = KyTypeBuilder<M>("KyNetworkConnectionObject", KyObject::getType())
                 .attribute("State", &M::getState)
                 .attribute("Message", &M::getMessage)
                 .attribute("Busy", &M::isBusy)
                 .attribute("Downloading", &M::isDownloading)
                 .attribute("Received", &M::getReceived)
                 .attribute("Total", &M::getTotal)
                 .attribute("ProxyHost", &M::getProxyHost, &M::setProxyHost)
                 .attribute("ProxyPort", &M::getProxyPort, &M::setProxyPort)
                 .attribute("ProxyUser", &M::getProxyUser, &M::setProxyUser)
                 .attribute("NoProxy", &M::getNoProxy, &M::setNoProxy)
                 .attribute("UseSystemProxy", &M::getUseSystemProxy, &M::setUseSystemProxy)
                 .method("setProxyPassword", &M::setProxyPassword)
                 .method("tryConnection", &M::tryConnection)
                 .method("download", &M::download)
                 .method("cancel", &M::cancel)
                 .signal<&M::downloadProgress>("downloadProgress")
                 .signal<&M::downloadFinished>("downloadFinished")
                 .signal<&M::stateChanged>("stateChanged")
                 .signal<&M::proxyChanged>("proxyChanged")
                 .build();
    KyCallSignatures::add("KyNetworkConnectionObject",
                          {"download(url, directory)", "tryConnection(timeoutMs, url)",
                           "downloadProgress(received, total)", "downloadFinished(path, error)"});
}

void KyNetworkConnectionObject::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyNetworkConnectionObject::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyNetworkConnectionObject::getObjectType() const {
    return getType();
}

KyNetworkConnectionObject* KyNetworkConnectionObject::cast(KyObject* object) {
    return kyCast<KyNetworkConnectionObject>(object);
}
