// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQSettingsEditor.h"

#include "KyHasSettings.h"
#include "KyQtText.h"
#include "KySettings.h"
#include "KySettingsEditorManager.h"

#include <QCoreApplication>
#include <QEvent>

using KyApplication::toKyString;

const char* const KyQSettingsEditor::cUnsaved =
    QT_TRANSLATE_NOOP("KyQSettingsEditor", "The settings cannot be saved in \"%1\".");

KyQSettingsEditor::KyQSettingsEditor(const QString& name, const QString& groupName, const QString& itemName,
                                     KyHasSettings* hasSettings)
    : mGroupName(toKyString(groupName))
    , mItemName(toKyString(itemName))
    , mHasSettings(hasSettings) {
    enter(toKyString(name));
    watch();
}

KyQSettingsEditor::~KyQSettingsEditor() {
    if (KySettingsEditorManager* manager = KySettingsEditorManager::get())
        manager->unregisterSettingsEditor(this);
}

bool KyQSettingsEditor::accept() {
    setProblem(QString());
    if (!mHasSettings)
        return false;
    KySettings* settings = mHasSettings->editSettings();
    if (!settings->save() && !settings->getFilePath().isEmpty())
        setProblem(cUnsaved, settings->getFilePath());
    return false;
}

void KyQSettingsEditor::reset() {}

void KyQSettingsEditor::setProblem(const QString& problem) {
    mProblemText = nullptr;
    mProblem = problem;
}

void KyQSettingsEditor::setProblem(const char* text, const QString& argument) {
    mProblemText = text;
    mProblemArgument = argument;
    translateProblem();
}

/// A text of this class, which pages use too, or of the page's own.
void KyQSettingsEditor::translateProblem() {
    if (!mProblemText)
        return;
    const bool isOurs = mProblemText == cUnsaved;
    mProblem = isOurs ? tr(mProblemText) : QCoreApplication::translate(metaObject()->className(), mProblemText);
    if (mProblem.contains("%1"))
        mProblem = mProblem.arg(mProblemArgument);
}

void KyQSettingsEditor::setName(const std::string& name) {
    enter(name);
}

void KyQSettingsEditor::updateTranslations() {}

void KyQSettingsEditor::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) {
        updateTranslations();
        translateProblem();
    }
    QWidget::changeEvent(event);
}

void KyQSettingsEditor::enter(const std::string& name) {
    mName = name;
    setObjectName(KyApplication::toQString(name));
    KySettingsEditorManager* manager = KySettingsEditorManager::get();
    if (!manager)
        return;
    manager->unregisterSettingsEditor(this);
    manager->registerSettingsEditor(name, this);
}

void KyQSettingsEditor::watch() {
    if (mHasSettings)
        connect(mHasSettings->editLife(), &QObject::destroyed, this, [this] { mHasSettings = nullptr; });
}
