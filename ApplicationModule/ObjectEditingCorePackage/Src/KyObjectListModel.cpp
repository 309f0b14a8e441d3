// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyObjectListModel.h"

#include "KyObjectQmlBinding.h"
#include "KyQmlFailure_p.h"
#include "KyQmlUse_p.h"
#include "KyQmlValues_p.h"

#include "KyAttributeInterface.h"
#include "KyField.h"
#include "KyObject.h"
#include "KyType.h"

KyObjectListModel::KyObjectListModel(KyObject& object, std::string attribute, QObject* parent)
    : QAbstractListModel(parent)
    , mObject(&object)
    , mAttribute(std::move(attribute)) {
    object.connectModified(this, &KyObjectListModel::onModified);
    mCount = readCount();
}

const KyAttributeInterface* KyObjectListModel::findAttribute() const {
    return mObject ? mObject->getAttribute(mAttribute) : nullptr;
}

// With a copy of the name: what is called may end the model.
template <class Callable>
void KyObjectListModel::guard(Callable&& callable) const {
    const std::string attribute = mAttribute;
    const std::string_view className = mObject ? mObject->getObjectType()->getName() : std::string_view();
    kyQmlGuard(*this, className, attribute, std::forward<Callable>(callable));
}

int KyObjectListModel::readCount() const {
    unsigned count = 0;
    const KyAttributeInterface* attribute = findAttribute();
    guard([&] {
        if (!attribute || !attribute->getNbValues(*mObject, count))
            count = 0;
    });
    return static_cast<int>(count);
}

int KyObjectListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : mCount;
}

QVariant KyObjectListModel::data(const QModelIndex& index, int role) const {
    const bool isValue = role == eValueRole || role == Qt::DisplayRole || role == Qt::EditRole;
    return index.isValid() && isValue ? get(index.row()) : QVariant();
}

bool KyObjectListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    return index.isValid() && (role == eValueRole || role == Qt::EditRole) && set(index.row(), value);
}

Qt::ItemFlags KyObjectListModel::flags(const QModelIndex& index) const {
    const KyAttributeInterface* attribute = findAttribute();
    const Qt::ItemFlags flags = QAbstractListModel::flags(index);
    return attribute && !attribute->isReadOnly() ? flags | Qt::ItemIsEditable : flags;
}

bool KyObjectListModel::removeRows(int row, int count, const QModelIndex& parent) {
    return !parent.isValid() && remove(row, count);
}

QHash<int, QByteArray> KyObjectListModel::roleNames() const {
    return {{eValueRole, "value"}};
}

QVariant KyObjectListModel::get(int index) const {
    const KyAttributeInterface* attribute = findAttribute();
    QVariant value;
    guard([&] {
        KyField field;
        if (attribute && index >= 0 && attribute->getValue(*mObject, field, static_cast<unsigned>(index)))
            value = KyQmlValues::toQml(field);
    });
    return value;
}

// Taking the value out of JavaScript may run scripts, which may end the object and the model.
bool KyObjectListModel::put(int index, const QVariant& value, Put operation) {
    const QPointer<KyObjectListModel> self(this);
    const KyAttributeInterface* attribute = findAttribute();
    bool isDone = false;
    guard([&] {
        KyField field;
        if (!attribute || index < 0 || !KyQmlValues::toField(value, attribute->getValueKind(), field) || !self)
            return;
        attribute = findAttribute();
        isDone = attribute && operation(*attribute, *mObject, static_cast<unsigned>(index), field);
    });
    return isDone;
}

bool KyObjectListModel::set(int index, const QVariant& value) {
    return put(index, value, [](const auto& attribute, KyObject& object, unsigned at, const KyField& field) {
        return attribute.setValue(object, field, at);
    });
}

bool KyObjectListModel::insert(int index, const QVariant& value) {
    return put(index, value, [](const auto& attribute, KyObject& object, unsigned at, const KyField& field) {
        return attribute.addValue(object, at, field);
    });
}

bool KyObjectListModel::remove(int index, int count) {
    if (index < 0 || count < 1 || count > mCount - index)
        return false;
    const std::string attributeName = mAttribute;
    const KyObjectReference object(mObject);
    bool isDone = true;
    guard([&] {
        for (int row = index + count - 1; row >= index && isDone; --row) {
            const KyAttributeInterface* attribute = object ? object.get()->getAttribute(attributeName) : nullptr;
            isDone = attribute && attribute->removeValue(*object.get(), static_cast<unsigned>(row));
        }
    });
    return isDone;
}

bool KyObjectListModel::move(int from, int to) {
    const KyAttributeInterface* attribute = findAttribute();
    if (!attribute || !isRow(from) || !isRow(to))
        return false;
    bool isDone = from == to;
    if (!isDone)
        guard([&] { isDone = moveValue(*attribute, static_cast<unsigned>(from), static_cast<unsigned>(to)); });
    return isDone;
}

bool KyObjectListModel::moveValue(const KyAttributeInterface& attribute, unsigned from, unsigned to) {
    const KyObjectReference object(mObject);
    KyField value;
    if (!attribute.getValue(*mObject, value, from) || !attribute.removeValue(*mObject, from))
        return false;
    if (!object)
        return false;
    if (attribute.addValue(*object.get(), to, value))
        return true;
    if (object)
        attribute.addValue(*object.get(), from, value);
    return false;
}

void KyObjectListModel::onModified(KyObject*, KyObjectModificationType kind, const std::string& name, int index) {
    if (kind == eObjectEnding || kind == eObjectEnded)
        return onObjectEnding();
    if (name == mAttribute)
        tell([this, kind, index] { return follow(kind, index); });
    else if (name.empty())
        tell([] { return false; });
}

void KyObjectListModel::onObjectEnding() {
    if (!mObject)
        return;
    mObject = nullptr;
    disconnectAll();
    tell([] { return false; });
}

// The views' handlers run in here: they may change the container again, and end the object or the model.
template <class Tell>
void KyObjectListModel::tell(Tell&& tellRows) {
    if (mIsTelling) {
        mIsDirty = true;
        return;
    }
    const KyQmlUse use(qobject_cast<KyObjectQmlBinding*>(parent()));
    const QPointer<KyObjectListModel> self(this);
    const int before = mCount;
    mIsTelling = true;
    const bool isTold = tellRows();
    if (self && (!isTold || mIsDirty))
        reset();
    if (!self)
        return;
    mIsTelling = false;
    if (mCount != before)
        countChanged();
}

bool KyObjectListModel::follow(KyObjectModificationType kind, int index) {
    const QPointer<KyObjectListModel> self(this);
    const int count = readCount();
    if (!self || mIsDirty)
        return false;
    if (kind == eElementInserted && count == mCount + 1 && index >= 0 && index <= mCount) {
        beginInsertRows({}, index, index);
        mCount = count;
        endInsertRows();
        return true;
    }
    if (kind == eElementRemoved && count == mCount - 1 && isRow(index)) {
        beginRemoveRows({}, index, index);
        mCount = count;
        endRemoveRows();
        return true;
    }
    if (kind == eElementChanged && count == mCount && isRow(index)) {
        dataChanged(this->index(index), this->index(index));
        return true;
    }
    return false;
}

// Counted when all know that a reset comes, so that what they do at that is in it. What they do when told that it is
// done is told as ever: a handler that changes the container at each reset would never see the last.
void KyObjectListModel::reset() {
    const QPointer<KyObjectListModel> self(this);
    beginResetModel();
    const int count = self ? readCount() : 0;
    if (!self)
        return;
    mCount = count;
    mIsDirty = false;
    mIsTelling = false;
    endResetModel();
}
