// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuabindPeer.h"

#include "KyBenchValues.h"

#include <lua.hpp>

#include <luabind/luabind.hpp>

void setLuabindPeer(lua_State* state) {
    luabind::module(state)[luabind::class_<KyBenchValues>("KyBenchValues")
                               .def(luabind::constructor<>())
                               .def_readwrite("Speed", &KyBenchValues::speed)
                               .def("mix", &KyBenchValues::mix)];
    luaL_dostring(state, "bound = KyBenchValues()");
}
