// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaEvaluation_p.h"

namespace {

constexpr char cChunkName[] = "=expression";

/// Upvalues of the functions that read and write names.
enum Upvalue { eNumber = 1, eFunction, eGlobals };

bool loadText(lua_State* state, const std::string& text) {
    return luaL_loadbuffer(state, text.data(), text.size(), cChunkName) == 0;
}

int raiseNoFrame(lua_State* state) {
    lua_pushliteral(state, "no such frame");
    return lua_error(state);
}

std::string_view nameAt(lua_State* state, int index) {
    std::size_t size = 0;
    const char* const bytes = lua_tolstring(state, index, &size);
    return {bytes, size};
}

} // namespace

KyLuaEvaluation::KyLuaEvaluation(KyLuaFrame* frame, const std::string& text)
    : mFrame(frame)
    , mStatements(text)
    , mExpression("return " + text)
    , mOuter(msInnermost) {
    static double msNumber = 0;
    mNumber = ++msNumber;
    msInnermost = this;
}

KyLuaEvaluation::~KyLuaEvaluation() {
    msInnermost = mOuter;
}

void KyLuaEvaluation::run(lua_State* state) {
    luaL_checkstack(state, LUA_MINSTACK, "too many values");
    load(state);
    pushScope(state);
    lua_setfenv(state, -2);
    lua_call(state, 0, 1);
}

/// When neither will do, what is wrong with the expression is told.
void KyLuaEvaluation::load(lua_State* state) const {
    if (loadText(state, mExpression))
        return;
    if (!loadText(state, mStatements)) {
        lua_pop(state, 1);
        lua_error(state);
    }
    lua_remove(state, -2);
}

void KyLuaEvaluation::pushScope(lua_State* state) {
    lua_newtable(state);
    lua_newtable(state);
    // Finalizers have run.
    if (mFrame && !kyLuaFindAgain(*mFrame))
        raiseNoFrame(state);
    for (const auto& [name, function] : {std::pair{"__index", &read}, std::pair{"__newindex", &write}}) {
        lua_pushnumber(state, mNumber);
        if (mFrame)
            kyLuaPushFunction(state, *mFrame);
        else
            lua_pushnil(state);
        if (lua_isfunction(state, -1))
            lua_getfenv(state, -1);
        else
            lua_pushvalue(state, LUA_GLOBALSINDEX);
        lua_pushcclosure(state, function, eGlobals);
        lua_setfield(state, -2, name);
    }
    lua_setmetatable(state, -2);
}

KyLuaFrame* KyLuaEvaluation::findFrame(lua_State* state) {
    const double number = lua_tonumber(state, lua_upvalueindex(eNumber));
    for (const KyLuaEvaluation* evaluation = msInnermost; evaluation; evaluation = evaluation->mOuter)
        if (evaluation->mNumber == number)
            return evaluation->mFrame;
    return nullptr;
}

int KyLuaEvaluation::read(lua_State* state) {
    KyLuaFrame* const frame = findFrame(state);
    if (frame && !kyLuaFindAgain(*frame))
        return raiseNoFrame(state);
    if (frame && lua_type(state, 2) == LUA_TSTRING) {
        if (kyLuaPushLocal(state, *frame, nameAt(state, 2)))
            return 1;
        if (const int upvalue = kyLuaFindUpvalue(state, lua_upvalueindex(eFunction), nameAt(state, 2))) {
            lua_getupvalue(state, lua_upvalueindex(eFunction), upvalue);
            return 1;
        }
    }
    lua_settop(state, 2);
    lua_gettable(state, lua_upvalueindex(eGlobals));
    return 1;
}

int KyLuaEvaluation::write(lua_State* state) {
    KyLuaFrame* const frame = findFrame(state);
    if (frame && !kyLuaFindAgain(*frame))
        return raiseNoFrame(state);
    if (frame && lua_type(state, 2) == LUA_TSTRING) {
        if (kyLuaSetLocal(state, *frame, nameAt(state, 2)))
            return 0;
        if (const int upvalue = kyLuaFindUpvalue(state, lua_upvalueindex(eFunction), nameAt(state, 2))) {
            lua_setupvalue(state, lua_upvalueindex(eFunction), upvalue);
            return 0;
        }
    }
    lua_settable(state, lua_upvalueindex(eGlobals));
    return 0;
}
