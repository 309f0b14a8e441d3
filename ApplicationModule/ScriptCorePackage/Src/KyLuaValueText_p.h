// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include <lua.hpp>

/// Text of a value for a reader: numbers, texts, booleans and nil as Lua writes them, texts in quotes; other values a
/// short description. No function of a script is called. May raise memory errors.
void kyLuaValueText(lua_State* state, int index, std::string& text);
/// Of a key of a table, different for different keys: a text is its own unless it begins with a bracket; others stand
/// in brackets, with an address where their text alone would not do.
void kyLuaKeyText(lua_State* state, int index, std::string& text);
