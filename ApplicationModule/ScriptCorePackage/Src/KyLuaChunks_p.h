// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

struct lua_State;

/// Defines the globals "tprint", which prints a table, and "ldb", which prints a value's metatable. False when one
/// could not be run. May raise a memory error.
bool kyInstallLuaChunks(lua_State* state);
