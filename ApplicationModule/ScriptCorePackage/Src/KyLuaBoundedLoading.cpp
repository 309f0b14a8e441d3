// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptSandbox_p.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace {

using Private = KyScriptSandbox::Private;

constexpr char cNoBytecode[] = "sandbox: bytecode is withheld";
constexpr int cPieceIndex = 3;

/// A text that Lua takes in small pieces. No hook sees its parser, and long conditions, such as "a and a and ...", take
/// it time that grows with the square of their length, so the clock is looked at between them.
struct Pieces {
    std::string_view rest;
    bool isBegun = false;

    const char* take(lua_State* state, std::size_t* size) {
        constexpr std::size_t cPieceSize = 256;
        const std::string_view piece = rest.substr(0, cPieceSize);
        rest.remove_prefix(piece.size());
        Private::chargeCall(state, piece.size() + 1);
        *size = piece.size();
        return piece.data();
    }
};

const char* readText(lua_State* state, void* pieces, std::size_t* size) {
    auto& text = *static_cast<Pieces*>(pieces);
    return text.rest.empty() ? nullptr : text.take(state, size);
}

/// Calls the function at 1 for each piece, and keeps that in the stack as long as Lua reads it.
const char* readPiece(lua_State* state, void* data, std::size_t* size) {
    auto& pieces = *static_cast<Pieces*>(data);
    if (!pieces.rest.empty())
        return pieces.take(state, size);
    luaL_checkstack(state, 2, "too many nested functions");
    lua_pushvalue(state, 1);
    lua_call(state, 0, 1);
    if (lua_isnil(state, -1)) {
        *size = 0;
        return nullptr;
    }
    if (lua_isstring(state, -1) == 0)
        luaL_error(state, "reader function must return a string");
    lua_replace(state, cPieceIndex);
    std::size_t whole = 0;
    const char* const text = lua_tolstring(state, cPieceIndex, &whole);
    pieces.rest = {text, whole};
    if (!std::exchange(pieces.isBegun, true) && Private::isRefused(state, pieces.rest))
        luaL_error(state, cNoBytecode);
    return pieces.take(state, size);
}

/// Gives the function on top, or nil and the message on top.
int finishLoading(lua_State* state, bool isGood) {
    if (isGood)
        return 1;
    lua_pushnil(state);
    lua_insert(state, -2);
    return 2;
}

int loadText(lua_State* state) {
    std::size_t size = 0;
    const char* const text = luaL_checklstring(state, 1, &size);
    const char* const name = luaL_optstring(state, 2, text);
    const bool isRefused = Private::isRefused(state, {text, size});
    if (isRefused)
        lua_pushstring(state, cNoBytecode);
    return finishLoading(state, !isRefused && Private::load(state, {text, size}, name) == 0);
}

int loadPieces(lua_State* state) {
    luaL_checktype(state, 1, LUA_TFUNCTION);
    const char* const name = luaL_optstring(state, 2, "=(load)");
    lua_settop(state, cPieceIndex);
    Pieces pieces;
    return finishLoading(state, lua_load(state, &readPiece, &pieces, name) == 0);
}

} // namespace

int Private::load(lua_State* state, std::string_view text, const char* name) {
    if (!find(state))
        return luaL_loadbuffer(state, text.data(), text.size(), name);
    Pieces pieces{text};
    return lua_load(state, &readText, &pieces, name);
}

void kyBoundLuaLoading(lua_State* state) {
    kySetLuaFunction(state, LUA_GLOBALSINDEX, "loadstring", &loadText);
    kySetLuaFunction(state, LUA_GLOBALSINDEX, "load", &loadPieces);
}
