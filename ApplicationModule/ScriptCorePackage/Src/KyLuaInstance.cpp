// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaInstance_p.h"

#include "KyLuaConverters_p.h"
#include "KyLuaCounting_p.h"
#include "KyLuaErrorText_p.h"
#include "KyScriptEngine.h"
#include "KyScriptSandbox_p.h"

#include "KyException.h"
#include "KyFunction.h"

#include <string>
#include <utility>
#include <vector>

namespace {

constexpr char cFlagName[] = "_refcounted";

const KyType* upvalueType(lua_State* state) {
    return static_cast<const KyType*>(lua_touserdata(state, lua_upvalueindex(1)));
}

void giveReferenceBack(KyObject& object, KyLiveness& liveness, KyLuaCounting counting) {
    if (liveness.nbScriptReferences == 0)
        return;
    --liveness.nbScriptReferences;
    kyRemoveCountedReference(object, counting);
}

/// Ends the object now. A counted one ends in its own way, with the last of the references that scripts hold.
void endObject(KyObject& object, KyLiveness& liveness, KyLuaCounting counting) {
    const KyObjectReference keep(&liveness);
    if (liveness.nbScriptReferences == 0) {
        object.destroy();
        return;
    }
    while (liveness.nbScriptReferences > 0 && liveness.object)
        giveReferenceBack(object, liveness, counting);
}

void letGo(KyLuaInstance& instance) {
    instance.holdsReference = false;
    KyObjectReference::release(std::exchange(instance.liveness, nullptr));
}

/// Ends the object of an instance as far as references of others allow, at the latest when its running methods end.
void endInstance(KyLuaInstance& instance, KyObject& object, KyLuaCounting counting) {
    KyLiveness& liveness = *instance.liveness;
    const bool isCounted = counting > KyLuaCounting::eNone;
    const unsigned nbOurs = liveness.nbScriptReferences + liveness.nbRunningMethods;
    if (isCounted && kyGetNbCountedReferences(object, counting) > nbOurs) {
        const KyObjectReference keep(&liveness);
        const bool held = instance.holdsReference;
        letGo(instance);
        if (held)
            giveReferenceBack(object, liveness, counting);
    } else if (liveness.nbRunningMethods > 0) {
        liveness.destroyPending = true;
    } else {
        endObject(object, liveness, counting);
    }
}

bool isFlagged(lua_State* state, int index) {
    lua_getmetatable(state, index);
    lua_pushlstring(state, cFlagName, sizeof(cFlagName) - 1);
    lua_rawget(state, -2);
    const bool flagged = lua_toboolean(state, -1) != 0;
    lua_pop(state, 2);
    return flagged;
}

/// Runs protected: light userdata of the type in, nothing out.
int bindClassProtected(lua_State* state) {
    const auto* type = static_cast<const KyType*>(lua_touserdata(state, 1));
    if (KyScriptEngine* engine = kyLuaEngine(state))
        kyBindLuaClass(state, *type, *engine);
    else
        kyBindLuaClass(state, *type, &kyLuaCreateInstance, &kyLuaDestroyInstance);
    return 0;
}

void reportBindingError(lua_State* state) {
    const char* message = lua_tostring(state, -1);
    KyException::create(std::string("Internal lua error : ") + (message ? message : ""));
}

KyLuaClass* bindForPush(lua_State* state, KyLuaShared& shared, const KyType& type) {
    lua_pushcfunction(state, &bindClassProtected);
    lua_pushlightuserdata(state, const_cast<KyType*>(&type));
    if (lua_pcall(state, 1, 0, 0) != 0) {
        reportBindingError(state);
        lua_pop(state, 1);
    }
    return shared.findByType(&type);
}

/// The class metatable is on top.
void flagAsCounted(lua_State* state, KyLuaClass& luaClass) {
    lua_pushlstring(state, cFlagName, sizeof(cFlagName) - 1);
    lua_pushboolean(state, 1);
    lua_rawset(state, -3);
    luaClass.isFlagged = true;
}

/// These raise errors in a sandbox: nothing may stand on the C++ stack.
void checkCreation(lua_State* state, const KyType& type) {
    if (KyScriptSandbox::Private::isAnyEnabled()) [[unlikely]]
        KyScriptSandbox::Private::checkCreation(state, type);
}

/// Of the instance on top, if one has been made.
void noteCreation(lua_State* state) {
    if (!KyScriptSandbox::Private::isAnyEnabled()) [[likely]]
        return;
    const KyLuaInstance* instance = kyLuaToInstance(state, -1);
    if (KyObject* object = instance ? instance->get() : nullptr)
        KyScriptSandbox::Private::noteCreation(state, *object);
}

void checkDestruction(lua_State* state) {
    if (!KyScriptSandbox::Private::isAnyEnabled()) [[likely]]
        return;
    const KyLuaInstance* instance = kyLuaToInstance(state, 1);
    if (const KyObject* object = instance ? instance->get() : nullptr)
        KyScriptSandbox::Private::checkDestruction(state, *object);
}

} // namespace

KyLuaInstance* kyLuaToInstance(lua_State* state, int index, const KyLuaShared& shared, KyLuaClass*& luaClass) {
    if (lua_type(state, index) != LUA_TUSERDATA || !lua_getmetatable(state, index))
        return nullptr;
    luaClass = shared.findByMetatable(lua_topointer(state, -1));
    lua_pop(state, 1);
    return luaClass ? static_cast<KyLuaInstance*>(lua_touserdata(state, index)) : nullptr;
}

KyLuaInstance* kyLuaToInstance(lua_State* state, int index) {
    KyLuaClass* luaClass = nullptr;
    return kyLuaToInstance(state, index, KyLuaShared::get(state), luaClass);
}

KyObject* kyLuaToObject(lua_State* state, int index, const KyType& type) {
    const KyLuaInstance* instance = kyLuaToInstance(state, index);
    KyObject* object = instance ? instance->get() : nullptr;
    return object && object->getObjectType()->isA(type) ? object : nullptr;
}

void kyLuaPushInstance(lua_State* state, KyLuaShared& shared, KyObject& object) {
    const KyType* type = object.getObjectType();
    KyLuaClass* luaClass = shared.findByType(type);
    if (!luaClass && !(luaClass = bindForPush(state, shared, *type))) {
        lua_pushnil(state);
        return;
    }
    if (luaClass->counting == KyLuaCounting::eUnknown)
        luaClass->counting = kyGetCounting(object);

    // Held before the allocation: that may collect the last instance of the object, and the object with it.
    KyLiveness* liveness = object.getLiveness();
    ++liveness->nbHolders;
    const unsigned depth = KyLuaPendingLiveness::getDepth();
    KyLuaPendingLiveness::hold(liveness);
    auto* instance = static_cast<KyLuaInstance*>(lua_newuserdata(state, sizeof(KyLuaInstance)));
    KyLuaPendingLiveness::handOver(depth);
    instance->object = liveness->object;
    instance->liveness = liveness;
    instance->holdsReference = false;
    lua_rawgeti(state, LUA_REGISTRYINDEX, luaClass->metatableReference);
    if (luaClass->counting > KyLuaCounting::eNone && liveness->object) {
        if (!luaClass->isFlagged)
            flagAsCounted(state, *luaClass);
        kyAddCountedReference(object, luaClass->counting);
        ++liveness->nbScriptReferences;
        instance->holdsReference = true;
    }
    lua_setmetatable(state, -2);
}

int kyLuaCreateInstance(lua_State* state) {
    const KyType* type = upvalueType(state);
    if (!type)
        return luaL_error(state, "defaultInstanceCreator() invalid type");
    checkCreation(state, *type);
    bool isMade = false;
    const int nbResults = kyLuaRun(state, [&](KyLuaErrorText&) {
        KyField made;
        isMade = kyFindAndCallConstructor(state, type, made);
        if (isMade)
            kyLuaPushResult(state, made);
        return isMade ? 1 : 0;
    });
    if (isMade) {
        noteCreation(state);
        return nbResults;
    }
    const KyScriptEngine* engine = kyLuaEngine(state);
    const lua_CFunction fallback = engine ? engine->getInstanceCreatorFallback() : &kyLuaFallbackConstructor;
    if (fallback)
        return fallback(state);
    return luaL_error(state, "defaultInstanceCreator() failure for %s", type->getName().c_str());
}

int kyLuaFallbackConstructor(lua_State* state) {
    const KyType* type = upvalueType(state);
    if (!type)
        return luaL_error(state, "Instance creation invalid type");
    checkCreation(state, *type);
    const int nbResults = kyLuaRun(state, [&](KyLuaErrorText& error) {
        const bool hasArguments = lua_gettop(state) > 1;
        KyObject* object = hasArguments ? nullptr : KyObject::create(type->getName());
        if (!object)
            return error.set("Instance creation failure");
        kyLuaPushInstance(state, KyLuaShared::get(state), *object);
        return 1;
    });
    noteCreation(state);
    return nbResults;
}

int kyLuaFallbackFail(lua_State* state) {
    return luaL_error(state, "Instance creation failure.");
}

bool kyFindAndCallConstructor(lua_State* state, const KyType* type, KyField& result) {
    if (!type || !type->isRegistered() || type->getConstructors().empty())
        return false;
    std::vector<KyField> arguments;
    for (int i = 2; i <= lua_gettop(state); ++i)
        arguments.push_back(kyLuaCheckField(state, i));
    std::vector<const KyFunction*> constructors;
    for (const auto& constructor : type->getConstructors())
        constructors.push_back(constructor.get());
    const KyFunction* constructor = kySelectFunction(constructors, arguments);
    return constructor && constructor->invoke(nullptr, arguments, result) && result.toKyObject();
}

int kyLuaDestroyInstance(lua_State* state) {
    const KyType* type = upvalueType(state);
    if (!type)
        return luaL_error(state, "Instance destructor invalid type");
    checkDestruction(state);
    return kyLuaRun(state, [&](KyLuaErrorText&) {
        KyLuaClass* luaClass = nullptr;
        KyLuaInstance* instance = kyLuaToInstance(state, 1, KyLuaShared::get(state), luaClass);
        KyObject* object = instance ? instance->get() : nullptr;
        if (!object || !object->getObjectType()->isA(*type))
            return 0;
        endInstance(*instance, *object, luaClass->counting);
        instance->object = nullptr;
        return 0;
    });
}

int kyLuaCollectInstance(lua_State* state) {
    if (!kyLuaEngine(state)) {
        // Without an engine no object is touched; the record of its life is not one.
        KyLuaInstance* late = kyLuaToInstance(state, 1);
        if (late)
            KyObjectReference::release(std::exchange(late->liveness, nullptr));
        return 0;
    }
    if (!upvalueType(state))
        return luaL_error(state, "Instance garbage collection invalid type");
    KyLuaClass* luaClass = nullptr;
    KyLuaInstance* instance = kyLuaToInstance(state, 1, KyLuaShared::get(state), luaClass);
    if (!instance || !instance->liveness)
        return 0;
    const bool givesBack = instance->holdsReference && isFlagged(state, 1);
    return kyLuaRun(state, [&](KyLuaErrorText&) {
        // Cleared first: what the end of the object runs may reach this instance again.
        KyLiveness* liveness = std::exchange(instance->liveness, nullptr);
        KyObject* object = std::exchange(instance->object, nullptr);
        instance->holdsReference = false;
        if (givesBack && liveness->object && !object->isEnding())
            giveReferenceBack(*object, *liveness, luaClass->counting);
        KyObjectReference::release(liveness);
        return 0;
    });
}

int kyLuaCreateObject(lua_State* state) {
    const char* typeName = luaL_checkstring(state, 1);
    if (const KyType* type = KyType::getType(std::string_view(typeName)))
        checkCreation(state, *type);
    const int nbResults = kyLuaRun(state, [&](KyLuaErrorText&) {
        if (KyObject* object = KyObject::create(typeName))
            kyLuaPushInstance(state, KyLuaShared::get(state), *object);
        else
            lua_pushnil(state);
        return 1;
    });
    noteCreation(state);
    return nbResults;
}

int kyLuaDeleteObject(lua_State* state) {
    checkDestruction(state);
    return kyLuaRun(state, [&](KyLuaErrorText&) {
        KyLuaClass* luaClass = nullptr;
        KyLuaInstance* instance = kyLuaToInstance(state, 1, KyLuaShared::get(state), luaClass);
        KyObject* object = instance ? instance->get() : nullptr;
        if (object)
            endInstance(*instance, *object, luaClass->counting);
        return 0;
    });
}

void KyLuaRunningMethod::addReference() {
    kyAddCountedReference(mObject, mCounting);
}

void KyLuaRunningMethod::finish() {
    const bool isCounted = mCounting > KyLuaCounting::eNone;
    if (mLiveness.object && mLiveness.destroyPending && mLiveness.nbRunningMethods == 0) {
        endObject(mObject, mLiveness, isCounted ? mCounting : KyLuaCounting::eNone);
        mLiveness.destroyPending = false;
    }
    if (isCounted && mLiveness.object)
        kyRemoveCountedReference(mObject, mCounting);
}
