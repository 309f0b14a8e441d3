// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaClass_p.h"
#include "KyObject.h"

#include <array>

#include <lua.hpp>

class KyField;

/// The block of an instance's userdata. It holds one reference to the liveness record, given back by the collector.
struct KyLuaInstance {
    /// Null once a script destroyed the object through this instance; not followed without a look at `liveness`.
    KyObject* object;
    /// Null when this instance has let go of its object.
    KyLiveness* liveness;
    /// A counted reference was taken and not yet given back.
    bool holdsReference;

    /// The object; null when it is gone, ending, or waiting for its running method to end.
    KyObject* get() const {
        if (!liveness || !object || !liveness->object || liveness->destroyPending || object->isEnding())
            return nullptr;
        return object;
    }
};

/// The instance at `index` and its class; null for every other value. Tells instances by the identity of their
/// metatable.
KyLuaInstance* kyLuaToInstance(lua_State* state, int index, const KyLuaShared& shared, KyLuaClass*& luaClass);
KyLuaInstance* kyLuaToInstance(lua_State* state, int index);
/// The live object of an instance of the type or of one derived from it, else null.
KyObject* kyLuaToObject(lua_State* state, int index, const KyType& type);

/// Pushes a new instance of the object, or nil when its class cannot be bound. Needs four free slots.
void kyLuaPushInstance(lua_State* state, KyLuaShared& shared, KyObject& object);

/// Liveness records held by pushes under way. A push that runs out of memory is jumped over and leaves its record here;
/// whoever remembers the depth from before releases it.
class KyLuaPendingLiveness {
public:
    static unsigned getDepth() { return msNbHeld; }
    /// Takes over one reference to the record.
    static void hold(KyLiveness* liveness) {
        if (msNbHeld < msHeld.size())
            msHeld[msNbHeld++] = liveness;
    }
    /// Releases what stands above the depth.
    static void unwind(unsigned depth) {
        while (msNbHeld > depth)
            KyObjectReference::release(msHeld[--msNbHeld]);
    }
    /// As unwind, for the record of the caller, which keeps its reference.
    static void handOver(unsigned depth) {
        unwind(depth + 1);
        msNbHeld = depth;
    }

private:
    /// Pushes nest only where the collector ends objects whose listeners push others.
    static inline std::array<KyLiveness*, 64> msHeld{};
    static inline unsigned msNbHeld = 0;
};

/// The Lua C functions behind the engine's public ones. The class's type record is upvalue 1, light userdata.
int kyLuaCreateInstance(lua_State* state);
int kyLuaDestroyInstance(lua_State* state);
int kyLuaCollectInstance(lua_State* state);
int kyLuaFallbackConstructor(lua_State* state);
int kyLuaFallbackFail(lua_State* state);

/// Makes an object with the constructor that fits the arguments best (index 2 to the top; index 1 is the class table).
/// False when none fits; what the constructor throws passes through.
bool kyFindAndCallConstructor(lua_State* state, const KyType* type, KyField& result);

/// The globals "createKyObject" and "deleteKyObject".
int kyLuaCreateObject(lua_State* state);
int kyLuaDeleteObject(lua_State* state);

/// Keeps an object while one of its methods runs: a counted one by a reference; for all of them, a destruction asked
/// for by a script takes effect when the outermost of its methods ends.
class KyLuaRunningMethod {
public:
    KyLuaRunningMethod(KyObject& object, KyLiveness& liveness, const KyLuaClass& luaClass)
        : mObject(object)
        , mLiveness(liveness)
        , mCounting(luaClass.counting) {
        ++mLiveness.nbHolders;
        ++mLiveness.nbRunningMethods;
        if (mCounting > KyLuaCounting::eNone)
            addReference();
    }
    ~KyLuaRunningMethod() {
        --mLiveness.nbRunningMethods;
        if (mCounting > KyLuaCounting::eNone || mLiveness.destroyPending)
            finish();
        KyObjectReference::release(&mLiveness);
    }
    KyLuaRunningMethod(const KyLuaRunningMethod&) = delete;
    KyLuaRunningMethod& operator=(const KyLuaRunningMethod&) = delete;

private:
    void addReference();
    void finish();

    KyObject& mObject;
    KyLiveness& mLiveness;
    KyLuaCounting mCounting;
};
