// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQAttributeView_p.h"

#include "KyFieldText_p.h"
#include "KyQAttributeModel.h"
#include "KyQFieldEditor.h"

#include "KyQtText.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>

#include <algorithm>
#include <array>
#include <utility>

namespace {

QModelIndex findValue(const QModelIndex& index) {
    return index.siblingAtColumn(KyQAttributeModel::eValueColumn);
}

/// As it is edited; of what has no such text what is shown.
QString getText(const QModelIndex& value) {
    const auto field = value.data(KyQAttributeModel::eFieldRole).value<KyField>();
    const std::string text = field.isValid() ? KyFieldText::format(field) : std::string();
    return text.empty() ? value.data().toString() : KyApplication::toQString(text);
}

constexpr std::array cClosingKeys{Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Tab, Qt::Key_Backtab};

} // namespace

KyQAttributeView::KyQAttributeView(QWidget* parent)
    : QTreeView(parent) {
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setAllColumnsShowFocus(true);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked);
}

void KyQAttributeView::keyPressEvent(QKeyEvent* event) {
    const QModelIndex value = findValue(currentIndex());
    const bool isFree = value.isValid() && state() != EditingState;
    const bool isEdit = event->key() == Qt::Key_F2 || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isFree && isEdit && ((value.flags() & Qt::ItemIsEditable) || !getText(value).isEmpty())) {
        editCurrent();
    } else if (event->key() == Qt::Key_Escape) {
        event->ignore();
    } else if (isFree && event->key() == Qt::Key_Space && (value.flags() & Qt::ItemIsUserCheckable)) {
        toggle(value);
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void KyQAttributeView::editCurrent() {
    const QModelIndex value = findValue(currentIndex());
    if (state() == EditingState || !value.isValid())
        return;
    setCurrentIndex(value);
    if (value.flags() & Qt::ItemIsEditable)
        edit(value);
    else
        showText(value);
}

void KyQAttributeView::copyCurrent() const {
    if (const QString text = getText(findValue(currentIndex())); !text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}

void KyQAttributeView::showText(const QModelIndex& index) {
    const QString text = getText(index);
    if (text.isEmpty())
        return;
    closeText();
    mText = new QLineEdit(text, viewport());
    mText->setObjectName(QStringLiteral("mText"));
    mText->setReadOnly(true);
    mText->setFrame(false);
    mText->setAccessibleName(index.siblingAtColumn(KyQAttributeModel::eNameColumn).data().toString());
    mText->setGeometry(visualRect(index));
    mText->installEventFilter(this);
    mText->show();
    mText->setFocus();
    mText->selectAll();
}

void KyQAttributeView::closeText() {
    if (!mText)
        return;
    QLineEdit* const text = std::exchange(mText, nullptr);
    const bool hadFocus = text->hasFocus();
    text->hide();
    text->deleteLater();
    if (hadFocus)
        setFocus();
}

bool KyQAttributeView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != mText)
        return QTreeView::eventFilter(watched, event);
    const auto reason =
        event->type() == QEvent::FocusOut ? static_cast<QFocusEvent*>(event)->reason() : Qt::ActiveWindowFocusReason;
    const bool isKey = event->type() == QEvent::KeyPress &&
                       std::ranges::find(cClosingKeys, static_cast<QKeyEvent*>(event)->key()) != cClosingKeys.end();
    if (isKey || (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason))
        closeText();
    return isKey;
}

/// What stood there has ended.
void KyQAttributeView::reset() {
    closeText();
    QTreeView::reset();
}

void KyQAttributeView::toggle(const QModelIndex& index) {
    const bool isChecked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    model()->setData(index, isChecked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

// The view's own way stops at the first row that cannot be edited.
void KyQAttributeView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    const bool isForward = hint == QAbstractItemDelegate::EditNextItem;
    const bool isOn = isForward || hint == QAbstractItemDelegate::EditPreviousItem;
    const bool hadFocus = editor && editor->isAncestorOf(QApplication::focusWidget());
    QTreeView::closeEditor(editor, isOn ? QAbstractItemDelegate::NoHint : hint);
    // The view's own way takes it back from an editor, but not from its parts.
    if (hadFocus)
        setFocus();
    if (isOn)
        editFrom(currentIndex(), isForward);
}

void KyQAttributeView::editFrom(QModelIndex index, bool isForward) {
    do
        index = isForward ? indexBelow(index) : indexAbove(index);
    while (index.isValid() && !(findValue(index).flags() & Qt::ItemIsEditable));
    if (!index.isValid())
        return;
    setCurrentIndex(findValue(index));
    edit(findValue(index));
}

void KyQAttributeView::endEditing() {
    const auto editors = viewport()->findChildren<KyQFieldEditor*>();
    for (const QPointer<KyQFieldEditor>& editor : QList<QPointer<KyQFieldEditor>>(editors.begin(), editors.end())) {
        if (editor)
            commitData(editor);
        if (editor)
            closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

void KyQAttributeView::rowsInserted(const QModelIndex& parent, int start, int end) {
    QTreeView::rowsInserted(parent, start, end);
    if (parent.isValid())
        return;
    for (int row = start; row <= end; ++row) {
        const QModelIndex index = model()->index(row, 0, parent);
        if (index.data(KyQAttributeModel::eCategoryRole).toBool())
            expand(index);
    }
}
