// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaPrint_p.h"

#include "KyLuaErrorText_p.h"
#include "KyScriptDebugger.h"
#include "KyScriptEngine.h"
#include "KyScriptSandbox_p.h"

#include <cstdio>
#include <string>

namespace {

/// Puts the text that the global tostring gives in the place of each argument.
void makeTexts(lua_State* state, int nbArguments) {
    luaL_checkstack(state, LUA_MINSTACK, "too many values to print");
    lua_getglobal(state, "tostring");
    for (int i = 1; i <= nbArguments; ++i) {
        lua_pushvalue(state, -1);
        lua_pushvalue(state, i);
        lua_call(state, 1, 1);
        if (!lua_isstring(state, -1))
            luaL_error(state, LUA_QL("tostring") " must return a string to " LUA_QL("print"));
        lua_replace(state, i);
    }
    lua_pop(state, 1);
}

void pushLine(lua_State* state, int nbArguments) {
    luaL_Buffer line;
    luaL_buffinit(state, &line);
    for (int i = 1; i <= nbArguments; ++i) {
        if (i > 1)
            luaL_addchar(&line, '\t');
        lua_pushvalue(state, i);
        luaL_addvalue(&line);
    }
    luaL_addchar(&line, '\n');
    luaL_pushresult(&line);
}

} // namespace

int kyLuaPrint(lua_State* state) {
    const int nbArguments = lua_gettop(state);
    makeTexts(state, nbArguments);
    pushLine(state, nbArguments);
    std::size_t size = 0;
    const char* const text = lua_tolstring(state, -1, &size);
    KyScriptSandbox::Private::chargeOutput(state, size);
    std::fwrite(text, 1, size, stdout);
    KyScriptEngine* const engine = kyLuaEngine(state);
    if (!engine || engine->editDebugger().printedSignal.getNbConnections() == 0)
        return 0;
    return kyLuaRun(state, [=](KyLuaErrorText&) {
        engine->editDebugger().printedSignal.send(std::string(text, size));
        return 0;
    });
}
