// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <QString>
#include <QWidget>

#include <string>

class KyHasSettings;

/// A page of a settings dialog. It registers itself by name with KySettingsEditorManager as long as it lives, where
/// dialogs find it; a page that is made while there is no manager is not registered. It shows values of the object that
/// it edits, which it does not own and which may end first. For the user-interface thread.
///
/// ```
/// class ViewPage : public KyQSettingsEditor {
/// public:
///     explicit ViewPage(MyView* view) : KyQSettingsEditor("ViewPage", tr("Display"), tr("View"), view) {}
///     bool accept() override {
///         editHasSettings()->editSettings()->setAttribute("View", "zoom", mZoom->value());
///         editHasSettings()->updateDataFromSettings();
///         KyQSettingsEditor::accept(); // saves
///         return true;
///     }
/// ```
class KYAPPLICATION_EXPORT KyQSettingsEditor : public QWidget {
    Q_OBJECT

public:
    /// The name is the registered one and the widget's object name; group and item are what dialogs list. A second page
    /// of one name is reported and not registered. `hasSettings` may be null.
    KyQSettingsEditor(const QString& name, const QString& groupName, const QString& itemName,
                      KyHasSettings* hasSettings);
    ~KyQSettingsEditor() override;

    /// The page's name, not translated.
    virtual const std::string& getName() const { return mName; }
    /// @{
    /// The group that the page stands in.
    const std::string& getGroupName() const { return mGroupName; }
    void setGroupName(const std::string& groupName) { mGroupName = groupName; }
    /// @}
    /// @{
    /// The name in the list of pages.
    const std::string& getItemName() const { return mItemName; }
    void setItemName(const std::string& itemName) { mItemName = itemName; }
    /// @}

    /// Null when there is none or it has ended.
    const KyHasSettings* getHasSettings() const { return mHasSettings; }
    KyHasSettings* editHasSettings() { return mHasSettings; }

    /// Saves the settings of the edited object, if they have a file; false, also when they are saved: failures are told
    /// by getProblem(). A page that applies values overrides it.
    virtual bool accept();
    /// Shows the values of now in place of what was typed; nothing here. A dialog calls it once each time it opens.
    virtual void reset();
    /// What kept the last accept() from saving, for a person to read; empty when nothing did.
    const QString& getProblem() const { return mProblem; }

protected:
    /// For pages whose accept() saves by itself.
    void setProblem(const QString& problem);
    /// cUnsaved or a text of the page's own class, which follows the language, with the argument in place of "%1". It
    /// is kept as a pointer.
    void setProblem(const char* text, const QString& argument = {});
    /// The problem of a file, the argument, that cannot be written.
    static const char* const cUnsaved;
    /// Registers the page anew under that name.
    virtual void setName(const std::string& name);
    /// Reads the translated texts again after a change of the language; nothing here.
    virtual void updateTranslations();
    void changeEvent(QEvent* event) override;

private:
    void enter(const std::string& name);
    void watch();
    void translateProblem();

    std::string mName;
    std::string mGroupName;
    std::string mItemName;
    QString mProblem;
    /// Where it comes from; null for one that does not follow the language.
    const char* mProblemText = nullptr;
    QString mProblemArgument;
    KyHasSettings* mHasSettings;
};
