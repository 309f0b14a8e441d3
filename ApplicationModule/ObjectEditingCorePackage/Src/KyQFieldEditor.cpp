// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQFieldEditor.h"

#include "KyQAttributeModel.h"

#include <QAbstractButton>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>

#include <algorithm>

namespace {

int makeSession() {
    static int count = 0;
    return ++count;
}

QString getButtonKey() {
    return QKeySequence(static_cast<int>(Qt::ALT) + static_cast<int>(Qt::Key_Down)).toString(QKeySequence::NativeText);
}

bool isUndoKey(const QKeyEvent& event) {
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    if (event.key() == Qt::Key_Y)
        return modifiers == Qt::ControlModifier;
    return event.key() == Qt::Key_Z && (modifiers & ~Qt::KeyboardModifiers(Qt::ShiftModifier)) == Qt::ControlModifier;
}

} // namespace

KyQFieldEditor::KyQFieldEditor(QWidget* parent)
    : QWidget(parent)
    , mLayout(new QHBoxLayout(this))
    , mSession(makeSession()) {
    mLayout->setContentsMargins(0, 0, 0, 0);
    mLayout->setSpacing(1);
    setAutoFillBackground(true);
}

void KyQFieldEditor::setField(const KyField& field) {
    if (mIsModified)
        return;
    mIsShowing = true;
    showField(field);
    mIsShowing = false;
    mIsModified = false;
}

void KyQFieldEditor::writeTo(QAbstractItemModel& model, const QModelIndex& index) {
    KyField field;
    if (!mIsModified || !getField(field))
        return;
    mModel = &model;
    mIndex = index;
    const QPointer<KyQFieldEditor> self(this);
    const QPersistentModelIndex cell(index);
    // What the value becomes is to be shown when it is told.
    mIsModified = false;
    model.setData(index, mSession, KyQAttributeModel::eEditingRole);
    const bool isTaken =
        cell.isValid() && model.setData(cell, QVariant::fromValue(field), KyQAttributeModel::eFieldRole);
    if (self && cell.isValid() && !isTaken)
        noteRefused(field);
    if (self && cell.isValid())
        setField(cell.data(KyQAttributeModel::eFieldRole).value<KyField>());
}

void KyQFieldEditor::revert() {
    mIsModified = false;
    if (mModel && mIndex.isValid())
        mModel->setData(mIndex, -mSession, KyQAttributeModel::eEditingRole);
}

void KyQFieldEditor::setLabel(const QString& label) {
    mLabel = label;
    updateTranslations();
}

void KyQFieldEditor::updateTranslations() {
    const int nbParts = static_cast<int>(mParts.size());
    for (int i = 0; i < nbParts; ++i) {
        QWidget& part = *mParts[static_cast<std::size_t>(i)];
        part.setAccessibleName(nbParts == 1 ? mLabel : tr("%1, %2 of %3").arg(mLabel).arg(i + 1).arg(nbParts));
        part.setAccessibleDescription(tr("Return writes, Escape takes back, Tab goes on."));
    }
    if (!mButton)
        return;
    if (mButton->toolTip() != mButtonToolTip)
        mButtonHelp = mButton->toolTip();
    mButtonToolTip = QStringLiteral("%1 (%2)").arg(mButtonHelp, getButtonKey());
    mButton->setAccessibleName(mButtonHelp);
    mButton->setToolTip(mButtonToolTip);
}

void KyQFieldEditor::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange)
        updateTranslations();
    QWidget::changeEvent(event);
}

void KyQFieldEditor::addPart(QWidget* part, int stretch) {
    mLayout->addWidget(part, stretch);
    part->installEventFilter(this);
    mParts.push_back(part);
    if (mParts.size() == 1)
        setFocusProxy(part);
}

void KyQFieldEditor::addButton(QAbstractButton* button) {
    mLayout->addWidget(button);
    button->setFocusPolicy(Qt::NoFocus);
    mButton = button;
}

void KyQFieldEditor::commitNow() {
    if (mIsShowing)
        return;
    mIsModified = true;
    committed(this);
}

bool KyQFieldEditor::focusPart(const QObject* from, int step) {
    const auto found = std::find(mParts.begin(), mParts.end(), from);
    const auto next = (found - mParts.begin()) + step;
    if (next < 0 || next >= static_cast<std::ptrdiff_t>(mParts.size()))
        return false;
    mParts[static_cast<std::size_t>(next)]->setFocus(step > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

// Dialogs of an editor take the focus to another window.
void KyQFieldEditor::tellFocusOut(Qt::FocusReason reason) {
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
        return;
    QFocusEvent focusOut(QEvent::FocusOut, reason);
    QApplication::sendEvent(this, &focusOut);
}

// The view's delegate watches the editor alone, so keys and the focus of its parts are told in its name.
bool KyQFieldEditor::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut)
        tellFocusOut(static_cast<QFocusEvent*>(event)->reason());
    // Undo is for what is being typed first; when all is written, it is for what was written.
    if (event->type() == QEvent::ShortcutOverride && !mIsModified && isUndoKey(*static_cast<QKeyEvent*>(event))) {
        event->ignore();
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto* pressed = static_cast<QKeyEvent*>(event);
    if (mButton && pressed->key() == Qt::Key_Down && (pressed->modifiers() & Qt::AltModifier)) {
        mButton->click();
        return true;
    }
    const bool isTab = pressed->key() == Qt::Key_Tab;
    const bool isBacktab = pressed->key() == Qt::Key_Backtab;
    if ((isTab || isBacktab) && focusPart(watched, isTab ? 1 : -1))
        return true;
    const bool isEnd = pressed->key() == Qt::Key_Return || pressed->key() == Qt::Key_Enter;
    if (!isTab && !isBacktab && !isEnd && pressed->key() != Qt::Key_Escape)
        return QWidget::eventFilter(watched, event);
    QKeyEvent copy(QEvent::KeyPress, pressed->key(), pressed->modifiers(), pressed->text());
    QApplication::sendEvent(this, &copy);
    return true;
}

void KyQFieldEditor::keyPressEvent(QKeyEvent* event) {
    event->accept();
}
