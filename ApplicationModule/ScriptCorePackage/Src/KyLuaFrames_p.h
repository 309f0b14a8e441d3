// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyScriptInspection.h"

#include <string_view>

#include <lua.hpp>

/// A call under way. It stays valid when others are made on top of it.
struct KyLuaFrame {
    lua_State* thread = nullptr;
    lua_Debug record{};
    /// Of a call that may end while scripts run: the levels from it outward, and its function. 0 and null for others.
    int nbLevels = 0;
    const void* function = nullptr;
};

/// Number of levels that lua_getstack knows.
int kyLuaNbLevels(lua_State* thread);
/// Cheaper than counting them.
bool kyLuaHasLevels(lua_State* thread, int count);
/// Notes what kyLuaFindAgain needs: when the thread waits, scripts may let it run on.
void kyLuaNoteFrame(KyLuaFrame& frame, int level);
/// To be done after scripts have run: false when the call has ended meanwhile, and the record stands for nothing.
bool kyLuaFindAgain(KyLuaFrame& frame);
/// All but the level.
void kyLuaDescribeFrame(KyLuaFrame& frame, KyScriptFrame& description);

/// Pushes the value of a local variable onto `state`, of several with one name the innermost; false, and nothing
/// pushed, when there is none. Frames of C functions have none.
bool kyLuaPushLocal(lua_State* state, const KyLuaFrame& frame, std::string_view name);
/// Pops the value on top of `state` into a local variable; false, and nothing popped, when there is none.
bool kyLuaSetLocal(lua_State* state, const KyLuaFrame& frame, std::string_view name);
/// The C function of a call, null for a function of Lua. Needs a free slot of the thread, never raises.
lua_CFunction kyLuaCFunction(lua_State* thread, lua_Debug* record);
/// Pushes the function of the frame, nil for a frame that gave its place to another.
void kyLuaPushFunction(lua_State* state, KyLuaFrame& frame);
/// Number of the upvalue of that name, 0 when the function at `index` is none of Lua or has no such.
int kyLuaFindUpvalue(lua_State* state, int index, std::string_view name);
