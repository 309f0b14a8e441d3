// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQLuaDebuggerEditor.h"

#include "KyQAttributeEditor.h"
#include "KyScriptDebugger.h"
#include "KyScriptEngine.h"

#include "KyDynamicObject.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace {

constexpr int cMillisecondsBetweenLooks = 250;

/// The debugger's entity is filled at every line once somebody listens to it.
class Snapshot : public KyQAttributeEditor {
public:
    using KyQAttributeEditor::KyQAttributeEditor;

protected:
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): what the editor does when it is shown is what is left out.
    void showEvent(QShowEvent* event) override { QWidget::showEvent(event); }
};

} // namespace

KyQLuaDebuggerEditor::KyQLuaDebuggerEditor(QWidget* parent)
    : QWidget(parent)
    , mViews(new QStackedLayout)
    , mAttributeEditor(new Snapshot(this, KyQAttributeEditor::eInspection))
    , mResumeButton(new QPushButton)
    , mStepButton(new QPushButton)
    , mResumeKey(new QShortcut(this))
    , mStepKey(new QShortcut(this)) {
    setObjectName(QStringLiteral("KyQLuaDebuggerEditorWidget"));
    mAttributeEditor->setObjectName(QStringLiteral("mAttributeEditor"));
    mResumeButton->setObjectName(QStringLiteral("mResumeButton"));
    mStepButton->setObjectName(QStringLiteral("mStepButton"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(mResumeButton);
    buttons->addWidget(mStepButton);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(this);
    mViews->addWidget(mAttributeEditor);
    layout->addLayout(mViews);
    layout->addLayout(buttons);
    connect(mResumeButton, SIGNAL(clicked(bool)), this, SLOT(resumeLuaActionSlot(bool)));
    connect(mStepButton, SIGNAL(clicked(bool)), this, SLOT(stepLuaActionSlot(bool)));
    connect(mResumeKey, &QShortcut::activated, this, [this] { resumeLuaActionSlot(false); });
    connect(mStepKey, &QShortcut::activated, this, [this] { stepLuaActionSlot(false); });
    mTimer.setInterval(cMillisecondsBetweenLooks);
    connect(&mTimer, &QTimer::timeout, this, &KyQLuaDebuggerEditor::look);
    updateTranslations();
    follow();
}

// The engine may come later than the widget. It brings its entity up to date when that is asked for and nobody listens.
void KyQLuaDebuggerEditor::follow() {
    disconnectAll();
    mAttributeEditor->setObject(nullptr);
    KyScriptEngine* engine = KyScriptEngine::find();
    mAttributeEditor->setObject(engine ? engine->getDebugEntity() : nullptr);
    if (!engine)
        return;
    engine->editDebugger().stoppedSignal.connect(this, &KyQLuaDebuggerEditor::onStopped);
    engine->editDebugger().changedSignal.connect(this, &KyQLuaDebuggerEditor::look);
}

void KyQLuaDebuggerEditor::setStopView(QWidget* view) {
    mStopView = view;
    mViews->addWidget(view);
    look();
}

// Between two steps it stays.
void KyQLuaDebuggerEditor::onStopped() {
    if (mStopView)
        mViews->setCurrentWidget(mStopView);
    look();
}

// Asking for the entity brings it up to date.
void KyQLuaDebuggerEditor::look() {
    const KyScriptEngine* const engine = KyScriptEngine::find();
    const bool isStopped = engine && engine->isStopped();
    if (mStopView)
        mViews->setCurrentWidget(isStopped ? mStopView : mAttributeEditor);
    if (mStopView && isStopped)
        return;
    if (engine && isVisible())
        engine->getDebugEntity();
    mAttributeEditor->refresh();
}

void KyQLuaDebuggerEditor::resumeLuaActionSlot(bool) {
    if (KyScriptEngine* engine = KyScriptEngine::find())
        engine->resume();
}

void KyQLuaDebuggerEditor::stepLuaActionSlot(bool) {
    if (KyScriptEngine* engine = KyScriptEngine::find())
        engine->step();
}

void KyQLuaDebuggerEditor::updateTranslations() {
    updateButton(*mResumeButton, tr("&Resume"), tr("Lets the script run on"), *mResumeKey);
    updateButton(*mStepButton, tr("&Step"), tr("Stops at the next line"), *mStepKey);
}

void KyQLuaDebuggerEditor::updateButton(QPushButton& button, const QString& text, const QString& help,
                                        const QShortcut& key) {
    const QString keyText = key.key().toString(QKeySequence::NativeText);
    button.setText(text);
    button.setToolTip(keyText.isEmpty() ? help : QStringLiteral("%1 (%2)").arg(help, keyText));
}

void KyQLuaDebuggerEditor::setKeys(const QKeySequence& resume, const QKeySequence& step) {
    mResumeKey->setKey(resume);
    mStepKey->setKey(step);
    updateTranslations();
}

void KyQLuaDebuggerEditor::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange)
        updateTranslations();
    QWidget::changeEvent(event);
}

void KyQLuaDebuggerEditor::showEvent(QShowEvent* event) {
    follow();
    mTimer.start();
    QWidget::showEvent(event);
}

void KyQLuaDebuggerEditor::hideEvent(QHideEvent* event) {
    mTimer.stop();
    QWidget::hideEvent(event);
}
