// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <QObject>
#include <QString>

#include <memory>

class KyScriptEngine;

/// Serves the debugger of a script engine to an editor that speaks the Debug Adapter Protocol, over TCP on this
/// machine's loopback alone. One client at a time; a further one is told so and let go.
///
/// While a client is attached the engine has its debug hook; when the client goes, its breakpoints go with it and a
/// script that stands still runs on.
///
/// Lives in the thread of the engine and needs its event loop. While a script stands still, the engine calls its
/// KyLuaDebugger over and over, and that one has to process events: the host's own where it has set one, such as by
/// QCoreApplication::processEvents(); else the adapter, which sets its own for as long as a client is connected.
/// Requests are answered from these events, so an operation of the engine may return to its caller only when the
/// client lets the script run on. The engine outlives the adapter, or the adapter serves nothing any more.
///
/// ```
/// KyDebugAdapter adapter(KyScriptEngine::get());
/// if (!adapter.listen(4711))
///     std::cerr << adapter.getErrorText().toStdString() << '\n';
/// ```
class KYAPPLICATION_EXPORT KyDebugAdapter : public QObject {
    Q_OBJECT

public:
    /// The engine outlives the adapter; the parent owns it.
    explicit KyDebugAdapter(KyScriptEngine& engine, QObject* parent = nullptr);
    /// As close().
    ~KyDebugAdapter() override;

    /// Waits for clients on 127.0.0.1; 0 takes any free port. False, with the error text, when the port cannot be had
    /// or it listens already.
    bool listen(quint16 port = 0);
    /// 0 while it does not listen.
    quint16 getPort() const;
    /// Why the last listen() failed.
    QString getErrorText() const;
    /// Lets the client go and gives the port back, at once. Nothing when it does not listen.
    void close();
    /// True while a debugger is connected.
    bool hasClient() const;
    /// Stops at the next line that runs, and tells the client that scripts begin there. Nothing without a client that
    /// is ready and debugs.
    void stopAtEntry();

Q_SIGNALS:
    /// After a client's connection has been made, before its first request.
    void clientConnected();
    /// When it has said all that it wants to set before scripts run. False where it wants to see output alone, so that
    /// nobody would let a script go on that stops.
    void clientReady(bool isDebugging);
    /// After its breakpoints are gone and the script runs on.
    void clientDisconnected();

private:
    struct Private;
    std::unique_ptr<Private> mPrivate;
};
