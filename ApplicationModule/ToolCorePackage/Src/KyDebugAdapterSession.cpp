// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapterSession_p.h"

#include "KyDebugAdapterJson_p.h"
#include "KyScriptDebugger.h"
#include "KyScriptEngine.h"

#include "KyObjectReference.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace {

using Kind = KyDebugArgument::Kind;

constexpr int cLastFrame = 1 << 30;

constexpr KyDebugArgument cSource{"source", Kind::eObject, true};
constexpr KyDebugArgument cThread{"threadId", Kind::eInteger, true};
constexpr KyDebugArgument cReference{"variablesReference", Kind::eInteger, true};

} // namespace

struct KyDebugAdapterSession::Request {
    enum class When { eFirst, eAlways, eInitialized, eStopped };

    const char* command;
    Answer (KyDebugAdapterSession::*handler)(const QJsonObject& arguments);
    When when;
    std::array<KyDebugArgument, 5> arguments;
};

const KyDebugAdapterSession::Request* KyDebugAdapterSession::findRequest(const QString& command) {
    using Session = KyDebugAdapterSession;
    using When = Request::When;
    static constexpr Request cRequests[] = {
        {"initialize",
         &Session::initialize,
         When::eFirst,
         {{{"linesStartAt1", Kind::eBoolean}, {"columnsStartAt1", Kind::eBoolean}, {"pathFormat", Kind::eText}}}},
        {"attach", &Session::attach, When::eInitialized, {}},
        {"launch",
         &Session::launch,
         When::eInitialized,
         {{{"program", Kind::eText}, {"stopOnEntry", Kind::eBoolean}, {"noDebug", Kind::eBoolean}}}},
        {"disconnect", &Session::disconnect, When::eAlways, {}},
        {"configurationDone", &Session::configurationDone, When::eInitialized, {}},
        {"setBreakpoints",
         &Session::setBreakpoints,
         When::eInitialized,
         {{cSource, {"breakpoints", Kind::eArray}, {"lines", Kind::eArray}}}},
        {"setExceptionBreakpoints",
         &Session::setExceptionBreakpoints,
         When::eInitialized,
         {{{"filters", Kind::eArray, true}}}},
        {"threads", &Session::listThreads, When::eInitialized, {}},
        {"stackTrace",
         &Session::listFrames,
         When::eStopped,
         {{cThread, {"startFrame", Kind::eInteger}, {"levels", Kind::eInteger}}}},
        {"scopes", &Session::listScopes, When::eStopped, {{{"frameId", Kind::eInteger, true}}}},
        {"variables",
         &Session::listVariables,
         When::eStopped,
         {{cReference, {"start", Kind::eInteger}, {"count", Kind::eInteger}, {"filter", Kind::eText}}}},
        {"setVariable",
         &Session::setVariable,
         When::eStopped,
         {{cReference, {"name", Kind::eText, true}, {"value", Kind::eText, true}}}},
        {"evaluate",
         &Session::evaluate,
         When::eInitialized,
         {{{"expression", Kind::eText, true}, {"frameId", Kind::eInteger}, {"context", Kind::eText}}}},
        {"continue", &Session::goOn, When::eStopped, {{cThread}}},
        {"next", &Session::stepOver, When::eStopped, {{cThread}}},
        {"stepIn", &Session::stepInto, When::eStopped, {{cThread}}},
        {"stepOut", &Session::stepOut, When::eStopped, {{cThread}}},
        {"pause", &Session::pause, When::eInitialized, {{{"threadId", Kind::eInteger}}}},
        {"source",
         &Session::getSource,
         When::eInitialized,
         {{{"source", Kind::eObject}, {"sourceReference", Kind::eInteger}}}},
        {"loadedSources", &Session::listSources, When::eInitialized, {}},
    };
    const auto* const found = std::ranges::find_if(
        cRequests, [&command](const Request& request) { return command == QLatin1String(request.command); });
    return found == std::end(cRequests) ? nullptr : found;
}

KyDebugAdapterSession::KyDebugAdapterSession(KyScriptEngine& engine, Send send, std::function<bool()> isStopComing)
    : mEngine(engine)
    , mSend(std::move(send))
    , mIsStopComing(std::move(isStopComing))
    , mSources(debugger()) {}

KyDebugAdapterSession::~KyDebugAdapterSession() {
    end();
}

KyScriptDebugger& KyDebugAdapterSession::debugger() const {
    return mEngine.editDebugger();
}

void KyDebugAdapterSession::handle(const QJsonObject& request) {
    const Request* const found = findRequest(request.value("command").toString());
    Answer answer = fail(check(request, found));
    if (answer.error.isEmpty())
        answer = (this->*found->handler)(request.value("arguments").toObject());
    mSend(kyDebugResponse(request, answer.body, answer.error));
    if (const auto afterwards = std::exchange(mAfterwards, nullptr))
        afterwards();
    tellStop();
}

QString KyDebugAdapterSession::check(const QJsonObject& request, const Request* found) const {
    static constexpr KyDebugArgument cParts[] = {{"seq", Kind::eInteger, true},
                                                 {"type", Kind::eText, true},
                                                 {"command", Kind::eText, true},
                                                 {"arguments", Kind::eObject}};
    if (QString error = kyCheckDebugArguments(request, cParts); !error.isEmpty())
        return error;
    if (request.value("type") != QLatin1String("request"))
        return QStringLiteral("the message is no request");
    if (!found)
        return QStringLiteral("the request '%1' is not supported").arg(request.value("command").toString().left(100));
    if (found->when != Request::When::eAlways && mIsInitialized == (found->when == Request::When::eFirst))
        return mIsInitialized ? QStringLiteral("the session is initialized already")
                              : QStringLiteral("the first request must be 'initialize'");
    if (found->when == Request::When::eStopped && !(mIsAttached && debugger().isStopped()))
        return QStringLiteral("no script stands still");
    const auto last = std::ranges::find(found->arguments, nullptr, &KyDebugArgument::name);
    return kyCheckDebugArguments(request.value("arguments").toObject(), {found->arguments.begin(), last});
}

void KyDebugAdapterSession::begin(bool isDebugging) {
    mIsBegun = true;
    debugger().printedSignal.connect(this, &KyDebugAdapterSession::onPrinted);
    debugger().reportedSignal.connect(this, &KyDebugAdapterSession::onReported);
    if (!isDebugging)
        return mSources.clear();
    mIsAttached = true;
    debugger().attach();
    mWasBreakingOnErrors = debugger().isBreakingOnErrors();
    debugger().setBreakingOnErrors(mIsBreakingOnErrors);
    debugger().stoppedSignal.connect(this, &KyDebugAdapterSession::onStopped);
    debugger().continuedSignal.connect(this, &KyDebugAdapterSession::onContinued);
    debugger().scriptSignal.connect(this, &KyDebugAdapterSession::onScript);
}

void KyDebugAdapterSession::end(bool canOthersResume) {
    mHasEnded = true;
    mSend = [](const QJsonObject&) {};
    disconnectAll();
    const bool isOurStop = !canOthersResume || isStopWanted();
    mSources.clear();
    const bool isAttached = std::exchange(mIsAttached, false);
    if (isAttached)
        debugger().setBreakingOnErrors(mWasBreakingOnErrors);
    if ((std::exchange(mHasSetBreakpoints, false) || isAttached) && isOurStop && debugger().isStopped())
        debugger().resume();
    if (isAttached)
        debugger().detach();
}

void KyDebugAdapterSession::tellEnd() {
    if (mIsBegun)
        mSend(kyDebugEvent("terminated"));
}

/// Whatever comes last, to be attached, to be configured or to have nothing stand still.
void KyDebugAdapterSession::proceed() {
    if (isReady() && !mProgram.empty())
        runProgram();
}

// Not from inside a request: it returns when the script has ended, which takes further requests.
void KyDebugAdapterSession::runProgram() {
    const auto run = [session = weak_from_this(), reference = KyObjectReference(&mEngine),
                      program = std::exchange(mProgram, {})] {
        if (!reference)
            return;
        if (const auto current = session.lock(); current && !current->enter(program))
            return;
        static_cast<KyScriptEngine*>(reference.get())->executeScript(program);
    };
    QTimer::singleShot(0, QCoreApplication::instance(), run);
}

bool KyDebugAdapterSession::enter(const std::string& program) {
    if (!mIsAttached)
        return true;
    if (debugger().isStopped()) {
        mProgram = program;
        return false;
    }
    if (mStopsOnEntry) {
        mHasAskedForStop = true;
        stopAtEntry();
    }
    return true;
}

void KyDebugAdapterSession::stopAtEntry() {
    mIsEntering = true;
    debugger().pause();
}

void KyDebugAdapterSession::onStopped() {
    mHasAskedForStop = mHasAskedForStop || mIsStopComing();
    tellStop();
}

bool KyDebugAdapterSession::isStopWanted() const {
    const KyScriptStop& stop = debugger().getStop();
    switch (stop.reason) {
    case KyScriptStopReason::eBreakpoint:
        return mSources.holds(stop.chunkName, stop.line);
    case KyScriptStopReason::eError:
        return !mWasBreakingOnErrors;
    default:
        return mHasAskedForStop;
    }
}

void KyDebugAdapterSession::tellStop() {
    const bool isToldOf = mIsAttached && mIsConfigured && !mHasEnded;
    if (!isToldOf || mIsStopTold || !debugger().isStopped() || mIsStopComing())
        return;
    mIsStopTold = true;
    tellThreads();
    mSend(kyDebugStopped(debugger().getStop(), std::exchange(mIsEntering, false)));
}

void KyDebugAdapterSession::tellThreads() {
    std::set<int> present;
    for (const KyScriptThread& thread : debugger().getThreads())
        present.insert(thread.id);
    const auto tell = [this](const std::set<int>& threads, const std::set<int>& others, const QString& reason) {
        for (const int thread : threads)
            if (!others.contains(thread))
                mSend(kyDebugEvent("thread", {{"reason", reason}, {"threadId", thread}}));
    };
    tell(mThreads, present, "exited");
    tell(present, mThreads, "started");
    mThreads = std::move(present);
}

void KyDebugAdapterSession::onContinued() {
    forgetFrames();
    const bool isTold = std::exchange(mIsStopTold, false);
    mHasAskedForStop = mHasAskedForStop && mIsGoingOn;
    if (!std::exchange(mIsGoingOn, false) && isTold)
        mSend(kyDebugEvent("continued", {{"threadId", 1}, {"allThreadsContinued", true}}));
    proceed();
}

void KyDebugAdapterSession::forgetFrames() {
    mFirstFrame = mFirstFrame < cLastFrame ? mFirstFrame + static_cast<int>(mFrames.size()) : 1;
    mFrames.clear();
}

void KyDebugAdapterSession::onScript(const std::string& chunkName, const std::string&) {
    mSend(kyDebugEvent("loadedSource", {{"reason", "new"}, {"source", makeSource(chunkName, {})}}));
}

void KyDebugAdapterSession::onPrinted(const std::string& text) {
    mSend(kyDebugOutput("stdout", QString::fromStdString(text)));
}

void KyDebugAdapterSession::onReported(const std::string& text) {
    mSend(kyDebugOutput("stderr", QString::fromStdString(text) + '\n'));
}
