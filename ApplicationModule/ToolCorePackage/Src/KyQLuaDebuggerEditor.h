// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KySignal.h"

#include <QTimer>
#include <QWidget>

class KyQAttributeEditor;
class QPushButton;
class QShortcut;
class QStackedLayout;

/// Shows what the script engine's debugger knows of the script that stands still (its line, calls, locals and globals)
/// and has two buttons: resume and step. While scripts run it looks at them a few times a second, when the event loop
/// does, so that they pay nothing for being shown.
///
/// The host keeps it alive while a script stands still, by processing events in its KyLuaDebugger::wait.
///
/// ```
/// auto* debugger = new KyQLuaDebuggerEditor(&window);
/// debugger->show();
/// ```
class KYAPPLICATION_EXPORT KyQLuaDebuggerEditor : public QWidget, public KyHasSlots {
    Q_OBJECT

public:
    /// The parent owns it.
    explicit KyQLuaDebuggerEditor(QWidget* parent = nullptr);

    /// Keys of the window that resume and step, which the tool tips tell; empty ones for none, as at first.
    void setKeys(const QKeySequence& resume, const QKeySequence& step);
    /// A widget to be shown instead of calls, locals and globals while a script stands still, for programs that have a
    /// better one; it is owned by this one from here on, and needs to bring itself up to date. Once.
    void setStopView(QWidget* view);

public Q_SLOTS:
    /// Lets a stopped script run on; nothing without an engine.
    void resumeLuaActionSlot(bool isChecked);
    /// Stops at the next line.
    void stepLuaActionSlot(bool isChecked);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void follow();
    void look();
    void onStopped();
    void updateTranslations();
    void updateButton(QPushButton& button, const QString& text, const QString& help, const QShortcut& key);

    QStackedLayout* mViews;
    KyQAttributeEditor* mAttributeEditor;
    QWidget* mStopView = nullptr;
    QPushButton* mResumeButton;
    QPushButton* mStepButton;
    QShortcut* mResumeKey;
    QShortcut* mStepKey;
    QTimer mTimer;
};
