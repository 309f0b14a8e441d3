// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyField.h"

#include <QPersistentModelIndex>
#include <QPointer>
#include <QWidget>

#include <vector>

class QAbstractItemModel;
class QHBoxLayout;

/// Base of the widgets that edit one field in a cell of an item view. A class gives its parts to addPart, shows a field
/// in them, reads it back, and tells what the user does: noteModified() while something is being typed, commitNow()
/// when the value is to be seen at once. Only what the user changed is written back.
///
/// Tab goes from part to part and then to the next cell, Return and Tab write, Escape takes back all that the editor
/// has written.
///
/// ```
/// class LevelEditor : public KyQFieldEditor { /* a slider */ };
/// KyQAttributeItemDelegate::registerEditor(levelKind, [](QWidget* parent) { return new LevelEditor(parent); });
/// ```
class KYAPPLICATION_EXPORT KyQFieldEditor : public QWidget {
    Q_OBJECT

public:
    explicit KyQFieldEditor(QWidget* parent);

    /// Whether the editor can show that value; where it cannot, its text is edited.
    virtual bool canShow(const KyField&) const { return true; }
    /// Shows the value, unless the user is changing it.
    void setField(const KyField& field);
    /// False, and `field` unchanged, when what stands there is no value.
    virtual bool getField(KyField& field) const = 0;
    /// Whether the user changed something that has not been written yet.
    bool isModified() const { return mIsModified; }

    /// Gives what the user changed to the model's cell, all of one editor as one step of its undo stack.
    void writeTo(QAbstractItemModel& model, const QModelIndex& index);
    /// Takes back what was written.
    void revert();

Q_SIGNALS:
    /// The value is to be written while the editor stays.
    void committed(QWidget* editor);

protected:
    virtual void showField(const KyField& field) = 0;
    /// The attribute did not take what the user chose; what stands there is shown next.
    virtual void noteRefused(const KyField&) {}

    /// Adds a widget that takes part in Tab; the first has the focus first.
    void addPart(QWidget* part, int stretch = 1);
    /// Adds a widget that the mouse alone reaches.
    void addButton(QWidget* button);
    void noteModified() { mIsModified = true; }
    void commitNow();

    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void tellFocusOut(Qt::FocusReason reason);
    bool focusPart(const QObject* from, int step);

    QHBoxLayout* mLayout;
    std::vector<QWidget*> mParts;
    QPointer<QAbstractItemModel> mModel;
    QPersistentModelIndex mIndex;
    int mSession;
    bool mIsModified = false;
    bool mIsShowing = false;
};
