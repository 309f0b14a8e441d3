// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaArithmetic_p.h"

#include "KyLuaOperators_p.h"
#include "KyLuaValueHolder_p.h"
#include "KyScriptError_p.h"

#include <algorithm>
#include <iterator>
#include <new>

namespace {

using luabind::detail::class_rep;
using luabind::detail::object_rep;

char gKnownKey = 0;
char gPlainKey = 0;
char gOwningKey = 0;

constexpr std::size_t cMaxClasses = 8;

/// What the operators of one state know. Lives in it.
struct KnownClasses {
    struct Entry {
        class_rep* luaClass;
        const KyLuaArithmetic* arithmetic;
        const void* members;
    };

    const void* plainMetatable = nullptr;
    const void* owningMetatable = nullptr;
    std::array<Entry, cMaxClasses> entries{};

    /// For the left operand; null also when it has members of its own: one may be the operator.
    const KyLuaArithmetic* find(lua_State* state, const class_rep* luaClass) const {
        const auto found = std::ranges::find(entries, luaClass, &Entry::luaClass);
        if (found == entries.end())
            return nullptr;
        lua_getuservalue(state, 1);
        const void* members = lua_topointer(state, -1);
        lua_pop(state, 1);
        return members == found->members ? found->arithmetic : nullptr;
    }
};

/// One operand, null for what is no value object.
object_rep* toObject(lua_State* state, int index, const KnownClasses& known) {
    auto* object = static_cast<object_rep*>(lua_touserdata(state, index));
    if (!object || !lua_getmetatable(state, index))
        return nullptr;
    const void* metatable = lua_topointer(state, -1);
    lua_pop(state, 1);
    return metatable == known.plainMetatable || metatable == known.owningMetatable ? object : nullptr;
}

template <KyLuaArithmetic::Combine KyLuaArithmetic::*Operation>
bool calculate(lua_State* state, const KnownClasses& known) {
    object_rep* a = toObject(state, 1, known);
    object_rep* b = toObject(state, 2, known);
    const KyLuaArithmetic* arithmetic = a && b && a->crep() == b->crep() ? known.find(state, a->crep()) : nullptr;
    if (!arithmetic)
        return false;
    const void* first = a->get_instance(arithmetic->id).first;
    const void* second = b->get_instance(arithmetic->id).first;
    if (!first || !second)
        return false;
    (arithmetic->*Operation)(state, *a->crep(), first, second);
    return true;
}

template <KyLuaArithmetic::Scale KyLuaArithmetic::*Operation>
bool calculate(lua_State* state, const KnownClasses& known) {
    if (lua_type(state, 2) != LUA_TNUMBER)
        return false;
    object_rep* object = toObject(state, 1, known);
    const KyLuaArithmetic* arithmetic = object ? known.find(state, object->crep()) : nullptr;
    const void* value = arithmetic ? object->get_instance(arithmetic->id).first : nullptr;
    if (!value)
        return false;
    (arithmetic->*Operation)(state, *object->crep(), value, lua_tonumber(state, 2));
    return true;
}

/// An operator of value objects: upvalue 1 is luabind's own, upvalue 2 the known classes.
template <auto Operation>
int runOperator(lua_State* state) {
    if (calculate<Operation>(state, *static_cast<const KnownClasses*>(lua_touserdata(state, lua_upvalueindex(2)))))
        return 1;
    lua_pushvalue(state, lua_upvalueindex(1));
    lua_insert(state, 1);
    lua_call(state, lua_gettop(state) - 1, LUA_MULTRET);
    return lua_gettop(state);
}

/// Other finalizers may still reach the object, so an empty one stays.
int finishValue(lua_State* state) {
    auto* object = static_cast<object_rep*>(lua_touserdata(state, 1));
    class_rep* luaClass = object->crep();
    object->release_dependency_refs(state);
    object->~object_rep();
    new (object) object_rep(nullptr, luaClass);
    return 0;
}

struct Operator {
    const char* name;
    lua_CFunction function;
};

constexpr Operator cOperators[] = {
    {"__add", &runOperator<&KyLuaArithmetic::add>},
    {"__sub", &runOperator<&KyLuaArithmetic::subtract>},
    {"__mul", &runOperator<&KyLuaArithmetic::multiply>},
    {"__div", &runOperator<&KyLuaArithmetic::divide>},
};

/// Pushes a copy of luabind's metatable with our operators; expects the known classes at `known`.
void pushMetatable(lua_State* state, int known, lua_CFunction finalizer) {
    lua_newtable(state);
    lua_rawgeti(state, LUA_REGISTRYINDEX, luabind::detail::class_registry::get_registry(state)->cpp_instance());
    for (lua_pushnil(state); lua_next(state, -2) != 0;) {
        lua_pushvalue(state, -2);
        lua_insert(state, -2);
        lua_rawset(state, -5);
    }
    lua_pop(state, 1);
    for (const Operator& operation : cOperators) {
        lua_getfield(state, -1, operation.name);
        lua_pushvalue(state, known);
        lua_pushcclosure(state, operation.function, 2);
        lua_setfield(state, -2, operation.name);
    }
    finalizer ? lua_pushcfunction(state, finalizer) : lua_pushnil(state);
    lua_setfield(state, -2, "__gc");
}

const void* makeMetatable(lua_State* state, int known, const void* key, lua_CFunction finalizer) {
    pushMetatable(state, known, finalizer);
    const void* metatable = lua_topointer(state, -1);
    lua_rawsetp(state, LUA_REGISTRYINDEX, key);
    return metatable;
}

/// Whether the class is `wanted` or a class of a script that derives from it.
bool isOfClass(const class_rep* luaClass, const class_rep* wanted) {
    if (luaClass == wanted)
        return true;
    return luaClass->get_class_type() == class_rep::lua_class &&
           std::ranges::any_of(luaClass->bases(), [wanted](const class_rep* base) { return isOfClass(base, wanted); });
}

KnownClasses* findKnownClasses(lua_State* state) {
    lua_rawgetp(state, LUA_REGISTRYINDEX, &gKnownKey);
    auto* known = static_cast<KnownClasses*>(lua_touserdata(state, -1));
    lua_pop(state, 1);
    return known;
}

} // namespace

void kyOpenLuaValues(lua_State* state) {
    if (findKnownClasses(state))
        return;
    kyOpenLuaOperators(state);
    auto* known = new (lua_newuserdata(state, sizeof(KnownClasses))) KnownClasses();
    const int index = lua_gettop(state);
    known->plainMetatable = makeMetatable(state, index, &gPlainKey, nullptr);
    known->owningMetatable = makeMetatable(state, index, &gOwningKey, &finishValue);
    lua_rawsetp(state, LUA_REGISTRYINDEX, &gKnownKey);
}

void kySetLuaArithmetic(lua_State* state, const KyLuaArithmetic& arithmetic) {
    KnownClasses& known = *findKnownClasses(state);
    const auto free = std::ranges::find(known.entries, nullptr, &KnownClasses::Entry::luaClass);
    if (free == known.entries.end())
        return;
    class_rep* luaClass = kyFindLuaClass(state, arithmetic.id);
    luaClass->get_table(state);
    *free = {luaClass, &arithmetic, lua_topointer(state, -1)};
    lua_pop(state, 1);
}

void kyLuaPushValueMetatable(lua_State* state, const class_rep& luaClass, bool ownsSomething) {
    lua_rawgetp(state, LUA_REGISTRYINDEX, ownsSomething ? &gOwningKey : &gPlainKey);
    if (!lua_isnil(state, -1))
        return;
    lua_pop(state, 1);
    lua_rawgeti(state, LUA_REGISTRYINDEX, luaClass.metatable_ref());
}

object_rep* kyLuaCheckNewValue(lua_State* state, int index, luabind::detail::class_id id) {
    object_rep* object = luabind::detail::get_instance(state, index);
    if (!object || !isOfClass(object->crep(), kyFindLuaClass(state, id)))
        throw KyScriptError("constructor called without an object");
    if (object->get_instance(id).first)
        throw KyScriptError("constructor called twice");
    return object;
}
