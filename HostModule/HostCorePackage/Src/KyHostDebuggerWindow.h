// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySignal.h"

#include <QCoreApplication>
#include <QWidget>

#include <functional>
#include <string>
#include <vector>

class KyHostCalls;
class KyHostSourceView;
class KyQLuaDebuggerEditor;
class KyScriptDebugger;
class QAction;
class QComboBox;
class QKeyEvent;
class QLabel;
class QToolBar;

/// The scripts with their breakpoints and the line that is next, beside what the debugger knows of them and two steps
/// (KyQLuaDebuggerEditor; while a script stands still, its calls and their variables), and further steps.
///
/// Keys: F5 runs on, F10 steps over calls, F11 into them, Shift+F11 out of a function; F6 stops what runs; F9 sets and
/// takes a breakpoint at the line of the cursor; Ctrl+E stops at errors, or no longer; Escape closes.
class KyHostDebuggerWindow : public QWidget, public KyHasSlots {
    Q_DECLARE_TR_FUNCTIONS(KyHostDebuggerWindow)

public:
    /// Called after it has been closed.
    explicit KyHostDebuggerWindow(std::function<void()> closed);
    ~KyHostDebuggerWindow() override;

    /// Lists a file. Files in which a script stops are listed by themselves.
    void addScript(const QString& path);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    struct Script {
        std::string chunkName;
        QString path;
    };
    /// A button of the bar, with its text to translate.
    struct Action {
        QAction* action;
        const char* text;
        const char* help;
    };

    void layOut();
    void fillBar();
    QAction* addAction(const char* text, const char* help, const char* key, std::function<void()> act);
    void updateTranslations();
    void toggleCursorLine();
    void toggleBreakpoint(int line);
    void showScript();
    void showBreakpoints();
    void showState();
    static QString describeState();
    void showPlace(const std::string& chunkName, int line);
    void onStopped();
    void onChanged();
    /// Of the chunk, in the list; -1 when it is in no file.
    int findScript(const std::string& chunkName);

    std::function<void()> mClosed;
    std::vector<Script> mScripts;
    QComboBox* mNames;
    KyHostSourceView* mSource;
    KyQLuaDebuggerEditor* mEditor;
    KyHostCalls* mCalls;
    QLabel* mState;
    QToolBar* mBar;
    std::vector<Action> mActions;
};
