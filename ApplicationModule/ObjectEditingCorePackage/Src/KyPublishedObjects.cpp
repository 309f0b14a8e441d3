// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyPublishedObjects_p.h"

#include "KyScriptEngine.h"

#include <lua.hpp>

#include <memory>

namespace {

std::unique_ptr<KyPublishedObjects>& editInstance() {
    static std::unique_ptr<KyPublishedObjects> instance;
    return instance;
}

// What is published has its name among the globals, unless a script has taken it out there.
std::vector<std::string> listGlobals(KyScriptEngine& engine) {
    constexpr int cNbUsed = 2;
    std::vector<std::string> names;
    lua_State* state = engine.editLuaState();
    if (!state || lua_checkstack(state, cNbUsed) == 0)
        return names;
    lua_pushnil(state);
    while (lua_next(state, LUA_GLOBALSINDEX) != 0) {
        if (lua_type(state, -2) == LUA_TSTRING)
            names.emplace_back(lua_tostring(state, -2));
        lua_pop(state, 1);
    }
    return names;
}

} // namespace

void KyPublishedObjects::begin() {
    if (!editInstance())
        editInstance() = std::make_unique<KyPublishedObjects>();
    editInstance()->follow();
}

void KyPublishedObjects::follow() {
    KyScriptEngine* engine = KyScriptEngine::find();
    if (mEngine.get() == engine)
        return;
    disconnectAll();
    mObjects.clear();
    mEngine = KyObjectReference(engine);
    if (!engine)
        return;
    engine->boundSignal.connect(this, &KyPublishedObjects::onBound);
    engine->unboundSignal.connect(this, &KyPublishedObjects::onUnbound);
    for (const std::string& name : listGlobals(*engine))
        if (KyObject* object = engine->getInstance(name))
            onBound(object, name);
}

void KyPublishedObjects::end() {
    editInstance().reset();
}

KyPublishedObjects::Entries KyPublishedObjects::list() {
    Entries entries;
    if (!editInstance())
        return entries;
    editInstance()->follow();
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
