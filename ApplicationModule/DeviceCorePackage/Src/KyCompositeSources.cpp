// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyCompositeSources.h"

#include "KyException.h"
#include "KyType.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>
#include <utility>

KyCompositeSources::~KyCompositeSources() {
    static std::vector<KyHolder<KyChannelObject>> released;
    const bool isOutermost = released.empty();
    std::ranges::move(mHeld, std::back_inserter(released));
    // The last entry stays in the list, empty, while its object ends: so inner calls only add to the list.
    while (isOutermost && !released.empty()) {
        const KyHolder<KyChannelObject> ending = std::move(released.back());
        if (!ending)
            released.pop_back();
    }
}

bool KyCompositeSources::refuse(const KyChannelObject& user, const char* reason) {
    KyException::create(user.getObjectType()->getName() + ": nothing inserted: " + reason);
    return false;
}

bool KyCompositeSources::isUsable(const KyChannelObject* source, const KyChannelObject& user) {
    if (!source || !source->isValid())
        return refuse(user, "the source is no channel of this kind, or is gone.");
    return !isComputedFrom(*source, user) || refuse(user, "the source is computed from this channel.");
}

bool KyCompositeSources::isComputedFrom(const KyChannelObject& source, const KyChannelObject& user) {
    // A chain that grows at its end is not searched for each new end.
    if (&source != &user && user.getSources() && !user.getSources()->mIsSource)
        return false;
    std::unordered_set<const KyChannelObject*> seen{&source};
    std::vector<const KyChannelObject*> open{&source};
    while (!open.empty() && open.back() != &user) {
        const KyCompositeSources* sources = open.back()->getSources();
        open.pop_back();
        if (!sources)
            continue;
        for (const KyHolder<KyChannelObject>& held : sources->mHeld)
            if (seen.insert(held.get()).second)
                open.push_back(held.get());
    }
    return !open.empty();
}

bool KyCompositeSources::hold(KyChannelObject& source) {
    const KyCompositeSources* const sources = source.getSources();
    if (!sources)
        return true;
    sources->mIsSource = true;
    if (std::ranges::none_of(mHeld, [&](const auto& held) { return held == &source; }))
        mHeld.emplace_back(&source);
    return true;
}
