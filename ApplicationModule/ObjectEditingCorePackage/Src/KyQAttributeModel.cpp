// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQAttributeModel.h"

#include "KyAttributeCommand_p.h"
#include "KyAttributeNode_p.h"
#include "KyFieldText_p.h"
#include "KyQAttributeModel_p.h"
#include "KyQtText.h"
#include "KyQtValues.h"
#include "KyQtVariant.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QPointer>
#include <QUndoStack>

using KyApplication::toQString;

namespace {

/// Categories of objects that we show ourselves; those of others are shown as they are.
[[maybe_unused]] constexpr const char* cCategories[] = {
    QT_TRANSLATE_NOOP("KyAttributeCategory", "Callstack"),
    QT_TRANSLATE_NOOP("KyAttributeCategory", "Locals"),
    QT_TRANSLATE_NOOP("KyAttributeCategory", "Globals"),
};

QString describeReference(KyObject* object) {
    return object ? toQString(KyFieldText::describe(object)) : KyQAttributeModel::tr("none");
}

} // namespace

KyQAttributeModel::KyQAttributeModel(QObject* parent)
    : QAbstractItemModel(parent)
    , mRoot(std::make_unique<KyAttributeNode>(KyAttributeNode::eObject, KyAttributeTarget()))
    , mSession(std::make_unique<Session>()) {
    mFollowTimer.setSingleShot(true);
    mFollowTimer.setInterval(0);
    connect(&mFollowTimer, &QTimer::timeout, this, &KyQAttributeModel::followAll);
}

KyQAttributeModel::~KyQAttributeModel() = default;

void KyQAttributeModel::setObject(KyObject* object) {
    beginResetModel();
    detach(*mRoot);
    *mSession = Session();
    mRoot = std::make_unique<KyAttributeNode>(KyAttributeNode::eObject, KyAttributeTarget{KyObjectReference(object)});
    mRoot->isFetched = true;
    if (object) {
        for (auto& row : describe(*object))
            mRoot->insert(static_cast<int>(mRoot->children.size()), std::move(row));
        attach(*mRoot, *object);
    }
    endResetModel();
}

KyObject* KyQAttributeModel::getObject() const {
    return mRoot->target.object.get();
}

void KyQAttributeModel::setOptions(int options) {
    if (mOptions == options)
        return;
    mOptions = options;
    setObject(getObject());
}

KyAttributeNode& KyQAttributeModel::nodeAt(const QModelIndex& index) const {
    return index.isValid() ? *static_cast<KyAttributeNode*>(index.internalPointer()) : *mRoot;
}

QModelIndex KyQAttributeModel::indexOf(const KyAttributeNode& node, int column) const {
    return node.parent ? createIndex(node.row, column, const_cast<KyAttributeNode*>(&node)) : QModelIndex();
}

QModelIndex KyQAttributeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent))
        return {};
    return indexOf(*nodeAt(parent).children[static_cast<std::size_t>(row)], column);
}

QModelIndex KyQAttributeModel::parent(const QModelIndex& index) const {
    return index.isValid() ? indexOf(*nodeAt(index).parent) : QModelIndex();
}

int KyQAttributeModel::rowCount(const QModelIndex& parent) const {
    return parent.column() > 0 ? 0 : static_cast<int>(nodeAt(parent).children.size());
}

bool KyQAttributeModel::hasChildren(const QModelIndex& parent) const {
    return parent.column() <= 0 && hasRows(nodeAt(parent));
}

bool KyQAttributeModel::canFetchMore(const QModelIndex& parent) const {
    return hasChildren(parent) && !nodeAt(parent).isFetched;
}

void KyQAttributeModel::fetchMore(const QModelIndex& parent) {
    fetch(nodeAt(parent));
}

QVariant KyQAttributeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == eNameColumn ? tr("Attribute") : tr("Value");
}

bool KyQAttributeModel::readValue(KyAttributeNode& node, KyField& value) const {
    const bool hasValue =
        node.kind == KyAttributeNode::eElement || (node.kind == KyAttributeNode::eAttribute && !node.isContainer());
    if (!hasValue || node.hasFailed)
        return false;
    node.hasFailed = !node.target.read(value);
    return !node.hasFailed;
}

bool KyQAttributeModel::isWritable(const KyAttributeNode& node) const {
    const bool isValue = node.kind == KyAttributeNode::eElement || node.kind == KyAttributeNode::eAttribute;
    const KyAttributeInterface* attribute = isValue ? node.target.find() : nullptr;
    return attribute && !attribute->isReadOnly();
}

const KyType* KyQAttributeModel::getObjectType(const KyAttributeNode& node) {
    const bool isValue = node.kind == KyAttributeNode::eElement || node.kind == KyAttributeNode::eAttribute;
    const KyAttributeInterface* attribute = isValue ? node.target.find() : nullptr;
    return attribute ? attribute->getObjectType() : nullptr;
}

QString KyQAttributeModel::getName(const KyAttributeNode& node) const {
    if (node.kind == KyAttributeNode::eElement)
        return QStringLiteral("[%1]").arg(node.target.index);
    if (node.kind == KyAttributeNode::eCategory)
        return QCoreApplication::translate("KyAttributeCategory", node.target.category.c_str());
    return toQString(node.target.name);
}

QString KyQAttributeModel::getValueText(KyAttributeNode& node) const {
    if (node.kind == KyAttributeNode::eCategory)
        return {};
    if (node.kind == KyAttributeNode::eComponent)
        return describeReference(node.findObject());
    if (node.isContainer())
        return tr("%n value(s)", nullptr, node.target.countValues());
    KyField value;
    if (!readValue(node, value))
        return {};
    if (const bool* isSet = value.get<bool>())
        return *isSet ? tr("true") : tr("false");
    const bool isReference = value.getKind() == cFieldKindOf<KyObjectReference>;
    return isReference ? describeReference(value.toKyObject()) : toQString(KyFieldText::format(value));
}

QVariant KyQAttributeModel::getValueData(KyAttributeNode& node, int role) const {
    KyField value;
    if (!readValue(node, value))
        return {};
    switch (role) {
    case eFieldRole:
        return QVariant::fromValue(value);
    case Qt::EditRole:
        return KyApplication::toQVariant(value);
    case Qt::CheckStateRole:
        if (const bool* isChecked = value.get<bool>())
            return *isChecked ? Qt::Checked : Qt::Unchecked;
        return {};
    case Qt::DecorationRole:
        if (const KyColor* color = value.get<KyColor>())
            return KyApplication::toQColor(*color);
        return {};
    case Qt::ToolTipRole:
        return toQString(value.getFieldType().getName());
    default:
        return {};
    }
}

QVariant KyQAttributeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    KyAttributeNode& node = nodeAt(index);
    if (role == eCategoryRole)
        return node.kind == KyAttributeNode::eCategory;
    if (role == eObjectTypeRole)
        return QVariant::fromValue(getObjectType(node));
    if (role == Qt::FontRole && node.kind == KyAttributeNode::eCategory) {
        QFont font = QApplication::font();
        font.setBold(true);
        return font;
    }
    const bool isAttribute = node.kind == KyAttributeNode::eAttribute || node.kind == KyAttributeNode::eElement;
    if (role == Qt::ForegroundRole && isAttribute && !isWritable(node))
        return QApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    if (role == Qt::DisplayRole)
        return index.column() == eNameColumn ? getName(node) : getValueText(node);
    const bool isOfValue = index.column() == eValueColumn || role == eFieldRole;
    return isOfValue ? getValueData(node, role) : QVariant();
}

Qt::ItemFlags KyQAttributeModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    const bool isChangeable = index.isValid() && index.column() == eValueColumn && !(mOptions & eReadOnly);
    KyField value;
    if (!isChangeable || !isWritable(nodeAt(index)) || !readValue(nodeAt(index), value))
        return flags;
    if (value.get<bool>())
        flags |= Qt::ItemIsUserCheckable;
    const bool isReference = value.getKind() == cFieldKindOf<KyObjectReference>;
    return isReference || KyFieldText::isParsable(value) ? flags | Qt::ItemIsEditable : flags;
}

bool KyQAttributeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    // A view that loses a row may give what is typed there, when the row's element is another already.
    if (mIsChanging || !index.isValid() || index.column() != eValueColumn || (mOptions & eReadOnly))
        return false;
    const KyAttributeTarget target = nodeAt(index).target;
    if (role == eEditingRole)
        return followSession(target, value.toInt());
    KyField present;
    if (!readValue(nodeAt(index), present))
        return false;
    if (role == Qt::CheckStateRole) {
        *mSession = Session(); // no editor does this
        return present.get<bool>() && write(target, KyField(value.toInt() == Qt::Checked));
    }
    if (role != eFieldRole && role != Qt::EditRole)
        return false;
    KyField field = role == eFieldRole ? value.value<KyField>() : KyApplication::toKyField(value);
    if (!field.isText() || !KyFieldText::isParsable(present))
        return write(target, field);
    KyField parsed;
    return KyFieldText::parse(field.unchecked<std::string>(), present, parsed) && write(target, parsed);
}

// The setter may run anything: the value is read back, and this may be gone.
bool KyQAttributeModel::write(const KyAttributeTarget& target, const KyField& value) {
    const QPointer<KyQAttributeModel> self(this);
    KyField before;
    if (!target.read(before))
        return false;
    if (KyFieldText::areSame(before, value))
        return true;
    const KyObjectReference shown = mRoot->target.object;
    const bool isDone = target.write(value);
    KyField after;
    if (!self || !isDone || !(mRoot->target.object == shown) || !target.read(after))
        return isDone;
    const bool isInSession = mSession->number != 0 && *mSession->target == target;
    if (isInSession)
        mSession->after = after;
    if (mUndoStack && !KyFieldText::areSame(after, before))
        mUndoStack->push(new KyAttributeCommand(keep(target), before, after, isInSession ? mSession->number : 0));
    if (self && !mIsListening)
        refresh();
    return true;
}

bool KyQAttributeModel::followSession(const KyAttributeTarget& target, int number) {
    if (number > 0 && number != mSession->number)
        return beginSession(target, number);
    if (number == 0)
        *mSession = Session();
    return number >= 0 || (mSession->number == -number && revertSession());
}

bool KyQAttributeModel::beginSession(const KyAttributeTarget& target, int number) {
    KyField present;
    const bool isDone = target.read(present);
    *mSession = Session{number, keep(target), present, present};
    return isDone;
}

bool KyQAttributeModel::revertSession() {
    const Session session = *mSession;
    const KyAttributeTarget target = *session.target;
    return target.isStill(session.after) && write(target, session.before);
}

std::shared_ptr<const KyAttributeTarget> KyQAttributeModel::keep(const KyAttributeTarget& target) {
    auto kept = std::make_shared<KyAttributeTarget>(target);
    if (target.index < 0)
        return kept;
    std::erase_if(mKept, [](const auto& other) { return other.expired(); });
    mKept.push_back(kept);
    return kept;
}

void KyQAttributeModel::moveKept(const KyObject& object, const std::string& name, int index, bool isInsertion) {
    for (const auto& entry : mKept) {
        const auto kept = entry.lock();
        if (!kept || kept->object.get() != &object || kept->name != name || kept->index < index)
            continue;
        if (isInsertion)
            ++kept->index;
        else if (kept->index > index)
            --kept->index;
        else
            kept->object = KyObjectReference();
    }
}
