// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyObject.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

/// What the script engine publishes now, in the order of the alphabet: the objects that a reference can be set to.
class KyPublishedObjects : public KyHasSlots {
public:
    using Entries = std::vector<std::pair<std::string, KyObject*>>;

    /// Follows the single engine from now on; what was published before is not known.
    static void begin();
    static void end();
    static Entries list();
    /// Empty when the object is not published.
    static std::string findName(KyObject* object);

private:
    void onBound(KyObject* object, const std::string& name);
    void onUnbound(KyObject* object, const std::string& name);

    std::map<std::string, KyObjectReference> mObjects;
};
