// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"
#include "KyManager.h"

#include <QString>

#include <memory>
#include <string>

class KyQSettingsEditor;

/// The settings pages of the process, in the order in which they came; it owns none. Made with the library, reached by
/// get(); pages that are left when it ends are reported. For the user-interface thread.
///
/// ```
/// if (KySettingsEditorManager* manager = KySettingsEditorManager::get())
///     if (KyQSettingsEditor* page = manager->editSettingsEditor("ViewPage"))
///         page->show();
/// ```
class KYAPPLICATION_EXPORT KySettingsEditorManager {
public:
    KySettingsEditorManager(const KySettingsEditorManager&) = delete;
    KySettingsEditorManager& operator=(const KySettingsEditorManager&) = delete;
    ~KySettingsEditorManager();

    static void initializeClass();
    static void finalizeClass();
    /// Makes the instance; nothing happens when there is one.
    static void initializeSingleton();
    static void finalizeSingleton();
    /// Null before initializeSingleton and after finalizeSingleton.
    static KySettingsEditorManager* get() { return msInstance.get(); }

    /// The page of that name, null when there is none.
    const KyQSettingsEditor* getSettingsEditor(const QString& name) const;
    KyQSettingsEditor* editSettingsEditor(const QString& name);
    /// Pages that are registered.
    unsigned getNbSettingsEditors() const { return mEditors.getNbElements(); }
    /// In the order of registration; null when the index is out of range.
    KyQSettingsEditor* editSettingsEditorAt(unsigned index) { return mEditors.getElement(index); }

    /// False for null, a page that is here, and, with a report, for a name that is taken.
    bool registerSettingsEditor(const std::string& name, KyQSettingsEditor* editor);
    /// False when the page is not here.
    bool unregisterSettingsEditor(KyQSettingsEditor* editor);

private:
    KySettingsEditorManager();
    KyQSettingsEditor* find(const QString& name) const;

    KyManager<KyQSettingsEditor> mEditors;

    static std::unique_ptr<KySettingsEditorManager> msInstance;
    static bool msIsClassInitialized;
};
