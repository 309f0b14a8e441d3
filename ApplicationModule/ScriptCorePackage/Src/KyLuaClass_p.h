// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaAttributeCache_p.h"
#include "KyType.h"

#include <array>

#include <lua.hpp>

class KyObject;
class KyScriptEngine;
struct KyLuaShared;

/// How instances of a class hold their objects; unknown until the first is pushed.
enum class KyLuaCounting { eUnknown, eNone, eReferenceCounted, eGraphicsObject };

/// What one Lua state knows of one bound class. Lives in the Lua state as long as it and owns nothing outside it.
struct KyLuaClass {
    const KyType* type = nullptr;
    KyLuaShared* shared = nullptr;
    /// Address of the class metatable, and its reference in the Lua registry.
    const void* metatable = nullptr;
    int metatableReference = LUA_NOREF;
    /// Reference of the table that keeps what the attribute cache needs.
    int anchorsReference = LUA_NOREF;
    KyLuaCounting counting = KyLuaCounting::eUnknown;
    /// The flag "_refcounted" has been set.
    bool isFlagged = false;
    /// The type record has left the registry: nothing that came from it may be used.
    bool isDropped = false;
    /// Everything is in its tables; until then, and after an error on the way, the class counts as not bound.
    bool isComplete = false;
    /// Known to be open to scripts in a sandbox; asked again while it is not.
    bool isReviewed = false;
    KyLuaAttributeCache attributes;
};

/// What one Lua state knows of all its bound classes. Made on first use, lives in the Lua state.
struct KyLuaShared {
    /// Class metatable to KyLuaClass.
    KyLuaAddressMap classesByMetatable;
    /// KyType to KyLuaClass, without dropped ones.
    KyLuaAddressMap classesByType;
    /// The metatable of container proxies, null until there is one.
    const void* proxyMetatable = nullptr;
    int proxyMetatableReference = LUA_NOREF;
    int proxySizeReference = LUA_NOREF;
    int proxyInsertReference = LUA_NOREF;
    int proxyRemoveReference = LUA_NOREF;
    /// Lua classes of the value types by index of kind, null until asked for.
    std::array<void*, cNbBuiltInFieldTypes> valueClasses{};
    int equalReference = LUA_NOREF;
    int lessReference = LUA_NOREF;
    /// The state is in a sandbox that is enabled. Of that: a published object, null when none has been met in the run,
    /// and readings up to the next look at the clock.
    bool isSandboxed = false;
    const KyObject* granted = nullptr;
    int nbReadingsLeft = 0;
    /// The function that pushes a field, made ahead so that calling it allocates nothing.
    int pushFieldReference = LUA_NOREF;

    /// The state's record. May raise a memory error on first use.
    static KyLuaShared& get(lua_State* state);

    KyLuaClass* findByMetatable(const void* metatable) const {
        return static_cast<KyLuaClass*>(classesByMetatable.find(metatable));
    }
    KyLuaClass* findByType(const KyType* type) const {
        KyLuaClass* luaClass = findRecord(type);
        return luaClass && luaClass->isComplete ? luaClass : nullptr;
    }
    /// Also of a class that is being bound.
    KyLuaClass* findRecord(const KyType* type) const { return static_cast<KyLuaClass*>(classesByType.find(type)); }
};

/// Makes the type, and before it its parents, a Lua class. True when it was bound now, with everything it has; false
/// when it was bound already. Raises Lua errors: to be called protected.
bool kyBindLuaClass(lua_State* state, const KyType& type, KyScriptEngine& engine);
/// As above with the functions that make and destroy instances.
bool kyBindLuaClass(lua_State* state, const KyType& type, lua_CFunction creator, lua_CFunction destructor);
/// Builds the two tables of one class and leaves the stack as it was. Raises Lua errors.
void kyInitLuaClass(lua_State* state, const KyType& type, lua_CFunction creator, lua_CFunction destructor,
                    lua_CFunction collector);
bool kyIsLuaClassBound(lua_State* state, const KyType& type);
/// Forgets the class of a type that leaves the registry: its methods raise "invalid method" from now on, its instances
/// live on, and the type can be bound again. Nothing when it is not bound. To be called protected.
void kyUnbindLuaClass(lua_State* state, const KyType& type);

/// Enters the constants as integers into the table at `index`.
void kyLuaAddEnumValues(lua_State* state, int index, unsigned count, const KyEnum* values);
