// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KySettingsEditorManager.h"

#include "KyQSettingsEditor.h"
#include "KyQtText.h"

#include "KyException.h"

#include <utility>

std::unique_ptr<KySettingsEditorManager> KySettingsEditorManager::msInstance;
bool KySettingsEditorManager::msIsClassInitialized = false;

KySettingsEditorManager::KySettingsEditorManager()
    : mEditors(false) {}

KySettingsEditorManager::~KySettingsEditorManager() = default;

void KySettingsEditorManager::initializeClass() {
    if (!std::exchange(msIsClassInitialized, true))
        initializeSingleton();
}

void KySettingsEditorManager::finalizeClass() {
    if (std::exchange(msIsClassInitialized, false))
        finalizeSingleton();
}

void KySettingsEditorManager::initializeSingleton() {
    if (!msInstance)
        msInstance.reset(new KySettingsEditorManager);
}

void KySettingsEditorManager::finalizeSingleton() {
    msInstance.reset();
}

const KyQSettingsEditor* KySettingsEditorManager::getSettingsEditor(const QString& name) const {
    return find(name);
}

KyQSettingsEditor* KySettingsEditorManager::editSettingsEditor(const QString& name) {
    return find(name);
}

bool KySettingsEditorManager::registerSettingsEditor(const std::string& name, KyQSettingsEditor* editor) {
    const int found = mEditors.find(name);
    if (found >= 0 && mEditors.getElement(static_cast<unsigned>(found)) != editor)
        KyException::create("A settings page named \"" + name + "\" is registered already.");
    return mEditors.add(name, editor);
}

bool KySettingsEditorManager::unregisterSettingsEditor(KyQSettingsEditor* editor) {
    return mEditors.remove(editor);
}

KyQSettingsEditor* KySettingsEditorManager::find(const QString& name) const {
    const int found = mEditors.find(KyApplication::toKyString(name));
    return found < 0 ? nullptr : mEditors.getElement(static_cast<unsigned>(found));
}
