// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaCall_p.h"

#include "KyScriptDebugger_p.h"

#include <cstdio>
#include <string_view>

namespace {

using KyLuaDetail::ProtectedBody;

constexpr char cNoText[] = "(error object is not a string)";
constexpr int cMaxTracebackLines = 40;

ProtectedBody& argumentBody(lua_State* state, int index) {
    return *static_cast<ProtectedBody*>(lua_touserdata(state, index));
}

int callBody(lua_State* state) {
    ProtectedBody& body = argumentBody(state, 1);
    lua_settop(state, 0);
    return kyLuaRun(state, [&body, state](KyLuaErrorText&) {
        body.run(state, body.callable);
        return 0;
    });
}

/// The message handler: keeps the traceback and passes the message on as it is.
int keepTraceback(lua_State* state) {
    const ProtectedBody& body = argumentBody(state, lua_upvalueindex(1));
    KyScriptDebugger::Private::handleError(state, state, 1, 1);
    kyLuaTraceback(state, 1, body.failure->traceback);
    lua_settop(state, 1);
    return 1;
}

/// Runs the body once more protected, so that the message becomes text while the state may still raise.
int callProtected(lua_State* state) {
    ProtectedBody& body = argumentBody(state, 1);
    lua_pushlightuserdata(state, &body);
    lua_pushcclosure(state, &keepTraceback, 1);
    lua_pushcfunction(state, &callBody);
    lua_pushvalue(state, 1);
    if (lua_pcall(state, 1, 0, 2) == 0)
        return 0;
    body.failed = true;
    return kyLuaRun(state, [&body, state](KyLuaErrorText&) {
        kyLuaErrorText(state, -1, body.failure->message);
        return 0;
    });
}

int callToString(lua_State* state) {
    auto& text = *static_cast<std::string*>(lua_touserdata(state, 2));
    if (luaL_callmeta(state, 1, "__tostring"))
        kyLuaPlainText(state, -1, text);
    return 0;
}

void appendLine(std::string& text, const lua_Debug& record) {
    text += "\n\t";
    text += record.short_src;
    text += ':';
    if (record.currentline > 0)
        text += std::to_string(record.currentline) + ':';
    if (*record.namewhat != '\0')
        text += std::string(" in function '") + record.name + '\'';
    else if (*record.what == 'm')
        text += " in main chunk";
    else if (*record.what == 'C' || *record.what == 't')
        text += " ?";
    else
        text += std::string(" in function <") + record.short_src + ':' + std::to_string(record.linedefined) + '>';
}

/// The outermost entries are the engine's own and say nothing.
void removeOuterEntries(std::string& text) {
    constexpr std::string_view entry = "\n\t[C]: ?";
    while (text.ends_with(entry))
        text.erase(text.size() - entry.size());
}

void buildTraceback(lua_State* thread, int level, std::string& text) {
    text = "stack traceback:";
    lua_Debug record;
    for (int line = 0; lua_getstack(thread, level, &record) != 0; ++level) {
        if (++line > cMaxTracebackLines) {
            text += "\n\t...";
            return;
        }
        lua_getinfo(thread, "Snl", &record);
        appendLine(text, record);
    }
    removeOuterEntries(text);
}

} // namespace

bool KyLuaDetail::runProtected(lua_State* state, ProtectedBody& body) {
    if (lua_cpcall(state, &callProtected, &body) != 0) {
        body.failed = true;
        if (!kyLuaPlainText(state, -1, body.failure->message))
            body.failure->message = cNoText;
        lua_pop(state, 1);
    }
    return !body.failed;
}

bool kyIsOwnLuaCall(lua_CFunction function) {
    return function == &callProtected || function == &callBody || function == &keepTraceback;
}

void kyLuaErrorText(lua_State* state, int index, std::string& text) {
    if (kyLuaPlainText(state, index, text))
        return;
    text = cNoText;
    lua_pushvalue(state, index);
    lua_pushcfunction(state, &callToString);
    lua_insert(state, -2);
    lua_pushlightuserdata(state, &text);
    if (lua_pcall(state, 2, 0, 0) != 0)
        lua_pop(state, 1);
}

bool kyLuaPlainText(lua_State* state, int index, std::string& text) {
    switch (lua_type(state, index)) {
    case LUA_TSTRING: {
        std::size_t size = 0;
        const char* bytes = lua_tolstring(state, index, &size);
        text.assign(bytes, size);
        return true;
    }
    case LUA_TNUMBER: {
        char digits[LUAI_MAXNUMBER2STR];
        const int size = std::snprintf(digits, sizeof(digits), LUA_NUMBER_FMT, lua_tonumber(state, index));
        text.assign(digits, static_cast<std::size_t>(size));
        return true;
    }
    default:
        return false;
    }
}

void kyLuaTraceback(lua_State* thread, int level, std::string& text) {
    try {
        buildTraceback(thread, level, text);
    } catch (...) {
        text.clear();
    }
}
