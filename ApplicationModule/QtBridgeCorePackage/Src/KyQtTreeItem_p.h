// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPersistentModelIndex>
#include <QPointer>
#include <QTreeWidget>

#include <memory>

class KyQtOwnTreeItem;

/// A script's handle of an item of a tree, which anybody may delete. It knows the invisible root by its tree; items
/// that the host or a form made, while they are in a tree, by their index; the script's own items by themselves,
/// wherever they go. An own item in no tree lives as long as a handle of it or of one of the items around it does.
class KyQtTreeItem {
public:
    /// A new item in no tree.
    KyQtTreeItem();
    /// The handle of an item in a tree, or of an own one.
    explicit KyQtTreeItem(QTreeWidgetItem& item);
    KyQtTreeItem(const KyQtTreeItem& other) = default;
    KyQtTreeItem& operator=(const KyQtTreeItem& other) = delete;
    ~KyQtTreeItem();

    static KyQtTreeItem ofRoot(QTreeWidget& tree);

    /// Null when the item is gone.
    QTreeWidgetItem* find() const;
    /// Takes another item's own over, or a copy that scripts own: for an item that leaves its tree.
    void adopt(QTreeWidgetItem& item);
    bool isRoot() const { return mIsRoot; }

private:
    void release();

    QPointer<QTreeWidget> mTree;
    QPersistentModelIndex mIndex;
    /// The own item, null inside once it is gone.
    std::shared_ptr<QTreeWidgetItem*> mOwn;
    bool mIsRoot = false;
};
