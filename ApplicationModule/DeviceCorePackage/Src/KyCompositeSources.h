// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyChannelObject.h"

#include "KyHolder.h"

#include <vector>

/// What a composite channel made by scripts is computed from, as far as its life goes: other composites, which only
/// scripts hold, live as long as this one uses them. Channels of devices come and go as their devices do.
class KYAPPLICATION_EXPORT KyCompositeSources {
public:
    KyCompositeSources() = default;
    KyCompositeSources(const KyCompositeSources&) = default;
    KyCompositeSources& operator=(const KyCompositeSources&) = default;
    /// A long chain of composites, each holding the next, ends without recursion.
    ~KyCompositeSources();

    /// The source as an Object, held from now on when it is a composite. Null, and a report, when it is of another
    /// class, its channel is gone, or it is `user` or computed from it.
    template <class Object>
    Object* accept(KyObject* source, const KyChannelObject& user) {
        auto* object = kyCast<Object>(source);
        return isUsable(object, user) && hold(*object) ? object : nullptr;
    }
    /// Reports that arguments of an insertion make no sense; false.
    static bool refuse(const KyChannelObject& user, const char* reason);

private:
    static bool isUsable(const KyChannelObject* source, const KyChannelObject& user);
    static bool isComputedFrom(const KyChannelObject& source, const KyChannelObject& user);
    bool hold(KyChannelObject& source);

    std::vector<KyHolder<KyChannelObject>> mHeld;
    /// Whether any channel was ever computed from the owner's.
    mutable bool mIsSource = false;
};
