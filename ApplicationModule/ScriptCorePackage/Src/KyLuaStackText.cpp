// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaStackText_p.h"

#include "KyLuaCall_p.h"

namespace {

std::string describe(lua_State* state, int index) {
    std::string text;
    if (lua_isboolean(state, index))
        return lua_toboolean(state, index) ? "true" : "false";
    if (!kyLuaPlainText(state, index, text))
        text = luaL_typename(state, index);
    return text;
}

} // namespace

std::string kyLuaStackText(lua_State* state, const std::string& context) {
    static unsigned nbDumps = 0;
    const std::string number = std::to_string(++nbDumps);
    std::string text = "--- Begin Stack dump #" + number + " ---\n";
    if (!context.empty())
        text += " [ " + context + " ] \n";
    for (int i = 1; i <= lua_gettop(state); ++i)
        text += describe(state, i) + '\n';
    return text + "--- End Stack dump #" + number + " ---";
}
