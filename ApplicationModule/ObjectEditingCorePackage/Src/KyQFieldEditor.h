// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyField.h"

#include <QPersistentModelIndex>
#include <QPointer>
#include <QWidget>

#include <vector>

class QAbstractButton;
class QAbstractItemModel;
class QHBoxLayout;

/// Base of the widgets that edit one field in a cell of an item view. A class gives its parts to addPart, shows a field
/// in them, reads it back, and tells what the user does: noteModified() while something is being typed, commitNow()
/// when the value is to be seen at once. Only what the user changed is written back.
///
/// Tab goes from part to part and then to the next cell, Return and Tab write, Escape takes back all that the editor
/// has written, Alt+Down presses the button.
///
/// ```
/// class LevelEditor : public KyQFieldEditor { /* a slider */ };
/// KyQAttributeItemDelegate::registerEditor(levelKind, [](QWidget* parent) { return new LevelEditor(parent); });
/// ```
class KYAPPLICATION_EXPORT KyQFieldEditor : public QWidget {
    Q_OBJECT

public:
    /// The parent owns it.
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
    /// What the parts are called for those who do not see them; several are numbered.
    void setLabel(const QString& label);

Q_SIGNALS:
    /// The value is to be written while the editor stays.
    void committed(QWidget* editor);

protected:
    /// Puts the value into the widgets; the user is changing nothing.
    virtual void showField(const KyField& field) = 0;
    /// The attribute did not take what the user chose; what stands there is shown next.
    virtual void noteRefused(const KyField&) {}

    /// Adds a widget that takes part in Tab; the first has the focus first.
    void addPart(QWidget* part, int stretch = 1);
    /// Adds a button that Alt+Down presses; one at most. its tool tip gets the key, whoever sets it: the constructor or
    /// updateTranslations().
    void addButton(QAbstractButton* button);
    /// Puts the texts of the parts into the language of now; called before the editor is shown and after each change
    /// of the language. Overriders call this one last.
    virtual void updateTranslations();
    /// To be called by a derived class when the user changed something.
    void noteModified() { mIsModified = true; }
    /// Sends committed() when there is something to write.
    void commitNow();

    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void tellFocusOut(Qt::FocusReason reason);
    bool focusPart(const QObject* from, int step);

    QHBoxLayout* mLayout;
    std::vector<QWidget*> mParts;
    QAbstractButton* mButton = nullptr;
    /// What the button tells without its key, and with it.
    QString mButtonHelp;
    QString mButtonToolTip;
    QString mLabel;
    QPointer<QAbstractItemModel> mModel;
    QPersistentModelIndex mIndex;
    int mSession;
    bool mIsModified = false;
    bool mIsShowing = false;
};
