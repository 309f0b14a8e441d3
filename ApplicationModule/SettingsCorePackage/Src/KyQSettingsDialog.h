// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"
#include "KyQSettingsEditor.h"

#include <QDialog>
#include <QPointer>

#include <map>

class QDialogButtonBox;
class QStackedWidget;
class QTreeWidget;
class QTreeWidgetItem;

/// Shows every page of KySettingsEditorManager: a tree of groups and items, the current page, and OK, Apply and Cancel.
/// OK and Apply call accept() of each page, whatever it answers, since a page that only saves answers false. Pages that
/// end are taken out at once, new ones are listed when the dialog is shown, and all texts follow the language. Pages
/// are lent: the dialog gives them back, hidden, to the parents that they had. A page that is to show what is now reads
/// it in its showEvent.
///
/// ```
/// KyQSettingsDialog dialog(&window);
/// dialog.showPage("ViewPage");
/// dialog.exec();
/// ```
class KYAPPLICATION_EXPORT KyQSettingsDialog : public QDialog {
    Q_OBJECT

public:
    explicit KyQSettingsDialog(QWidget* parent = nullptr);
    ~KyQSettingsDialog() override;

    /// The page on top; null when there is none.
    KyQSettingsEditor* editCurrentPage() const { return mCurrent; }
    /// Brings the page of that name to the top; false when there is none.
    bool showPage(const QString& name);
    /// Calls accept() of each page, in the order of registration.
    void apply();
    /// Lists the pages anew; called each time the dialog is shown.
    void updatePages();

    void accept() override;

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void build();
    void updateTranslations();
    void updatePagesLater();
    void addItem(KyQSettingsEditor* page);
    QTreeWidgetItem* findGroup(const QString& name);
    void select(KyQSettingsEditor* page);
    void setCurrent(QTreeWidgetItem* item);
    void borrow(KyQSettingsEditor* page);
    void giveBack();

    QTreeWidget* mTree;
    QStackedWidget* mStack;
    QDialogButtonBox* mButtons;
    QPointer<KyQSettingsEditor> mCurrent;
    /// Where the pages in the stack came from.
    std::map<KyQSettingsEditor*, QPointer<QWidget>> mLenders;
};
