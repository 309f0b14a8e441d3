// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyAttributeTarget_p.h"

#include <memory>
#include <string>
#include <vector>

/// One row of the attribute model, with the rows below it. Rows below an object, a container or a reference are made
/// when they are first asked for.
struct KyAttributeNode {
    enum Kind { eObject, eCategory, eAttribute, eElement, eComponent };
    using Children = std::vector<std::unique_ptr<KyAttributeNode>>;

    KyAttributeNode(Kind kindValue, KyAttributeTarget targetValue)
        : kind(kindValue)
        , target(std::move(targetValue)) {}

    /// The object of the root or of a component; null for others.
    KyObject* findObject() const;
    bool isContainer() const;
    /// Whether both stand for the same thing.
    bool matches(const KyAttributeNode& other) const;

    void insert(int at, std::unique_ptr<KyAttributeNode> child);
    void remove(int first, int count);

    /// The rows for an object, categories with theirs.
    static Children describe(KyObject& object, bool hasCategories, bool hasComponents);
    /// The rows for the elements from `first` up to `count` of a container.
    static Children describeElements(const KyAttributeTarget& container, int first, int count);

    Kind kind;
    /// Of a component its owner and its name, of a category the object and the category.
    KyAttributeTarget target;
    KyAttributeNode* parent = nullptr;
    int row = 0;
    bool isFetched = false;
    /// What the rows below were made for; the key is an identity only.
    KyObjectReference shown;
    const KyObject* shownKey = nullptr;
    /// An accessor that failed is not called again until the value changes.
    bool hasFailed = false;
    Children children;

private:
    void renumber(int from);
};
