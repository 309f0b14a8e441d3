// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostDebugger.h"

#include "KyHostDebuggerWindow.h"
#include "KyHostErrors.h"
#include "KyHostScripts.h"

#include "KyDebugAdapter.h"
#include "KyScriptDebugger.h"
#include "KyScriptEngine.h"
#include "KyScriptLines.h"

#include <lua.hpp>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>

#include <algorithm>
#include <chrono>
#include <map>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int cPulse = 20;
constexpr int cInstructionsBetweenLooks = 1000;

Clock::time_point gDeadline;

void endWhenLate(lua_State* state, lua_Debug*) {
    if (Clock::now() <= gDeadline)
        return;
    luaL_where(state, 0);
    lua_pushliteral(state, "the script did not come to its end");
    lua_concat(state, 2);
    lua_error(state);
}

/// The thread that stands still may be a coroutine.
void limitScripts(KyScriptEngine& engine) {
    gDeadline = Clock::now() + std::chrono::milliseconds(KyHostDebugger::cPatience);
    for (lua_State* const thread : {engine.editLuaState(), engine.editDebugger().editStoppedThread()})
        if (thread)
            lua_sethook(thread, &endWhenLate, LUA_MASKCOUNT, cInstructionsBetweenLooks);
}

} // namespace

KyHostDebugger::KyHostDebugger(const KyHostOptions& options, Listeners listeners)
    : mOptions(options)
    , mListeners(std::move(listeners)) {
    mPulse.setInterval(cPulse);
    KyScriptEngine& engine = KyScriptEngine::get();
    engine.setLuaDebugger(this);
    engine.editDebugger().stoppedSignal.connect(this, &KyHostDebugger::onStopped);
    engine.editDebugger().continuedSignal.connect(this, &KyHostDebugger::onContinued);
}

KyHostDebugger::~KyHostDebugger() {
    mWindow.reset();
    mAdapter.reset();
    KyScriptEngine& engine = KyScriptEngine::get();
    engine.removeHook();
    engine.setLuaDebugger(nullptr);
}

bool KyHostDebugger::open(std::string& error) {
    if (mOptions.debugPort && !openPort(error))
        return false;
    if (mOptions.hasDebugger || !mOptions.breakpoints.empty()) {
        setBreakpoints();
        openWindow();
        // Somebody who gave no breakpoints has to see the scripts before they are over.
        if (mOptions.breakpoints.empty())
            KyScriptEngine::get().editDebugger().pause();
    }
    if (mOptions.waitsForClient)
        waitForClient();
    return true;
}

bool KyHostDebugger::openPort(std::string& error) {
    mAdapter = std::make_unique<KyDebugAdapter>(KyScriptEngine::get());
    QObject::connect(mAdapter.get(), &KyDebugAdapter::clientReady, [this](bool isDebugging) {
        mIsClientIdle = !isDebugging;
        follow();
    });
    QObject::connect(mAdapter.get(), &KyDebugAdapter::clientDisconnected, [this] {
        mIsClientIdle = false;
        onWatcherLeft();
    });
    if (!mAdapter->listen(static_cast<quint16>(*mOptions.debugPort))) {
        error = "cannot listen on port " + std::to_string(*mOptions.debugPort) + ": " +
                mAdapter->getErrorText().toStdString();
        return false;
    }
    KyHostErrors::write("debugger listens on 127.0.0.1:" + std::to_string(mAdapter->getPort()));
    return true;
}

/// A connection that says nothing, or goes again, is none to wait for.
void KyHostDebugger::waitForClient() {
    QEventLoop loop;
    QObject::connect(mAdapter.get(), &KyDebugAdapter::clientReady, &loop, [this, &loop](bool isDebugging) {
        if (isDebugging)
            mAdapter->stopAtEntry();
        loop.quit();
    });
    loop.exec();
}

/// The file, or one of that name that is to run; empty when there is neither.
QString KyHostDebugger::findScript(const std::string& name) const {
    if (auto path = QString::fromLocal8Bit(name.c_str()); QFileInfo::exists(path))
        return path;
    const auto hasName = [chunkName = KyScriptDebugger::makeChunkName(name)](const KyHostOptions::Item& item) {
        return KyHostScripts::isScript(item) && KyScriptDebugger::makeChunkName(item.text) == chunkName;
    };
    const auto found = std::ranges::find_if(mOptions.items, hasName);
    return found == mOptions.items.end() ? QString() : QString::fromLocal8Bit(found->text.c_str());
}

/// The line with code that a breakpoint goes to. 0, and said, when there is none.
int KyHostDebugger::findLine(const KyHostOptions::Breakpoint& breakpoint) const {
    const QString path = findScript(breakpoint.script);
    if (path.isEmpty()) {
        KyHostErrors::write("there is no script '" + breakpoint.script + "'; one of that name would stop");
        return breakpoint.line;
    }
    const int line = KyScriptLines::read(path).findCode(breakpoint.line);
    if (line == 0)
        KyHostErrors::write("'" + breakpoint.script + "' has no code from line " + std::to_string(breakpoint.line) +
                            " on, and does not stop there");
    return line;
}

/// What is no file from here is any file of that name.
void KyHostDebugger::setBreakpoints() {
    std::map<std::string, std::vector<KyScriptBreakpoint>> byScript;
    for (const KyHostOptions::Breakpoint& breakpoint : mOptions.breakpoints)
        if (const int line = findLine(breakpoint); line > 0)
            byScript[breakpoint.script].push_back({line, {}});
    KyScriptDebugger& debugger = KyScriptEngine::get().editDebugger();
    for (const auto& [script, breakpoints] : byScript) {
        if (const auto path = QString::fromLocal8Bit(script.c_str()); QFileInfo::exists(path))
            debugger.setFileBreakpoints(path.toStdString(), breakpoints);
        else
            debugger.setBreakpoints(KyScriptDebugger::makeChunkName(script), breakpoints);
    }
}

void KyHostDebugger::openWindow() {
    if (!mWindow) {
        mWindow = std::make_unique<KyHostDebuggerWindow>([this] { onWatcherLeft(); });
        for (const KyHostOptions::Item& item : mOptions.items)
            if (KyHostScripts::isScript(item))
                mWindow->addScript(QString::fromLocal8Bit(item.text.c_str()));
    }
    mWindow->show();
    mWindow->raise();
    mWindow->activateWindow();
    follow();
}

bool KyHostDebugger::isWanted() const {
    return (mWindow && mWindow->isVisible()) || (mAdapter && mAdapter->hasClient() && !mIsClientIdle);
}

void KyHostDebugger::follow() {
    if (isWanted())
        KyScriptEngine::get().setHook();
    else
        KyScriptEngine::get().removeHook();
}

/// Nobody else would let the script go on.
void KyHostDebugger::onWatcherLeft() {
    follow();
    if (!isWanted())
        KyScriptEngine::get().resume();
}

bool KyHostDebugger::isStopped() const {
    return KyScriptEngine::get().isStopped();
}

void KyHostDebugger::letGo() {
    KyScriptEngine& engine = KyScriptEngine::get();
    engine.removeHook();
    if (!engine.isStopped())
        return;
    limitScripts(engine);
    engine.resume();
}

void KyHostDebugger::onStopped() {
    mPulse.start();
}

void KyHostDebugger::onContinued() {
    mPulse.stop();
    mListeners.continued();
}

void KyHostDebugger::wait() {
    mListeners.waiting();
    if (mListeners.isEnding())
        return letGo();
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}
