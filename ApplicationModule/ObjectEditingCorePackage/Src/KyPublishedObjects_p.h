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

    /// Follows the single engine, whichever that is at the time.
    static void begin();
    static void end();
    /// Empty when nothing is followed.
    static Entries list();
    /// Empty when the object is not published.
    static std::string findName(KyObject* object);

private:
    void follow();
    void onBound(KyObject* object, const std::string& name);
    void onUnbound(KyObject* object, const std::string& name);

    KyObjectReference mEngine;
    std::map<std::string, KyObjectReference> mObjects;
};
