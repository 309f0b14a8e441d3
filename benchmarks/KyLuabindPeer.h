// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

struct lua_State;

/// Makes KyBenchValues a luabind class and sets the global "bound" to one, for the rows whose peer is bare luabind.
void setLuabindPeer(lua_State* state);
