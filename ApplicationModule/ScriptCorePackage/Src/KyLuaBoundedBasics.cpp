// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptSandbox_p.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace {

using Private = KyScriptSandbox::Private;

constexpr char cLocked[] = "locked";
constexpr char cNoBytecode[] = "sandbox: bytecode is withheld";

/// Its address is the key of a mark in the registry: what scripts could have changed since is not taken for Lua's own.
char gLockedKey = 0;

constexpr std::array cGlobals{
    "QApplication",
    "Resource",
    "ResourceInformation",
    "class",
    "debug",
    "deleteQObject",
    "dofile",
    "findChild",
    "findChildren",
    "getCursorPosition",
    "getQApplication",
    "io",
    "loadUi",
    "loadfile",
    "loadlib",
    "module",
    "newproxy",
    "openUrl",
    "package",
    "property",
    "qApp",
    "require",
    "super",
};
constexpr std::array<std::string_view, 4> cSystemFunctions{"clock", "date", "difftime", "time"};

bool isUpper(char letter) {
    return letter >= 'A' && letter <= 'Z';
}

/// `QLabel`, `QDir_entryList`, `toQLabel`; not `Quat`, `QString` and `QUrl`.
bool isQtName(std::string_view name) {
    if (name.starts_with("to"))
        name.remove_prefix(2);
    const bool isValue = name.starts_with("QString") || name.starts_with("QUrl");
    return name.size() > 1 && name[0] == 'Q' && isUpper(name[1]) && !isValue;
}

/// Takes the entries out of the table on top whose names are wanted.
template <class Predicate>
void removeFields(lua_State* state, Predicate isWanted) {
    const int table = lua_gettop(state);
    for (lua_pushnil(state); lua_next(state, table) != 0; lua_pop(state, 1)) {
        if (lua_type(state, -2) != LUA_TSTRING || !isWanted(std::string_view(lua_tostring(state, -2))))
            continue;
        // Entries that are there may be emptied on the way.
        lua_pushvalue(state, -2);
        lua_pushnil(state);
        lua_rawset(state, table);
    }
}

void removeGlobals(lua_State* state) {
    lua_pushvalue(state, LUA_GLOBALSINDEX);
    removeFields(state, [](std::string_view name) {
        return isQtName(name) || std::ranges::find(cGlobals, name) != cGlobals.end();
    });
    lua_pop(state, 1);
    lua_getglobal(state, LUA_OSLIBNAME);
    if (lua_istable(state, -1))
        removeFields(state, [](std::string_view name) { return std::ranges::count(cSystemFunctions, name) == 0; });
    lua_pop(state, 1);
}

/// Methods of texts come from a table of their own, which no script reaches.
void lockTexts(lua_State* state) {
    lua_pushliteral(state, "");
    if (!lua_getmetatable(state, -1))
        return lua_pop(state, 1);
    lua_newtable(state);
    lua_getglobal(state, LUA_STRLIBNAME);
    for (lua_pushnil(state); lua_istable(state, -2) && lua_next(state, -2) != 0; lua_pop(state, 1)) {
        lua_pushvalue(state, -2);
        lua_pushvalue(state, -2);
        lua_rawset(state, -6);
    }
    lua_pop(state, 1);
    lua_setfield(state, -2, "__index");
    lua_pushstring(state, cLocked);
    lua_setfield(state, -2, "__metatable");
    lua_pop(state, 2);
}

int getMetatable(lua_State* state) {
    luaL_checkany(state, 1);
    if (!lua_getmetatable(state, 1)) {
        lua_pushnil(state);
        return 1;
    }
    if (lua_istable(state, 1))
        luaL_getmetafield(state, 1, "__metatable");
    else
        lua_pushstring(state, cLocked);
    return 1;
}

int setEnvironment(lua_State* state) {
    if (lua_isnumber(state, 1) != 0 && lua_tonumber(state, 1) == 0)
        return luaL_error(state, "sandbox: the environment of a thread cannot be set");
    return lua_tocfunction(state, lua_upvalueindex(1))(state);
}

int collectGarbage(lua_State* state) {
    const std::string_view option = luaL_optstring(state, 1, "collect");
    if (option == "count") {
        lua_pushnumber(state, lua_gc(state, LUA_GCCOUNT, 0) + lua_gc(state, LUA_GCCOUNTB, 0) / 1024.0);
        return 1;
    }
    luaL_argcheck(state, option == "collect" || option == "step", 1, "sandbox: the option is withheld");
    constexpr std::size_t cBytesPerUnit = 64;
    Private::charge(state, KyLuaMemory::get(state).getUsed() / cBytesPerUnit);
    lua_gc(state, LUA_GCCOLLECT, 0);
    option == "step" ? lua_pushboolean(state, 1) : lua_pushinteger(state, 0);
    return 1;
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
    Private::charge(state, size);
    const bool isRefused = Private::isRefused(state, {text, size});
    if (isRefused)
        lua_pushstring(state, cNoBytecode);
    return finishLoading(state, !isRefused && luaL_loadbuffer(state, text, size, name) == 0);
}

constexpr int cPieceIndex = 3;

/// Keeps the piece in the stack as long as Lua reads it.
const char* readPiece(lua_State* state, void* isBegun, std::size_t* size) {
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
    const char* const text = lua_tolstring(state, cPieceIndex, size);
    Private::charge(state, *size + 1);
    if (!std::exchange(*static_cast<bool*>(isBegun), true) && Private::isRefused(state, {text, *size}))
        luaL_error(state, cNoBytecode);
    return text;
}

int loadPieces(lua_State* state) {
    luaL_checktype(state, 1, LUA_TFUNCTION);
    const char* const name = luaL_optstring(state, 2, "=(load)");
    lua_settop(state, cPieceIndex);
    bool isBegun = false;
    return finishLoading(state, lua_load(state, &readPiece, &isBegun, name) == 0);
}

/// Work that a function does by itself for its arguments.
std::size_t getUnits(lua_State* state) {
    constexpr std::size_t cBytesPerUnit = 16;
    std::size_t units = lua_istable(state, 1) ? lua_objlen(state, 1) : 0;
    for (int i = lua_gettop(state); i > 0; --i)
        if (lua_type(state, i) == LUA_TSTRING)
            units += lua_objlen(state, i) / cBytesPerUnit;
    return units;
}

int callMetered(lua_State* state) {
    constexpr std::size_t cFew = 16;
    if (const std::size_t units = getUnits(state); units > cFew)
        Private::charge(state, units);
    return lua_tocfunction(state, lua_upvalueindex(1))(state);
}

void boundSystem(lua_State* state) {
    lua_getglobal(state, LUA_OSLIBNAME);
    if (lua_istable(state, -1))
        kyMeterLuaFunction(state, lua_gettop(state), "date");
    lua_pop(state, 1);
}

/// Lua makes these texts where nothing catches an error, so they are there before the memory ends.
void keepMessages(lua_State* state) {
    for (const char* const text :
         {"C stack overflow", "cannot resume non-suspended coroutine", "error in error handling"}) {
        lua_pushstring(state, text);
        luaL_ref(state, LUA_REGISTRYINDEX);
    }
}

} // namespace

void kySetLuaFunction(lua_State* state, int table, const char* name, lua_CFunction function) {
    lua_pushstring(state, name);
    function ? lua_pushcfunction(state, function) : lua_pushnil(state);
    lua_rawset(state, table);
}

void kyWrapLuaFunction(lua_State* state, int table, const char* name, lua_CFunction wrapper) {
    lua_pushstring(state, name);
    lua_pushvalue(state, -1);
    lua_rawget(state, table);
    const bool hasUpvalue = lua_getupvalue(state, -1, 1) != nullptr;
    if (hasUpvalue || lua_iscfunction(state, -1) == 0)
        return lua_pop(state, hasUpvalue ? 3 : 2);
    lua_pushcclosure(state, wrapper, 1);
    lua_rawset(state, table);
}

void kyMeterLuaFunction(lua_State* state, int table, const char* name) {
    kyWrapLuaFunction(state, table, name, &callMetered);
}

void kyBoundLuaBasics(lua_State* state) {
    kySetLuaFunction(state, LUA_GLOBALSINDEX, "getmetatable", &getMetatable);
    kySetLuaFunction(state, LUA_GLOBALSINDEX, "collectgarbage", &collectGarbage);
    kySetLuaFunction(state, LUA_GLOBALSINDEX, "loadstring", &loadText);
    kySetLuaFunction(state, LUA_GLOBALSINDEX, "load", &loadPieces);
    kyWrapLuaFunction(state, LUA_GLOBALSINDEX, "setfenv", &setEnvironment);
    kyMeterLuaFunction(state, LUA_GLOBALSINDEX, "tonumber");
    boundSystem(state);
}

void kyLockLuaLibraries(lua_State* state) {
    luaL_checkstack(state, LUA_MINSTACK, "too many values");
    removeGlobals(state);
    lua_pushlightuserdata(state, &gLockedKey);
    lua_rawget(state, LUA_REGISTRYINDEX);
    if (lua_toboolean(state, -1) != 0)
        return;
    kyBoundLuaStrings(state);
    kyBoundLuaTables(state);
    kyBoundLuaThreads(state);
    kyBoundLuaBasics(state);
    lockTexts(state);
    keepMessages(state);
    lua_pushlightuserdata(state, &gLockedKey);
    lua_pushboolean(state, 1);
    lua_rawset(state, LUA_REGISTRYINDEX);
}
