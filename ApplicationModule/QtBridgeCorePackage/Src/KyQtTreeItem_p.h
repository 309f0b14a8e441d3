// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <QTreeWidget>

#include <memory>

#include <lua.hpp>

Q_DECLARE_METATYPE(QTreeWidgetItem*)

/// A script's handle of an item of a tree, which anybody may delete. It knows the invisible root by its tree; items
/// that the host or a form made, while they are in a tree, by their index; the script's own items by themselves,
/// wherever they go. An own item in no tree lives as long as a handle of it or of one of the items around it does.
///
/// What a script takes out of its tree becomes its own, with all below it: copies stand for the host's items, and the
/// handles of these follow.
class KyQtTreeItem {
public:
    /// A new item in no tree.
    KyQtTreeItem();
    /// The handle of an item in a tree, or of an own one.
    explicit KyQtTreeItem(QTreeWidgetItem& item);

    static KyQtTreeItem ofRoot(QTreeWidget& tree);
    /// Takes the child out of its parent and makes it the script's own. The index must be valid.
    static void take(QTreeWidgetItem& parent, int index);

    /// Null when the item is gone.
    QTreeWidgetItem* find() const;
    bool isRoot() const;

private:
    friend class KyQtTreeItemOwner;
    class State;

    explicit KyQtTreeItem(std::shared_ptr<State> state);

    std::shared_ptr<State> mState;
};

/// Pushes a handle; nil for null.
void kyPushQtTreeItem(lua_State* state, QTreeWidgetItem* item);
