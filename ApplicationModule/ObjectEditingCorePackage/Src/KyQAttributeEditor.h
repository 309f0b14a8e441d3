// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"
#include "KyQAttributeModel.h"

#include <QUndoStack>
#include <QWidget>

#include <functional>
#include <initializer_list>

class KyObject;
class QAction;
class QLineEdit;
class QSortFilterProxyModel;
class QTreeView;
class KyQAttributeView;

/// Shows and edits the attributes of any object: a tree of names and values (KyQAttributeModel) with one editor for
/// each kind (KyQAttributeItemDelegate), a line that searches names, and undo and redo.
///
/// Keys: F2 or Return edits, or shows all of a value that cannot be edited, Ctrl+C copies the value, Tab goes on to the
/// next value, Escape takes back, Space switches a flag, Ctrl+Z and Ctrl+Shift+Z undo and redo, Ctrl+F searches; the
/// menu of the view shows them; Escape closes an editor that is a window. Read-only attributes are grey. The object is
/// not owned: when it ends, the editor is empty and its undo stack too. An editor that is hidden costs the object
/// nothing.
///
/// ```
/// auto* editor = new KyQAttributeEditor;
/// editor->setObject(&lamp);
/// editor->show();
/// ```
class KYAPPLICATION_EXPORT KyQAttributeEditor : public QWidget {
    Q_OBJECT

public:
    /// Bits, those of KyQAttributeModel::Option and one more.
    enum Option {
        eHideSearch = 1,
        eDefaultOptions = KyQAttributeModel::eCategories,
        /// 18: by category and nothing can be changed, as a debugger shows values.
        eInspection = KyQAttributeModel::eCategories | KyQAttributeModel::eReadOnly
    };

    /// The parent owns it; options are bits of Option and KyQAttributeModel::Option.
    explicit KyQAttributeEditor(QWidget* parent = nullptr, int options = eDefaultOptions);
    ~KyQAttributeEditor() override;

    /// Null empties the editor. The undo stack is cleared.
    void setObject(KyObject* object);
    /// Null when there is none or it has ended.
    KyObject* getObject() const { return mModel->getObject(); }
    /// @{
    /// Bits of Option and KyQAttributeModel::Option.
    void setOptions(int options);
    int getOptions() const { return mOptions; }
    /// @}
    /// Reads everything again, for changes that nobody told.
    void refresh() { mModel->refresh(); }
    /// Shows the attributes, elements and components whose names hold the text, and what stands below them, among the
    /// rows that have been opened.
    void setSearchText(const QString& text);

    /// Owned by the editor.
    KyQAttributeModel* editModel() const { return mModel; }
    /// Owned by the editor.
    QTreeView* editView() const;
    /// Where changes by the user go; owned by the editor.
    QUndoStack* editUndoStack() { return &mUndoStack; }

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addActions();
    QAction* addKeys(std::initializer_list<const char*> keys, const std::function<void()>& act);
    void updateActions();
    void clearUndoStack();
    void expandCategories();
    void search(const QString& text);
    void startSearch();
    void updateTranslations();

    QUndoStack mUndoStack;
    KyQAttributeModel* mModel;
    QSortFilterProxyModel* mFilter;
    QLineEdit* mSearch;
    KyQAttributeView* mView;
    QAction* mEditAction = nullptr;
    QAction* mCopyAction = nullptr;
    QAction* mUndoAction = nullptr;
    QAction* mRedoAction = nullptr;
    QAction* mSearchAction = nullptr;
    int mOptions = eDefaultOptions;
};
