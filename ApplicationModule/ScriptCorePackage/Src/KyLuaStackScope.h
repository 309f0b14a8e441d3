// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <lua.hpp>

/// Puts the stack of a Lua state back as it was, however its block is left. Raises nothing, makes no room: a Lua error
/// that leaves the block leaves the stack to whoever catches it.
///
/// ```
/// const KyLuaStackScope scope(state);
/// lua_getglobal(state, "camera");
/// ```
class KyLuaStackScope {
public:
    /// Keeps the state, and how many values are on its stack now.
    explicit KyLuaStackScope(lua_State* state)
        : mState(state)
        , mTop(lua_gettop(state)) {}
    KyLuaStackScope(const KyLuaStackScope&) = delete;
    KyLuaStackScope& operator=(const KyLuaStackScope&) = delete;
    /// Takes off what was put on since.
    ~KyLuaStackScope() { lua_settop(mState, mTop); }

private:
    lua_State* mState;
    int mTop;
};
