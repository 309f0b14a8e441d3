// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Which nodes of a model file stand below which, each known by its name, its index or its number. Tells, without
/// calling itself, what following the links from parent to child would come to before a reader does it.
class KyModelGraph {
public:
    /// Nodes that are made of nodes which stand below several, each time anew.
    static constexpr std::uint64_t cMaxNodes = 1'000'000;

    /// False when the child has a parent already; the link holds all the same.
    bool addLink(std::string_view parent, std::string_view child);
    /// Too deep, in a circle or too many; empty when the links may be followed.
    std::string check() const;

private:
    struct Node {
        std::vector<std::size_t> children;
        bool hasParent = false;
    };
    struct Extent;

    std::size_t find(std::string_view name);
    bool measure(std::size_t root, std::vector<Extent>& extents) const;

    std::unordered_map<std::string, std::size_t> mIndices;
    std::vector<Node> mNodes;
};
