// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaFrames_p.h"

#include <string>

#include <lua.hpp>

/// The run of an expression, or of statements, in the scope of a frame: its names are the frame's locals, then the
/// upvalues of its function, then what that function sees as globals. Functions made by it see only globals once it
/// has ended.
class KyLuaEvaluation {
public:
    /// Without a frame the names are globals.
    KyLuaEvaluation(KyLuaFrame* frame, const std::string& text);
    ~KyLuaEvaluation();
    KyLuaEvaluation(const KyLuaEvaluation&) = delete;
    KyLuaEvaluation& operator=(const KyLuaEvaluation&) = delete;

    /// Leaves the first value, or nil, on top. Raises: to be called protected.
    void run(lua_State* state);

private:
    void load(lua_State* state) const;
    void pushScope(lua_State* state);
    static KyLuaFrame* findFrame(lua_State* state);
    static int read(lua_State* state);
    static int write(lua_State* state);

    KyLuaFrame* mFrame;
    const std::string& mStatements;
    std::string mExpression;
    KyLuaEvaluation* mOuter;
    double mNumber;

    static inline KyLuaEvaluation* msInnermost = nullptr;
};
