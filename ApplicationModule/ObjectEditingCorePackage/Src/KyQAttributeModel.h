// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyField.h"
#include "KyObjectModificationType.h"
#include "KySignal.h"
#include "KyType.h"

#include <QAbstractItemModel>
#include <QTimer>

#include <map>
#include <memory>
#include <string>
#include <vector>

class KyObject;
class QUndoStack;
struct KyAttributeNode;
struct KyAttributeTarget;

Q_DECLARE_METATYPE(KyField)
Q_DECLARE_METATYPE(const KyType*)

/// The attributes of any object as a tree of names and values, for Qt's item views: single values, containers with
/// their elements, components and referenced objects with theirs. Rows below others are made when a view asks for them,
/// of a container the first `cMaxNbElements`.
///
/// The tree follows the objects' modified signals: values at once, attributes that come and go when the event loop
/// runs. Objects are not owned; when the object ends, the model is empty. Changes go to the undo stack when there is
/// one. One thread, Qt's.
///
/// ```
/// KyQAttributeModel model;
/// model.setObject(&lamp);
/// treeView->setModel(&model);
/// ```
class KYAPPLICATION_EXPORT KyQAttributeModel : public QAbstractItemModel, public KyHasSlots {
    Q_OBJECT

public:
    /// Attribute names, and their values.
    enum Column { eNameColumn, eValueColumn, eNbColumns };

    /// What a cell tells beside Qt's own roles.
    enum Role {
        /// The value as a KyField; to be read and set.
        eFieldRole = Qt::UserRole + 1,
        /// To be set only: a number above 0 begins an editing session or goes on with it, whose changes are one step of
        /// the undo stack; the negative number takes its changes back; 0 ends it.
        eEditingRole,
        /// Whether the row stands for a category.
        eCategoryRole,
        /// The class of the objects that the row refers to, a `const KyType*`; null for one that refers to none.
        eObjectTypeRole
    };

    /// Bits.
    enum Option {
        eNoOptions = 0,
        /// Attributes with the metadata "category" stand below a row of that name.
        eCategories = 2,
        eHideComponents = 4,
        /// References do not expand.
        eFlatReferences = 8,
        /// Nothing can be changed here.
        eReadOnly = 16
    };

    /// Elements shown of one container; those beyond are left out.
    static constexpr int cMaxNbElements = 10000;

    /// The parent owns it.
    explicit KyQAttributeModel(QObject* parent = nullptr);
    ~KyQAttributeModel() override;

    /// Null empties the model.
    void setObject(KyObject* object);
    /// Null when there is none or it has ended.
    KyObject* getObject() const;
    /// @{
    /// Bits of Option.
    void setOptions(int options);
    int getOptions() const { return mOptions; }
    /// @}
    /// Not owned, it must outlive the model; null stops keeping changes.
    void setUndoStack(QUndoStack* undoStack) { mUndoStack = undoStack; }
    /// While it does not listen, objects pay nothing for being shown; listening again brings all up to date.
    void setListening(bool isListening);
    /// Reads everything again, for changes that nobody told.
    void refresh();

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    using QObject::parent;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return eNbColumns; }
    bool hasChildren(const QModelIndex& parent = {}) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    /// False, and nothing changed, when the attribute does not take the value.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    /// Sent after the object has ended and the model is empty.
    void objectEnded();

private:
    struct Session;
    class Changing;

    KyAttributeNode& nodeAt(const QModelIndex& index) const;
    QModelIndex indexOf(const KyAttributeNode& node, int column = eNameColumn) const;
    bool readValue(KyAttributeNode& node, KyField& value) const;
    bool isWritable(const KyAttributeNode& node) const;
    static const KyType* getObjectType(const KyAttributeNode& node);
    QString getName(const KyAttributeNode& node) const;
    QString getValueText(KyAttributeNode& node) const;
    QVariant getValueData(KyAttributeNode& node, int role) const;
    bool write(const KyAttributeTarget& target, const KyField& value);
    bool followSession(const KyAttributeTarget& target, int number);
    bool beginSession(const KyAttributeTarget& target, int number);
    bool revertSession();
    std::shared_ptr<const KyAttributeTarget> keep(const KyAttributeTarget& target);
    void moveKept(const KyObject& object, const std::string& name, int index, bool isInsertion);

    void onModified(KyObject* object, KyObjectModificationType kind, const std::string& name, int index);
    void onEnding(KyAttributeNode& node);
    void endObject();
    void followAll();
    void onValueModified(KyAttributeNode& node, KyObjectModificationType kind, int index);
    void follow(KyAttributeNode& node, KyObjectModificationType kind, const std::string& name, int index);
    void followContainer(KyAttributeNode& node, KyObjectModificationType kind, int index);
    void followReference(KyAttributeNode& node);
    void followObject(KyAttributeNode& node);
    void followObjects(KyAttributeNode& node);
    void reconcile(KyAttributeNode& node, std::vector<std::unique_ptr<KyAttributeNode>> wanted);
    void rereadValues(KyAttributeNode& node);
    void tellNames(KyAttributeNode& node, int first);
    void tellChanged(KyAttributeNode& node);

    bool hasRows(KyAttributeNode& node) const;
    KyObject* findObject(KyAttributeNode& node) const;
    std::vector<std::unique_ptr<KyAttributeNode>> describe(KyObject& object) const;
    void fetch(KyAttributeNode& node);
    void insertRows(KyAttributeNode& node, int at, std::vector<std::unique_ptr<KyAttributeNode>> rows);
    void dropRows(KyAttributeNode& node, int first, int count);
    void dropAll(KyAttributeNode& node);
    void attach(KyAttributeNode& node, KyObject& object);
    void detach(KyAttributeNode& node);
    void connectTo(KyObject& object);

    std::unique_ptr<KyAttributeNode> mRoot;
    /// Rows by the object whose attributes stand below them.
    std::multimap<const KyObject*, KyAttributeNode*> mShown;
    std::unique_ptr<Session> mSession;
    /// Elements that sessions and undo commands name: they move when others come or go.
    std::vector<std::weak_ptr<KyAttributeTarget>> mKept;
    QUndoStack* mUndoStack = nullptr;
    QTimer mFollowTimer;
    int mOptions = eNoOptions;
    bool mIsListening = true;
    /// While rows come or go, what is told waits for the event loop.
    bool mIsChanging = false;
};
