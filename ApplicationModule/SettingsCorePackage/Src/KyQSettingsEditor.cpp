// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQSettingsEditor.h"

#include "KyHasSettings.h"
#include "KyQtText.h"
#include "KySettings.h"
#include "KySettingsEditorManager.h"

#include <QEvent>

using KyApplication::toKyString;

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
    mProblem.clear();
    if (!mHasSettings)
        return false;
    KySettings* settings = mHasSettings->editSettings();
    if (!settings->save() && !settings->getFilePath().isEmpty())
        mProblem = tr("The settings cannot be saved in \"%1\".").arg(settings->getFilePath());
    return false;
}

void KyQSettingsEditor::reset() {}

void KyQSettingsEditor::setName(const std::string& name) {
    enter(name);
}

void KyQSettingsEditor::updateTranslations() {}

void KyQSettingsEditor::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange)
        updateTranslations();
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
