// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHostOptions.h"

#include "KyLuaDebugger.h"
#include "KySignal.h"

#include <QString>
#include <QTimer>

#include <functional>
#include <memory>

class KyDebugAdapter;
class KyHostDebuggerWindow;

/// Lets a person follow the scripts line by line: in a window of the program, in an editor that is attached over a
/// port, or in both. The script engine has its debug hook while one of them is there; without them scripts run as fast
/// as ever.
///
/// While a script stands still the program lives on: events are processed and the view is drawn, only coroutines wait.
class KyHostDebugger : public KyLuaDebugger, public KyHasSlots {
public:
    struct Listeners {
        /// Called over and over while a script stands still.
        std::function<void()> waiting;
        /// A script goes on, which may need what was there before it stopped.
        std::function<void()> continued;
        /// Whether the program ends, so that no script may keep it.
        std::function<bool()> isEnding;
    };

    KyHostDebugger(const KyHostOptions& options, Listeners listeners);
    ~KyHostDebugger() override;
    KyHostDebugger(const KyHostDebugger&) = delete;
    KyHostDebugger& operator=(const KyHostDebugger&) = delete;

    /// Opens what the options ask for, before the first script runs. False, and the reason, when the port cannot be
    /// had.
    bool open(std::string& error);
    /// Shows the window, in front of the others.
    void openWindow();
    bool isStopped() const;
    /// Lets a script that stands still run on, and not stop again before follow(). One that has not ended after
    /// cPatience is ended with an error.
    void letGo();
    /// Follows the scripts again.
    void follow();

    void wait() override;

    /// Milliseconds.
    static constexpr int cPatience = 1000;

private:
    bool openPort(std::string& error);
    void waitForClient();
    void setBreakpoints();
    QString findScript(const std::string& name) const;
    int findLine(const KyHostOptions::Breakpoint& breakpoint) const;
    void onWatcherLeft();
    void onStopped();
    void onContinued();
    bool isWanted() const;

    const KyHostOptions& mOptions;
    Listeners mListeners;
    std::unique_ptr<KyHostDebuggerWindow> mWindow;
    std::unique_ptr<KyDebugAdapter> mAdapter;
    /// The editor only wants to see what scripts print.
    bool mIsClientIdle = false;
    /// Wakes the wait for events.
    QTimer mPulse;
};
