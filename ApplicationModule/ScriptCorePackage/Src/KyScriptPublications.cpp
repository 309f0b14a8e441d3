// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptPublications_p.h"

#include "KyLuaClass_p.h"
#include "KyLuaInstance_p.h"
#include "KyScriptEngine.h"
#include "KyScriptRunner_p.h"
#include "KyScriptSandbox_p.h"

#include "KyObject.h"

#include <algorithm>

KyObject* KyScriptPublications::find(const std::string& name) const {
    const auto found =
        std::find_if(mNames.begin(), mNames.end(), [&name](const auto& entry) { return entry.second == name; });
    return found == mNames.end() ? nullptr : found->first;
}

int KyScriptPublications::publish(KyObject* object, const std::string& name) {
    if (mNames.contains(object))
        return KyScriptEngine::eAlreadyBound;
    const auto handle = mEngine.mHandle;
    // What listeners of a withdrawal do to the object is seen through the reference.
    const KyObjectReference reference(object);
    if (KyObject* other = find(name))
        withdraw(other);
    if (!*handle || mEngine.mIsClosing || !reference || object->isEnding())
        return KyScriptEngine::eInvalidArgument;
    if (!setGlobal(*object, name))
        return KyScriptEngine::eInternalError;
    const auto [entry, isNew] = mNames.emplace(object, name);
    object->connectModified(this, &KyScriptPublications::objectModifiedSlot);
    mEngine.boundSignal.send(object, std::string(entry->second));
    return KyScriptEngine::eBound;
}

int KyScriptPublications::withdraw(KyObject* object) {
    const auto found = mNames.find(object);
    if (found == mNames.end())
        return KyScriptEngine::eInvalidArgument;
    const std::string name = found->second;
    object->disconnectModified(this, &KyScriptPublications::objectModifiedSlot);
    removeGlobal(name);
    mNames.erase(object);
    mEngine.mSandbox->mPrivate->withdraw(*object);
    mEngine.unboundSignal.send(object, name);
    return KyScriptEngine::eBound;
}

void KyScriptPublications::withdrawAll() {
    const auto handle = mEngine.mHandle;
    while (*handle && !mNames.empty())
        withdraw(mNames.begin()->first);
}

bool KyScriptPublications::setGlobal(KyObject& object, const std::string& name) {
    KyScriptRunner runner(mEngine);
    const auto set = [&](lua_State* state) {
        const KyType& type = *object.getObjectType();
        if (!kyIsLuaClassBound(state, type))
            kyBindLuaClass(state, type, mEngine);
        lua_pushlstring(state, name.data(), name.size());
        kyLuaPushInstance(state, KyLuaShared::get(state), object);
        lua_rawset(state, LUA_GLOBALSINDEX);
    };
    const bool succeeded = runner.run(set);
    if (!succeeded && runner.isOpen())
        runner.reportInternal();
    return succeeded;
}

void KyScriptPublications::removeGlobal(const std::string& name) {
    KyScriptRunner runner(mEngine);
    const auto remove = [&name](lua_State* state) {
        lua_pushlstring(state, name.data(), name.size());
        lua_pushnil(state);
        lua_rawset(state, LUA_GLOBALSINDEX);
    };
    if (!runner.run(remove) && runner.isOpen())
        runner.report();
}

void KyScriptPublications::objectModifiedSlot(KyObject* object, KyObjectModificationType type, const std::string&,
                                              int) {
    if (type == eObjectEnding)
        withdraw(object);
}
