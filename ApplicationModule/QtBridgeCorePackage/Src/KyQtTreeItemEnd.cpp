// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtTreeItemEnd_p.h"

#include "KyQtLifetime_p.h"

#include <QTimer>

#include <algorithm>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t cMinWaiting = 64;
/// In milliseconds.
constexpr int cRetry = 50;
constexpr int cMaxDepth = 1000;

/// What waits for its end. Never ends itself: Lua states may close at the exit of the program.
struct Waiting {
    std::vector<QTreeWidgetItem*> ended;
    /// Own items without handles, in groups that may have some.
    std::vector<std::weak_ptr<QTreeWidgetItem*>> released;
    /// As many make a walk over all their groups worth it.
    std::size_t nbWanted = cMinWaiting;
    QObject* sweeper = nullptr;
};

Waiting& gWaiting = *new Waiting;

void addChildren(const QTreeWidgetItem& item, std::vector<const QTreeWidgetItem*>& items) {
    for (int i = 0; i < item.childCount(); ++i)
        items.push_back(item.child(i));
}

/// Counts the items that it looks at.
bool hasHandlesWithin(const QTreeWidgetItem& top, std::size_t& nbSeen) {
    std::vector<const QTreeWidgetItem*> left{&top};
    while (!left.empty()) {
        const QTreeWidgetItem* item = left.back();
        left.pop_back();
        ++nbSeen;
        const auto* own = dynamic_cast<const KyQtOwnTreeItem*>(item);
        if (own && own->hasHandles())
            return true;
        addChildren(*item, left);
    }
    return false;
}

/// Deep groups in pieces, from below: the toolkit's destructor calls itself for every level.
void deleteGroup(QTreeWidgetItem& top) {
    struct Place {
        QTreeWidgetItem* item;
        int depth;
    };
    std::vector<QTreeWidgetItem*> pieces;
    std::vector<Place> left{{&top, 0}};
    while (!left.empty()) {
        const auto [item, depth] = left.back();
        left.pop_back();
        if (depth % cMaxDepth == 0)
            pieces.push_back(item);
        for (int i = 0; i < item->childCount(); ++i)
            left.push_back({item->child(i), depth + 1});
    }
    std::for_each(pieces.rbegin(), pieces.rend(), [](QTreeWidgetItem* item) { delete item; });
}

/// Null when the item is gone, in a tree, or in a group that was met before.
QTreeWidgetItem* findTop(const std::weak_ptr<QTreeWidgetItem*>& released,
                         std::unordered_set<const QTreeWidgetItem*>& seen) {
    const auto self = released.lock();
    QTreeWidgetItem* item = self ? *self : nullptr;
    if (!item || item->treeWidget())
        return nullptr;
    while (seen.insert(item).second) {
        if (!item->parent())
            return item;
        item = item->parent();
    }
    return nullptr;
}

void sweep() {
    const auto ended = std::exchange(gWaiting.ended, {});
    std::for_each(ended.begin(), ended.end(), [](QTreeWidgetItem* item) { delete item; });
    std::unordered_set<const QTreeWidgetItem*> seen;
    std::vector<QTreeWidgetItem*> tops;
    for (const auto& released : std::exchange(gWaiting.released, {}))
        if (QTreeWidgetItem* top = findTop(released, seen))
            tops.push_back(top);
    std::size_t nbSeen = seen.size();
    for (QTreeWidgetItem* top : tops)
        // Others are the host's.
        if (dynamic_cast<KyQtOwnTreeItem*>(top) && !hasHandlesWithin(*top, nbSeen))
            deleteGroup(*top);
    gWaiting.nbWanted = std::max(cMinWaiting, nbSeen / 2);
}

void sweepLater();

/// Its own end is what the event loop sees to, not before it is back where the signals came from.
class Sweeper final : public QObject {
public:
    ~Sweeper() override {
        gWaiting.sweeper = nullptr;
        if (KyQtLifetime::isSending())
            QTimer::singleShot(cRetry, [] { sweepLater(); });
        else
            sweep();
    }
};

void sweepLater() {
    if (gWaiting.sweeper)
        return;
    gWaiting.sweeper = new Sweeper;
    gWaiting.sweeper->deleteLater();
}

} // namespace

void KyQtTreeItemEnd::end(QTreeWidgetItem& item) {
    if (!KyQtLifetime::isSending()) {
        delete &item;
        return;
    }
    gWaiting.ended.push_back(&item);
    sweepLater();
}

void KyQtTreeItemEnd::release(KyQtOwnTreeItem::Self&& item) {
    KyQtOwnTreeItem::Self given = std::move(item);
    QTreeWidgetItem* own = *given;
    if (!own || own->treeWidget() || given.use_count() > 2)
        return;
    const bool isSending = KyQtLifetime::isSending();
    if (!isSending && !own->parent() && own->childCount() == 0) {
        delete own;
        return;
    }
    gWaiting.released.push_back(given);
    given.reset();
    if (!isSending && gWaiting.released.size() >= gWaiting.nbWanted)
        sweep();
    else
        sweepLater();
}
