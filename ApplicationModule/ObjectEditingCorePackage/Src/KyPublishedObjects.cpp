// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPublishedObjects_p.h"

#include "KyScriptEngine.h"

#include <memory>

namespace {

std::unique_ptr<KyPublishedObjects>& editInstance() {
    static std::unique_ptr<KyPublishedObjects> instance;
    return instance;
}

} // namespace

void KyPublishedObjects::begin() {
    KyScriptEngine* engine = KyScriptEngine::find();
    if (!engine || editInstance())
        return;
    editInstance() = std::make_unique<KyPublishedObjects>();
    engine->boundSignal.connect(editInstance().get(), &KyPublishedObjects::onBound);
    engine->unboundSignal.connect(editInstance().get(), &KyPublishedObjects::onUnbound);
}

void KyPublishedObjects::end() {
    editInstance().reset();
}

KyPublishedObjects::Entries KyPublishedObjects::list() {
    Entries entries;
    if (!editInstance())
        return entries;
    for (const auto& [name, reference] : editInstance()->mObjects)
        if (reference)
            entries.emplace_back(name, reference.get());
    return entries;
}

std::string KyPublishedObjects::findName(KyObject* object) {
    std::string name;
    if (const KyScriptEngine* engine = KyScriptEngine::find())
        engine->isInstanceBound(object, name);
    return name;
}

void KyPublishedObjects::onBound(KyObject* object, const std::string& name) {
    mObjects.insert_or_assign(name, KyObjectReference(object));
}

void KyPublishedObjects::onUnbound(KyObject*, const std::string& name) {
    mObjects.erase(name);
}
