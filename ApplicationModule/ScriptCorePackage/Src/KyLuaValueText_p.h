// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include <lua.hpp>

/// Text of a value for a reader: numbers, texts, booleans and nil as Lua writes them, texts in quotes; other values a
/// short description. No function of a script is called. May raise memory errors.
void kyLuaValueText(lua_State* state, int index, std::string& text);
/// Of a key: a text is its own, others stand in brackets.
void kyLuaKeyText(lua_State* state, int index, std::string& text);
