// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQSettingsDialog.h"

#include "KyQtText.h"
#include "KySettingsEditorManager.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QDialogButtonBox>
#include <QEvent>
#include <QKeySequence>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QShowEvent>
#include <QSplitter>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>
#include <vector>

using KyApplication::toQString;

namespace {

constexpr int cPageRole = Qt::UserRole;
constexpr QSize cDefaultSize(720, 480);

using Pages = std::vector<QPointer<KyQSettingsEditor>>;

Pages listPages() {
    Pages pages;
    KySettingsEditorManager* manager = KySettingsEditorManager::get();
    for (unsigned i = 0; manager && i < manager->getNbSettingsEditors(); ++i)
        pages.emplace_back(manager->editSettingsEditorAt(i));
    return pages;
}

/// Null for a group.
KyQSettingsEditor* getPage(const QTreeWidgetItem* item) {
    return item->data(0, cPageRole).value<QPointer<KyQSettingsEditor>>();
}

} // namespace

KyQSettingsDialog::KyQSettingsDialog(QWidget* parent)
    : QDialog(parent)
    , mTree(new QTreeWidget)
    , mStack(new QStackedWidget)
    , mMessage(new QLabel)
    , mButtons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Apply | QDialogButtonBox::Cancel)) {
    build();
    updateTranslations();
    updatePages();
}

KyQSettingsDialog::~KyQSettingsDialog() {
    giveBack();
}

void KyQSettingsDialog::build() {
    setObjectName(QStringLiteral("KyQSettingsDialog"));
    mTree->setObjectName(QStringLiteral("settingsTree"));
    mTree->setHeaderHidden(true);
    mStack->setObjectName(QStringLiteral("settingsPages"));
    mButtons->setObjectName(QStringLiteral("settingsButtons"));

    mMessage->setObjectName(QStringLiteral("settingsMessage"));
    mMessage->setTextFormat(Qt::PlainText);
    mMessage->setWordWrap(true);
    mMessage->hide();

    auto* area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    // It follows the focus of what it holds.
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(mStack);
    auto* splitter = new QSplitter;
    splitter->addWidget(mTree);
    splitter->addWidget(area);
    splitter->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter, 1);
    layout->addWidget(mMessage);
    layout->addWidget(mButtons);
    resize(cDefaultSize);
    mTree->setFocus();

    connect(mTree, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) { setCurrent(item); });
    connect(mButtons, &QDialogButtonBox::accepted, this, &KyQSettingsDialog::accept);
    connect(mButtons, &QDialogButtonBox::rejected, this, &KyQSettingsDialog::reject);
    connect(mButtons->button(QDialogButtonBox::Apply), &QAbstractButton::clicked, this, &KyQSettingsDialog::apply);
}

bool KyQSettingsDialog::showPage(const QString& name) {
    KySettingsEditorManager* manager = KySettingsEditorManager::get();
    KyQSettingsEditor* page = manager ? manager->editSettingsEditor(name) : nullptr;
    if (!page)
        return false;
    updatePages();
    select(page);
    return true;
}

bool KyQSettingsDialog::apply() {
    // A page may end others, and itself.
    for (const QPointer<KyQSettingsEditor>& page : listPages())
        if (page)
            page->accept();
    const QStringList problems = listProblems();
    showProblems(problems);
    if (!problems.isEmpty())
        selectProblem();
    return problems.isEmpty();
}

/// The first page with a problem, unless the one on top has one.
void KyQSettingsDialog::selectProblem() {
    const auto hasProblem = [](const KyQSettingsEditor* page) { return page && !page->getProblem().isEmpty(); };
    const Pages pages = listPages();
    const auto found = std::ranges::find_if(pages, hasProblem);
    if (found != pages.end() && !hasProblem(mCurrent))
        select(*found);
}

QStringList KyQSettingsDialog::listProblems() const {
    QStringList problems;
    for (const QPointer<KyQSettingsEditor>& page : listPages())
        if (!page->getProblem().isEmpty() && !problems.contains(page->getProblem()))
            problems.append(page->getProblem());
    return problems;
}

void KyQSettingsDialog::showProblems(const QStringList& problems) {
    mMessage->setText(problems.join(QLatin1Char('\n')));
    mMessage->setVisible(!problems.isEmpty());
    if (problems.isEmpty())
        return;
    QAccessibleEvent event(mMessage, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void KyQSettingsDialog::accept() {
    if (apply())
        QDialog::accept();
}

void KyQSettingsDialog::resetPages() {
    showProblems({});
    for (const QPointer<KyQSettingsEditor>& page : listPages())
        if (page)
            page->reset();
}

void KyQSettingsDialog::updatePages() {
    const QPointer<KyQSettingsEditor> current = mCurrent;
    const Pages pages = listPages();
    {
        const QSignalBlocker blocker(mTree);
        mTree->clear();
        for (const QPointer<KyQSettingsEditor>& page : pages)
            addItem(page);
        mTree->expandAll();
    }
    const bool isLeft = std::ranges::find(pages, current) != pages.end();
    mCurrent = nullptr;
    if (!pages.empty())
        select(isLeft ? current : pages.front());
}

void KyQSettingsDialog::addItem(KyQSettingsEditor* page) {
    const std::string& text = page->getItemName().empty() ? page->getName() : page->getItemName();
    QTreeWidgetItem* group = findGroup(toQString(page->getGroupName()));
    auto* item = new QTreeWidgetItem(group, {toQString(text)});
    item->setData(0, cPageRole, QVariant::fromValue(QPointer<KyQSettingsEditor>(page)));
    connect(page, &QObject::destroyed, this, &KyQSettingsDialog::updatePagesLater, Qt::UniqueConnection);
}

/// The group of that name, made where there is none; the tree itself for no name.
QTreeWidgetItem* KyQSettingsDialog::findGroup(const QString& name) {
    QTreeWidgetItem* root = mTree->invisibleRootItem();
    if (name.isEmpty())
        return root;
    for (int i = 0; i < root->childCount(); ++i)
        if (!getPage(root->child(i)) && root->child(i)->text(0) == name)
            return root->child(i);
    return new QTreeWidgetItem(root, {name});
}

void KyQSettingsDialog::select(KyQSettingsEditor* page) {
    for (QTreeWidgetItemIterator item(mTree); *item; ++item)
        if (page && getPage(*item) == page)
            mTree->setCurrentItem(*item);
}

/// A group stands for its first page.
void KyQSettingsDialog::setCurrent(QTreeWidgetItem* item) {
    if (item && !getPage(item))
        item = item->child(0);
    mCurrent = item ? getPage(item) : nullptr;
    if (!mCurrent)
        return;
    borrow(mCurrent);
    mStack->setCurrentWidget(mCurrent);
}

void KyQSettingsDialog::borrow(KyQSettingsEditor* page) {
    if (mStack->indexOf(page) >= 0)
        return;
    QPointer<QWidget> lender = page->parentWidget();
    for (QWidget* above = lender; above; above = above->parentWidget())
        if (auto* const holder = qobject_cast<KyQSettingsDialog*>(above); holder && holder->mStack == lender)
            lender = holder->takeLender(page);
    std::erase_if(mLoans, [page](const Loan& loan) { return !loan.page || loan.page == page; });
    mLoans.push_back({page, lender});
    mStack->addWidget(page);
    orderTabs(*page);
}

/// What comes into the dialog goes behind all that is there, also behind the buttons.
void KyQSettingsDialog::orderTabs(const QWidget& page) {
    std::vector<QWidget*> widgets;
    for (QWidget* next = page.nextInFocusChain(); page.isAncestorOf(next); next = next->nextInFocusChain())
        if (next->focusPolicy() != Qt::NoFocus && !next->focusProxy())
            widgets.push_back(next);
    QWidget* last = mTree;
    for (QWidget* widget : widgets)
        setTabOrder(std::exchange(last, widget), widget);
}

/// Where the page came from, which is then no longer this dialog's business.
QPointer<QWidget> KyQSettingsDialog::takeLender(const KyQSettingsEditor* page) {
    const auto loan = std::ranges::find(mLoans, page, [](const Loan& other) { return other.page.data(); });
    const QPointer<QWidget> lender = loan == mLoans.end() ? QPointer<QWidget>() : loan->lender;
    if (loan != mLoans.end())
        mLoans.erase(loan);
    return lender;
}

void KyQSettingsDialog::giveBack() {
    const auto pages = mStack->findChildren<KyQSettingsEditor*>(QString(), Qt::FindDirectChildrenOnly);
    for (KyQSettingsEditor* page : pages) {
        mStack->removeWidget(page);
        page->setParent(takeLender(page), page->windowFlags());
        page->hide();
    }
}

void KyQSettingsDialog::updatePagesLater() {
    QMetaObject::invokeMethod(this, &KyQSettingsDialog::updatePages, Qt::QueuedConnection);
}

void KyQSettingsDialog::updateTranslations() {
    setWindowTitle(tr("Settings"));
    mTree->setAccessibleName(tr("Pages"));
    mTree->setAccessibleDescription(tr("Chooses the page beside it."));
    setHelp(QDialogButtonBox::Ok, tr("Takes over all pages and closes the settings"), Qt::Key_Return);
    setHelp(QDialogButtonBox::Cancel, tr("Closes the settings without taking over the pages"), Qt::Key_Escape);
    mButtons->button(QDialogButtonBox::Apply)->setToolTip(tr("Takes over all pages"));
    updateLetters();
}

/// The box gives its buttons texts after the dialog has heard of the language; that of this one has no letter.
void KyQSettingsDialog::updateLetters() {
    mButtons->button(QDialogButtonBox::Apply)->setText(tr("&Apply"));
}

/// What has no letter tells its key.
void KyQSettingsDialog::setHelp(int which, const QString& help, const QKeySequence& key) {
    auto* const button = mButtons->button(static_cast<QDialogButtonBox::StandardButton>(which));
    button->setToolTip(QStringLiteral("%1 (%2)").arg(help, key.toString(QKeySequence::NativeText)));
    button->setAccessibleDescription(help);
}

/// Pages have changed their texts by now.
void KyQSettingsDialog::updateProblems() {
    if (mMessage->isVisibleTo(this))
        showProblems(listProblems());
}

void KyQSettingsDialog::changeEvent(QEvent* event) {
    // The pages hear of the language after the dialog.
    if (event->type() == QEvent::LanguageChange) {
        updateTranslations();
        updatePagesLater();
        QMetaObject::invokeMethod(this, &KyQSettingsDialog::updateLetters, Qt::QueuedConnection);
        QMetaObject::invokeMethod(this, &KyQSettingsDialog::updateProblems, Qt::QueuedConnection);
    }
    QDialog::changeEvent(event);
}

void KyQSettingsDialog::showEvent(QShowEvent* event) {
    // A window that comes back from the task bar was open all the time.
    if (!event->spontaneous()) {
        resetPages();
        updatePages();
    }
    QDialog::showEvent(event);
}
