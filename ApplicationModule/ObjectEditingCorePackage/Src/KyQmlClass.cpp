// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlClass_p.h"

#include "KySignal.h"
#include "KyType.h"

#include <algorithm>
#include <unordered_map>

struct KyQmlClass::Registry {
    std::unordered_map<const KyType*, const KyQmlClass*> byType;
    std::map<std::string, std::vector<std::unique_ptr<const KyQmlClass>>> byName;

    Registry() {
        KyType::removedSignal().connect([this](const KyType* type) { byType.erase(type); });
    }

    static Registry& get() {
        static Registry* const instance = new Registry;
        return *instance;
    }

    const KyQmlClass& find(const KyType& type) {
        KyQmlLayout layout(type);
        auto& versions = byName[type.getName()];
        const auto known = std::find_if(versions.begin(), versions.end(),
                                        [&](const auto& version) { return version->mLayout == layout; });
        if (known != versions.end())
            return **known;
        versions.emplace_back(new KyQmlClass(std::move(layout)));
        return *versions.back();
    }
};

KyQmlClass::KyQmlClass(KyQmlLayout layout)
    : mLayout(std::move(layout))
    , mMetaObject(mLayout.makeMetaObject(false)) {}

const KyQmlClass& KyQmlClass::get(const KyType& type) {
    Registry& registry = Registry::get();
    const auto found = registry.byType.find(&type);
    if (found != registry.byType.end())
        return *found->second;
    const KyQmlClass& made = registry.find(type);
    // Without a removal to come nobody would take the entry out.
    if (type.isRegistered())
        registry.byType.emplace(&type, &made);
    return made;
}
