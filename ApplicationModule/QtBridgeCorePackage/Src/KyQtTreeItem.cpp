// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtTreeItem_p.h"

#include "KyQtLifetime_p.h"
#include "KyQtTreeItemEnd_p.h"

#include <QPersistentModelIndex>
#include <QPointer>

#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

/// The protected look-ups between items and indices.
class TreeAccess : public QTreeWidget {
public:
    using QTreeWidget::indexFromItem;
    using QTreeWidget::itemFromIndex;

    static constexpr QModelIndex (QTreeWidget::*cToIndex)(const QTreeWidgetItem*,
                                                          int) const = &TreeAccess::indexFromItem;
};

/// What the script has deleted may stay for a while.
bool isEnding(const QTreeWidget* tree) {
    return tree && KyQtLifetime::isEnding(*tree);
}

} // namespace

/// What the handles of one host's item have in common; those of an own item have one each.
class KyQtTreeItem::State {
public:
    State() = default;
    State(QTreeWidget* itsTree, const QTreeWidgetItem& item);
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State();

    /// That of a host's item, which all its handles share; null while there is none.
    static std::shared_ptr<State> findShared(const QTreeWidgetItem& item);
    static void share(const std::shared_ptr<State>& state, const QTreeWidgetItem& item) { msShared[&item] = state; }
    void becomeOwn(const KyQtOwnTreeItem& item);
    QTreeWidgetItem* find() const;

    QPointer<QTreeWidget> tree;
    QPersistentModelIndex index;
    /// Null for items that are not own.
    KyQtOwnTreeItem::Self own;
    bool isRoot = false;

private:
    static inline auto& msShared = *new std::unordered_map<const QTreeWidgetItem*, std::weak_ptr<State>>;

    void leave();

    const QTreeWidgetItem* mShared = nullptr;
};

KyQtTreeItem::State::State(QTreeWidget* itsTree, const QTreeWidgetItem& item)
    : tree(itsTree)
    , index((itsTree->*TreeAccess::cToIndex)(&item, 0))
    , mShared(&item) {}

KyQtTreeItem::State::~State() {
    leave();
    if (own)
        KyQtTreeItemEnd::release(std::move(own));
}

/// Another item may have come to the same place meanwhile.
void KyQtTreeItem::State::leave() {
    const auto known = msShared.find(mShared);
    if (known != msShared.end() && (known->second.expired() || known->second.lock().get() == this))
        msShared.erase(known);
    mShared = nullptr;
}

std::shared_ptr<KyQtTreeItem::State> KyQtTreeItem::State::findShared(const QTreeWidgetItem& item) {
    const auto known = msShared.find(&item);
    const std::shared_ptr<State> state = known == msShared.end() ? nullptr : known->second.lock();
    return state && state->find() == &item ? state : nullptr;
}

void KyQtTreeItem::State::becomeOwn(const KyQtOwnTreeItem& item) {
    leave();
    own = item.getSelf();
}

QTreeWidgetItem* KyQtTreeItem::State::find() const {
    if (own)
        return *own && !isEnding((*own)->treeWidget()) ? *own : nullptr;
    if (!tree || isEnding(tree))
        return nullptr;
    if (isRoot)
        return tree->invisibleRootItem();
    return index.isValid() ? (tree->*(&TreeAccess::itemFromIndex))(index) : nullptr;
}

/// Makes an item that has left its tree the script's own, with all below it.
class KyQtTreeItemOwner {
public:
    /// Before the item leaves: its index ends then.
    explicit KyQtTreeItemOwner(const QTreeWidgetItem& top) {
        std::vector<const QTreeWidgetItem*> left{&top};
        while (!left.empty()) {
            const QTreeWidgetItem* item = left.back();
            left.pop_back();
            if (auto state = KyQtTreeItem::State::findShared(*item))
                mStates.emplace(item, std::move(state));
            for (int i = 0; i < item->childCount(); ++i)
                left.push_back(item->child(i));
        }
    }

    void own(QTreeWidgetItem& top) {
        std::vector<Place> left{{&top, nullptr}};
        while (!left.empty()) {
            const auto [item, parent] = left.back();
            left.pop_back();
            const QList<QTreeWidgetItem*> children = item->takeChildren();
            QTreeWidgetItem* owned = ownAlone(*item);
            if (parent)
                parent->addChild(owned);
            std::for_each(children.rbegin(), children.rend(), [&](QTreeWidgetItem* child) {
                left.push_back({child, owned});
            });
        }
    }

private:
    struct Place {
        QTreeWidgetItem* item;
        QTreeWidgetItem* parent;
    };

    QTreeWidgetItem* ownAlone(QTreeWidgetItem& item) {
        if (dynamic_cast<KyQtOwnTreeItem*>(&item))
            return &item;
        auto* owned = new KyQtOwnTreeItem(item);
        if (const auto found = mStates.find(&item); found != mStates.end())
            found->second->becomeOwn(*owned);
        KyQtTreeItemEnd::end(item);
        return owned;
    }

    std::unordered_map<const QTreeWidgetItem*, std::shared_ptr<KyQtTreeItem::State>> mStates;
};

KyQtTreeItem::KyQtTreeItem()
    : mState(std::make_shared<State>()) {
    mState->own = (new KyQtOwnTreeItem)->getSelf();
}

KyQtTreeItem::KyQtTreeItem(std::shared_ptr<State> state)
    : mState(std::move(state)) {}

KyQtTreeItem::KyQtTreeItem(QTreeWidgetItem& item)
    : mState(State::findShared(item)) {
    if (mState)
        return;
    QTreeWidget* tree = item.treeWidget();
    const auto* own = dynamic_cast<KyQtOwnTreeItem*>(&item);
    if (own || !tree) {
        mState = std::make_shared<State>();
        mState->own = own ? own->getSelf() : nullptr;
        return;
    }
    mState = std::make_shared<State>(tree, item);
    State::share(mState, item);
}

KyQtTreeItem KyQtTreeItem::ofRoot(QTreeWidget& tree) {
    auto root = std::make_shared<State>();
    root->tree = &tree;
    root->isRoot = true;
    return KyQtTreeItem(std::move(root));
}

void KyQtTreeItem::take(QTreeWidgetItem& parent, int index) {
    KyQtTreeItemOwner owner(*parent.child(index));
    if (QTreeWidgetItem* item = parent.takeChild(index))
        owner.own(*item);
}

QTreeWidgetItem* KyQtTreeItem::find() const {
    return mState->find();
}

bool KyQtTreeItem::isRoot() const {
    return mState->isRoot;
}
