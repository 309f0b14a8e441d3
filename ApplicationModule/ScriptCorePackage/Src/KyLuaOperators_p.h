// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <lua.hpp>

/// Makes the operators of all luabind objects in this state safe when the left operand is none: luabind takes it for
/// one when neither operand has the operator. Joins objects that have a text with `..`, too. To be called once, before
/// luabind's metatable is copied.
void kyOpenLuaOperators(lua_State* state);
