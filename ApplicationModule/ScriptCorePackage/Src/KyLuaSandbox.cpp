// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaSandbox.h"

#include "KyScriptEngine.h"
#include "KyScriptRunner_p.h"

#include <array>

namespace {

constexpr std::array cSystemFields{"exit", "setlocale", "getenv", "remove", "tmpname", "rename", "execute"};
constexpr std::array cGlobals{"io", "package", "dofile", "loadfile", "loadlib", "module", "require"};

template <std::size_t N>
void removeFields(lua_State* state, int table, const std::array<const char*, N>& names) {
    for (const char* name : names) {
        lua_pushstring(state, name);
        lua_pushnil(state);
        lua_rawset(state, table);
    }
}

void removeUnsafe(lua_State* state) {
    lua_pushliteral(state, "os");
    lua_rawget(state, LUA_GLOBALSINDEX);
    if (lua_istable(state, -1))
        removeFields(state, lua_gettop(state), cSystemFields);
    removeFields(state, LUA_GLOBALSINDEX, cGlobals);
}

} // namespace

void KyApplication::removeUnsafeLuaFunctionsAndModules() {
    KyScriptEngine* engine = KyScriptEngine::find();
    if (!engine)
        return;
    KyScriptRunner runner(*engine);
    if (!runner.run(&removeUnsafe) && runner.isOpen())
        runner.report();
}
