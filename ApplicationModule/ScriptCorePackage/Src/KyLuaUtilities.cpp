// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaUtilities_p.h"

#include "KyLuaCall_p.h"
#include "KyScriptSandbox_p.h"

#include "KyCallSignatures.h"

#include <lua.hpp>

#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>

#include <cmath>
#include <cstdint>
#include <functional>

namespace {

/// A number as 32 bits: truncated and taken modulo 2^32; 0 when it is not finite. Texts are no numbers.
std::uint32_t checkBits(lua_State* state, int index) {
    constexpr double cModulus = 4294967296.0;
    luaL_checktype(state, index, LUA_TNUMBER);
    const double number = lua_tonumber(state, index);
    if (!std::isfinite(number))
        return 0;
    const double rest = std::fmod(std::trunc(number), cModulus);
    return static_cast<std::uint32_t>(rest < 0 ? rest + cModulus : rest);
}

int pushBits(lua_State* state, std::uint32_t bits) {
    lua_pushnumber(state, static_cast<lua_Number>(static_cast<std::int32_t>(bits)));
    return 1;
}

template <class Operation>
int combineBits(lua_State* state) {
    return pushBits(state, Operation()(checkBits(state, 1), checkBits(state, 2)));
}

int invertBits(lua_State* state) {
    return pushBits(state, ~checkBits(state, 1));
}

int openUrl(lua_State* state) {
    const char* text = luaL_checkstring(state, 1);
    return kyLuaRun(state, [&](KyLuaErrorText&) {
        // Without a GUI there is no desktop to ask.
        const bool hasDesktop = qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
        lua_pushboolean(state, hasDesktop && QDesktopServices::openUrl(QUrl(QString::fromUtf8(text))));
        return 1;
    });
}

constexpr luaL_Reg cUtilities[] = {
    {"bit_and", &combineBits<std::bit_and<std::uint32_t>>},
    {"bit_or", &combineBits<std::bit_or<std::uint32_t>>},
    {"bit_xor", &combineBits<std::bit_xor<std::uint32_t>>},
    {"bit_not", &invertBits},
    {"openUrl", &openUrl},
};

} // namespace

void kySetLuaUtilities(lua_State* state) {
    KyCallSignatures::add({}, {"bit_and(a: integer, b: integer): integer -- Of 32 bits, with a sign.",
                               "bit_or(a: integer, b: integer): integer -- Of 32 bits, with a sign.",
                               "bit_xor(a: integer, b: integer): integer -- Of 32 bits, with a sign.",
                               "bit_not(a: integer): integer -- Of 32 bits, with a sign.",
                               "openUrl(url: string): boolean -- Opens it on the desktop; false where there is none."});
    for (const luaL_Reg& utility : cUtilities) {
        if (utility.func == &openUrl && KyScriptSandbox::Private::find(state))
            continue;
        lua_pushstring(state, utility.name);
        lua_pushcfunction(state, utility.func);
        lua_rawset(state, LUA_GLOBALSINDEX);
    }
}
