// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaValueText_p.h"

#include "KyLuaCall_p.h"
#include "KyLuaThreads_p.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

/// Longer texts are cut: they are for reading.
constexpr std::size_t cMaxLength = 4096;
/// Lua writes whole numbers below it with all digits.
constexpr double cMaxPlainInteger = 1e14;

void appendQuoted(std::string_view bytes, std::string& text, std::size_t maxLength = cMaxLength) {
    text += '"';
    for (const char byte : bytes.substr(0, maxLength)) {
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
    text += bytes.size() > maxLength ? "\"..." : "\"";
}

/// With all digits where Lua leaves some out.
void appendExactNumber(double number, std::string& text) {
    if (std::trunc(number) == number && std::abs(number) < cMaxPlainInteger) {
        text += std::to_string(static_cast<long long>(number));
        return;
    }
    char digits[40];
    std::snprintf(digits, sizeof(digits), LUA_NUMBER_FMT, number);
    if (std::strtod(digits, nullptr) != number)
        std::snprintf(digits, sizeof(digits), "%.17g", number);
    text += digits;
}

/// Names that look like those of other keys are quoted.
void appendTextKey(std::string_view key, std::string& text) {
    if (!key.starts_with('[') && !key.starts_with('(')) {
        text += key;
        return;
    }
    text += '[';
    appendQuoted(key, text, key.size());
    text += ']';
}

void appendAddress(const void* address, std::string& text) {
    char digits[40];
    std::snprintf(digits, sizeof(digits), " %p", address);
    text += digits;
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
    text.clear();
    switch (lua_type(state, index)) {
    case LUA_TSTRING:
        return appendTextKey({lua_tostring(state, index), lua_objlen(state, index)}, text);
    case LUA_TNUMBER:
        appendExactNumber(lua_tonumber(state, index), text);
        break;
    case LUA_TTABLE:
        text = "table";
        break;
    default:
        kyLuaValueText(state, index, text);
    }
    // Two keys may have the same text, but only tables, functions and the like have an address.
    if (const void* const address = lua_topointer(state, index))
        appendAddress(address, text);
    text.insert(0, 1, '[').append(1, ']');
}
