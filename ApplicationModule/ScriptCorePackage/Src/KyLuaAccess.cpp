// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaAccess_p.h"

#include "KyLuaContainerProxy_p.h"
#include "KyLuaConverters_p.h"
#include "KyLuaErrorText_p.h"
#include "KyLuaInstance_p.h"
#include "KyScriptSandbox_p.h"

#include <cinttypes>
#include <cstdio>
#include <string_view>

namespace {

KyLuaClass& upvalueClass(lua_State* state) {
    return *static_cast<KyLuaClass*>(lua_touserdata(state, lua_upvalueindex(1)));
}

std::string_view keyOf(lua_State* state) {
    std::size_t size = 0;
    const char* text = lua_tolstring(state, 2, &size);
    return text ? std::string_view(text, size) : std::string_view();
}

int pushNil(lua_State* state) {
    lua_pushnil(state);
    return 1;
}

/// Pushes what the class table of the instance at 1 has under the key at 2. May run scripts, so nothing may need an
/// end.
int pushClassMember(lua_State* state) {
    if (!lua_getmetatable(state, 1) || !lua_getmetatable(state, -1))
        return pushNil(state);
    lua_pushvalue(state, 2);
    lua_gettable(state, -2);
    return 1;
}

int pushAttribute(lua_State* state, KyLuaShared& shared, const KyAttributeInterface& attribute,
                  const KyObject& object) {
    if (attribute.getKind() == KyAttributeInterface::eSingle) {
        KyField value;
        if (!attribute.getValue(object, value))
            return pushNil(state);
        kyLuaPushHeldField(state, shared, value);
        return 1;
    }
    if (attribute.getKind() == KyAttributeInterface::eContainer) {
        kyLuaPushContainerProxy(state, shared, 1, attribute);
        return 1;
    }
    return pushNil(state);
}

/// The attribute of that name, entered into the class's cache when it is one of the type.
const KyAttributeInterface* findAttribute(lua_State* state, KyLuaClass& luaClass, const KyObject& object,
                                          std::string_view key) {
    const KyAttributeInterface* ofType = luaClass.isDropped ? nullptr : luaClass.type->getAttribute(key);
    if (!ofType)
        return object.getAttribute(key);
    lua_rawgeti(state, LUA_REGISTRYINDEX, luaClass.anchorsReference);
    luaClass.attributes.add(state, lua_gettop(state), 2, ofType);
    lua_pop(state, 1);
    return ofType;
}

/// Remembers that the key at 2 is no attribute, when the class table holds it (the value on top).
void cacheClassMember(lua_State* state, KyLuaClass& luaClass) {
    const char* key = lua_tostring(state, 2);
    if (luaClass.isDropped || !lua_isfunction(state, -1) || luaClass.attributes.find(key) ||
        !luaClass.attributes.hasRoomForOthers())
        return;
    lua_rawgeti(state, LUA_REGISTRYINDEX, luaClass.anchorsReference);
    luaClass.attributes.add(state, lua_gettop(state), 2, nullptr);
    lua_pop(state, 1);
}

/// Pushes the attribute unless a sandbox withholds it.
int readAttribute(lua_State* state, KyLuaClass& luaClass, const KyAttributeInterface& attribute, const KyObject& object,
                  KyLuaErrorText& error) {
    const bool isChecked = luaClass.shared->isSandboxed && luaClass.shared->granted != &object;
    if (isChecked && !KyScriptSandbox::Private::mayRead(state, luaClass, object, attribute))
        return error.set({"sandbox: ", object.getObjectType()->getName(), ".", attribute.getName(), " is withheld"});
    return pushAttribute(state, *luaClass.shared, attribute, object);
}

/// Attribute or component; 0 results when there is none, which leaves the class table.
int pushOwnMember(lua_State* state, KyLuaClass& luaClass, KyObject& object, bool& isFound, KyLuaErrorText& error) {
    const std::string_view key = keyOf(state);
    isFound = true;
    if (const KyAttributeInterface* attribute = findAttribute(state, luaClass, object, key))
        return readAttribute(state, luaClass, *attribute, object, error);
    if (KyObject* component = object.getComponentByName(key)) {
        kyLuaPushInstance(state, *luaClass.shared, *component);
        return 1;
    }
    isFound = false;
    return 0;
}

int indexSlowly(lua_State* state) {
    if (lua_type(state, 1) != LUA_TUSERDATA) {
        if (!lua_istable(state, 1))
            return pushNil(state);
        lua_settop(state, 2);
        lua_rawget(state, 1);
        return 1;
    }
    KyLuaClass* luaClass = nullptr;
    const KyLuaInstance* instance = kyLuaToInstance(state, 1, *upvalueClass(state).shared, luaClass);
    if (!instance)
        return pushNil(state);
    std::size_t size = 0;
    luaL_checklstring(state, 2, &size);
    KyObject* object = instance->get();
    if (!object || size == 0)
        return pushNil(state);
    lua_settop(state, 2);
    bool isFound = false;
    const int nbResults = kyLuaRun(
        state, [&](KyLuaErrorText& error) { return pushOwnMember(state, *luaClass, *object, isFound, error); });
    if (isFound)
        return nbResults;
    pushClassMember(state);
    cacheClassMember(state, *luaClass);
    return 1;
}

/// A key that is known not to be an attribute of the type.
int indexOther(lua_State* state, KyLuaClass& luaClass, KyObject& object) {
    if (object.hasOwnAttributes())
        return indexSlowly(state);
    KyLuaErrorText error;
    KyObject* component = nullptr;
    int failed = 0;
    try {
        component = object.getComponentByName(keyOf(state));
        if (component)
            kyLuaPushInstance(state, *luaClass.shared, *component);
    } catch (const std::exception& exception) {
        failed = error.set(exception.what());
    } catch (...) {
        failed = error.set("unknown C++ exception");
    }
    if (failed)
        return error.raise(state);
    return component ? 1 : pushClassMember(state);
}

constexpr const char* cSetFailed = "Instance attribute: setValue call failed";
constexpr const char* cIsContainer = "Instance attribute: cannot set attribute for a container";

/// 0, or -1 with the error.
int writeAttribute(lua_State* state, const KyAttributeInterface& attribute, KyObject& object, KyLuaErrorText& error) {
    if (attribute.getKind() == KyAttributeInterface::eContainer)
        return error.set(cIsContainer);
    if (attribute.getKind() != KyAttributeInterface::eSingle)
        return 0;
    KyField value;
    kyLuaReadField(state, 3, attribute.getValueKind(), value);
    return attribute.setValue(object, value) ? 0 : error.set(cSetFailed);
}

int newIndexSlowly(lua_State* state) {
    if (lua_type(state, 1) != LUA_TUSERDATA) {
        if (lua_istable(state, 1) && !lua_isnoneornil(state, 2)) {
            lua_settop(state, 3);
            lua_rawset(state, 1);
        }
        return 0;
    }
    KyLuaClass* luaClass = nullptr;
    const KyLuaInstance* instance = kyLuaToInstance(state, 1, *upvalueClass(state).shared, luaClass);
    KyObject* object = instance ? instance->get() : nullptr;
    if (!object || !lua_isstring(state, 2))
        return 0;
    lua_settop(state, 3);
    return kyLuaRun(state, [&](KyLuaErrorText& error) {
        const KyAttributeInterface* attribute = findAttribute(state, *luaClass, *object, keyOf(state));
        return attribute ? writeAttribute(state, *attribute, *object, error) : 0;
    });
}

/// The object of an instance of the very class whose upvalue this is, and the key's place in its cache.
const KyLuaAddressMap::Slot* findCached(lua_State* state, const KyLuaClass& luaClass, KyObject*& object) {
    const auto* instance = static_cast<const KyLuaInstance*>(lua_touserdata(state, 1));
    if (!instance || !lua_getmetatable(state, 1) || lua_topointer(state, -1) != luaClass.metatable)
        return nullptr;
    const char* key = lua_tolstring(state, 2, nullptr);
    const KyLuaAddressMap::Slot* slot = key ? luaClass.attributes.find(key) : nullptr;
    object = slot ? instance->get() : nullptr;
    return object ? slot : nullptr;
}

void checkWriting(lua_State* state, const KyLuaShared& shared) {
    const KyLuaInstance* instance = kyLuaToInstance(state, 1);
    const KyObject* object = instance ? instance->get() : nullptr;
    if (object && lua_type(state, 2) == LUA_TSTRING)
        KyScriptSandbox::Private::checkWriting(state, shared, *object, lua_tostring(state, 2));
}

} // namespace

int kyLuaIndexInstance(lua_State* state) {
    KyLuaClass& luaClass = upvalueClass(state);
    if (luaClass.shared->isSandboxed) [[unlikely]]
        KyScriptSandbox::Private::chargeReading(state, *luaClass.shared);
    KyObject* object = nullptr;
    const KyLuaAddressMap::Slot* slot = findCached(state, luaClass, object);
    if (!slot)
        return indexSlowly(state);
    const KyAttributeInterface* attribute = KyLuaAttributeCache::getAttribute(*slot);
    if (!attribute)
        return indexOther(state, luaClass, *object);
    return kyLuaRun(state,
                    [&](KyLuaErrorText& error) { return readAttribute(state, luaClass, *attribute, *object, error); });
}

int kyLuaNewIndexInstance(lua_State* state) {
    KyObject* object = nullptr;
    const KyLuaAddressMap::Slot* slot = findCached(state, upvalueClass(state), object);
    const KyAttributeInterface* attribute = slot ? KyLuaAttributeCache::getAttribute(*slot) : nullptr;
    if (const KyLuaShared& shared = *upvalueClass(state).shared; shared.isSandboxed) [[unlikely]]
        checkWriting(state, shared);
    if (!attribute)
        return newIndexSlowly(state);
    return kyLuaRun(state, [&](KyLuaErrorText& error) { return writeAttribute(state, *attribute, *object, error); });
}

int kyLuaInstanceToString(lua_State* state) {
    const auto* type = static_cast<const KyType*>(lua_touserdata(state, lua_upvalueindex(1)));
    if (!type)
        return luaL_error(state, "Instance tostring: invalid type");
    const KyLuaInstance* instance = kyLuaToInstance(state, 1);
    const auto address = reinterpret_cast<std::uintptr_t>(instance ? instance->object : nullptr);
    char digits[2 * sizeof(address) + 1];
    std::snprintf(digits, sizeof(digits), "%" PRIXPTR, address);
    lua_pushfstring(state, "%s: %s", type->getName().c_str(), digits);
    return 1;
}

int kyLuaInstancesEqual(lua_State* state) {
    const KyLuaInstance* first = kyLuaToInstance(state, 1);
    const KyLuaInstance* second = kyLuaToInstance(state, 2);
    lua_pushboolean(state, first && second && first->object == second->object);
    return 1;
}

int kyLuaInstanceLess(lua_State* state) {
    const KyLuaInstance* first = kyLuaToInstance(state, 1);
    const KyLuaInstance* second = kyLuaToInstance(state, 2);
    if (!first || !second)
        return luaL_error(state, "Comparison with invalid type");
    lua_pushboolean(state, std::less<const void*>()(first->object, second->object));
    return 1;
}
