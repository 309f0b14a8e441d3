// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QTreeWidgetItem>

#include <memory>

/// An item of scripts, that its handles follow.
class KyQtOwnTreeItem final : public QTreeWidgetItem {
public:
    /// Null inside once the item is gone.
    using Self = std::shared_ptr<QTreeWidgetItem*>;

    KyQtOwnTreeItem() = default;
    /// A copy without the children.
    explicit KyQtOwnTreeItem(const QTreeWidgetItem& item)
        : QTreeWidgetItem(item) {}
    ~KyQtOwnTreeItem() override { *mSelf = nullptr; }
    KyQtOwnTreeItem(const KyQtOwnTreeItem&) = delete;
    KyQtOwnTreeItem& operator=(const KyQtOwnTreeItem&) = delete;

    QTreeWidgetItem* clone() const override {
        auto* copy = new KyQtOwnTreeItem(static_cast<const QTreeWidgetItem&>(*this));
        for (int i = 0; i < childCount(); ++i)
            copy->addChild(child(i)->clone());
        return copy;
    }
    const Self& getSelf() const { return mSelf; }
    bool hasHandles() const { return mSelf.use_count() > 1; }

private:
    Self mSelf = std::make_shared<QTreeWidgetItem*>(this);
};

/// The end of items that nobody uses any more. Where scripts handle a signal, the toolkit may go on with an item after
/// it; they end later then, in the event loop.
namespace KyQtTreeItemEnd {

/// Deletes an item in no tree, without children.
void end(QTreeWidgetItem& item);

/// Gives a handle of an own item up. The last one deletes the item if it is in no tree, with all that are around it.
/// Large groups may wait for others, as looking for handles means a walk.
void release(KyQtOwnTreeItem::Self&& item);

} // namespace KyQtTreeItemEnd
