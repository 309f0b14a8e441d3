// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

struct lua_State;

/// Sets the globals "bit_and", "bit_or", "bit_xor" and "bit_not", which work on 32-bit signed integers (other numbers
/// are truncated and taken modulo 2^32, those that are not finite count as 0), and "openUrl", which asks the desktop to
/// open a text as a URL and gives whether it did. Needs four free slots; may raise a memory error.
void kySetLuaUtilities(lua_State* state);
