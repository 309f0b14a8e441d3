// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyDebugAdapterSources_p.h"

#include "KySignal.h"

#include <QJsonObject>
#include <QString>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

class KyScriptLines;
class KyScriptDebugger;
class KyScriptEngine;

/// One client of the debug adapter: answers its requests from the engine's debugger and tells it what happens there.
/// Knows nothing of connections.
class KyDebugAdapterSession : public KyHasSlots, public std::enable_shared_from_this<KyDebugAdapterSession> {
public:
    using Send = std::function<void(const QJsonObject& message)>;

    /// A stop is told after the pause, if `isStopComing` tells of one, that has not been answered yet.
    KyDebugAdapterSession(KyScriptEngine& engine, Send send, std::function<bool()> isStopComing);
    /// As end().
    ~KyDebugAdapterSession() override;
    KyDebugAdapterSession(const KyDebugAdapterSession&) = delete;
    KyDebugAdapterSession& operator=(const KyDebugAdapterSession&) = delete;

    /// Answers a request; what is none is answered with a failure.
    void handle(const QJsonObject& request);
    /// Takes back all that the client wanted, and lets a script that stands still run on; not one that others have
    /// stopped, if they can see to it.
    void end(bool canOthersResume = false);
    /// Tells the client that there will be nothing more to debug.
    void tellEnd();
    /// Stops at the next line that runs, which the client is told to be the entry.
    void stopAtEntry();
    /// True after the client has taken its leave.
    bool hasEnded() const { return mHasEnded; }
    /// Whether the engine may be made to stop for the client.
    bool isAttached() const { return mIsAttached; }
    /// Whether the client has set all that it wants to set before scripts run.
    bool isReady() const { return mIsBegun && mIsConfigured; }

private:
    /// What a request is answered with: a body, or an error.
    struct Answer {
        QJsonObject body;
        QString error;
    };
    struct Request;

    static Answer fail(const QString& error) { return {{}, error}; }
    static const Request* findRequest(const QString& command);
    QString check(const QJsonObject& request, const Request* found) const;

    Answer initialize(const QJsonObject& arguments);
    Answer attach(const QJsonObject& arguments);
    Answer launch(const QJsonObject& arguments);
    Answer disconnect(const QJsonObject& arguments);
    Answer configurationDone(const QJsonObject& arguments);
    Answer setBreakpoints(const QJsonObject& arguments);
    Answer setExceptionBreakpoints(const QJsonObject& arguments);
    Answer listThreads(const QJsonObject& arguments);
    Answer listFrames(const QJsonObject& arguments);
    Answer listScopes(const QJsonObject& arguments);
    Answer listVariables(const QJsonObject& arguments);
    Answer setVariable(const QJsonObject& arguments);
    Answer evaluate(const QJsonObject& arguments);
    Answer move(const QJsonObject& arguments, void (KyScriptDebugger::*how)(), const QJsonObject& body = {});
    Answer goOn(const QJsonObject& arguments);
    Answer stepOver(const QJsonObject& arguments);
    Answer stepInto(const QJsonObject& arguments);
    Answer stepOut(const QJsonObject& arguments);
    Answer pause(const QJsonObject& arguments);
    Answer getSource(const QJsonObject& arguments);
    Answer listSources(const QJsonObject& arguments);

    void onStopped();
    void onContinued();
    void onScript(const std::string& chunkName, const std::string& path);
    void onPrinted(const std::string& text);
    void onReported(const std::string& text);

    KyScriptDebugger& debugger() const;
    void begin(bool isDebugging);
    void proceed();
    bool hasThread(int thread) const;
    /// Unless that has been done, or has to wait.
    void tellStop();
    /// Whether the script stands still because the client wanted it.
    bool isStopWanted() const;
    void tellThreads();
    void runProgram();
    /// Right before the program runs. False when something stands still by now: inside of that it would run through
    /// without stopping, so it comes afterwards.
    bool enter(const std::string& program);
    void forgetFrames();
    QJsonObject makeSource(const std::string& chunkName, const std::string& shortName);
    QJsonObject makeFrame(int thread, const KyScriptFrame& frame);
    /// Gives what the client is told of a breakpoint; one that cannot be had has line 0.
    QJsonObject makeBreakpoint(const QJsonValue& wanted, const KyScriptLines& lines,
                               KyScriptBreakpoint& breakpoint) const;
    /// Thread and level; null for a number that is none.
    const std::pair<int, int>* findFrame(const QJsonValue& id) const;
    QString readPath(const QJsonObject& source) const;
    int toClientLine(int line) const { return line > 0 ? line - 1 + mFirstLine : line; }

    KyScriptEngine& mEngine;
    Send mSend;
    std::function<bool()> mIsStopComing;
    KyDebugAdapterSources mSources;
    bool mIsInitialized = false;
    bool mIsBegun = false;
    bool mIsAttached = false;
    bool mIsConfigured = false;
    bool mHasEnded = false;
    /// The engine may stand still because of a breakpoint of the client.
    bool mHasSetBreakpoints = false;
    bool mIsBreakingOnErrors = false;
    bool mWasBreakingOnErrors = false;
    /// A request of the client made the script go on, so it needs not be told.
    bool mIsGoingOn = false;
    /// The client was told of the stop.
    bool mIsStopTold = false;
    /// It wanted the script to pause, or to go on by a step.
    bool mHasAskedForStop = false;
    /// What the client takes for the first line and column.
    int mFirstLine = 1;
    int mFirstColumn = 1;
    bool mUsesUrls = false;
    std::string mProgram;
    bool mStopsOnEntry = false;
    bool mIsEntering = false;
    /// What follows the answer under way.
    std::function<void()> mAfterwards;
    /// Thread and level of the frames told, whose identifiers go on from stop to stop.
    std::vector<std::pair<int, int>> mFrames;
    int mFirstFrame = 1;
    std::set<int> mThreads;
};
