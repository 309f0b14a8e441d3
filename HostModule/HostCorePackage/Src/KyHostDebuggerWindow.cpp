// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostDebuggerWindow.h"

#include "KyHostCalls.h"
#include "KyHostSourceView.h"

#include "KyQLuaDebuggerEditor.h"
#include "KyScriptDebugger.h"
#include "KyScriptEngine.h"
#include "KyScriptLines.h"

#include <QAccessible>
#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
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
    , mCalls(new KyHostCalls([this](const KyScriptFrame& call) { showPlace(call.chunkName, call.line); }))
    , mState(new QLabel)
    , mBar(new QToolBar) {
    setObjectName("debugger");
    // The program does not end with it.
    setAttribute(Qt::WA_QuitOnClose, false);
    resize(cWidth, cHeight);
    fillBar();
    layOut();
    updateTranslations();
    connect(mNames, qOverload<int>(&QComboBox::currentIndexChanged), [this] { showScript(); });
    editDebugger().stoppedSignal.connect(this, &KyHostDebuggerWindow::onStopped);
    editDebugger().continuedSignal.connect(this, &KyHostDebuggerWindow::showState);
    editDebugger().changedSignal.connect(this, &KyHostDebuggerWindow::onChanged);
}

KyHostDebuggerWindow::~KyHostDebuggerWindow() = default;

void KyHostDebuggerWindow::fillBar() {
    addAction(QT_TR_NOOP("Step over"), QT_TR_NOOP("Stops at the next line, but not in functions that it calls"), "F10",
              [] { editDebugger().stepOver(); });
    addAction(QT_TR_NOOP("Step out"), QT_TR_NOOP("Stops when the function has ended"), "Shift+F11",
              [] { editDebugger().stepOut(); });
    addAction(QT_TR_NOOP("Pause"), QT_TR_NOOP("Stops at the next line that runs"), "F6",
              [] { editDebugger().pause(); });
    addAction(QT_TR_NOOP("Breakpoint"), QT_TR_NOOP("Sets or takes a breakpoint at the line of the cursor"), "F9",
              [this] { toggleCursorLine(); });
    QAction* const errors =
        addAction(QT_TR_NOOP("Stop at errors"), QT_TR_NOOP("Stops where a script fails"), "Ctrl+E", {});
    errors->setCheckable(true);
    connect(errors, &QAction::toggled, [](bool isChecked) { editDebugger().setBreakingOnErrors(isChecked); });
    mState->setContentsMargins(12, 0, 12, 0);
    mState->setObjectName("state");
    mState->setTextFormat(Qt::PlainText);
    mState->setWordWrap(true);
    mEditor->setKeys(Qt::Key_F5, Qt::Key_F11);
    mEditor->setStopView(mCalls);
}

QAction* KyHostDebuggerWindow::addAction(const char* text, const char* help, const char* key,
                                         std::function<void()> act) {
    QAction* const action = mBar->addAction(QString());
    action->setShortcut(QKeySequence(QLatin1String(key)));
    if (act)
        connect(action, &QAction::triggered, std::move(act));
    // Tool bars leave the keyboard to menus, which there are none of.
    mBar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    mActions.push_back({action, text, help});
    return action;
}

void KyHostDebuggerWindow::updateTranslations() {
    setWindowTitle(tr("Debugger - kyhost"));
    for (const Action& entry : mActions) {
        const QString key = entry.action->shortcut().toString(QKeySequence::NativeText);
        entry.action->setText(tr(entry.text));
        entry.action->setToolTip(QStringLiteral("%1 (%2)").arg(tr(entry.help), key));
    }
    mNames->setAccessibleName(tr("Script"));
    mNames->setToolTip(tr("Script whose text stands below"));
    mSource->setAccessibleName(tr("Text of the script"));
    mSource->setHint(tr("F9 sets or takes a breakpoint at the line of the cursor."));
    mSource->setMarginToolTip(tr("A click sets or takes a breakpoint (F9)"));
    mState->setText(describeState());
}

void KyHostDebuggerWindow::layOut() {
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
    layout->addWidget(mBar);
    layout->addWidget(mState);
    layout->addWidget(splitter, 1);
}

void KyHostDebuggerWindow::addScript(const QString& path) {
    const QFileInfo file(path);
    mScripts.push_back({KyScriptDebugger::makeChunkName(path.toStdString()), file.absoluteFilePath()});
    mNames->addItem(file.fileName());
}

void KyHostDebuggerWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange)
        updateTranslations();
    QWidget::changeEvent(event);
}

void KyHostDebuggerWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
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

void KyHostDebuggerWindow::toggleCursorLine() {
    toggleBreakpoint(mSource->getCursorLine());
}

void KyHostDebuggerWindow::toggleBreakpoint(int line) {
    const int index = mNames->currentIndex();
    if (index < 0)
        return;
    const Script& script = mScripts[static_cast<std::size_t>(index)];
    const std::string path = script.path.toStdString();
    std::vector<KyScriptBreakpoint> ofName = editDebugger().getBreakpoints(script.chunkName);
    std::vector<KyScriptBreakpoint> ofFile = editDebugger().getFileBreakpoints(path);
    const auto isThere = [line](const KyScriptBreakpoint& breakpoint) { return breakpoint.line == line; };
    if (std::erase_if(ofName, isThere) + std::erase_if(ofFile, isThere) == 0) {
        // Nothing stops at a line without code.
        const int next = KyScriptLines(mSource->toPlainText().toStdString()).findCode(line);
        if (next > 0)
            ofFile.push_back({next, {}});
    }
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
        for (const auto& breakpoint : editDebugger().getFileBreakpoints(script.path.toStdString()))
            lines.insert(breakpoint.line);
    }
    mSource->setBreakpoints(std::move(lines));
}

void KyHostDebuggerWindow::showState() {
    if (!editDebugger().isStopped())
        mSource->setCurrentLine(0);
    mState->setText(describeState());
}

QString KyHostDebuggerWindow::describeState() {
    if (!editDebugger().isStopped())
        return tr("Running");
    const KyScriptStop& stop = editDebugger().getStop();
    const QString reason = tr(cReasons[static_cast<std::size_t>(stop.reason)]);
    const QString text = QString::fromStdString(stop.text);
    return tr("Stopped at %1:%2 (%3)").arg(getName(stop.chunkName)).arg(stop.line).arg(reason) +
           (text.isEmpty() ? text : ": " + text.section('\n', 0, 0));
}

int KyHostDebuggerWindow::findScript(const std::string& chunkName) {
    const std::string path = editDebugger().findFile(chunkName);
    const QFileInfo file(QString::fromStdString(path));
    const auto isIt = [&](const Script& script) {
        return path.empty() ? script.chunkName == chunkName : QFileInfo(script.path) == file;
    };
    const auto found = std::ranges::find_if(mScripts, isIt);
    if (found != mScripts.end())
        return static_cast<int>(found - mScripts.begin());
    if (path.empty() || !file.exists())
        return -1;
    addScript(file.filePath());
    mScripts.back().chunkName = chunkName;
    return static_cast<int>(mScripts.size()) - 1;
}

void KyHostDebuggerWindow::showPlace(const std::string& chunkName, int line) {
    mNames->setCurrentIndex(findScript(chunkName));
    showScript();
    if (mNames->currentIndex() >= 0)
        mSource->setCurrentLine(line);
}

void KyHostDebuggerWindow::onStopped() {
    if (!isVisible())
        return;
    const KyScriptStop& stop = editDebugger().getStop();
    showPlace(stop.chunkName, stop.line);
    mCalls->showStop();
    showState();
    QAccessibleEvent event(mState, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
    raise();
    activateWindow();
}

void KyHostDebuggerWindow::onChanged() {
    if (isVisible())
        mCalls->showVariables();
}
