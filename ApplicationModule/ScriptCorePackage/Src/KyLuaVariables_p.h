// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyField.h"

#include <map>
#include <string>
#include <string_view>

#include <lua.hpp>

/// Variables of scripts as fields, by name: numbers, texts and booleans as such, other values as the name of their
/// type.
using KyLuaVariables = std::map<std::string, KyField, std::less<>>;

/// The local variables of the function of the record: of several with one name the innermost, without Lua's own. To be
/// called protected.
void kyCollectLocals(lua_State* state, const lua_Debug* record, KyLuaVariables& variables);
/// The globals with text keys that hold plain values. To be called protected.
void kyCollectGlobals(lua_State* state, KyLuaVariables& variables);
