// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <lua.hpp>

namespace luabind {
class scope;
}

/// The groups of Qt classes, in the order in which they are registered: each class after its base.
luabind::scope kyMakeQtObjectTypes();
luabind::scope kyMakeQtValueTypes();
luabind::scope kyMakeQtWidgetType();
luabind::scope kyMakeQtLayoutTypes();
luabind::scope kyMakeQtContainerTypes();
luabind::scope kyMakeQtTextTypes();
luabind::scope kyMakeQtItemTypes();
luabind::scope kyMakeQtControlTypes();
luabind::scope kyMakeQtTreeTypes();
luabind::scope kyMakeQtStorageTypes();
luabind::scope kyMakeQtWebTypes();
/// The control and its down-cast; of the platform.
luabind::scope kyMakeQtAxTypes();
/// The free functions, down-casts first.
luabind::scope kyMakeQtCasts();
luabind::scope kyMakeQtFunctions();
/// Makes methods global functions too, under names of their own, and sets `qApp`.
void kySetQtGlobals(lua_State* state);
