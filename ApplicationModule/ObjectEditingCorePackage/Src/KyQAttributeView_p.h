// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QTreeView>

class QLineEdit;

/// The tree of an attribute editor with its keyboard: F2 and Return edit the value of the current row, or show all of
/// one that cannot be edited, Space switches a flag, Tab goes on to the next value that can be edited.
class KyQAttributeView : public QTreeView {
    Q_OBJECT

public:
    explicit KyQAttributeView(QWidget* parent = nullptr);

    /// Writes what is being typed and closes the editor.
    void endEditing();
    /// Opens the editor of the current row's value, for one that cannot be edited a line to read and select; nothing
    /// where there is none or one is open already.
    void editCurrent();
    /// Puts the current row's value on the clipboard, as it is edited; nothing where there is none.
    void copyCurrent() const;

    void reset() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    void rowsInserted(const QModelIndex& parent, int start, int end) override;

private:
    void editFrom(QModelIndex index, bool isForward);
    void toggle(const QModelIndex& index);
    void showText(const QModelIndex& index);
    void closeText();

    /// Shows all of a value; null mostly.
    QPointer<QLineEdit> mText;
};
