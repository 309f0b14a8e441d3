// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapter.h"

#include "KyDebugAdapterJson_p.h"
#include "KyDebugAdapterServer_p.h"
#include "KyDebugAdapterSession_p.h"
#include "KyLuaDebugger.h"
#include "KyScriptDebugger.h"
#include "KyScriptEngine.h"

#include "KyObjectReference.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThread>

#include <deque>
#include <utility>

namespace {

/// What scripts print is left out while the client has so much to take.
constexpr qint64 cMaxUnsentOutput = qint64(8) * 1024 * 1024;

struct Received {
    int client;
    QJsonObject message;
    QString error;
    int size;
};

/// For engines whose host has no debugger of its own.
class Waiter : public KyLuaDebugger {
public:
    void wait() override { QCoreApplication::processEvents(); }
};

bool isOutput(const QJsonObject& message) {
    return message.value("event") == QLatin1String("output");
}

} // namespace

struct KyDebugAdapter::Private : public KyHasSlots {
    Private(KyDebugAdapter& adapter, KyScriptEngine& scriptEngine)
        : facade(adapter)
        , engine(scriptEngine)
        , reference(&scriptEngine) {
        engine.connectModified(this, &Private::onEngineModified);
        engine.editDebugger().stoppedSignal.connect(this, &Private::onStopOrContinue);
        engine.editDebugger().continuedSignal.connect(this, &Private::onStopOrContinue);
    }

    bool start(quint16 port);
    void listenTo(int start);
    void stop();
    void beginSession(int client);
    void endSession();
    void take(const Received& received);
    void answer(const Received& received);
    void tellReady();
    void onStopOrContinue();
    void send(QJsonObject message);
    void onEngineModified(KyObject*, KyObjectModificationType type, const std::string&, int);

    KyDebugAdapter& facade;
    KyScriptEngine& engine;
    KyObjectReference reference;
    Waiter waiter;
    QThread thread;
    /// Lives in the thread, and ends with it.
    KyDebugAdapterServer* server = nullptr;
    std::shared_ptr<KyDebugAdapterSession> session;
    int nbStarts = 0;
    int client = 0;
    int nbSent = 0;
    bool isOutputLeftOut = false;
    bool isReadyTold = false;
    QString error;
    /// What came while a request was being answered, which may run the event loop.
    std::deque<Received> waiting;
    bool isAnswering = false;
};

KyDebugAdapter::KyDebugAdapter(KyScriptEngine& engine, QObject* parent)
    : QObject(parent)
    , mPrivate(std::make_unique<Private>(*this, engine)) {}

KyDebugAdapter::~KyDebugAdapter() {
    close();
}

bool KyDebugAdapter::listen(quint16 port) {
    mPrivate->error.clear();
    if (mPrivate->server)
        mPrivate->error = tr("The debugger listens already.");
    else if (!mPrivate->reference)
        mPrivate->error = tr("The script engine has ended.");
    else
        return mPrivate->start(port);
    return false;
}

quint16 KyDebugAdapter::getPort() const {
    return mPrivate->server ? mPrivate->server->getPort() : quint16(0);
}

QString KyDebugAdapter::getErrorText() const {
    return mPrivate->error;
}

void KyDebugAdapter::close() {
    if (mPrivate->server)
        mPrivate->stop();
}

bool KyDebugAdapter::hasClient() const {
    return mPrivate->session != nullptr;
}

void KyDebugAdapter::stopAtEntry() {
    if (const auto session = mPrivate->session; session && session->isReady() && session->isAttached())
        session->stopAtEntry();
}

bool KyDebugAdapter::Private::start(quint16 port) {
    KyScriptDebugger& debugger = engine.editDebugger();
    server = new KyDebugAdapterServer([&debugger] { debugger.pause(); }, [&debugger] { debugger.interrupt(); });
    server->moveToThread(&thread);
    connect(&thread, &QThread::finished, server, &QObject::deleteLater);
    listenTo(++nbStarts);
    thread.start();
    bool isListening = false;
    QMetaObject::invokeMethod(
        server, [&] { isListening = server->listen(port, error); }, Qt::BlockingQueuedConnection);
    if (!isListening)
        stop();
    return isListening;
}

/// What a server told before it was stopped may be heard afterwards, and is void then.
void KyDebugAdapter::Private::listenTo(int start) {
    const auto isVoid = [this, start] { return !server || start != nbStarts; };
    connect(server, &KyDebugAdapterServer::connected, &facade, [=, this](int number) {
        if (!isVoid())
            beginSession(number);
    });
    connect(server, &KyDebugAdapterServer::dropped, &facade, [=, this](int number) {
        if (isVoid())
            return;
        server->noteDrop();
        if (number == client)
            endSession();
    });
    connect(server, &KyDebugAdapterServer::received, &facade,
            [=, this](int number, const QJsonObject& message, const QString& why, int size) {
                if (!isVoid())
                    take({number, message, why, size});
            });
}

void KyDebugAdapter::Private::stop() {
    const QPointer<KyDebugAdapter> guard(&facade);
    if (session)
        session->tellEnd();
    endSession();
    if (!guard)
        return;
    KyDebugAdapterServer* const former = std::exchange(server, nullptr);
    if (!former)
        return;
    QMetaObject::invokeMethod(
        former, [former] { former->close(); }, Qt::BlockingQueuedConnection);
    thread.quit();
    thread.wait();
    waiting.clear();
}

void KyDebugAdapter::Private::beginSession(int number) {
    client = number;
    nbSent = 0;
    isOutputLeftOut = false;
    isReadyTold = false;
    if (!engine.getLuaDebugger())
        engine.setLuaDebugger(&waiter);
    session = std::make_shared<KyDebugAdapterSession>(
        engine, [this](const QJsonObject& message) { send(message); },
        [this] { return server && server->isStopComing(); });
    facade.clientConnected();
}

void KyDebugAdapter::Private::endSession() {
    if (!session)
        return;
    server->setStopping(false);
    const KyLuaDebugger* const host = engine.getLuaDebugger();
    std::exchange(session, nullptr)->end(host && host != &waiter);
    server->postEnd(client);
    if (engine.getLuaDebugger() == &waiter)
        engine.setLuaDebugger(nullptr);
    facade.clientDisconnected();
}

void KyDebugAdapter::Private::take(const Received& received) {
    waiting.push_back(received);
    if (isAnswering)
        return;
    const QPointer<KyDebugAdapter> guard(&facade);
    isAnswering = true;
    while (!waiting.empty()) {
        const Received next = std::move(waiting.front());
        waiting.pop_front();
        answer(next);
        if (!guard)
            return;
    }
    isAnswering = false;
}

void KyDebugAdapter::Private::answer(const Received& received) {
    const QPointer<KyDebugAdapter> guard(&facade);
    server->noteTaken(received.message);
    if (const auto current = session; current && received.client == client) {
        if (received.error.isEmpty())
            current->handle(received.message);
        else
            send(kyDebugResponse({}, {}, received.error));
        if (!guard)
            return;
        onStopOrContinue();
        if (session && session->hasEnded())
            endSession();
        else
            tellReady();
        if (!guard)
            return;
    }
    if (server)
        server->noteHandled(received.message, received.size);
}

void KyDebugAdapter::Private::tellReady() {
    if (session && session->isReady() && !std::exchange(isReadyTold, true))
        facade.clientReady(session->isAttached());
}

/// A pause that comes while a script stands still must not stop it again later.
void KyDebugAdapter::Private::onStopOrContinue() {
    if (server && reference)
        server->setStopping(session && session->isAttached() && !engine.editDebugger().isStopped());
}

void KyDebugAdapter::Private::send(QJsonObject message) {
    if (!server)
        return;
    if (isOutput(message) && server->getNbUnsent() > cMaxUnsentOutput) {
        if (std::exchange(isOutputLeftOut, true))
            return;
        message = kyDebugOutput("important", "(output is left out, it comes faster than it is taken)\n");
    } else if (isOutput(message)) {
        isOutputLeftOut = false;
    }
    message["seq"] = ++nbSent;
    server->post(client, message);
}

void KyDebugAdapter::Private::onEngineModified(KyObject*, KyObjectModificationType type, const std::string&, int) {
    if (type == eObjectEnding)
        facade.close();
}
