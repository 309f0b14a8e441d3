// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptSandbox_p.h"

#include <algorithm>
#include <cmath>

namespace {

using Private = KyScriptSandbox::Private;

constexpr int cTable = 1;
constexpr int cFunction = 2;
constexpr std::size_t cBytesPerUnit = 16;

/// Whether the value on top but one comes before the one on top, for lua_sort's order; pops nothing.
bool isLess(lua_State* state) {
    if (lua_isfunction(state, cFunction)) {
        lua_pushvalue(state, cFunction);
        lua_pushvalue(state, -3);
        lua_pushvalue(state, -3);
        lua_call(state, 2, 1);
        const bool isBefore = lua_toboolean(state, -1) != 0;
        lua_pop(state, 1);
        return isBefore;
    }
    if (lua_type(state, -1) == LUA_TSTRING)
        Private::charge(state, lua_objlen(state, -1) / cBytesPerUnit);
    return lua_lessthan(state, -2, -1) != 0;
}

/// Whether entry `one` comes before entry `other`.
bool isEntryLess(lua_State* state, int one, int other) {
    Private::charge(state, 2);
    lua_rawgeti(state, cTable, one);
    lua_rawgeti(state, cTable, other);
    const bool isBefore = isLess(state);
    lua_pop(state, 2);
    return isBefore;
}

void swapEntries(lua_State* state, int one, int other) {
    lua_rawgeti(state, cTable, one);
    lua_rawgeti(state, cTable, other);
    lua_rawseti(state, cTable, one);
    lua_rawseti(state, cTable, other);
}

/// Restores the order of the heap of the entries 1 to `size` below the entry `root`.
void siftDown(lua_State* state, int root, int size) {
    while (root <= size / 2) {
        int child = 2 * root;
        if (child < size && isEntryLess(state, child, child + 1))
            ++child;
        if (!isEntryLess(state, root, child))
            return;
        swapEntries(state, root, child);
        root = child;
    }
}

/// By a heap: whatever the entries and whatever the function says, it takes n log n comparisons at most.
int sort(lua_State* state) {
    luaL_checktype(state, cTable, LUA_TTABLE);
    if (!lua_isnoneornil(state, cFunction))
        luaL_checktype(state, cFunction, LUA_TFUNCTION);
    lua_settop(state, cFunction);
    luaL_checkstack(state, LUA_MINSTACK, "");
    const auto size = static_cast<int>(lua_objlen(state, cTable));
    for (int root = size / 2; root >= 1; --root)
        siftDown(state, root, size);
    for (int last = size; last > 1; --last) {
        swapEntries(state, 1, last);
        siftDown(state, 1, last - 1);
    }
    return 0;
}

/// Lua's own, the upvalue, moves what lies behind the place, and that may be anywhere.
int insert(lua_State* state) {
    luaL_checktype(state, cTable, LUA_TTABLE);
    if (lua_gettop(state) == 3) {
        const double distance = std::abs(static_cast<double>(lua_objlen(state, cTable)) - luaL_checknumber(state, 2));
        constexpr double cMost = 1e12;
        Private::charge(state, distance < cMost ? static_cast<std::size_t>(distance) : static_cast<std::size_t>(cMost));
    }
    return lua_tocfunction(state, lua_upvalueindex(1))(state);
}

constexpr const char* cMetered[] = {"concat", "foreach", "foreachi", "maxn", "remove"};

} // namespace

void kyBoundLuaTables(lua_State* state) {
    lua_getglobal(state, LUA_TABLIBNAME);
    if (!lua_istable(state, -1))
        return lua_pop(state, 1);
    const int table = lua_gettop(state);
    kySetLuaFunction(state, table, "sort", &sort);
    kyWrapLuaFunction(state, table, "insert", &insert);
    for (const char* const name : cMetered)
        kyMeterLuaFunction(state, table, name);
    lua_pop(state, 1);
}
