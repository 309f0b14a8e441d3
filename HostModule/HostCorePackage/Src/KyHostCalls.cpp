// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostCalls.h"

#include "KyHostVariables.h"

#include "KyScriptDebugger.h"
#include "KyScriptEngine.h"

#include <QEvent>
#include <QListWidget>
#include <QSignalBlocker>
#include <QSplitter>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int cCallsShare = 1;
constexpr int cVariablesShare = 3;

/// Calls without a name, by KyScriptFrame::kind.
constexpr std::pair<const char*, const char*> cKinds[] = {
    {"main", QT_TRANSLATE_NOOP("KyHostCalls", "(main chunk)")},
    {"tail", QT_TRANSLATE_NOOP("KyHostCalls", "(tail call)")},
};

KyScriptDebugger& editDebugger() {
    return KyScriptEngine::get().editDebugger();
}

QString getName(const KyScriptFrame& frame) {
    if (!frame.name.empty())
        return QString::fromStdString(frame.name);
    for (const auto& [kind, name] : cKinds)
        if (frame.kind == kind)
            return KyHostCalls::tr(name);
    return KyHostCalls::tr("(function)");
}

QString describe(const KyScriptFrame& frame) {
    const QString place = QString::fromStdString(frame.shortName);
    return getName(frame) + "  " + (frame.line > 0 ? QStringLiteral("%1:%2").arg(place).arg(frame.line) : place);
}

} // namespace

KyHostCalls::KyHostCalls(std::function<void(const KyScriptFrame& call)> chosen)
    : mChosen(std::move(chosen))
    , mCalls(new QListWidget)
    , mVariables(new KyHostVariables) {
    mCalls->setObjectName("calls");
    auto* const splitter = new QSplitter(Qt::Vertical);
    splitter->addWidget(mCalls);
    splitter->addWidget(mVariables);
    splitter->setStretchFactor(0, cCallsShare);
    splitter->setStretchFactor(1, cVariablesShare);
    splitter->setChildrenCollapsible(false);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(splitter);
    updateTranslations();
    connect(mCalls, &QListWidget::currentRowChanged, [this] {
        showVariables();
        const auto row = static_cast<std::size_t>(mCalls->currentRow());
        if (row < mFrames.size())
            mChosen(mFrames[row]);
    });
}

KyHostCalls::~KyHostCalls() {
    mCalls->disconnect();
}

void KyHostCalls::updateTranslations() {
    mCalls->setAccessibleName(tr("Calls"));
    mCalls->setAccessibleDescription(tr("Calls under way; the variables are those of the one that is chosen."));
}

void KyHostCalls::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) {
        updateTranslations();
        const int row = mCalls->currentRow();
        list();
        const QSignalBlocker blocker(mCalls);
        mCalls->setCurrentRow(row);
    }
    QWidget::changeEvent(event);
}

void KyHostCalls::list() {
    const QSignalBlocker blocker(mCalls);
    mCalls->clear();
    for (const KyScriptFrame& frame : mFrames)
        mCalls->addItem(describe(frame));
    if (static_cast<int>(mFrames.size()) == cMaxCalls)
        mCalls->addItem(QStringLiteral("…"));
}

void KyHostCalls::showStop() {
    mFrames = editDebugger().getFrames(editDebugger().getStop().thread, 0, cMaxCalls);
    list();
    mCalls->setCurrentRow(0);
}

void KyHostCalls::showVariables() {
    const auto row = static_cast<std::size_t>(mCalls->currentRow());
    if (row < mFrames.size())
        mVariables->showCall(editDebugger().getStop().thread, mFrames[row].level);
    else
        mVariables->showCall(0, -1);
}
