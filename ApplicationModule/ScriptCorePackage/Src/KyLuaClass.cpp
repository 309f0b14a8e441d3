// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaClass_p.h"

#include "KyLuaConverters_p.h"

#include "KyLuaAccess_p.h"
#include "KyLuaInstance_p.h"
#include "KyLuaMethod_p.h"
#include "KyScriptEngine.h"

#include <new>
#include <type_traits>

namespace {

/// Its address is the key of the shared record in the registry.
char gSharedKey = 0;

static_assert(std::is_trivially_destructible_v<KyLuaShared> && std::is_trivially_destructible_v<KyLuaClass>,
              "Lua frees their memory without ending them");

/// The environment of the shared record's userdata keeps the memory of its maps and the records of classes.
void pushAnchors(lua_State* state) {
    lua_pushlightuserdata(state, &gSharedKey);
    lua_rawget(state, LUA_REGISTRYINDEX);
    lua_getfenv(state, -1);
    lua_remove(state, -2);
}

KyLuaShared& makeShared(lua_State* state) {
    lua_pushlightuserdata(state, &gSharedKey);
    auto* shared = new (lua_newuserdata(state, sizeof(KyLuaShared))) KyLuaShared;
    lua_newtable(state);
    lua_setfenv(state, -2);
    lua_pushcfunction(state, &kyLuaPushFieldFunction);
    shared->pushFieldReference = luaL_ref(state, LUA_REGISTRYINDEX);
    lua_rawset(state, LUA_REGISTRYINDEX);
    return *shared;
}

/// Makes the record of a class whose metatable is at `metatable` and leaves it on top.
KyLuaClass& pushClassRecord(lua_State* state, KyLuaShared& shared, const KyType& type, int metatable) {
    auto* luaClass = new (lua_newuserdata(state, sizeof(KyLuaClass))) KyLuaClass;
    luaClass->type = &type;
    luaClass->shared = &shared;
    luaClass->metatable = lua_topointer(state, metatable);
    lua_newtable(state);
    luaClass->anchorsReference = luaL_ref(state, LUA_REGISTRYINDEX);
    lua_pushvalue(state, metatable);
    luaClass->metatableReference = luaL_ref(state, LUA_REGISTRYINDEX);

    pushAnchors(state);
    const int anchors = lua_gettop(state);
    lua_pushlightuserdata(state, luaClass);
    lua_pushvalue(state, anchors - 1);
    lua_rawset(state, anchors);
    shared.classesByMetatable.set(state, anchors, luaClass->metatable, luaClass);
    shared.classesByType.set(state, anchors, &type, luaClass);
    lua_pop(state, 1);
    return *luaClass;
}

void setRawField(lua_State* state, int table, const char* name) {
    lua_pushstring(state, name);
    lua_insert(state, -2);
    lua_rawset(state, table);
}

void setTypeClosure(lua_State* state, int table, const char* name, lua_CFunction function, const KyType& type) {
    lua_pushlightuserdata(state, const_cast<KyType*>(&type));
    lua_pushcclosure(state, function, 1);
    setRawField(state, table, name);
}

void setClassClosure(lua_State* state, int table, const char* name, lua_CFunction function, int record) {
    lua_pushvalue(state, record);
    lua_pushcclosure(state, function, 1);
    setRawField(state, table, name);
}

/// One function value for all classes: Lua compares instances of two classes only when both carry the same.
void setSharedFunction(lua_State* state, int table, const char* name, lua_CFunction function, int& reference) {
    if (reference == LUA_NOREF) {
        lua_pushcfunction(state, function);
        reference = luaL_ref(state, LUA_REGISTRYINDEX);
    }
    lua_rawgeti(state, LUA_REGISTRYINDEX, reference);
    setRawField(state, table, name);
}

/// Pushes the class metatable of the type's parent; false, and nothing pushed, when there is none.
bool pushParentMetatable(lua_State* state, const KyType& type) {
    const KyType* parent = type.getParent();
    const KyLuaClass* luaClass = parent ? KyLuaShared::get(state).findByType(parent) : nullptr;
    if (!luaClass)
        return false;
    lua_rawgeti(state, LUA_REGISTRYINDEX, luaClass->metatableReference);
    return true;
}

/// Pushes the class table of a bound type.
void pushClassTable(lua_State* state, const KyType& type) {
    lua_rawgeti(state, LUA_REGISTRYINDEX, KyLuaShared::get(state).findRecord(&type)->metatableReference);
    if (!lua_getmetatable(state, -1))
        lua_newtable(state);
    lua_remove(state, -2);
}

/// Makes the record of the functions that bear the name of `first` and enters their closure into the table.
void bindOverloads(lua_State* state, int table, KyLuaClass& luaClass, const KyType::Functions& functions,
                   const KyFunction& first) {
    lua_pushlstring(state, first.getName().data(), first.getName().size());
    kyLuaPushMethod(state, luaClass, functions, first.getName());
    lua_rawset(state, table);
}

/// False when a function has no name to be called by.
bool bindFunctions(lua_State* state, int table, KyLuaClass& luaClass, const KyType::Functions& functions) {
    bool allBound = true;
    for (const auto& function : functions) {
        if (function->getName().empty())
            allBound = false;
        else
            bindOverloads(state, table, luaClass, functions, *function);
    }
    return allBound;
}

bool bindMembers(lua_State* state, const KyType& type) {
    KyLuaClass& luaClass = *KyLuaShared::get(state).findRecord(&type);
    pushClassTable(state, type);
    const int table = lua_gettop(state);
    const bool methods = bindFunctions(state, table, luaClass, type.getAllMethods());
    const bool statics = bindFunctions(state, table, luaClass, type.getAllStaticMethods());
    const auto& values = type.getAllEnumValues();
    kyLuaAddEnumValues(state, table, static_cast<unsigned>(values.size()), values.data());
    lua_settop(state, table - 1);
    return methods && statics;
}

struct Binding {
    lua_CFunction creator;
    lua_CFunction destructor;
    KyScriptEngine* engine;
};

/// Tells the engine, unless it has got another state while this one runs on.
void announce(lua_State* state, const KyType& type, KyScriptEngine* engine) {
    lua_State* current = engine ? engine->editLuaState() : nullptr;
    if (current && lua_topointer(current, LUA_REGISTRYINDEX) == lua_topointer(state, LUA_REGISTRYINDEX))
        engine->addBoundClass(type);
}

bool bindClass(lua_State* state, const KyType& type, const Binding& binding) {
    if (kyIsLuaClassBound(state, type))
        return false;
    luaL_checkstack(state, 4, "too many values");
    const KyType* parent = type.getParent();
    const bool parentBound = !parent || kyIsLuaClassBound(state, *parent) || bindClass(state, *parent, binding);
    kyInitLuaClass(state, type, binding.creator, binding.destructor, &kyLuaCollectInstance);
    const bool membersBound = bindMembers(state, type);
    KyLuaShared::get(state).findRecord(&type)->isComplete = true;
    announce(state, type, binding.engine);
    return membersBound && parentBound;
}

/// Takes the class table away from the global of its name, unless scripts have put something else there.
void removeGlobal(lua_State* state, const KyType& type) {
    lua_pushstring(state, type.getName().c_str());
    lua_pushvalue(state, -1);
    lua_rawget(state, LUA_GLOBALSINDEX);
    pushClassTable(state, type);
    const bool isOurs = lua_rawequal(state, -1, -2) != 0;
    lua_pop(state, 2);
    lua_pushnil(state);
    if (isOurs)
        lua_rawset(state, LUA_GLOBALSINDEX);
    else
        lua_pop(state, 2);
}

} // namespace

KyLuaShared& KyLuaShared::get(lua_State* state) {
    lua_pushlightuserdata(state, &gSharedKey);
    lua_rawget(state, LUA_REGISTRYINDEX);
    auto* shared = static_cast<KyLuaShared*>(lua_touserdata(state, -1));
    lua_pop(state, 1);
    return shared ? *shared : makeShared(state);
}

void kyInitLuaClass(lua_State* state, const KyType& type, lua_CFunction creator, lua_CFunction destructor,
                    lua_CFunction collector) {
    luaL_checkstack(state, 12, "too many values");
    KyLuaShared& shared = KyLuaShared::get(state);
    const int classTable = lua_gettop(state) + 1;
    lua_newtable(state);
    lua_pushvalue(state, classTable);
    setRawField(state, LUA_GLOBALSINDEX, type.getName().c_str());
    if (creator)
        setTypeClosure(state, classTable, "__call", creator, type);
    if (destructor)
        setTypeClosure(state, classTable, "destroy", destructor, type);

    const int metatable = classTable + 1;
    lua_newtable(state);
    lua_pushlightuserdata(state, const_cast<KyType*>(&type));
    lua_pushvalue(state, metatable);
    lua_rawset(state, LUA_REGISTRYINDEX);
    pushClassRecord(state, shared, type, metatable);
    const int record = metatable + 1;
    setClassClosure(state, metatable, "__index", &kyLuaIndexInstance, record);
    setClassClosure(state, metatable, "__newindex", &kyLuaNewIndexInstance, record);
    setTypeClosure(state, metatable, "__tostring", &kyLuaInstanceToString, type);
    setSharedFunction(state, metatable, "__eq", &kyLuaInstancesEqual, shared.equalReference);
    setSharedFunction(state, metatable, "__lt", &kyLuaInstanceLess, shared.lessReference);
    if (collector)
        setTypeClosure(state, metatable, "__gc", collector, type);
    if (pushParentMetatable(state, type))
        setRawField(state, metatable, "_base");
    lua_pushlstring(state, type.getName().data(), type.getName().size());
    setRawField(state, metatable, "__tessaly_type");
    lua_pushvalue(state, classTable);
    lua_setmetatable(state, metatable);
    if (pushParentMetatable(state, type) && lua_getmetatable(state, -1))
        setRawField(state, classTable, "__index");
    lua_settop(state, metatable - 1);
    lua_pushvalue(state, classTable);
    lua_setmetatable(state, classTable);
    lua_settop(state, classTable - 1);
}

bool kyBindLuaClass(lua_State* state, const KyType& type, KyScriptEngine& engine) {
    return bindClass(state, type, {engine.getInstanceCreator(), engine.getInstanceDestructor(), &engine});
}

bool kyBindLuaClass(lua_State* state, const KyType& type, lua_CFunction creator, lua_CFunction destructor) {
    return bindClass(state, type, {creator, destructor, nullptr});
}

bool kyIsLuaClassBound(lua_State* state, const KyType& type) {
    return KyLuaShared::get(state).findByType(&type) != nullptr;
}

void kyUnbindLuaClass(lua_State* state, const KyType& type) {
    KyLuaShared& shared = KyLuaShared::get(state);
    KyLuaClass* luaClass = shared.findRecord(&type);
    if (!luaClass)
        return;
    removeGlobal(state, type);
    pushAnchors(state);
    shared.classesByType.set(state, lua_gettop(state), &type, nullptr);
    lua_pop(state, 1);
    lua_pushlightuserdata(state, const_cast<KyType*>(&type));
    lua_pushnil(state);
    lua_rawset(state, LUA_REGISTRYINDEX);
    luaClass->isDropped = true;
    luaClass->attributes.clear();
}

void kyLuaAddEnumValues(lua_State* state, int index, unsigned count, const KyEnum* values) {
    for (unsigned i = 0; i < count; ++i) {
        lua_pushstring(state, values[i].name);
        lua_pushinteger(state, values[i].value);
        lua_rawset(state, index);
    }
}
