// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

struct lua_State;

/// The scripts' print: as Lua's own, and told to those that listen to the engine's debugger.
int kyLuaPrint(lua_State* state);
