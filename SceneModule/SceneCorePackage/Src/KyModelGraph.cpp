// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModelGraph_p.h"

#include "KyNode.h"

#include <algorithm>

/// What one node comes to with all below it.
struct KyModelGraph::Extent {
    std::size_t nextChild = 0;
    std::size_t depth = 0;
    std::uint64_t nbNodes = 1;
    bool isOnPath = false;
    bool isDone = false;

    void include(const Extent& child) {
        depth = std::max(depth, child.depth + 1);
        nbNodes = std::min(nbNodes + child.nbNodes, cMaxNodes + 1);
    }
};

std::size_t KyModelGraph::find(std::string_view name) {
    const auto [entry, isNew] = mIndices.try_emplace(std::string(name), mNodes.size());
    if (isNew)
        mNodes.emplace_back();
    return entry->second;
}

bool KyModelGraph::addLink(std::string_view parent, std::string_view child) {
    const std::size_t parentIndex = find(parent), childIndex = find(child);
    mNodes[parentIndex].children.push_back(childIndex);
    const bool isFirst = !mNodes[childIndex].hasParent;
    mNodes[childIndex].hasParent = true;
    return isFirst;
}

/// False when the links lead back to where they came from.
bool KyModelGraph::measure(std::size_t root, std::vector<Extent>& extents) const {
    std::vector<std::size_t> path{root};
    extents[root].isOnPath = true;
    while (!path.empty()) {
        Extent& extent = extents[path.back()];
        if (extent.nextChild == mNodes[path.back()].children.size()) {
            extent.isOnPath = false;
            extent.isDone = true;
            path.pop_back();
            continue;
        }
        const std::size_t child = mNodes[path.back()].children[extent.nextChild];
        if (extents[child].isOnPath)
            return false;
        if (extents[child].isDone) {
            extent.include(extents[child]);
            ++extent.nextChild;
        } else {
            extents[child].isOnPath = true;
            path.push_back(child);
        }
    }
    return true;
}

std::string KyModelGraph::check() const {
    std::vector<Extent> extents(mNodes.size());
    std::uint64_t nbNodes = 0;
    for (std::size_t root = 0; root < mNodes.size(); ++root) {
        if (!extents[root].isDone && !measure(root, extents))
            return "its nodes are nested too deeply, in a circle";
        if (extents[root].depth > KyNode::cMaxDepth)
            return "its nodes are nested too deeply";
        nbNodes += mNodes[root].hasParent ? 0 : extents[root].nbNodes;
        if (nbNodes > cMaxNodes)
            return "it comes to too many nodes";
    }
    return {};
}
