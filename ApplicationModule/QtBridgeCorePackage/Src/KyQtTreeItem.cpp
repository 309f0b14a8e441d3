// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtTreeItem_p.h"

/// An item that its handles follow.
class KyQtOwnTreeItem final : public QTreeWidgetItem {
public:
    KyQtOwnTreeItem() = default;
    /// A copy with its children.
    explicit KyQtOwnTreeItem(const QTreeWidgetItem& item)
        : QTreeWidgetItem(item) {
        for (int i = 0; i < item.childCount(); ++i)
            addChild(new KyQtOwnTreeItem(*item.child(i)));
    }
    ~KyQtOwnTreeItem() override { *mSelf = nullptr; }
    KyQtOwnTreeItem& operator=(const KyQtOwnTreeItem&) = delete;

    QTreeWidgetItem* clone() const override { return new KyQtOwnTreeItem(*this); }
    const std::shared_ptr<QTreeWidgetItem*>& getSelf() const { return mSelf; }
    bool hasHandles() const { return mSelf.use_count() > 1; }

private:
    KyQtOwnTreeItem(const KyQtOwnTreeItem& other)
        : KyQtOwnTreeItem(static_cast<const QTreeWidgetItem&>(other)) {}

    std::shared_ptr<QTreeWidgetItem*> mSelf = std::make_shared<QTreeWidgetItem*>(this);
};

namespace {

/// The protected look-ups between items and indices.
class TreeAccess : public QTreeWidget {
public:
    using QTreeWidget::indexFromItem;
    using QTreeWidget::itemFromIndex;

    static constexpr QModelIndex (QTreeWidget::*cToIndex)(const QTreeWidgetItem*,
                                                          int) const = &TreeAccess::indexFromItem;
};

bool hasHandlesWithin(const QTreeWidgetItem& item) {
    const auto* own = dynamic_cast<const KyQtOwnTreeItem*>(&item);
    if (own && own->hasHandles())
        return true;
    for (int i = 0; i < item.childCount(); ++i)
        if (hasHandlesWithin(*item.child(i)))
            return true;
    return false;
}

} // namespace

KyQtTreeItem::KyQtTreeItem()
    : mOwn((new KyQtOwnTreeItem)->getSelf()) {}

KyQtTreeItem::KyQtTreeItem(QTreeWidgetItem& item)
    : mTree(item.treeWidget()) {
    if (const auto* own = dynamic_cast<KyQtOwnTreeItem*>(&item))
        mOwn = own->getSelf();
    else if (mTree)
        mIndex = (mTree->*TreeAccess::cToIndex)(&item, 0);
}

KyQtTreeItem::~KyQtTreeItem() {
    release();
}

KyQtTreeItem KyQtTreeItem::ofRoot(QTreeWidget& tree) {
    KyQtTreeItem root(*tree.invisibleRootItem());
    root.mTree = &tree;
    root.mIsRoot = true;
    return root;
}

QTreeWidgetItem* KyQtTreeItem::find() const {
    if (mOwn)
        return *mOwn;
    if (!mTree)
        return nullptr;
    if (mIsRoot)
        return mTree->invisibleRootItem();
    return mIndex.isValid() ? (mTree->*(&TreeAccess::itemFromIndex))(mIndex) : nullptr;
}

void KyQtTreeItem::adopt(QTreeWidgetItem& item) {
    const auto* own = dynamic_cast<KyQtOwnTreeItem*>(&item);
    if (own) {
        mOwn = own->getSelf();
        return;
    }
    mOwn = (new KyQtOwnTreeItem(item))->getSelf();
    delete &item;
}

/// The last handle deletes an own item that is in no tree, with all that are around it.
void KyQtTreeItem::release() {
    QTreeWidgetItem* top = mOwn ? *mOwn : nullptr;
    mOwn.reset();
    if (!top || top->treeWidget())
        return;
    while (top->parent())
        top = top->parent();
    if (!hasHandlesWithin(*top))
        delete top;
}
