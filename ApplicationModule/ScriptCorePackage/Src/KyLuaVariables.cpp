// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaVariables_p.h"

namespace {

/// Reads without changing the value, which a walk over a table relies on.
KyField toField(lua_State* state, int index) {
    switch (lua_type(state, index)) {
    case LUA_TBOOLEAN:
        return KyField(lua_toboolean(state, index) != 0);
    case LUA_TNUMBER:
        return KyField(lua_tonumber(state, index));
    case LUA_TSTRING: {
        std::size_t size = 0;
        const char* bytes = lua_tolstring(state, index, &size);
        return KyField(std::string(bytes, size));
    }
    default:
        return KyField(luaL_typename(state, index));
    }
}

bool isPlain(lua_State* state, int index) {
    const int type = lua_type(state, index);
    return type == LUA_TBOOLEAN || type == LUA_TNUMBER || type == LUA_TSTRING;
}

} // namespace

void kyCollectLocals(lua_State* state, const lua_Debug* record, KyLuaVariables& variables) {
    for (int i = 1; const char* name = lua_getlocal(state, record, i); ++i) {
        if (*name != '(')
            variables.insert_or_assign(name, toField(state, -1));
        lua_pop(state, 1);
    }
}

void kyCollectGlobals(lua_State* state, KyLuaVariables& variables) {
    lua_pushvalue(state, LUA_GLOBALSINDEX);
    lua_pushnil(state);
    while (lua_next(state, -2) != 0) {
        if (lua_type(state, -2) == LUA_TSTRING && isPlain(state, -1))
            variables.insert_or_assign(lua_tostring(state, -2), toField(state, -1));
        lua_pop(state, 1);
    }
}
