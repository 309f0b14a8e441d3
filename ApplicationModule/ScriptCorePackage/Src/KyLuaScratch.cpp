// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaScratch_p.h"

#include <memory>
#include <vector>

namespace {

struct Pool {
    /// Held by pointer: a scratch stays where it is while others are added.
    std::vector<std::unique_ptr<std::vector<KyField>>> blocks;
    std::size_t nbUsed = 0;
};

Pool& getPool() {
    static Pool pool;
    return pool;
}

} // namespace

KyLuaScratch::KyLuaScratch(std::size_t nbFields)
    : mDepth(getPool().nbUsed) {
    Pool& pool = getPool();
    if (pool.blocks.size() == mDepth)
        pool.blocks.push_back(std::make_unique<std::vector<KyField>>());
    std::vector<KyField>& block = *pool.blocks[mDepth];
    block.resize(nbFields);
    ++pool.nbUsed;
    mFields = block;
}

KyLuaScratch::~KyLuaScratch() {
    unwind(mDepth);
}

std::size_t KyLuaScratch::getDepth() {
    return getPool().nbUsed;
}

void KyLuaScratch::unwind(std::size_t depth) {
    Pool& pool = getPool();
    while (pool.nbUsed > depth)
        pool.blocks[--pool.nbUsed]->clear();
}
