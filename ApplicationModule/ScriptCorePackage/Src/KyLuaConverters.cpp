// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaConverters_p.h"

#include "KyLuaErrorText_p.h"

#include "KyLuaBinder.h"
#include "KyLuaContainerProxy_p.h"
#include "KyLuaValues_p.h"
#include "KyScriptSandbox_p.h"
#include "KyStaticLuaMaps.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr int cMaxDepth = 64;

/// One conversion of a table: the tables around the one being read, and how many values of inner tables may follow, so
/// that tables which hold themselves or each other many times end.
struct TableWalk {
    std::array<const void*, cMaxDepth> outer;
    int depth = 0;
    std::size_t nbInnerValuesLeft = 4'000'000;
    /// Values that a sandbox has admitted at once; null without one.
    lua_State* sandboxed = nullptr;
    std::size_t nbAdmitted = 0;

    bool isInside(const void* table) const {
        return std::find(outer.begin(), outer.begin() + depth, table) != outer.begin() + depth;
    }
    bool takeInnerValue() {
        return (!sandboxed || isAdmitted()) && (depth <= 1 || (nbInnerValuesLeft > 0 && nbInnerValuesLeft-- > 0));
    }

private:
    bool isAdmitted() {
        constexpr std::size_t cValues = 256;
        constexpr std::size_t cUnitsPerValue = 100;
        if (nbAdmitted == 0 && KyScriptSandbox::Private::admitWork(sandboxed, cValues * cUnitsPerValue))
            nbAdmitted = cValues;
        return nbAdmitted > 0 && nbAdmitted-- > 0;
    }
};

KyField checkField(lua_State* state, int index, KyFieldKind kind, TableWalk* walk);

KyField invalidField() {
    return KyField(KyInvalidField());
}

void pushList(lua_State* state, KyLuaShared& shared, const KyField& field) {
    const KyFieldOperations& operations = field.getFieldType().getOperations();
    const std::size_t count = operations.size(field.data());
    if (!lua_checkstack(state, 6))
        return lua_pushnil(state);
    lua_createtable(state, static_cast<int>(count), 0);
    for (std::size_t i = 0; i < count; ++i) {
        kyLuaPushHeldField(state, shared, operations.element(field.data(), i));
        lua_rawseti(state, -2, static_cast<int>(i + 1));
    }
}

bool pushThroughConverter(lua_State* state, const KyField& field) {
    const KyStaticLuaMaps* maps = KyLuaBinder::getLuaMaps();
    const auto converter = maps ? maps->find(field.getKind()).cppToLua : nullptr;
    if (!converter || converter == &kyLuaPushValueField)
        return false;
    const int top = lua_gettop(state);
    KyLuaBinder binder(state);
    converter(binder, field);
    if (lua_gettop(state) == top)
        lua_pushnil(state);
    lua_settop(state, top + 1);
    return true;
}

template <class T>
bool pushNumber(lua_State* state, const KyField& field) {
    lua_pushnumber(state, static_cast<lua_Number>(field.unchecked<T>()));
    return true;
}

bool pushInteger(lua_State* state, const KyField& field) {
    switch (field.getKind()) {
    case cFieldKindOf<std::uint32_t>:
        return pushNumber<std::uint32_t>(state, field);
    case cFieldKindOf<std::int64_t>:
        return pushNumber<std::int64_t>(state, field);
    case cFieldKindOf<std::uint64_t>:
        return pushNumber<std::uint64_t>(state, field);
    default:
        return field.getFieldType().isEnumerated() && pushNumber<std::int32_t>(state, field);
    }
}

KyField checkTable(lua_State* state, int index, TableWalk& walk) {
    const void* table = lua_topointer(state, index);
    if (walk.depth >= cMaxDepth || walk.isInside(table) || !lua_checkstack(state, 4))
        return invalidField();
    walk.outer[static_cast<std::size_t>(walk.depth++)] = table;
    std::vector<KyField> list;
    const auto count = static_cast<int>(lua_objlen(state, index));
    for (int i = 1; i <= count && walk.takeInnerValue(); ++i) {
        lua_rawgeti(state, index, i);
        list.push_back(checkField(state, lua_gettop(state), cFieldKindInvalid, &walk));
        lua_pop(state, 1);
    }
    --walk.depth;
    if (list.size() != static_cast<std::size_t>(count))
        return invalidField();
    return KyField(std::move(list));
}

KyField checkOuterTable(lua_State* state, int index) {
    TableWalk walk;
    walk.sandboxed = KyLuaShared::get(state).isSandboxed ? state : nullptr;
    return checkTable(state, index, walk);
}

KyField checkUserdata(lua_State* state, int index, KyFieldKind kind) {
    KyLuaShared& shared = KyLuaShared::get(state);
    KyLuaClass* luaClass = nullptr;
    if (const KyLuaInstance* instance = kyLuaToInstance(state, index, shared, luaClass))
        return KyField(KyObjectReference(instance->get()));
    KyField field;
    if (kyLuaCheckValue(state, index, shared, kind, field) || kyLuaCheckContainerProxy(state, index, shared, field))
        return field;
    return invalidField();
}

KyField checkField(lua_State* state, int index, KyFieldKind kind, TableWalk* walk) {
    switch (lua_type(state, index)) {
    case LUA_TNONE:
    case LUA_TNIL:
        return KyField();
    case LUA_TBOOLEAN:
        return KyField(lua_toboolean(state, index) != 0);
    case LUA_TNUMBER:
        return KyField(lua_tonumber(state, index));
    case LUA_TSTRING: {
        std::size_t size = 0;
        const char* text = lua_tolstring(state, index, &size);
        return KyField(std::string(text, size));
    }
    case LUA_TTABLE:
        return walk ? checkTable(state, index, *walk) : checkOuterTable(state, index);
    case LUA_TUSERDATA:
        return checkUserdata(state, index, kind);
    default:
        return invalidField();
    }
}

/// True when the number fits, cut toward zero.
template <class T>
bool readInteger(double number, KyField& field) {
    constexpr double cBeyond = static_cast<double>(std::numeric_limits<T>::max() / 2 + 1) * 2;
    if (!(number > static_cast<double>(std::numeric_limits<T>::min()) - 1.0 && number < cBeyond))
        return false;
    field = KyField(static_cast<T>(number));
    return true;
}

bool readNumber(double number, KyFieldKind kind, KyField& field) {
    switch (kind) {
    case cFieldKindOf<float>:
        field = KyField(static_cast<float>(number));
        return true;
    case cFieldKindOf<std::int32_t>:
        return readInteger<std::int32_t>(number, field);
    case cFieldKindOf<std::uint32_t>:
        return readInteger<std::uint32_t>(number, field);
    default:
        return false;
    }
}

bool readThroughConverter(lua_State* state, int index, KyFieldKind kind, KyField& field) {
    const KyStaticLuaMaps* maps = kind == cFieldKindInvalid ? nullptr : KyLuaBinder::getLuaMaps();
    const auto converter = maps ? maps->find(kind).luaToCpp : nullptr;
    if (!converter || converter == &kyLuaCheckValueField)
        return false;
    KyLuaBinder binder(state);
    field = converter(binder, index);
    return field.isValid();
}

/// The caller holds C++ objects, over which a memory error must not jump: it becomes an exception.
int pushResultProtected(lua_State* state, const KyField& result) {
    lua_rawgeti(state, LUA_REGISTRYINDEX, KyLuaShared::get(state).pushFieldReference);
    lua_pushlightuserdata(state, const_cast<KyField*>(&result));
    if (lua_pcall(state, 1, 1, 0) == 0)
        return 1;
    const char* message = lua_tostring(state, -1);
    const std::runtime_error error(message ? message : "the result cannot be pushed");
    lua_pop(state, 1);
    throw error;
}

int absoluteIndex(lua_State* state, int index) {
    return index < 0 && index > LUA_REGISTRYINDEX ? lua_gettop(state) + index + 1 : index;
}

} // namespace

void kyLuaPushField(lua_State* state, const KyField& field) {
    kyLuaPushField(state, KyLuaShared::get(state), field);
}

void kyLuaPushOther(lua_State* state, KyLuaShared& shared, const KyField& field) {
    if (field.isEmpty())
        return lua_pushnil(state);
    if (pushInteger(state, field) || pushThroughConverter(state, field) ||
        kyLuaPushValue(state, shared, field.getKind(), field.data()))
        return;
    if (field.getFieldType().isList())
        pushList(state, shared, field);
    else
        lua_pushnil(state);
}

void kyLuaPushHeldField(lua_State* state, KyLuaShared& shared, const KyField& field) {
    if (field.getKind() & cFieldKindManaged)
        pushResultProtected(state, field);
    else
        kyLuaPushField(state, shared, field);
}

int kyLuaPushFieldFunction(lua_State* state) {
    return kyLuaRun(state, [state](KyLuaErrorText&) {
        kyLuaPushField(state, *static_cast<const KyField*>(lua_touserdata(state, 1)));
        return 1;
    });
}

int kyLuaPushResult(lua_State* state, const KyField& result) {
    switch (result.getKind()) {
    case cFieldKindInvalid:
        return 0;
    case cFieldKindOf<double>:
        lua_pushnumber(state, result.unchecked<double>());
        return 1;
    case cFieldKindOf<bool>:
        lua_pushboolean(state, result.unchecked<bool>());
        return 1;
    case cFieldKindOf<std::int32_t>:
        lua_pushnumber(state, result.unchecked<std::int32_t>());
        return 1;
    default:
        return pushResultProtected(state, result);
    }
}

KyField kyLuaCheckField(lua_State* state, int index) {
    return checkField(state, absoluteIndex(state, index), cFieldKindInvalid, nullptr);
}

void kyLuaReadOther(lua_State* state, int index, KyFieldKind kind, KyField& field) {
    if (lua_type(state, index) == LUA_TNUMBER && readNumber(lua_tonumber(state, index), kind, field))
        return;
    if (!readThroughConverter(state, index, kind, field))
        field = checkField(state, absoluteIndex(state, index), kind, nullptr);
}
