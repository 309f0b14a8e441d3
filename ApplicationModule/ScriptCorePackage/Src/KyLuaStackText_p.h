// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

struct lua_State;

/// The values on a Lua stack, one a line, under a running number of the process. Changes nothing and never raises.
std::string kyLuaStackText(lua_State* state, const std::string& context);
