// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostVariables.h"

#include "KyScriptDebugger.h"
#include "KyScriptEngine.h"
#include "KyScriptListing.h"

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSet>
#include <QStyledItemDelegate>

#include <algorithm>

namespace {

enum Column { eName, eValue, eType, eNbColumns };
enum Role { eReference = Qt::UserRole, eNbVariables, eKey };

constexpr int cNameWidth = 120;
constexpr int cValueWidth = 130;
/// Characters of a value in its tool tip.
constexpr int cMaxToolTip = 1000;

/// Those of KyScriptScope.
constexpr const char* cScopes[] = {QT_TRANSLATE_NOOP("KyHostVariables", "Locals"),
                                   QT_TRANSLATE_NOOP("KyHostVariables", "Upvalues"),
                                   QT_TRANSLATE_NOOP("KyHostVariables", "Globals")};
constexpr const char* cGlobals = cScopes[2];
constexpr const char* cRest = "…";

KyScriptDebugger& editDebugger() {
    return KyScriptEngine::get().editDebugger();
}

/// The texts of other values are those of Lua.
QString translateValue(const QString& value, const QString& type) {
    const QLatin1String table("table of ");
    return type == "table" && value.startsWith(table) ? KyHostVariables::tr("table of %1").arg(value.mid(table.size()))
                                                      : value;
}

/// Nothing inside is asked for before it is opened.
void setOpening(QTreeWidgetItem& item, bool canOpen) {
    item.setChildIndicatorPolicy(canOpen ? QTreeWidgetItem::ShowIndicator : QTreeWidgetItem::DontShowIndicator);
    if (!canOpen || !item.isExpanded())
        qDeleteAll(item.takeChildren());
    if (!canOpen)
        item.setExpanded(false);
}

/// Shows a value that is longer than its column.
class Reader : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const override {
        auto* const line = new QLineEdit(parent);
        line->setReadOnly(true);
        line->setFrame(false);
        line->setAccessibleName(index.siblingAtColumn(eName).data().toString());
        return line;
    }
    void setModelData(QWidget*, QAbstractItemModel*, const QModelIndex&) const override {}
};

} // namespace

struct KyHostVariables::Row {
    QString key;
    QString name;
    QString value;
    QString type;
    int reference = 0;
    int nbVariables = 0;
};

KyHostVariables::KyHostVariables() {
    setObjectName("variables");
    setColumnCount(eNbColumns);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setItemDelegateForColumn(eValue, new Reader(this));
    setAlternatingRowColors(true);
    header()->resizeSection(eName, cNameWidth);
    header()->resizeSection(eValue, cValueWidth);
    updateTranslations();
    connect(this, &QTreeWidget::itemExpanded, [this](QTreeWidgetItem* item) { list(*item); });
}

void KyHostVariables::updateTranslations() {
    setHeaderLabels({tr("Name"), tr("Value"), tr("Type")});
    setAccessibleName(tr("Variables"));
    setAccessibleDescription(tr("Right opens a table or an object, Left closes it."));
    for (int i = 0; i < topLevelItemCount(); ++i)
        topLevelItem(i)->setText(eName, tr(topLevelItem(i)->data(eName, eKey).toByteArray().constData()));
}

void KyHostVariables::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) {
        updateTranslations();
        showCall(mThread, mLevel);
    }
    QTreeWidget::changeEvent(event);
}

/// The view's own meaning of the asterisk opens all there is inside, of which there is no end where a table is in
/// itself.
void KyHostVariables::keyPressEvent(QKeyEvent* event) {
    QTreeWidgetItem* const item = currentItem();
    if (item && event->key() == Qt::Key_Asterisk)
        item->setExpanded(true);
    else if (item && event->key() == Qt::Key_F2)
        editItem(item, eValue);
    else if (item && event->matches(QKeySequence::Copy))
        QGuiApplication::clipboard()->setText(item->text(eValue));
    else
        QTreeWidget::keyPressEvent(event);
}

void KyHostVariables::showCall(int thread, int level) {
    mThread = thread;
    mLevel = level;
    std::vector<Row> rows;
    for (const KyScriptScope& scope : editDebugger().getScopes(thread, level)) {
        const auto found = std::ranges::find(cScopes, scope.name);
        const QString name = found == std::end(cScopes) ? QString::fromStdString(scope.name) : tr(*found);
        rows.push_back({QString::fromStdString(scope.name), name, {}, {}, scope.reference, scope.nbVariables});
    }
    const bool isFirst = topLevelItemCount() == 0;
    setUpdatesEnabled(false);
    update(*invisibleRootItem(), rows);
    // Most of the globals are Lua's own.
    for (int i = 0; isFirst && i < topLevelItemCount(); ++i) {
        topLevelItem(i)->setFirstColumnSpanned(true);
        topLevelItem(i)->setExpanded(topLevelItem(i)->data(eName, eKey) != cGlobals);
    }
    setUpdatesEnabled(true);
}

/// Rows of the same key stay what they are, with what is open in them; both lists have one order.
void KyHostVariables::update(QTreeWidgetItem& parent, const std::vector<Row>& rows) {
    QSet<QString> known;
    for (int i = 0; i < parent.childCount(); ++i)
        known.insert(parent.child(i)->data(eName, eKey).toString());
    int place = 0;
    QList<QTreeWidgetItem*> added;
    const auto insertAdded = [&] {
        parent.insertChildren(place, added);
        place += added.size();
        added.clear();
    };
    for (const Row& row : rows) {
        if (!known.contains(row.key)) {
            added.append(new QTreeWidgetItem);
            update(*added.last(), row);
            continue;
        }
        insertAdded();
        while (place < parent.childCount() && parent.child(place)->data(eName, eKey) != row.key)
            delete parent.takeChild(place);
        if (place == parent.childCount())
            parent.addChild(new QTreeWidgetItem);
        update(*parent.child(place), row);
        ++place;
    }
    insertAdded();
    while (parent.childCount() > place)
        delete parent.takeChild(place);
}

void KyHostVariables::update(QTreeWidgetItem& item, const Row& row) {
    item.setData(eName, eKey, row.key);
    item.setData(eName, eReference, row.reference);
    item.setData(eName, eNbVariables, row.nbVariables);
    item.setText(eName, row.name);
    item.setText(eValue, row.value);
    item.setText(eType, row.type);
    item.setToolTip(eValue, row.value.left(cMaxToolTip));
    // Who hears a row hears its first column.
    item.setData(eName, Qt::AccessibleTextRole,
                 row.value.isEmpty() ? row.name : QStringLiteral("%1 = %2").arg(row.name, row.value));
    item.setFlags(item.flags().setFlag(Qt::ItemIsEditable, !row.value.isEmpty()));
    setOpening(item, row.reference != 0 && row.nbVariables > 0);
    if (item.isExpanded())
        list(item);
}

void KyHostVariables::list(QTreeWidgetItem& item) {
    if (!editDebugger().isStopped())
        return;
    const int nbVariables = item.data(eName, eNbVariables).toInt();
    const auto listing = KyScriptListing::make(editDebugger(), item.data(eName, eReference).toInt());
    update(item, makeRows(listing, nbVariables));
}

std::vector<KyHostVariables::Row> KyHostVariables::makeRows(const KyScriptListing& listing, int nbVariables) {
    std::vector<Row> rows;
    for (const KyScriptVariable& variable : listing.variables) {
        const QString name = QString::fromStdString(variable.name), type = QString::fromStdString(variable.type);
        const QString value = translateValue(QString::fromStdString(variable.value), type);
        rows.push_back({name, name, value, type, variable.reference, variable.nbVariables});
    }
    if (listing.isTooLarge || static_cast<int>(rows.size()) < nbVariables)
        rows.push_back({cRest, cRest, tr("the rest is left out"), {}});
    return rows;
}
