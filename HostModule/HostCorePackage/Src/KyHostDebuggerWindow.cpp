// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostDebuggerWindow.h"

#include "KyHostSourceView.h"

#include "KyQLuaDebuggerEditor.h"
#include "KyScriptDebugger.h"
#include "KyScriptEngine.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QShortcut>
#include <QSplitter>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace {

constexpr int cWidth = 980;
constexpr int cHeight = 620;
constexpr int cSourceShare = 3;
constexpr int cEditorShare = 2;

KyScriptDebugger& editDebugger() {
    return KyScriptEngine::get().editDebugger();
}

constexpr std::array cReasons{
    QT_TRANSLATE_NOOP("KyHostDebuggerWindow", "breakpoint"), QT_TRANSLATE_NOOP("KyHostDebuggerWindow", "step"),
    QT_TRANSLATE_NOOP("KyHostDebuggerWindow", "pause"), QT_TRANSLATE_NOOP("KyHostDebuggerWindow", "error")};
static_assert(cReasons.size() == static_cast<std::size_t>(KyScriptStopReason::eNbReasons));

/// "@" in front marks a file, "=" a name.
QString getName(const std::string& chunkName) {
    const bool isMarked = chunkName.starts_with('@') || chunkName.starts_with('=');
    return QString::fromStdString(chunkName).section('\n', 0, 0).mid(isMarked ? 1 : 0);
}

QString readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

KyHostDebuggerWindow::KyHostDebuggerWindow(std::function<void()> closed)
    : mClosed(std::move(closed))
    , mNames(new QComboBox)
    , mSource(new KyHostSourceView([this](int line) { toggleBreakpoint(line); }))
    , mEditor(new KyQLuaDebuggerEditor)
    , mState(new QLabel) {
    setObjectName("debugger");
    setWindowTitle(tr("Debugger - kyhost"));
    // The program does not end with it.
    setAttribute(Qt::WA_QuitOnClose, false);
    resize(cWidth, cHeight);
    layOut();
    connect(mNames, qOverload<int>(&QComboBox::currentIndexChanged), [this] { showScript(); });
    editDebugger().stoppedSignal.connect(this, &KyHostDebuggerWindow::onStopped);
    editDebugger().continuedSignal.connect(this, &KyHostDebuggerWindow::showState);
}

void KyHostDebuggerWindow::layOut() {
    auto* const bar = new QToolBar;
    addStep(*bar, tr("Step &over"), Qt::Key_F10, &KyScriptDebugger::stepOver);
    addStep(*bar, tr("Step ou&t"), QKeySequence(static_cast<int>(Qt::SHIFT) + static_cast<int>(Qt::Key_F11)),
            &KyScriptDebugger::stepOut);
    addStep(*bar, tr("&Pause"), Qt::Key_F6, &KyScriptDebugger::pause);
    QAction* const errors = bar->addAction(tr("Stop at &errors"));
    errors->setCheckable(true);
    connect(errors, &QAction::toggled, [](bool isChecked) { editDebugger().setBreakingOnErrors(isChecked); });
    bar->addWidget(mState);
    mState->setContentsMargins(12, 0, 0, 0);
    mState->setObjectName("state");
    addKey(Qt::Key_F5, &KyHostDebuggerWindow::resume);
    addKey(Qt::Key_F11, &KyHostDebuggerWindow::stepInto);
    addKey(Qt::Key_F9, &KyHostDebuggerWindow::toggleCursorLine);

    auto* const source = new QWidget;
    auto* const sourceLayout = new QVBoxLayout(source);
    sourceLayout->addWidget(mNames);
    sourceLayout->addWidget(mSource);
    auto* const splitter = new QSplitter;
    splitter->addWidget(source);
    splitter->addWidget(mEditor);
    splitter->setStretchFactor(0, cSourceShare);
    splitter->setStretchFactor(1, cEditorShare);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(bar);
    layout->addWidget(splitter, 1);
}

QAction* KyHostDebuggerWindow::addStep(QToolBar& bar, const QString& text, const QKeySequence& key,
                                       void (KyScriptDebugger::*step)()) {
    QAction* const action = bar.addAction(text);
    action->setShortcut(key);
    action->setToolTip(QString("%1 (%2)").arg(text).remove('&').arg(key.toString(QKeySequence::NativeText)));
    connect(action, &QAction::triggered, [step] { (editDebugger().*step)(); });
    return action;
}

void KyHostDebuggerWindow::addKey(const QKeySequence& key, void (KyHostDebuggerWindow::*act)()) {
    connect(new QShortcut(key, this), &QShortcut::activated, [this, act] { (this->*act)(); });
}

void KyHostDebuggerWindow::addScript(const std::string& path) {
    const QFileInfo file(QString::fromLocal8Bit(path.c_str()));
    mScripts.push_back({KyScriptDebugger::makeChunkName(path), file.absoluteFilePath()});
    mNames->addItem(file.fileName());
}

void KyHostDebuggerWindow::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    hide();
    mClosed();
}

void KyHostDebuggerWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    showScript();
    if (editDebugger().isStopped())
        onStopped();
    else
        showState();
}

void KyHostDebuggerWindow::resume() {
    mEditor->resumeLuaActionSlot(false);
}

void KyHostDebuggerWindow::stepInto() {
    mEditor->stepLuaActionSlot(false);
}

void KyHostDebuggerWindow::toggleCursorLine() {
    toggleBreakpoint(mSource->getCursorLine());
}

void KyHostDebuggerWindow::toggleBreakpoint(int line) {
    const int index = mNames->currentIndex();
    if (index < 0)
        return;
    const Script& script = mScripts[static_cast<std::size_t>(index)];
    const std::string path = script.path.toLocal8Bit().toStdString();
    std::vector<KyScriptBreakpoint> ofName = editDebugger().getBreakpoints(script.chunkName);
    std::vector<KyScriptBreakpoint> ofFile = editDebugger().getFileBreakpoints(path);
    const auto isThere = [line](const KyScriptBreakpoint& breakpoint) { return breakpoint.line == line; };
    if (std::erase_if(ofName, isThere) + std::erase_if(ofFile, isThere) == 0)
        ofFile.push_back({line, {}});
    editDebugger().setBreakpoints(script.chunkName, ofName);
    editDebugger().setFileBreakpoints(path, ofFile);
    showBreakpoints();
}

/// The file may have changed since it was read.
void KyHostDebuggerWindow::showScript() {
    const int index = mNames->currentIndex();
    const QString text = index < 0 ? QString() : readFile(mScripts[static_cast<std::size_t>(index)].path);
    if (text != mSource->toPlainText())
        mSource->setPlainText(text);
    mSource->setCurrentLine(0);
    showBreakpoints();
}

void KyHostDebuggerWindow::showBreakpoints() {
    std::set<int> lines;
    if (const int index = mNames->currentIndex(); index >= 0) {
        const Script& script = mScripts[static_cast<std::size_t>(index)];
        for (const auto& breakpoint : editDebugger().getBreakpoints(script.chunkName))
            lines.insert(breakpoint.line);
        for (const auto& breakpoint : editDebugger().getFileBreakpoints(script.path.toLocal8Bit().toStdString()))
            lines.insert(breakpoint.line);
    }
    mSource->setBreakpoints(std::move(lines));
}

void KyHostDebuggerWindow::showState() {
    if (!editDebugger().isStopped()) {
        mSource->setCurrentLine(0);
        mState->setText(tr("Running"));
        return;
    }
    const KyScriptStop& stop = editDebugger().getStop();
    const QString reason = tr(cReasons[static_cast<std::size_t>(stop.reason)]);
    const QString text = QString::fromStdString(stop.text);
    mState->setText(tr("Stopped at %1:%2 (%3)").arg(getName(stop.chunkName)).arg(stop.line).arg(reason) +
                    (text.isEmpty() ? text : ": " + text.section('\n', 0, 0)));
}

int KyHostDebuggerWindow::findStoppedScript() {
    const std::string& name = editDebugger().getStop().chunkName;
    const std::string path = editDebugger().findFile(name);
    const QFileInfo file(QString::fromLocal8Bit(path.c_str()));
    const auto isStopped = [&](const Script& script) {
        return path.empty() ? script.chunkName == name : QFileInfo(script.path) == file;
    };
    const auto found = std::ranges::find_if(mScripts, isStopped);
    if (found != mScripts.end())
        return static_cast<int>(found - mScripts.begin());
    if (path.empty() || !file.exists())
        return -1;
    addScript(path);
    mScripts.back().chunkName = name;
    return static_cast<int>(mScripts.size()) - 1;
}

void KyHostDebuggerWindow::onStopped() {
    if (!isVisible())
        return;
    mNames->setCurrentIndex(findStoppedScript());
    showScript();
    if (mNames->currentIndex() >= 0)
        mSource->setCurrentLine(editDebugger().getStop().line);
    showState();
    raise();
    activateWindow();
}
