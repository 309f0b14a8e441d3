// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQAttributeEditor.h"

#include "KyAttributeCommand_p.h"
#include "KyQAttributeItemDelegate.h"
#include "KyQAttributeView_p.h"

#include <QAction>
#include <QEvent>
#include <QFocusEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QVBoxLayout>

namespace {

/// Rows whose names hold the text, with what stands above and below them.
class NameFilter : public QSortFilterProxyModel {
public:
    explicit NameFilter(QObject* parent)
        : QSortFilterProxyModel(parent) {
        setFilterCaseSensitivity(Qt::CaseInsensitive);
        setRecursiveFilteringEnabled(true);
    }

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override {
        if (QSortFilterProxyModel::filterAcceptsRow(row, parent))
            return true;
        for (QModelIndex above = parent; above.isValid(); above = above.parent())
            if (QSortFilterProxyModel::filterAcceptsRow(above.row(), above.parent()))
                return true;
        return false;
    }
};

} // namespace

KyQAttributeEditor::KyQAttributeEditor(QWidget* parent, int options)
    : QWidget(parent)
    , mModel(new KyQAttributeModel(this))
    , mFilter(new NameFilter(this))
    , mSearch(new QLineEdit)
    , mView(new KyQAttributeView) {
    mSearch->setObjectName(QStringLiteral("mSearch"));
    mSearch->setClearButtonEnabled(true);
    mSearch->installEventFilter(this);
    mView->setObjectName(QStringLiteral("mView"));
    mModel->setUndoStack(&mUndoStack);
    mModel->setListening(false);
    mFilter->setSourceModel(mModel);
    mView->setModel(mFilter);
    mView->setItemDelegate(new KyQAttributeItemDelegate(mView));
    mView->header()->resizeSection(KyQAttributeModel::eNameColumn, fontMetrics().averageCharWidth() * 24);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(mSearch);
    layout->addWidget(mView);

    connect(mSearch, &QLineEdit::textChanged, this, &KyQAttributeEditor::search);
    connect(mModel, &KyQAttributeModel::objectEnded, this, &KyQAttributeEditor::clearUndoStack);
    connect(mFilter, &QAbstractItemModel::modelReset, this, &KyQAttributeEditor::expandCategories);
    addActions();
    updateTranslations();
    setOptions(options);
}

KyQAttributeEditor::~KyQAttributeEditor() {
    // The rest of the widget goes later than the stack.
    mUndoStack.disconnect(this);
    mModel->setUndoStack(nullptr);
}

void KyQAttributeEditor::addActions() {
    mEditAction = addKeys({"F2"}, [this] { mView->editCurrent(); });
    mCopyAction = addKeys({"Ctrl+C"}, [this] { mView->copyCurrent(); });
    mUndoAction = addKeys({"Ctrl+Z"}, [this] { mUndoStack.undo(); });
    mRedoAction = addKeys({"Ctrl+Shift+Z", "Ctrl+Y"}, [this] { mUndoStack.redo(); });
    mSearchAction = addKeys({"Ctrl+F"}, [this] { startSearch(); });
    mView->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(&mUndoStack, &QUndoStack::indexChanged, this, &KyQAttributeEditor::updateActions);
}

/// The view shows it in its menu.
QAction* KyQAttributeEditor::addKeys(std::initializer_list<const char*> keys, const std::function<void()>& act) {
    auto* const action = new QAction(this);
    QList<QKeySequence> sequences;
    for (const char* key : keys)
        sequences.append(QKeySequence(QLatin1String(key)));
    action->setShortcuts(sequences);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, act);
    addAction(action);
    mView->addAction(action);
    return action;
}

void KyQAttributeEditor::updateActions() {
    const bool isReadOnly = (mOptions & KyQAttributeModel::eReadOnly) != 0;
    const QString undo = mUndoStack.undoText();
    const QString redo = mUndoStack.redoText();
    mEditAction->setText(isReadOnly ? tr("Sho&w the whole value") : tr("&Edit the value"));
    mCopyAction->setText(tr("&Copy the value"));
    mUndoAction->setText(undo.isEmpty() ? tr("&Undo") : tr("&Undo the change of %1").arg(undo));
    mRedoAction->setText(redo.isEmpty() ? tr("&Redo") : tr("&Redo the change of %1").arg(redo));
    mSearchAction->setText(tr("&Search"));
    mUndoAction->setEnabled(mUndoStack.canUndo());
    mRedoAction->setEnabled(mUndoStack.canRedo());
    for (QAction* action : {mUndoAction, mRedoAction})
        action->setVisible(!isReadOnly);
    mView->setAccessibleDescription(isReadOnly
                                        ? tr("Names and values of the object; F2 shows all of one, Ctrl+C copies it.")
                                        : tr("Names and values of the object; F2 edits."));
    mSearchAction->setVisible((mOptions & eHideSearch) == 0);
}

void KyQAttributeEditor::setObject(KyObject* object) {
    clearUndoStack();
    mModel->setObject(object);
}

// What a command does may end the object; the stack goes on with the command, so it is emptied when that is over.
void KyQAttributeEditor::clearUndoStack() {
    if (!KyAttributeCommand::isRunning())
        return mUndoStack.clear();
    QMetaObject::invokeMethod(&mUndoStack, &QUndoStack::clear, Qt::QueuedConnection);
}

void KyQAttributeEditor::setOptions(int options) {
    mOptions = options;
    mSearch->setHidden((options & eHideSearch) != 0);
    mModel->setOptions(options & ~eHideSearch);
    updateActions();
}

QTreeView* KyQAttributeEditor::editView() const {
    return mView;
}

void KyQAttributeEditor::setSearchText(const QString& text) {
    mSearch->setText(text);
}

void KyQAttributeEditor::expandCategories() {
    for (int row = 0; row < mFilter->rowCount(); ++row) {
        const QModelIndex index = mFilter->index(row, 0);
        if (index.data(KyQAttributeModel::eCategoryRole).toBool())
            mView->expand(index);
    }
}

// What is typed in a row that is about to hide would be written while the filter changes.
void KyQAttributeEditor::search(const QString& text) {
    mView->endEditing();
    mFilter->setFilterFixedString(text);
    expandCategories();
}

void KyQAttributeEditor::startSearch() {
    if (mOptions & eHideSearch)
        return;
    mSearch->setFocus(Qt::ShortcutFocusReason);
    mSearch->selectAll();
}

void KyQAttributeEditor::updateTranslations() {
    mSearch->setPlaceholderText(tr("Search"));
    mSearch->setAccessibleName(tr("Search"));
    mSearch->setAccessibleDescription(tr("Shows the attributes whose names hold the text."));
    mView->setAccessibleName(tr("Attributes"));
    updateActions();
    mView->viewport()->update();
    mModel->headerDataChanged(Qt::Horizontal, 0, KyQAttributeModel::eNbColumns - 1);
}

void KyQAttributeEditor::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange)
        updateTranslations();
    QWidget::changeEvent(event);
}

void KyQAttributeEditor::showEvent(QShowEvent* event) {
    mModel->setListening(true);
    QWidget::showEvent(event);
}

void KyQAttributeEditor::hideEvent(QHideEvent* event) {
    mModel->setListening(false);
    QWidget::hideEvent(event);
}

// A proxy would be a stop of its own for Tab, before the line that searches.
void KyQAttributeEditor::focusInEvent(QFocusEvent* event) {
    mView->setFocus(event->reason());
}

void KyQAttributeEditor::keyPressEvent(QKeyEvent* event) {
    if (isWindow() && event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

bool KyQAttributeEditor::eventFilter(QObject* watched, QEvent* event) {
    const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : 0;
    const bool isEscape = key == Qt::Key_Escape;
    if (watched != mSearch || (!isEscape && key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Down))
        return QWidget::eventFilter(watched, event);
    if (isEscape)
        mSearch->clear();
    mView->setFocus();
    if (!mView->currentIndex().isValid())
        mView->setCurrentIndex(mFilter->index(0, 0));
    return true;
}
