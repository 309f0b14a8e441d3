// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaContainerProxy_p.h"

#include "KyLuaConverters_p.h"
#include "KyLuaErrorText_p.h"
#include "KyLuaInstance_p.h"
#include "KyScriptSandbox_p.h"

#include <cmath>
#include <cstdio>
#include <limits>
#include <string_view>
#include <vector>

namespace {

constexpr char cObjectField[] = "__tessaly_object";
constexpr char cAttributeField[] = "__tessaly_attr";

constexpr std::size_t cUnitsPerElement = 50;

constexpr std::string_view cGetPrefix = "get attribute on container failed: ";
constexpr std::string_view cSetPrefix = "set attribute on container failed: ";
constexpr std::string_view cLengthPrefix = "get length on container failed: ";
constexpr std::string_view cAddPrefix = "add value on attribute container failed: ";
constexpr std::string_view cRemovePrefix = "remove value on attribute container failed: ";
// Removing reports the text of adding; scripts look for it.
constexpr std::string_view cAddFailed = "add value on container failed: addValue call failed";

/// Upvalues of every function of proxies.
enum Upvalue { eShared = 1, eObjectName, eAttributeName };

KyLuaShared& sharedOf(lua_State* state) {
    return *static_cast<KyLuaShared*>(lua_touserdata(state, lua_upvalueindex(eShared)));
}

struct Container {
    KyObject* object = nullptr;
    const KyAttributeInterface* attribute = nullptr;
};

bool isProxy(lua_State* state, int index, const KyLuaShared& shared) {
    if (lua_type(state, index) != LUA_TUSERDATA || !lua_getmetatable(state, index))
        return false;
    const bool same = lua_topointer(state, -1) == shared.proxyMetatable;
    lua_pop(state, 1);
    return same;
}

/// Whether the object has the attribute: a table made by hand can pair any two.
bool hasAttribute(const KyObject& object, const KyAttributeInterface* attribute) {
    for (unsigned i = 0; i < object.getNbAttributes(); ++i)
        if (object.getAttribute(i) == attribute)
            return true;
    return false;
}

int fail(KyLuaErrorText& error, std::string_view prefix, std::string_view text) {
    return error.set({prefix, text});
}

/// Takes the fields of the table on top, a proxy's environment or a plain table.
int resolveFields(lua_State* state, const KyLuaShared& shared, std::string_view prefix, Container& container,
                  KyLuaErrorText& error) {
    lua_pushvalue(state, lua_upvalueindex(eObjectName));
    lua_rawget(state, -2);
    KyLuaClass* luaClass = nullptr;
    const KyLuaInstance* instance = kyLuaToInstance(state, -1, shared, luaClass);
    if (!instance)
        return fail(error, prefix, "invalid object.");
    container.object = instance->get();
    if (!container.object)
        return fail(error, prefix, "NULL object.");
    lua_pushvalue(state, lua_upvalueindex(eAttributeName));
    lua_rawget(state, -3);
    container.attribute =
        static_cast<const KyAttributeInterface*>(lua_islightuserdata(state, -1) ? lua_touserdata(state, -1) : nullptr);
    const bool isValid = container.attribute && hasAttribute(*container.object, container.attribute);
    return isValid ? 0 : fail(error, prefix, "invalid attribute.");
}

/// Finds object and attribute of argument 1: 0, or -1 with the error.
int resolve(lua_State* state, std::string_view prefix, Container& container, KyLuaErrorText& error) {
    const KyLuaShared& shared = sharedOf(state);
    if (lua_istable(state, 1)) {
        lua_pushvalue(state, 1);
        return resolveFields(state, shared, prefix, container, error);
    }
    const auto* proxy = static_cast<const KyLuaContainerProxy*>(lua_touserdata(state, 1));
    if (!proxy || !lua_getmetatable(state, 1) || lua_topointer(state, -1) != shared.proxyMetatable)
        return fail(error, prefix, "invalid table.");
    lua_getfenv(state, 1);
    lua_pushvalue(state, lua_upvalueindex(eObjectName));
    lua_rawget(state, -2);
    // What stands in the environment keeps the instance alive; another value there means somebody replaced it.
    if (lua_touserdata(state, -1) != proxy->instance) {
        lua_pop(state, 1);
        return resolveFields(state, shared, prefix, container, error);
    }
    container.object = proxy->instance->get();
    if (!container.object)
        return fail(error, prefix, "NULL object.");
    container.attribute = proxy->attribute;
    // Attributes of a type live as long as its class stays bound; those of one object may have been removed.
    const bool isOfType = !container.object->hasOwnAttributes() && shared.findByType(container.object->getObjectType());
    if (!isOfType && !hasAttribute(*container.object, container.attribute))
        return fail(error, prefix, "invalid attribute.");
    return 0;
}

constexpr unsigned cOutOfBounds = std::numeric_limits<unsigned>::max();

/// The index at argument 2, which is a number; a negative one, one too large and NaN are beyond every count.
unsigned toIndex(lua_Number number) {
    const lua_Number whole = std::floor(number);
    return whole >= 0 && whole < static_cast<lua_Number>(cOutOfBounds) ? static_cast<unsigned>(whole) : cOutOfBounds;
}

/// Before anything stands on the C++ stack: these raise errors in a sandbox.
void checkReading(lua_State* state) {
    if (sharedOf(state).isSandboxed) [[unlikely]]
        KyScriptSandbox::Private::chargeReading(state, sharedOf(state));
}

void checkWriting(lua_State* state) {
    KyScriptSandbox::Private::checkElement(state, sharedOf(state));
}

int getLength(lua_State* state) {
    checkReading(state);
    return kyLuaRun(state, [&](KyLuaErrorText& error) {
        Container container;
        if (resolve(state, cLengthPrefix, container, error) < 0)
            return -1;
        unsigned count = 0;
        if (!container.attribute->getNbValues(*container.object, count))
            return fail(error, cLengthPrefix, "getNbValues call failed.");
        lua_pushnumber(state, count);
        return 1;
    });
}

int getElement(lua_State* state, unsigned index) {
    checkReading(state);
    return kyLuaRun(state, [&](KyLuaErrorText& error) {
        Container container;
        if (resolve(state, cGetPrefix, container, error) < 0)
            return -1;
        unsigned count = 0;
        if (!container.attribute->getNbValues(*container.object, count))
            return fail(error, cGetPrefix, "getNbValues call failed");
        if (index >= count)
            return fail(error, cGetPrefix, "index out of bounds");
        KyField value;
        if (!container.attribute->getValue(*container.object, value, index))
            return fail(error, cGetPrefix, "getValue call failed");
        kyLuaPushHeldField(state, sharedOf(state), value);
        return 1;
    });
}

/// A name: one of the fields. False, and nothing pushed, when the environment has none of that name.
bool pushNamedField(lua_State* state) {
    if (lua_type(state, 2) != LUA_TSTRING || !isProxy(state, 1, sharedOf(state)))
        return false;
    lua_getfenv(state, 1);
    lua_pushvalue(state, 2);
    lua_rawget(state, -2);
    if (!lua_isnil(state, -1))
        return true;
    lua_pop(state, 2);
    return false;
}

int indexProxy(lua_State* state) {
    lua_Number number = lua_tonumber(state, 2);
    if (lua_type(state, 2) != LUA_TNUMBER) {
        if (pushNamedField(state))
            return 1;
        Container container;
        KyLuaErrorText error;
        if (resolve(state, cGetPrefix, container, error) < 0)
            return error.raise(state);
        number = luaL_checknumber(state, 2);
    }
    return getElement(state, toIndex(number));
}

int failRange(KyLuaErrorText& error, lua_Number index, unsigned count) {
    constexpr double cExactInteger = 1e15;
    char number[32];
    if (std::isnan(index))
        std::snprintf(number, sizeof(number), "nan");
    else
        std::snprintf(number, sizeof(number), std::fabs(index) < cExactInteger ? "%.0f" : "%.14g", std::floor(index));
    char text[128];
    std::snprintf(text, sizeof(text), "index out of range, %s given, valid is [0,%u]", number, count - 1);
    return fail(error, cSetPrefix, text);
}

int setElement(lua_State* state, lua_Number number) {
    checkWriting(state);
    return kyLuaRun(state, [&](KyLuaErrorText& error) {
        Container container;
        if (resolve(state, cSetPrefix, container, error) < 0)
            return -1;
        unsigned count = 0;
        if (!container.attribute->getNbValues(*container.object, count))
            return fail(error, cSetPrefix, "getNbValues call failed.");
        if (count == 0)
            return fail(error, cSetPrefix, "empty container.");
        const unsigned index = toIndex(number);
        if (index >= count)
            return failRange(error, number, count);
        KyField value;
        kyLuaReadField(state, 3, container.attribute->getValueKind(), value);
        if (!container.attribute->setValue(*container.object, value, index))
            return fail(error, cSetPrefix, "setValue call failed");
        return 0;
    });
}

/// Looks at the container before at the index, so that a wrong proxy is reported as such.
lua_Number checkIndex(lua_State* state, std::string_view prefix) {
    KyLuaErrorText error;
    Container container;
    if (lua_type(state, 2) != LUA_TNUMBER && resolve(state, prefix, container, error) < 0)
        error.raise(state);
    return luaL_checknumber(state, 2);
}

int newIndexProxy(lua_State* state) {
    lua_settop(state, 3);
    return setElement(state, checkIndex(state, cSetPrefix));
}

int insertElement(lua_State* state) {
    lua_settop(state, 3);
    checkWriting(state);
    const unsigned index = toIndex(checkIndex(state, cAddPrefix));
    return kyLuaRun(state, [&](KyLuaErrorText& error) {
        Container container;
        if (resolve(state, cAddPrefix, container, error) < 0)
            return -1;
        KyField value;
        kyLuaReadField(state, 3, container.attribute->getValueKind(), value);
        return container.attribute->addValue(*container.object, index, value) ? 0 : error.set(cAddFailed);
    });
}

int removeElement(lua_State* state) {
    checkWriting(state);
    const unsigned index = toIndex(checkIndex(state, cRemovePrefix));
    return kyLuaRun(state, [&](KyLuaErrorText& error) {
        Container container;
        if (resolve(state, cRemovePrefix, container, error) < 0)
            return -1;
        return container.attribute->removeValue(*container.object, index) ? 0 : error.set(cAddFailed);
    });
}

char gProxyMetatableKey = 0;

void pushFunction(lua_State* state, KyLuaShared& shared, lua_CFunction function) {
    lua_pushlightuserdata(state, &shared);
    lua_pushlstring(state, cObjectField, sizeof(cObjectField) - 1);
    lua_pushlstring(state, cAttributeField, sizeof(cAttributeField) - 1);
    lua_pushcclosure(state, function, 3);
}

int makeFunction(lua_State* state, KyLuaShared& shared, lua_CFunction function) {
    pushFunction(state, shared, function);
    return luaL_ref(state, LUA_REGISTRYINDEX);
}

void setMetamethod(lua_State* state, KyLuaShared& shared, const char* name, lua_CFunction function) {
    lua_pushstring(state, name);
    pushFunction(state, shared, function);
    lua_rawset(state, -3);
}

void makeMetatable(lua_State* state, KyLuaShared& shared) {
    shared.proxySizeReference = makeFunction(state, shared, &getLength);
    shared.proxyInsertReference = makeFunction(state, shared, &insertElement);
    shared.proxyRemoveReference = makeFunction(state, shared, &removeElement);
    lua_newtable(state);
    setMetamethod(state, shared, "__len", &getLength);
    setMetamethod(state, shared, "__index", &indexProxy);
    setMetamethod(state, shared, "__newindex", &newIndexProxy);
    lua_pushlightuserdata(state, &gProxyMetatableKey);
    lua_pushvalue(state, -2);
    lua_rawset(state, LUA_REGISTRYINDEX);
    shared.proxyMetatable = lua_topointer(state, -1);
    shared.proxyMetatableReference = luaL_ref(state, LUA_REGISTRYINDEX);
}

void setReference(lua_State* state, const char* name, int reference) {
    lua_pushstring(state, name);
    lua_rawgeti(state, LUA_REGISTRYINDEX, reference);
    lua_rawset(state, -3);
}

} // namespace

void kyLuaPushContainerProxy(lua_State* state, KyLuaShared& shared, int instanceIndex,
                             const KyAttributeInterface& attribute) {
    if (!shared.proxyMetatable)
        makeMetatable(state, shared);
    auto* proxy = static_cast<KyLuaContainerProxy*>(lua_newuserdata(state, sizeof(KyLuaContainerProxy)));
    proxy->instance = static_cast<const KyLuaInstance*>(lua_touserdata(state, instanceIndex));
    proxy->attribute = &attribute;
    lua_createtable(state, 0, 5);
    lua_pushlstring(state, cObjectField, sizeof(cObjectField) - 1);
    lua_pushvalue(state, instanceIndex);
    lua_rawset(state, -3);
    lua_pushlstring(state, cAttributeField, sizeof(cAttributeField) - 1);
    lua_pushlightuserdata(state, const_cast<KyAttributeInterface*>(&attribute));
    lua_rawset(state, -3);
    setReference(state, "size", shared.proxySizeReference);
    setReference(state, "insert", shared.proxyInsertReference);
    setReference(state, "remove", shared.proxyRemoveReference);
    lua_setfenv(state, -2);
    lua_rawgeti(state, LUA_REGISTRYINDEX, shared.proxyMetatableReference);
    lua_setmetatable(state, -2);
}

bool kyLuaCheckContainerProxy(lua_State* state, int index, KyLuaShared& shared, KyField& field) {
    if (!isProxy(state, index, shared))
        return false;
    const auto* proxy = static_cast<const KyLuaContainerProxy*>(lua_touserdata(state, index));
    lua_getfenv(state, index);
    lua_pushlstring(state, cObjectField, sizeof(cObjectField) - 1);
    lua_rawget(state, -2);
    const bool isIntact = lua_touserdata(state, -1) == proxy->instance;
    lua_pop(state, 2);
    const KyObject* object = isIntact ? proxy->instance->get() : nullptr;
    unsigned count = 0;
    if (!object || !hasAttribute(*object, proxy->attribute) || !proxy->attribute->getNbValues(*object, count))
        return false;
    if (shared.isSandboxed && !KyScriptSandbox::Private::admitWork(state, count * cUnitsPerElement))
        return false;
    std::vector<KyField> values(count);
    for (unsigned i = 0; i < count; ++i)
        if (!proxy->attribute->getValue(*object, values[i], i))
            return false;
    field = KyField(std::move(values));
    return true;
}
