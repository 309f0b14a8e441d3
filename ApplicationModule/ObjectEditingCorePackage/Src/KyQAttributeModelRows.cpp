// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyAttributeNode_p.h"
#include "KyQAttributeModel_p.h"

#include "KyType.h"

#include <QPersistentModelIndex>
#include <QPointer>

#include <algorithm>

namespace {

using Rows = KyAttributeNode::Children;

int countRows(const KyAttributeNode& node) {
    return static_cast<int>(node.children.size());
}

int countElements(const KyAttributeNode& container) {
    return std::min(container.target.countValues(), KyQAttributeModel::cMaxNbElements);
}

bool areSame(const Rows& rows, const Rows& wanted) {
    return std::ranges::equal(rows, wanted, [](const auto& row, const auto& other) { return row->matches(*other); });
}

int findRow(const Rows& rows, const KyAttributeNode& like, int from) {
    const auto found =
        std::find_if(rows.begin() + from, rows.end(), [&](const auto& row) { return row->matches(like); });
    return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

void collect(const Rows& rows, const std::string& name, std::vector<KyAttributeNode*>& found) {
    for (const auto& row : rows) {
        if (row->kind == KyAttributeNode::eCategory)
            collect(row->children, name, found);
        else if (row->kind == KyAttributeNode::eAttribute && (name.empty() || row->target.name == name))
            found.push_back(row.get());
    }
}

} // namespace

bool KyQAttributeModel::hasRows(KyAttributeNode& node) const {
    if (node.isFetched)
        return !node.children.empty();
    if (node.isContainer())
        return node.target.countValues() > 0;
    const bool isFlat = (mOptions & eFlatReferences) && node.kind != KyAttributeNode::eComponent;
    return !isFlat && findObject(node) != nullptr;
}

/// Whose attributes stand below: of the root, a component or a reference.
KyObject* KyQAttributeModel::findObject(KyAttributeNode& node) const {
    KyField value;
    return readValue(node, value) ? value.toKyObject() : node.findObject();
}

std::vector<std::unique_ptr<KyAttributeNode>> KyQAttributeModel::describe(KyObject& object) const {
    return KyAttributeNode::describe(object, (mOptions & eCategories) != 0, (mOptions & eHideComponents) == 0);
}

void KyQAttributeModel::fetch(KyAttributeNode& node) {
    if (node.isFetched || !hasRows(node))
        return;
    node.isFetched = true;
    if (node.isContainer())
        return insertRows(node, 0, KyAttributeNode::describeElements(node.target, 0, countElements(node)));
    KyObject* object = findObject(node);
    attach(node, *object);
    insertRows(node, 0, describe(*object));
}

void KyQAttributeModel::insertRows(KyAttributeNode& node, int at, Rows rows) {
    if (rows.empty())
        return;
    const Changing changing(*this);
    beginInsertRows(indexOf(node), at, at + static_cast<int>(rows.size()) - 1);
    for (auto& row : rows)
        node.insert(at++, std::move(row));
    endInsertRows();
}

void KyQAttributeModel::dropRows(KyAttributeNode& node, int first, int count) {
    if (count <= 0)
        return;
    const Changing changing(*this);
    beginRemoveRows(indexOf(node), first, first + count - 1);
    for (int i = first; i < first + count; ++i)
        detach(*node.children[static_cast<std::size_t>(i)]);
    node.remove(first, count);
    endRemoveRows();
}

void KyQAttributeModel::dropAll(KyAttributeNode& node) {
    dropRows(node, 0, countRows(node));
    detach(node);
    node.isFetched = false;
}

void KyQAttributeModel::attach(KyAttributeNode& node, KyObject& object) {
    node.shown = KyObjectReference(&object);
    node.shownKey = &object;
    const bool isFirst = mShown.count(&object) == 0;
    mShown.emplace(&object, &node);
    if (isFirst && mIsListening)
        connectTo(object);
}

void KyQAttributeModel::detach(KyAttributeNode& node) {
    for (const auto& child : node.children)
        detach(*child);
    if (!node.shownKey)
        return;
    const auto [first, last] = mShown.equal_range(node.shownKey);
    const auto found = std::find_if(first, last, [&](const auto& entry) { return entry.second == &node; });
    if (found != last)
        mShown.erase(found);
    if (node.shown && mShown.count(node.shownKey) == 0)
        node.shown.get()->disconnectModified(this, &KyQAttributeModel::onModified);
    node.shown = KyObjectReference();
    node.shownKey = nullptr;
}

void KyQAttributeModel::connectTo(KyObject& object) {
    object.connectModified(this, &KyQAttributeModel::onModified);
}

void KyQAttributeModel::setListening(bool isListening) {
    if (mIsListening == isListening)
        return;
    disconnectAll();
    mIsListening = false;
    mFollowTimer.stop();
    if (!isListening)
        return;
    followAll();
    mIsListening = true;
    for (auto at = mShown.begin(); at != mShown.end(); at = mShown.upper_bound(at->first))
        if (KyObject* object = at->second->shown.get())
            connectTo(*object);
    refresh();
}

void KyQAttributeModel::onModified(KyObject* object, KyObjectModificationType kind, const std::string& name,
                                   int index) {
    if (kind == eObjectEnded)
        return;
    if (kind == eElementInserted || kind == eElementRemoved)
        moveKept(*object, name, index, kind == eElementInserted);
    if (mIsChanging)
        return mFollowTimer.start();
    std::vector<KyAttributeNode*> holders;
    const auto [first, last] = mShown.equal_range(object);
    std::transform(first, last, std::back_inserter(holders), [](const auto& entry) { return entry.second; });
    const QPointer<KyQAttributeModel> self(this);
    // Rows told first may take later ones along.
    const auto isShown = [&](const KyAttributeNode* node) {
        const auto range = mShown.equal_range(object);
        return std::any_of(range.first, range.second, [&](const auto& entry) { return entry.second == node; });
    };
    for (KyAttributeNode* holder : holders)
        if (self && isShown(holder))
            kind == eObjectEnding ? onEnding(*holder) : follow(*holder, kind, name, index);
}

void KyQAttributeModel::onEnding(KyAttributeNode& node) {
    if (node.kind == KyAttributeNode::eObject)
        return endObject();
    dropAll(node);
    node.isFetched = true;
    tellChanged(node);
    mFollowTimer.start();
}

void KyQAttributeModel::follow(KyAttributeNode& node, KyObjectModificationType kind, const std::string& name,
                               int index) {
    mFollowTimer.start();
    std::vector<KyAttributeNode*> found;
    collect(node.children, name, found);
    std::vector<QPersistentModelIndex> indices;
    indices.reserve(found.size());
    for (const KyAttributeNode* child : found)
        indices.emplace_back(indexOf(*child));
    const QPointer<KyQAttributeModel> self(this);
    for (const QPersistentModelIndex& child : indices)
        if (self && child.isValid())
            onValueModified(nodeAt(child), kind, index);
}

void KyQAttributeModel::onValueModified(KyAttributeNode& node, KyObjectModificationType kind, int index) {
    node.hasFailed = false;
    if (node.isContainer())
        followContainer(node, kind, index);
    else
        followReference(node);
    tellChanged(node);
}

// A view that has seen an empty container does not ask again, so the first elements come unasked.
void KyQAttributeModel::followContainer(KyAttributeNode& node, KyObjectModificationType kind, int index) {
    const int count = countElements(node);
    const int present = countRows(node);
    if (!node.isFetched && count != 1)
        return;
    if (!node.isFetched)
        return fetch(node);
    if (kind == eElementInserted && count == present + 1 && index >= 0 && index <= present) {
        insertRows(node, index, KyAttributeNode::describeElements(node.target, index, index + 1));
        return tellNames(node, index + 1);
    }
    if (kind == eElementRemoved && count == present - 1 && index >= 0 && index < present) {
        dropRows(node, index, 1);
        return tellNames(node, index);
    }
    if (kind == eElementChanged && count == present && index >= 0 && index < count) {
        KyAttributeNode& element = *node.children[static_cast<std::size_t>(index)];
        element.hasFailed = false;
        followReference(element);
        return tellChanged(element);
    }
    if (count > present)
        insertRows(node, present, KyAttributeNode::describeElements(node.target, present, count));
    else
        dropRows(node, count, present - count);
    rereadValues(node);
}

void KyQAttributeModel::followReference(KyAttributeNode& node) {
    KyObject* object = findObject(node);
    if (node.isFetched && object && node.shown.get() == object)
        return;
    if (node.isFetched)
        dropAll(node);
    // The same as for containers.
    if (object && !(mOptions & eFlatReferences))
        fetch(node);
}

void KyQAttributeModel::endObject() {
    setObject(nullptr);
    objectEnded();
}

void KyQAttributeModel::followAll() {
    if (mRoot->shownKey && !getObject())
        endObject();
    else
        followObjects(*mRoot);
}

void KyQAttributeModel::followObjects(KyAttributeNode& node) {
    if (node.shownKey || node.kind == KyAttributeNode::eComponent)
        followObject(node);
    for (std::size_t i = 0; i < node.children.size(); ++i)
        if (node.children[i]->isFetched)
            followObjects(*node.children[i]);
}

void KyQAttributeModel::followObject(KyAttributeNode& node) {
    KyObject* object = findObject(node);
    if (!object && !node.shownKey)
        return;
    if (node.kind != KyAttributeNode::eObject && (!object || node.shown.get() != object)) {
        dropAll(node);
        if (object)
            fetch(node);
        tellChanged(node);
    } else if (object && (object->hasOwnAttributes() || object->getObjectType()->hasComponents())) {
        reconcile(node, describe(*object));
    }
}

// Categories keep their places, whatever comes and goes in them.
void KyQAttributeModel::reconcile(KyAttributeNode& node, Rows wanted) {
    const auto isCategory = [](const auto& row) { return row->kind == KyAttributeNode::eCategory; };
    const auto getPlace = [&](const auto& row) { return static_cast<unsigned>(findRow(node.children, *row, 0)); };
    const auto first = std::ranges::find_if(wanted, isCategory);
    const auto last = std::find_if_not(first, wanted.end(), isCategory);
    std::stable_sort(first, last, [&](const auto& a, const auto& b) { return getPlace(a) < getPlace(b); });
    if (!areSame(node.children, wanted)) {
        for (int i = countRows(node) - 1; i >= 0; --i)
            if (findRow(wanted, *node.children[static_cast<std::size_t>(i)], 0) < 0)
                dropRows(node, i, 1);
    }
    for (int i = 0; i < static_cast<int>(wanted.size()); ++i) {
        auto& row = wanted[static_cast<std::size_t>(i)];
        const int present = i < countRows(node) ? findRow(node.children, *row, i) : -1;
        if (present == i) {
            if (row->kind == KyAttributeNode::eCategory)
                reconcile(*node.children[static_cast<std::size_t>(i)], std::move(row->children));
            continue;
        }
        if (present > i)
            dropRows(node, present, 1);
        Rows added;
        added.push_back(std::move(row));
        insertRows(node, i, std::move(added));
    }
}

void KyQAttributeModel::refresh() {
    const QPointer<KyQAttributeModel> self(this);
    followAll();
    if (self)
        rereadValues(*mRoot);
}

void KyQAttributeModel::rereadValues(KyAttributeNode& node) {
    if (node.children.empty())
        return;
    for (std::size_t i = 0; i < node.children.size(); ++i) {
        KyAttributeNode& child = *node.children[i];
        child.hasFailed = false;
        if (child.isFetched && child.isContainer())
            followContainer(child, eAttributeChanged, -1);
        else if (child.isFetched && child.shownKey && child.kind != KyAttributeNode::eComponent)
            followReference(child);
        if (child.isFetched && !child.isContainer())
            rereadValues(child);
    }
    dataChanged(indexOf(*node.children.front(), eValueColumn), indexOf(*node.children.back(), eValueColumn));
}

// The names of elements are their numbers.
void KyQAttributeModel::tellNames(KyAttributeNode& node, int first) {
    if (first < countRows(node))
        dataChanged(indexOf(*node.children[static_cast<std::size_t>(first)]), indexOf(*node.children.back()));
}

void KyQAttributeModel::tellChanged(KyAttributeNode& node) {
    dataChanged(indexOf(node, eValueColumn), indexOf(node, eValueColumn));
}
