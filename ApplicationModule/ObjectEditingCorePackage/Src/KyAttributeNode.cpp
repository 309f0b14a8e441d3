// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyAttributeNode_p.h"

#include "KyType.h"

#include <algorithm>

namespace {

using Children = KyAttributeNode::Children;

std::unique_ptr<KyAttributeNode> makeNode(KyAttributeNode::Kind kind, KyObject& object, const std::string& name,
                                          const std::string& category = {}) {
    return std::make_unique<KyAttributeNode>(kind, KyAttributeTarget{KyObjectReference(&object), name, category});
}

KyAttributeNode& findCategory(Children& rows, KyObject& object, const std::string& category) {
    const auto found = std::ranges::find_if(rows, [&](const auto& row) { return row->target.category == category; });
    if (found != rows.end())
        return **found;
    rows.push_back(makeNode(KyAttributeNode::eCategory, object, {}, category));
    rows.back()->isFetched = true;
    return *rows.back();
}

void append(Children& rows, Children&& more) {
    std::ranges::move(more, std::back_inserter(rows));
}

} // namespace

KyObject* KyAttributeNode::findObject() const {
    if (kind == eObject)
        return target.object.get();
    if (kind == eComponent)
        return target.object ? target.object.get()->getComponentByName(target.name) : nullptr;
    return nullptr;
}

bool KyAttributeNode::isContainer() const {
    const KyAttributeInterface* attribute = kind == eAttribute ? target.find() : nullptr;
    return attribute && attribute->getKind() == KyAttributeInterface::eContainer;
}

bool KyAttributeNode::matches(const KyAttributeNode& other) const {
    return kind == other.kind && target == other.target;
}

void KyAttributeNode::insert(int at, std::unique_ptr<KyAttributeNode> child) {
    child->parent = this;
    children.insert(children.begin() + at, std::move(child));
    renumber(at);
}

void KyAttributeNode::remove(int first, int count) {
    children.erase(children.begin() + first, children.begin() + first + count);
    renumber(first);
}

void KyAttributeNode::renumber(int from) {
    for (int i = from; i < static_cast<int>(children.size()); ++i) {
        KyAttributeNode& child = *children[static_cast<std::size_t>(i)];
        child.row = i;
        if (child.kind == eElement)
            child.target.index = i;
    }
}

KyAttributeNode::Children KyAttributeNode::describe(KyObject& object, bool hasCategories, bool hasComponents) {
    Children rows;
    Children categories;
    for (unsigned i = 0; i < object.getNbAttributes(); ++i) {
        const KyAttributeInterface* attribute = std::as_const(object).getAttribute(i);
        const std::string& category = attribute->getMetadata("category");
        auto node = makeNode(eAttribute, object, attribute->getName(), category);
        if (!hasCategories || category.empty()) {
            rows.push_back(std::move(node));
            continue;
        }
        KyAttributeNode& group = findCategory(categories, object, category);
        group.insert(static_cast<int>(group.children.size()), std::move(node));
    }
    append(rows, std::move(categories));
    Children components;
    for (const KyComponent& component : object.getObjectType()->getComponents())
        if (hasComponents &&
            std::ranges::none_of(components, [&](const auto& row) { return row->target.name == component.name; }))
            components.push_back(makeNode(eComponent, object, component.name));
    append(rows, std::move(components));
    return rows;
}

KyAttributeNode::Children KyAttributeNode::describeElements(const KyAttributeTarget& container, int first, int count) {
    Children rows;
    for (int i = first; i < count; ++i) {
        rows.push_back(std::make_unique<KyAttributeNode>(eElement, container));
        rows.back()->target.index = i;
    }
    return rows;
}
