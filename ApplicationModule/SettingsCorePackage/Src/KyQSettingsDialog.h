// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"
#include "KyQSettingsEditor.h"

#include <QDialog>
#include <QPointer>

#include <vector>

class QDialogButtonBox;
class QKeySequence;
class QLabel;
class QStackedWidget;
class QTreeWidget;
class QTreeWidgetItem;

/// Shows every page of KySettingsEditorManager: a tree of groups and items, the current page, and OK, Apply and Cancel.
/// OK and Apply call accept() of each page, whatever it answers, since a page that only saves answers false; a problem
/// that a page then tells is shown, with that page on top, and keeps the dialog open. Each time the dialog opens,
/// reset() of each page is called once, so that the pages show what is now and nothing of what was cancelled. Pages
/// that end are taken out at once, new ones are listed when the dialog opens, and all texts follow the language. Pages
/// are lent: the dialog gives them back, hidden, to the parents that they had, and so does a second dialog that has
/// taken them over.
///
/// ```
/// KyQSettingsDialog dialog(&window);
/// dialog.showPage("ViewPage");
/// dialog.exec();
/// ```
class KYAPPLICATION_EXPORT KyQSettingsDialog : public QDialog {
    Q_OBJECT

public:
    /// The parent owns it.
    explicit KyQSettingsDialog(QWidget* parent = nullptr);
    ~KyQSettingsDialog() override;

    /// The page on top; null when there is none.
    KyQSettingsEditor* editCurrentPage() const { return mCurrent; }
    /// Brings the page of that name to the top; false when there is none.
    bool showPage(const QString& name);
    /// Calls accept() of each page, in the order of registration; false, with the problems shown, when a page tells
    /// one.
    bool apply();
    /// Lists the pages anew; called each time the dialog opens.
    void updatePages();

    void accept() override;

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    /// A page in the stack, and where it came from.
    struct Loan {
        QPointer<KyQSettingsEditor> page;
        QPointer<QWidget> lender;
    };

    void build();
    void resetPages();
    QStringList listProblems() const;
    void showProblems(const QStringList& problems);
    void selectProblem();
    void updateTranslations();
    void updateLetters();
    void setHelp(int which, const QString& help, const QKeySequence& key);
    void updateProblems();
    void updatePagesLater();
    void addItem(KyQSettingsEditor* page);
    QTreeWidgetItem* findGroup(const QString& name);
    void select(KyQSettingsEditor* page);
    void setCurrent(QTreeWidgetItem* item);
    void borrow(KyQSettingsEditor* page);
    void orderTabs(const QWidget& page);
    QPointer<QWidget> takeLender(const KyQSettingsEditor* page);
    void giveBack();

    QTreeWidget* mTree;
    QStackedWidget* mStack;
    QLabel* mMessage;
    QDialogButtonBox* mButtons;
    QPointer<KyQSettingsEditor> mCurrent;
    std::vector<Loan> mLoans;
};
