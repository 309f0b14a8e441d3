// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaValueText_p.h"

#include "KyLuaCall_p.h"
#include "KyLuaThreads_p.h"

#include <cstdio>
#include <string_view>

namespace {

/// Longer texts are cut: they are for reading.
constexpr std::size_t cMaxLength = 4096;

void appendQuoted(std::string_view bytes, std::string& text) {
    text += '"';
    for (const char byte : bytes.substr(0, cMaxLength)) {
        const auto code = static_cast<unsigned char>(byte);
        if (byte == '"' || byte == '\\')
            text.append(1, '\\').append(1, byte);
        else if (byte == '\n')
            text += "\\n";
        else if (code < 32 || code == 127) {
            char digits[8];
            std::snprintf(digits, sizeof(digits), "\\%03u", unsigned(code));
            text += digits;
        } else
            text += byte;
    }
    text += bytes.size() > cMaxLength ? "\"..." : "\"";
}

void appendFunction(lua_State* state, int index, std::string& text) {
    lua_Debug record;
    lua_pushvalue(state, index);
    lua_getinfo(state, ">S", &record);
    text.append("function ").append(record.short_src);
    if (record.linedefined > 0)
        text.append(1, ':').append(std::to_string(record.linedefined));
}

/// Only C functions are asked for the text: those of scripts might do anything.
bool appendOwnText(lua_State* state, int index, std::string& text) {
    if (!luaL_getmetafield(state, index, "__tostring"))
        return false;
    const bool isAsked = lua_iscfunction(state, -1) != 0;
    lua_pushvalue(state, index);
    if (!isAsked || lua_pcall(state, 1, 1, 0) != 0) {
        lua_pop(state, isAsked ? 1 : 2);
        return false;
    }
    const bool isText = kyLuaPlainText(state, -1, text);
    lua_pop(state, 1);
    return isText;
}

int countEntries(lua_State* state, int index) {
    int count = 0;
    for (lua_pushnil(state); lua_next(state, index) != 0; lua_pop(state, 1))
        ++count;
    return count;
}

int absoluteIndex(lua_State* state, int index) {
    return index < 0 && index > LUA_REGISTRYINDEX ? lua_gettop(state) + index + 1 : index;
}

} // namespace

void kyLuaValueText(lua_State* state, int index, std::string& text) {
    luaL_checkstack(state, 5, "too many values");
    index = absoluteIndex(state, index);
    text.clear();
    switch (lua_type(state, index)) {
    case LUA_TNIL:
        text = "nil";
        break;
    case LUA_TBOOLEAN:
        text = lua_toboolean(state, index) ? "true" : "false";
        break;
    case LUA_TNUMBER:
        kyLuaPlainText(state, index, text);
        break;
    case LUA_TSTRING:
        appendQuoted({lua_tostring(state, index), lua_objlen(state, index)}, text);
        break;
    case LUA_TTABLE:
        text = "table of " + std::to_string(countEntries(state, index));
        break;
    case LUA_TFUNCTION:
        appendFunction(state, index, text);
        break;
    case LUA_TTHREAD:
        text = "coroutine " + std::to_string(kyLuaThreadNumber(state, lua_tothread(state, index)));
        break;
    default:
        if (!appendOwnText(state, index, text))
            text = luaL_typename(state, index);
    }
}

void kyLuaKeyText(lua_State* state, int index, std::string& text) {
    if (lua_type(state, index) == LUA_TSTRING) {
        text.assign(lua_tostring(state, index), lua_objlen(state, index));
        return;
    }
    kyLuaValueText(state, index, text);
    text.insert(0, 1, '[').append(1, ']');
}
