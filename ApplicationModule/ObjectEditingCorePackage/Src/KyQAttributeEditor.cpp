// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQAttributeEditor.h"

#include "KyAttributeCommand_p.h"
#include "KyQAttributeItemDelegate.h"
#include "KyQAttributeView_p.h"

#include <QAction>
#include <QEvent>
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
    setFocusProxy(mView);

    connect(mSearch, &QLineEdit::textChanged, this, &KyQAttributeEditor::search);
    connect(mModel, &KyQAttributeModel::objectEnded, this, &KyQAttributeEditor::clearUndoStack);
    connect(mFilter, &QAbstractItemModel::modelReset, this, &KyQAttributeEditor::expandCategories);
    addActions();
    updateTranslations();
    setOptions(options);
}

KyQAttributeEditor::~KyQAttributeEditor() {
    // The rest of the widget goes later than the stack.
    mModel->setUndoStack(nullptr);
}

void KyQAttributeEditor::addActions() {
    mUndoAction = mUndoStack.createUndoAction(this);
    mUndoAction->setShortcut(QKeySequence(QStringLiteral("Ctrl+Z")));
    mRedoAction = mUndoStack.createRedoAction(this);
    mRedoAction->setShortcuts({QKeySequence(QStringLiteral("Ctrl+Shift+Z")), QKeySequence(QStringLiteral("Ctrl+Y"))});
    auto* searchAction = new QAction(this);
    searchAction->setShortcut(QKeySequence(QStringLiteral("Ctrl+F")));
    connect(searchAction, &QAction::triggered, this, &KyQAttributeEditor::startSearch);
    for (QAction* action : {mUndoAction, mRedoAction, searchAction}) {
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        addAction(action);
    }
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
    mView->setAccessibleName(tr("Attributes"));
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
