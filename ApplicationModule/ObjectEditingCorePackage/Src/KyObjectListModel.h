// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyObjectModificationType.h"
#include "KySignal.h"

#include <QAbstractListModel>

#include <string>

class KyAttributeInterface;
class KyField;
class KyObject;

/// A container attribute as a list model, for QML's views and repeaters and for Qt's item views: one row an element,
/// its value under the role "value" (QML also has it as `modelData`).
///
/// Rows come, go and change as the object tells it, element by element; where what it tells does not agree with what
/// the container holds, or where a handler of its signals changes the container, the model is reset. Values are read
/// when they are asked for. The object is not owned: when it ends, the model is empty. One thread, Qt's.
///
/// ```
/// KyObjectListModel tags(*node, "Tags");
/// view->setModel(&tags);
/// tags.append("red"); // the node has one tag more
/// ```
class KYAPPLICATION_EXPORT KyObjectListModel : public QAbstractListModel, public KyHasSlots {
    Q_OBJECT
    /// See getCount.
    Q_PROPERTY(int count READ getCount NOTIFY countChanged)

public:
    /// The value of an element; in QML the role `value`.
    enum Role { eValueRole = Qt::UserRole + 1 };

    /// Empty when the object has no attribute of that name.
    KyObjectListModel(KyObject& object, std::string attribute, QObject* parent = nullptr);

    /// Elements in the container now.
    int getCount() const { return mCount; }
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    /// False, and nothing changed, when the element does not take the value.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool removeRows(int row, int count, const QModelIndex& parent = {}) override;
    QHash<int, QByteArray> roleNames() const override;

    /// Undefined when there is no such element.
    Q_INVOKABLE QVariant get(int index) const;
    /// The operations give false, and change nothing, when the container does not offer them, for an index out of range
    /// and for a value that is refused.
    Q_INVOKABLE bool set(int index, const QVariant& value);
    /// Before the element at `index`; at the end when that is the count.
    Q_INVOKABLE bool insert(int index, const QVariant& value);
    /// Behind the last element.
    Q_INVOKABLE bool append(const QVariant& value) { return insert(readCount(), value); }
    /// Takes `count` elements out, from `index` on.
    Q_INVOKABLE bool remove(int index, int count = 1);
    /// Takes the element out and puts it in where it then has the index `to`.
    Q_INVOKABLE bool move(int from, int to);

Q_SIGNALS:
    /// Sent after elements came or went.
    void countChanged();

private:
    using Put = bool (*)(const KyAttributeInterface& attribute, KyObject& object, unsigned index, const KyField& value);

    const KyAttributeInterface* findAttribute() const;
    template <class Callable>
    void guard(Callable&& callable) const;
    bool put(int index, const QVariant& value, Put operation);
    int readCount() const;
    bool isRow(int index) const { return index >= 0 && index < mCount; }
    bool moveValue(const KyAttributeInterface& attribute, unsigned from, unsigned to);
    void onModified(KyObject* object, KyObjectModificationType kind, const std::string& name, int index);
    void onObjectEnding();
    template <class Tell>
    void tell(Tell&& tellRows);
    bool follow(KyObjectModificationType kind, int index);
    void reset();

    KyObject* mObject;
    std::string mAttribute;
    /// What the views know; the container is ahead of it while a change is being told.
    int mCount = 0;
    /// While rows are being told, what comes in between waits: views take one change at a time.
    bool mIsTelling = false;
    bool mIsDirty = false;
};
