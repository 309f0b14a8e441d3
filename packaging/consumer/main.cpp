// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT

#include "KyApplicationExport.h"

#include <boost/any.hpp>
#include <lua.hpp>
#include <QString>

int main() {
    lua_State* state = luaL_newstate();
    const bool ran = luaL_dostring(state, "answer = 6 * 7") == 0;
    lua_getglobal(state, "answer");
    const boost::any answer = QString::number(lua_tointeger(state, -1));
    lua_close(state);
    return ran && boost::any_cast<QString>(answer) == QStringLiteral("42") ? 0 : 1;
}
