// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaErrorText_p.h"
#include "KyType.h"

#include <span>
#include <string_view>

#include <lua.hpp>

struct KyLuaClass;

/// Pushes a closure that calls the functions of that name, the best fitting of several. Methods take their object as
/// argument 1, static methods take none.
void kyLuaPushMethod(lua_State* state, KyLuaClass& luaClass, const KyType::Functions& functions, std::string_view name);

/// Calls the best fitting function with the arguments from index `first` to the top and pushes its result. Returns the
/// number of results, or -1 with the error's text; `typeName` stands in that text. What the function throws is caught.
int kyLuaInvoke(lua_State* state, std::span<const KyFunction* const> overloads, KyObject* object, int first,
                std::string_view typeName, KyLuaErrorText& error);
